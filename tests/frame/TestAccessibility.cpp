// Every view and every dialog that its commands open, for who listens, uses the keyboard alone or
// needs large texts.
#include "FrameFixture.h"

#include "controls/Dialog.h"
#include "controls/ReportList.h"
#include "support/Clicks.h"
#include "support/DataRows.h"
#include "support/Heard.h"

class TestAccessibility : public CFrameTest {
    Q_OBJECT

  private slots:
    void init() { FillEveryView(); }

    void everyControlHasANameAndTabGoesRound_data() { AddViews(); }
    void everyControlHasANameAndTabGoesRound() {
        const auto& [command] = DataRow<int>();
        CDietFrame frame(*m_doc);
        Show(frame);
        // From one view to another the menus are built again.
        for (const int view : {int(kSwitchToDiet), int(kSwitchToWeight), command}) {
            QVERIFY(frame.ShowView(view));
            (void)CHeard::Nameless(frame);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        QCOMPARE(CHeard::Nameless(frame).join(u", "_s), QString());
        OnEveryDialog(frame, [](CDialog& dialog, const QByteArray& name) {
            QVERIFY2(CHeard::Nameless(dialog).isEmpty(),
                     name + ": " + CHeard::Nameless(dialog).join(u", "_s).toUtf8());
            if (dialog.focusWidget() != nullptr) {
                const QString fault = CHeard::TabFault(dialog);
                QVERIFY2(fault.isEmpty(), name + ": " + fault.toUtf8());
            }
        });
    }

    void noTextIsCutAtTwiceTheSize_data() { AddViews(); }
    void noTextIsCutAtTwiceTheSize() {
        const auto& [command] = DataRow<int>();
        // A window of 1280 x 800 whose pixels, or whose font, are twice as large.
        const QFont usual = QApplication::font();
        QFont large = usual;
        large.setPointSizeF(usual.pointSizeF() * 2);
        for (const auto& [size, font] : {std::pair(QSize(640, 400), usual), {{1280, 800}, large}}) {
            QApplication::setFont(font);
            CDietFrame frame(*m_doc);
            frame.resize(size);
            Show(frame);
            QVERIFY(frame.ShowView(command));
            QCoreApplication::processEvents();
            QCOMPARE(CHeard::Cut(frame).join(u", "_s), QString());
            OnEveryDialog(frame, [size = size](CDialog& dialog, const QByteArray& name) {
                dialog.resize(dialog.size().boundedTo(size));
                QCoreApplication::processEvents();
                QVERIFY2(CHeard::Cut(dialog).isEmpty(),
                         name + ": " + CHeard::Cut(dialog).join(u", "_s).toUtf8());
            });
        }
        QApplication::setFont(usual);
    }

  private:
    static void AddViews() {
        AddRows<int>({{"diet", kSwitchToDiet},
                      {"weight", kSwitchToWeight},
                      {"exercises", kSwitchToExercises},
                      {"foods", kSwitchToFoods},
                      {"menus", kSwitchToMenus},
                      {"recipes", kSwitchToRecipes},
                      {"exlib", kSwitchToExlib}});
    }
    static void OnEveryDialog(CDietFrame& frame,
                              const std::function<void(CDialog&, const QByteArray&)>& act) {
        for (auto* list : frame.ActiveView()->findChildren<CReportList*>()) {
            list->SelectRow(0);
        }
        for (auto* action : frame.ActiveView()->findChildren<QAction*>()) {
            if (kAsking.match(action->text()).hasMatch()) {
                OnDialog<CDialog>([&](CDialog& dialog) { act(dialog, action->text().toUtf8()); });
                action->trigger();
            }
        }
    }
};

QTEST_MAIN(TestAccessibility)
#include "TestAccessibility.moc"
