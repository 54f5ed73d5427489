// The program on a screen of 240 x 320.
#include "FrameFixture.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QTextBrowser>
#include <QToolButton>

#include "controls/Dialog.h"
#include "controls/ReportList.h"
#include "controls/WindowMessages.h"
#include "diary/CopyRules.h"
#include "frame/HelpWindow.h"

class TestSmallScreen : public CFrameTest {
    Q_OBJECT

  private slots:
    void init() {
        FillEveryView();
        QCOMPARE(QGuiApplication::primaryScreen()->geometry(), kScreen);
    }

    void viewsAndDialogsFillTheScreen() {
        CShownFrame frame(*m_doc);
        QCOMPARE(frame.size(), kScreen.size());
        for (const int command : kViews) {
            QVERIFY(frame.ShowView(command));
            QCoreApplication::processEvents();
            QCOMPARE(frame.ActiveView()->contentsMargins(), QMargins(2, 0, 2, 2));
            QCOMPARE(frame.ActiveView()->width(), kScreen.width());
            const auto* list = frame.ActiveView()->findChild<CReportList*>();
            QVERIFY(list->sizeHintForRow(0) < list->fontMetrics().height() * 3 / 2);
            QVERIFY(list->viewport()->height() >= list->sizeHintForRow(0));
            // One above the other.
            QCOMPARE(frame.ActiveView()->findChild<QSplitter*>()->orientation(), Qt::Vertical);
        }
        frame.ShowView(kSwitchToMenus);
        Find<CReportList>(*frame.ActiveView(), "items")->SelectRow(0);
        OnDialog<CDialog>([](CDialog& dialog) {
            QCOMPARE(dialog.width(), kScreen.width());
            QCOMPARE(dialog.frameGeometry().height(), kScreen.height());
            QCOMPARE(Find<QPushButton>(dialog, "recalculate")->text(), u"&Recalculate"_s);
        });
        Trigger(frame, u"Edit menu..."_s);
    }

    void offersOfAnEmptyMealAreAllInReach() {
        const CDietEntry tea = AddEntry(u"Tea"_s, QTime(8, 0)).entry;
        for (int ago = 1; ago <= 4; ++ago) {
            const std::vector<CDietEntry> entries(static_cast<std::size_t>(ago), tea);
            QCOMPARE(CopyEntries(*m_doc, entries, {{kDay.addDays(-ago)}}), ago);
        }
        // The day itself is empty.
        QCOMPARE(CutDietEntries(*m_doc, ReadDay(Database().Diet(), kDay).Entries()), 2);
        CShownFrame frame(*m_doc);
        for (const int offer : {1, 2, 3, 4}) {
            auto* button = frame.ActiveView()->findChild<QToolButton*>(u"offer%1"_s.arg(offer));
            const auto* shown = button->parentWidget()->parentWidget();
            QTest::keyClick(frame.focusWidget(), offer == 1 ? Qt::Key_Up : Qt::Key_Down);
            QVERIFY(button->height() >= button->sizeHint().height());
            QVERIFY(button->width() >= button->sizeHint().width());
            const QRect place(button->mapTo(shown, QPoint()), button->size());
            QVERIFY2(shown->rect().contains(place), qPrintable(button->text()));
        }
    }

    void theQuickLineAndTheStatusTakeRoomOnlyWhenUsed() {
        CShownFrame frame(*m_doc);
        auto* line = Find<QLineEdit>(*frame.ActiveView(), "quick");
        QVERIFY(line->isHidden());
        QTest::keyClick(frame.focusWidget(), Qt::Key_L, Qt::ControlModifier);
        QVERIFY(line->hasFocus());
        QTest::keyClicks(line, u"ap"_s);
        const auto* list = Find<CReportList>(*frame.ActiveView(), "quickRows");
        QVERIFY(list->viewport()->height() >= list->sizeHintForRow(0) * 4);
        Find<CReportList>(*frame.ActiveView(), "entries")->setFocus();
        QVERIFY(!list->isVisible());
        QVERIFY(!line->isHidden());  // what was typed is not lost
        line->setFocus();
        auto* status = Find<QLabel>(frame, "status");
        QVERIFY(!status->isVisible());
        QTest::keyClick(line, Qt::Key_Return);
        QVERIFY(status->isVisible());
        QCoreApplication::processEvents();  // lays the window out
        QVERIFY(status->height() >= status->heightForWidth(status->width()));
        const int height = status->height();
        QTest::keyClick(line, Qt::Key_Z, Qt::ControlModifier);
        QCoreApplication::processEvents();
        QVERIFY(status->height() < height);
        QTest::keyClick(line, Qt::Key_Escape);
        QVERIFY(line->isHidden());
        QVERIFY(Find<CReportList>(*frame.ActiveView(), "entries")->hasFocus());
    }

    void aLongMessageScrollsAboveItsButtons() {
        CWindowMessages messages;
        const QString line = u"12 of 3456 foods were read, and 7 could not be\n"_s;
        for (const int lines : {1, 20}) {
            OnDialog<QMessageBox>([lines](QMessageBox& box) {
                const auto* button = box.button(QMessageBox::Yes);
                const QRect place(button->mapTo(&box, QPoint()), button->size());
                QVERIFY(box.rect().contains(place));
                QCOMPARE(box.size().boundedTo(kScreen.size()), box.size());
                auto* scroll = box.findChild<QScrollArea*>();
                QCOMPARE(scroll != nullptr, lines > 1);
                if (scroll != nullptr) {
                    QCOMPARE(scroll->horizontalScrollBar()->maximum(), 0);
                    QTest::keyClick(scroll, Qt::Key_PageDown);
                    QVERIFY(scroll->verticalScrollBar()->value() > 0);
                } else {
                    const int width = Find<QLabel>(box, "qt_msgbox_label")->width();
                    QVERIFY(width > kScreen.width() / 2);
                }
                QTest::keyClick(&box, Qt::Key_Return);
            });
            QVERIFY(AskYesNo(line.repeated(lines)));
        }
        OnDialog<QMessageBox>([](QMessageBox& box) {
            QCOMPARE(box.findChild<QScrollArea*>()->widget()->property("text").toString(),
                     u"Cannot.\n\n"_s + box.informativeText());
        });
        ShowMessage({u"Cannot."_s, EMessageIcon::Stop, line.repeated(20).trimmed()});
    }

    void theFileDialogLeavesOutWhatHasNoRoom() {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        CWindowMessages messages;
        OnDialog<QFileDialog>([](QFileDialog& dialog) {
            QCOMPARE(dialog.size(), kScreen.size());
            QCOMPARE(dialog.viewMode(), QFileDialog::List);
            QVERIFY(Find<QWidget>(dialog, "sidebar")->isHidden());
            QVERIFY(Find<QWidget>(dialog, "fileTypeLabel")->isHidden());
            QVERIFY(!Find<QWidget>(dialog, "fileNameEdit")->isHidden());
        });
        QCOMPARE(ChooseFileToOpen({u"Import"_s, {}, {}, {}}), QString());
    }

    void theHelpPageFitsItsWindow() {
        CShownFrame frame(*m_doc);
        CHelpWindow::Open(QStringLiteral(VELMORA_DOCS) + u"/Velmora.htm"_s, &frame);
        auto* window = frame.findChild<CHelpWindow*>();
        QTRY_COMPARE(QApplication::activeWindow(), window);
        QCOMPARE(window->width(), kScreen.width());
        auto* page = Find<QTextBrowser>(*window, "page");
        QVERIFY(page->viewport()->height() > kScreen.height() / 2);
        const auto width = [page] {
            const QUrl picture(u"pictures/quick-line.png"_s);
            const auto* document = page->document();
            return document->resource(QTextDocument::ImageResource, picture)
                .value<QImage>()
                .width();
        };
        QVERIFY(width() > kScreen.width() / 2 && width() <= page->viewport()->width());
        QCOMPARE(page->horizontalScrollBar()->maximum(), 0);
        window->resize(800, 600);
        QCOMPARE(width(), 640);  // as it is
    }

  private:
    static constexpr QRect kScreen{0, 0, 240, 320};
};

int main(int argc, char** argv) {
    const QTemporaryDir folder;
    const QString screen = folder.filePath(u"screen.json"_s);
    Save(screen, R"({"screens": [{"name": "small", "x": 0, "y": 0, "width": 240, "height": 320,
                     "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screen.toUtf8());
    const QApplication application(argc, argv);
    TestSmallScreen test;
    return QTest::qExec(&test, argc, argv);
}

#include "TestSmallScreen.moc"
