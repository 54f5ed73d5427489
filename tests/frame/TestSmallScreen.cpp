// The program on a screen of 240 x 320.
#include "FrameFixture.h"

#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>

#include "controls/Dialog.h"
#include "controls/ReportList.h"
#include "controls/WindowMessages.h"
#include "support/Clicks.h"
#include "support/Files.h"

class TestSmallScreen : public CFrameTest {
    Q_OBJECT

  private slots:
    void init() {
        FillEveryView();
        QCOMPARE(QGuiApplication::primaryScreen()->geometry(), kScreen);
    }

    void viewsAndDialogsFillTheScreen() {
        CDietFrame frame(*m_doc);
        Show(frame);
        QCOMPARE(frame.size(), kScreen.size());
        for (const int command : {kSwitchToDiet, kSwitchToWeight, kSwitchToExercises,
                                  kSwitchToFoods, kSwitchToMenus, kSwitchToExlib}) {
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

    void theQuickLineAndTheStatusTakeRoomOnlyWhenUsed() {
        CDietFrame frame(*m_doc);
        Show(frame);
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
        QCOMPARE(status->text(), u"Added Apple to Lunch. Ctrl+Z takes it back."_s);
        QVERIFY(status->isVisible());
        QCoreApplication::processEvents();  // lays the window out
        QVERIFY(status->height() >= status->heightForWidth(status->width()));
        const int height = status->height();
        QTest::keyClick(line, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(status->text(), u"Undone: addition of Apple."_s);
        QCoreApplication::processEvents();
        QVERIFY(status->height() < height);
        QTest::keyClick(line, Qt::Key_Escape);
        QVERIFY(line->isHidden());
        QVERIFY(Find<CReportList>(*frame.ActiveView(), "entries")->hasFocus());
    }

    void foundFoodsLieBesideTheScrollBarOfTheDialog() {
        CDietFrame frame(*m_doc);
        Show(frame);
        OnDialog<CDialog>([](CDialog& dialog) {
            QTest::keyClick(dialog.focusWidget(), Qt::Key_A);
            QCoreApplication::processEvents();
            const auto* content = Find<QScrollArea>(dialog, "content");
            const QRect list = Find<QWidget>(dialog, "searchList")->geometry();
            dialog.reject();  // closes only the list
            QVERIFY(content->verticalScrollBar()->isVisible());
            QCOMPARE(list.right(), content->viewport()->geometry().right());
        });
        Trigger(frame, u"Add entry..."_s);
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
