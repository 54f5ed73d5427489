#include <QKeyEvent>
#include <QProgressBar>
#include <QSignalSpy>

#include "controls/ProgressWindow.h"
#include "support/Clicks.h"

class TestProgressWindow : public QObject {
    Q_OBJECT
  private slots:
    void theCaptionShowsThePercent() {
        const std::tuple<qint64, qint64, qint64, QString> rows[] = {
            {0, 3, 2, u"66%"_s},  // 2 * 100 / 3 = 66.67
            // 15 * 100 / (20 - 10): the position counts from 0, the span from the lower end.
            {10, 20, 15, u"150%"_s},
            {5, 5, 5, u"0%"_s},
            {9, 5, 7, u"0%"_s},
            {0, 8'000'000'000, 4'000'000'000, u"50%"_s},
        };
        for (const auto& [lower, upper, position, percent] : rows) {
            CProgressWindow window(u"Velmora: Import"_s, nullptr);
            QCOMPARE(window.windowTitle(), u"Velmora: Import"_s);
            window.SetRange(lower, upper, 1);
            window.SetPosition(position);
            QCOMPARE(window.windowTitle(), u"Velmora: Import [%1]"_s.arg(percent));
        }
    }

    void stepsChangeTheCaptionOnlyWithThePercent() {
        CProgressWindow window(u"Export"_s, nullptr);
        QSignalSpy titles(&window, &QWidget::windowTitleChanged);
        window.SetRange(0, 1000, 5);
        for (int i = 0; i < 200; ++i) {
            window.Step();
        }
        // 0% at the first step, then 1% to 100%, each two steps apart.
        QCOMPARE(titles.count(), 101);
        QCOMPARE(window.windowTitle(), u"Export [100%]"_s);
        QCOMPARE(window.findChild<QProgressBar*>()->value(), 100);
    }

    void everyWayOutCancels() {
        using CWay = std::function<void(CProgressWindow&)>;
        const auto escapeWhilePumping = [](CProgressWindow& window) {
            window.Hide();
            window.Show();
            QCoreApplication::postEvent(
                &window, new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier));
            window.Pump();
        };
        for (const CWay& leave :
             {CWay([](CProgressWindow& window) { window.findChild<QPushButton*>()->click(); }),
              CWay([](CProgressWindow& window) { window.close(); }), CWay(escapeWhilePumping)}) {
            QWidget mainWindow;
            QLineEdit field(&mainWindow);
            Show(mainWindow);
            field.setFocus();
            {
                CProgressWindow window(u"Export"_s, &mainWindow);
                window.Show();
                window.Pump();
                QVERIFY(!mainWindow.isEnabled() && window.isEnabled() && !window.IsCancelled());
                QCOMPARE(window.findChild<QPushButton*>()->text(), u" Cancel "_s);
                { const CProgressWindow inner(u"Backup"_s, &mainWindow); }
                QVERIFY(!mainWindow.isEnabled() && window.isEnabled());
                leave(window);
                QVERIFY(window.IsCancelled());
                QVERIFY(window.isHidden());
                QVERIFY(QTest::qWaitForWindowActive(&mainWindow));
                QVERIFY(!mainWindow.isEnabled());
            }
            QVERIFY(mainWindow.isEnabled());
            QCOMPARE(mainWindow.focusWidget(), &field);
        }
    }
};

QTEST_MAIN(TestProgressWindow)
#include "TestProgressWindow.moc"
