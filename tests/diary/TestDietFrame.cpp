#include "DiaryFixture.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QSpinBox>
#include <QTimer>
#include <QToolBar>

#include "app/PreferencesDialog.h"
#include "controls/ReportList.h"
#include "diary/DietFrame.h"

class TestDietFrame : public QObject {
    Q_OBJECT

  private slots:
    void viewsAreSwitchedByCommand() {
        CDiaryFixture diary;
        CDietFrame frame(*diary.doc);
        QCOMPARE(frame.ActiveCommand(), 65008);
        const QPointer<CMainView> diet = frame.ActiveView();
        QVERIFY(frame.ShowView(65008));
        QCOMPARE(frame.ActiveView(), diet.data());
        QVERIFY(!frame.ShowView(65009));
        QVERIFY(!frame.ShowView(0));
        QCOMPARE(frame.ActiveView(), diet.data());

        frame.RunCommand(65022);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(diet.isNull());
        QCOMPARE(frame.ActiveCommand(), 65022);
        // The catalogue is no tab of the diary: the next start shows the diary.
        QCOMPARE(diary.doc->Settings().lastTabCommand, 65008);
    }

    void aTabWithoutViewStartsWithTheDiary() {
        CDiaryFixture diary;
        diary.doc->Settings().lastTabCommand = kWeightTabCommand;
        CDietFrame frame(*diary.doc);
        QCOMPARE(frame.ActiveCommand(), 65008);
        QCOMPARE(frame.windowTitle(), u"Velmora:Ann"_s);
    }

    void theCommandBarIsThatOfTheView() {
        CDiaryFixture diary;
        CDietFrame frame(*diary.doc);
        QStringList commands;
        for (const QAction* menu : frame.menuBar()->actions()) {
            commands.append(menu->text());
            for (const QAction* action : menu->menu()->actions()) {
                commands.append(action->text());
            }
        }
        QCOMPARE(commands.join(u'|'),
                 u"&File|Open profile...|&Exit|"
                 "&Edit|Add entry...|Edit entry...|Delete entry...|Move entry...|"
                 "Duplicate entry...|"
                 "&Tools|Preferences...|User...|Targets...|Foods...|&Help|Velmora help"_s);
        QStringList tips;
        for (const QAction* action : frame.findChild<QToolBar*>(u"commands"_s)->actions()) {
            if (!action->isSeparator()) {
                tips.append(action->toolTip());
            }
        }
        QCOMPARE(tips, (QStringList{u"Add food/menu/recipe to meal"_s,
                                    u"Delete food/menu/recipe from meal"_s, u"Diet monitor tab"_s,
                                    u"Foods tab"_s, u"Menus tab"_s, u"Recipes tab"_s}));
    }

    void preferencesRefreshTheView() {
        CDiaryFixture diary;
        diary.AddEntry(u"Tea"_s, QTime(8, 0), 2, 20);
        CDietFrame frame(*diary.doc);
        frame.show();
        QTimer::singleShot(0, [] {
            auto* dialog = qobject_cast<CPreferencesDialog*>(QApplication::activeModalWidget());
            QVERIFY(dialog != nullptr);
            dialog->findChild<QSpinBox*>()->setValue(0);
            dialog->accept();
        });
        frame.RunCommand(kCommandPreferences);
        QCOMPARE(diary.doc->Preferences().decimals, 0);
        const auto* entries = frame.findChild<CReportList*>(u"entries"_s);
        QCOMPARE(entries->model()->index(0, 1).data().toString(), u"1x1 serving"_s);
    }

    void theWindowComesBackWhereItWas() {
        CDiaryFixture diary;
        const QRect place(30, 40, 500, 400);
        {
            CDietFrame frame(*diary.doc);
            frame.setGeometry(place);
            frame.show();
            frame.close();
        }
        const CRegistrySettings stored = CRegistrySettings::Read();
        QCOMPARE(QRect(stored.positionX, stored.positionY, stored.sizeX, stored.sizeY), place);
        QCOMPARE(CDietFrame(*diary.doc).geometry(), place);
    }

    void aPlaceOutsideTheScreensIsIgnored() {
        CDiaryFixture diary;
        CRegistrySettings& registry = diary.doc->Registry();
        for (const int x : {20000, -490}) {
            registry.positionX = x;
            registry.positionY = 10;
            registry.sizeX = 500;
            registry.sizeY = 400;
            const CDietFrame frame(*diary.doc);
            QVERIFY(frame.x() != x);
            QCOMPARE(frame.size(), QSize(1000, 700).boundedTo(frame.screen()->availableSize()));
        }
    }

    void aSmallScreenHoldsTheFrame() {
        CDiaryFixture diary;
        CDietFrame frame(*diary.doc);
        frame.resize(240, 320);
        frame.show();
        QCOMPARE(frame.size(), QSize(240, 320));
    }
};

QTEST_MAIN(TestDietFrame)
#include "TestDietFrame.moc"
