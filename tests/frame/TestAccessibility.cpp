// Every view and every dialog that its commands open, for who listens, uses the keyboard alone or
// needs large texts.
#include "FrameFixture.h"

#include <QMessageBox>
#include <QPlainTextEdit>
#include <QScopeGuard>
#include <QToolButton>

#include "controls/ColorDialog.h"
#include "controls/Dialog.h"
#include "controls/GraphPane.h"
#include "controls/ProgressWindow.h"
#include "controls/ReportList.h"
#include "controls/WindowMessages.h"
#include "exercise/ExercisesGraph.h"
#include "frame/FindingsDialog.h"
#include "frame/HelpWindow.h"
#include "store/VolumeTexts.h"
#include "support/Clicks.h"
#include "support/Contrasts.h"
#include "support/DataRows.h"
#include "support/Heard.h"

class TestAccessibility : public CFrameTest {
    Q_OBJECT

  private slots:
    void init() { FillEveryView(); }

    void everyControlHasANameAndTabGoesRound_data() { AddViews(); }
    void everyControlHasANameAndTabGoesRound() {
        const auto& [command, dialogs] = DataRow<int, int>();
        CDietFrame frame(*m_doc);
        Show(frame);
        // From one view to another the menus are built again.
        for (const int view : {int(kSwitchToDiet), int(kSwitchToWeight), command}) {
            QVERIFY(frame.ShowView(view));
            (void)CHeard::Nameless(frame);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        QCOMPARE(CHeard::Nameless(frame).join(u", "_s), QString());
        const int count = OnEveryDialog(frame, [](CDialog& dialog, const QByteArray& name) {
            QVERIFY2(CHeard::Nameless(dialog).isEmpty(),
                     name + ": " + CHeard::Nameless(dialog).join(u", "_s).toUtf8());
            if (dialog.focusWidget() != nullptr) {
                const QString fault = CHeard::TabFault(dialog);
                QVERIFY2(fault.isEmpty(), name + ": " + fault.toUtf8());
            }
        });
        QCOMPARE(count, dialogs);
    }

    void noTextIsCutAtTwiceTheSize_data() { AddViews(); }
    void noTextIsCutAtTwiceTheSize() {
        const auto& [command, dialogs] = DataRow<int, int>();
        // A window of 1280 x 800 whose pixels, or whose font, are twice as large.
        const QFont usual = QApplication::font();
        const auto restore = qScopeGuard([&usual] { QApplication::setFont(usual); });
        const QFont large = TwiceAsLarge(usual);
        for (const auto& [size, font] : {std::pair(QSize(640, 400), usual), {{1280, 800}, large}}) {
            QApplication::setFont(font);
            CDietFrame frame(*m_doc);
            frame.resize(size);
            Show(frame);
            QVERIFY(frame.ShowView(command));
            QCoreApplication::processEvents();
            QCOMPARE(CHeard::Cut(frame).join(u", "_s), QString());
            const int count =
                OnEveryDialog(frame, [size = size](CDialog& dialog, const QByteArray& name) {
                    dialog.resize(dialog.size().boundedTo(size));
                    QCoreApplication::processEvents();
                    QVERIFY2(CHeard::Cut(dialog).isEmpty(),
                             name + ": " + CHeard::Cut(dialog).join(u", "_s).toUtf8());
                });
            QCOMPARE(count, dialogs);
        }
    }

    // Of the windows that no command of a view opens here.
    void windowsApartFromTheViewsAreHeardAndUncut_data() {
        AddRows<CDialog* (*)(QWidget*)>(
            {{"findings with a fault",
              [](QWidget* frame) { return MakeFindings(frame, EFinding::Fault); }},
             {"findings without a fault",
              [](QWidget* frame) { return MakeFindings(frame, EFinding::Note); }},
             {"help", [](QWidget* frame) {
                  const auto docs = QStringLiteral(VELMORA_DOCS);
                  CHelpWindow::Open(docs + u"/Velmora.htm"_s, frame);
                  return frame->findChild<CDialog*>();
              }}});
    }
    void windowsApartFromTheViewsAreHeardAndUncut() {
        const auto& [create] = DataRow<CDialog* (*)(QWidget*)>();
        QWidget frame;
        Show(frame);
        const QFont usual = QApplication::font();
        const auto restore = qScopeGuard([&usual] { QApplication::setFont(usual); });
        for (const QFont& font : {usual, TwiceAsLarge(usual)}) {
            QApplication::setFont(font);
            const std::unique_ptr<CDialog> dialog(create(&frame));
            Show(*dialog);
            QCOMPARE(CHeard::Nameless(*dialog).join(u", "_s), QString());
            QCOMPARE(CHeard::TabFault(*dialog), QString());
            QCOMPARE(CHeard::Cut(*dialog).join(u", "_s), QString());
        }
    }

    void messagesAndTheProgressAreHeardAndUncut() {
        QWidget frame;
        Show(frame);
        const auto check = [](QWidget& window) {
            window.show();
            QTest::keyClick(&window, Qt::Key_Tab);
            QCOMPARE(CHeard::Nameless(window).join(u", "_s), QString());
            QCOMPARE(CHeard::TabFault(window), QString());
            QCOMPARE(CHeard::Cut(window).join(u", "_s), QString());
        };
        const QFont usual = QApplication::font();
        const auto restore = qScopeGuard([&usual] { QApplication::setFont(usual); });
        for (const QFont& font : {usual, TwiceAsLarge(usual)}) {
            QApplication::setFont(font);
            OnDialog<QMessageBox>(check);
            CWindowMessages().Show({u"The change was not stored."_s,
                                    EMessageIcon::Stop,
                                    LostVolumeText(EVolumeState::Replaced, Path(u"v.db"_s)),
                                    {{u"Save a copy..."_s, {}, u"All can be saved."_s},
                                     {u"Open the new file"_s, {}}}});
            CProgressWindow progress(u"Velmora: Restore"_s, &frame);
            progress.SetStatus(u"Checking the restored data"_s);
            check(progress);
        }
    }

    void whatIsDrawnOnAChosenGroundCanBeRead() {
        const QColor navy(0, 0, 128);
        m_doc->Settings().weightTab.backgroundColor = RgbOf(navy);
        m_doc->Settings().exerciseTab.backgroundColor = RgbOf(navy);
        CDietFrame frame(*m_doc);
        Show(frame);
        for (const int command : {kSwitchToWeight, kSwitchToExercises}) {
            QVERIFY(frame.ShowView(command));
            QCoreApplication::processEvents();
            auto* graph = frame.ActiveView()->findChild<CGraphPane*>();
            QImage image = graph->grab().toImage();
            QCOMPARE(image.pixelColor(0, 0), navy);
            // The labels of the axis; what is right of them has a colour of its own.
            QVERIFY(Strongest(image, {0, 0, 20, image.height()}, navy) >= kReadableContrast);
            for (const auto* button : graph->findChildren<QToolButton*>()) {
                const QRect place(button->mapTo(graph, QPoint()), button->size());
                const QColor ground = image.pixelColor(place.topLeft() + QPoint(3, 3));
                QVERIFY2(
                    Strongest(image, place.adjusted(3, 3, -3, -3), ground) >= kReadableContrast,
                    qPrintable(button->text()));
            }
            if (const auto* headline = frame.findChild<QLabel*>(u"headline"_s)) {
                const QColor text = headline->palette().color(QPalette::WindowText);
                QVERIFY(Contrast(text, navy) >= kReadableContrast);
            }
            graph->setFocus();
            image = graph->grab().toImage();
            QVERIFY(Contrast(image.pixelColor(0, 0), navy) >= kVisibleContrast);
        }
        // Chosen colours stay.
        CExerciseTabSettings chosen;
        chosen.textColor = RgbOf(Qt::yellow);
        QCOMPARE(ExerciseTextColor(chosen), QColor(Qt::yellow));
    }

    void returnInTheFindingsDoesNotStartTheRepair() {
        QWidget frame;
        const std::unique_ptr<CDialog> dialog(MakeFindings(&frame, EFinding::Fault));
        Show(*dialog);
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
        QVERIFY(!dialog->isVisible());
        QCOMPARE(dialog->result(), int(QDialog::Rejected));
    }

    void ofVeryManyFindingsTheFirstAreShown() {
        CFindings findings;
        for (int i = 0; i < 2002; ++i) {
            findings.AddNote(QString::number(i));
        }
        const CFindingsDialog dialog(findings, nullptr);
        const QString text = dialog.findChild<QPlainTextEdit*>()->toPlainText();
        QVERIFY(text.endsWith(u"\nNote: 1999\n... and 2 more"_s));
    }

  private:
    static CDialog* MakeFindings(QWidget* parent, EFinding kind) {
        CFindings findings;
        findings.AddNote(u"A serving has no name."_s);
        if (kind == EFinding::Fault) {
            findings.AddFault(u"A record cannot be read."_s);
        }
        return new CFindingsDialog(findings, parent);
    }
    static QFont TwiceAsLarge(QFont font) {
        font.setPointSizeF(font.pointSizeF() * 2);
        return font;
    }
    /// With the number of dialogs that their commands open.
    static void AddViews() {
        AddRows<int, int>({{"diet", kSwitchToDiet, 14},
                           {"weight", kSwitchToWeight, 15},
                           {"exercises", kSwitchToExercises, 14},
                           {"foods", kSwitchToFoods, 9},
                           {"menus", kSwitchToMenus, 6},
                           {"recipes", kSwitchToRecipes, 6},
                           {"exlib", kSwitchToExlib, 6}});
    }
    /// How many there were.
    static int OnEveryDialog(CDietFrame& frame,
                             const std::function<void(CDialog&, const QByteArray&)>& act) {
        int count = 0;
        for (auto* list : frame.ActiveView()->findChildren<CReportList*>()) {
            list->SelectRow(0);
        }
        for (auto* action : frame.ActiveView()->findChildren<QAction*>()) {
            if (kAsking.match(action->text()).hasMatch()) {
                OnDialog<CDialog>([&](CDialog& dialog) {
                    ++count;
                    act(dialog, action->text().toUtf8());
                });
                action->trigger();
            }
        }
        return count;
    }
};

QTEST_MAIN(TestAccessibility)
#include "TestAccessibility.moc"
