#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "controls/ProgressWindow.h"

using namespace Qt::StringLiterals;

class TestProgressWindow : public QObject {
    Q_OBJECT
  private slots:
    void theCaptionShowsThePercent_data() {
        QTest::addColumn<qint64>("lower");
        QTest::addColumn<qint64>("upper");
        QTest::addColumn<qint64>("position");
        QTest::addColumn<QString>("caption");
        const auto row = [](const char* name, qint64 lower, qint64 upper, qint64 position,
                            const char* caption) {
            QTest::newRow(name) << lower << upper << position << QString::fromLatin1(caption);
        };
        row("none yet", 0, 0, 0, "Velmora: Import [0%]");
        // 2 * 100 / 3 = 66.67
        row("rounded down", 0, 3, 2, "Velmora: Import [66%]");
        // 15 * 100 / (20 - 10) = 150: the position counts from 0, the span from the lower end.
        row("span above 0", 10, 20, 15, "Velmora: Import [150%]");
        row("empty span", 5, 5, 5, "Velmora: Import [0%]");
        row("turned span", 9, 5, 7, "Velmora: Import [0%]");
        row("large file", 0, 8'000'000'000, 4'000'000'000, "Velmora: Import [50%]");
    }
    void theCaptionShowsThePercent() {
        QFETCH(qint64, lower);
        QFETCH(qint64, upper);
        QFETCH(qint64, position);
        QFETCH(QString, caption);
        CProgressWindow window(u"Velmora: Import"_s, nullptr);
        QCOMPARE(window.windowTitle(), u"Velmora: Import"_s);
        window.SetRange(lower, upper, 1);
        window.SetPosition(position);
        QCOMPARE(window.windowTitle(), caption);
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

    void everyWayOutCancels_data() {
        QTest::addColumn<QString>("way");
        QTest::newRow("button") << "button";
        QTest::newRow("Escape seen while pumping") << "escape";
        QTest::newRow("closed") << "close";
    }
    void everyWayOutCancels() {
        QFETCH(QString, way);
        QWidget mainWindow;
        QLineEdit field(&mainWindow);
        mainWindow.show();
        QVERIFY(QTest::qWaitForWindowActive(&mainWindow));
        field.setFocus();
        {
            CProgressWindow window(u"Export"_s, &mainWindow);
            window.Show();
            window.Pump();
            QVERIFY(!mainWindow.isEnabled() && window.isEnabled() && !window.IsCancelled());
            auto* cancel = window.findChild<QPushButton*>();
            QCOMPARE(cancel->text(), u" Cancel "_s);
            if (way == u"button") {
                QTest::mouseClick(cancel, Qt::LeftButton);
            } else if (way == u"close") {
                window.close();
            } else {
                window.Hide();
                window.Show();
                QCoreApplication::postEvent(
                    &window, new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier));
                window.Pump();
            }
            QVERIFY(window.IsCancelled());
            QVERIFY(window.isHidden());
            QVERIFY(QTest::qWaitForWindowActive(&mainWindow));
            QVERIFY(!mainWindow.isEnabled());
        }
        QVERIFY(mainWindow.isEnabled());
        QCOMPARE(mainWindow.focusWidget(), &field);
    }
};

QTEST_MAIN(TestProgressWindow)
#include "TestProgressWindow.moc"
