#include "diary/DiaryFixture.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QRegularExpression>
#include <QScreen>
#include <QTabWidget>
#include <QToolBar>
#include <QTreeView>
#include <limits>

#include "app/FrameCommands.h"
#include "app/UndoRules.h"
#include "exercise/ExerciseRules.h"
#include "frame/DietFrame.h"
#include "profile/PreferencesDialog.h"
#include "support/Clicks.h"
#include "support/ComposedSamples.h"
#include "support/DataRows.h"

namespace {
/// Any key on every list, tree and grid of a window, while its models are watched.
void PressKeysIn(const QWidget& window) {
    using enum QAbstractItemModelTester::FailureReportingMode;
    const std::pair<Qt::Key, Qt::KeyboardModifier> keys[] = {
        {Qt::Key_C, Qt::ControlModifier}, {Qt::Key_A, Qt::ControlModifier},
        {Qt::Key_C, Qt::ControlModifier}, {Qt::Key_Delete, Qt::NoModifier},
        {Qt::Key_F2, Qt::NoModifier},     {Qt::Key_Down, Qt::NoModifier},
        {Qt::Key_Return, Qt::NoModifier},
    };
    for (auto* list : window.findChildren<QTreeView*>()) {
        const QAbstractItemModelTester sound(list->model(), Fatal);
        for (const auto& [key, modifier] : keys) {
            if (list->isVisible()) {
                list->setFocus();
                QTest::keyClick(list, key, modifier);
            }
        }
    }
}

/// The same in every dialog that they open while `user` lives, page by page; then it is left.
void PressKeysInDialogs(QObject& user) {
    QTimer::singleShot(1, &user, [&user] {
        PressKeysInDialogs(user);
        QWidget* dialog = QApplication::activeModalWidget();
        if (dialog == nullptr || !dialog->isActiveWindow()) {
            return;
        }
        auto* pages = dialog->findChild<QTabWidget*>();
        for (int page = 0; page < (pages == nullptr ? 1 : pages->count()); ++page) {
            if (pages != nullptr) {
                pages->setCurrentIndex(page);
            }
            PressKeysIn(*dialog);
        }
        dialog->close();
    });
}
}  // namespace

class TestDietFrame : public CDiaryTest {
    Q_OBJECT

  private slots:
    void init() { MakeDiary(); }

    void theMenuNamesTheStepToUndo() {
        CDietFrame frame(*m_doc);
        Show(frame);
        const auto edit = [&frame] { return frame.menuBar()->actions().at(1)->menu(); };
        const auto texts = [&edit] {
            emit edit()->aboutToShow();
            QStringList shown;
            for (const QAction* action : edit()->actions()) {
                if (action->text().contains(QRegularExpression(u"^(Un|Re)do"_s))) {
                    shown.append(action->text());
                }
            }
            return shown;
        };
        const QString name = u"Fish & chips with a sauce of many things"_s;
        CExerciseEntry entry;
        entry.SetMoment(FirstMomentOf(kDay));
        entry.SetName(name);
        QVERIFY(AddExercise(Database(), entry));
        QCOMPARE(texts(),
                 (QStringList{u"Undo addition of Fish && chips with a \u2026"_s, u"Redo"_s}));
        QVERIFY(RevertNext(Database(), EUndo::Undo, Database().Profiles().GetId()));
        QCOMPARE(texts().last(), u"Redo addition of Fish && chips with a \u2026"_s);
        QVERIFY(frame.ShowView(kSwitchToFoods));
        QVERIFY(texts().first().startsWith(u"Undo"_s) && texts().last() == u"Redo"_s);
    }

    void anyKeyMayBePressedInAnyList_data() {
        AddRows<bool>({{"empty", false}, {"with rows", true}});
    }
    void anyKeyMayBePressedInAnyList() {
        const auto& [hasRows] = DataRow<bool>();
        if (hasRows) {
            AddCatalogue();
            AddComposed(Database(), kMenus, AddCategory(Database(), u"C"_s, kMenus), u"Lunch"_s);
            AddEntry(u"Tea"_s, QTime(8, 0));
            AddDone(u"Row"_s, kDay, QTime(8, 0), 10, 10);
            QVERIFY(Database().Weight().Write(-1, MakeWeight(kDay, QTime(8, 0), 70)));
        }
        m_messages->answer = false;
        QObject user;
        PressKeysInDialogs(user);
        CDietFrame frame(*m_doc);
        Show(frame);
        for (const int view : {kSwitchToDiet, kSwitchToWeight, kSwitchToExercises, kSwitchToFoods,
                               kSwitchToMenus, kSwitchToRecipes, kSwitchToExlib}) {
            frame.RunCommand(view);
            PressKeysIn(*frame.ActiveView());
            QCOMPARE(frame.ActiveCommand(), view);
        }
        QCOMPARE(m_messages->asked.isEmpty(), !hasRows);
    }

    void viewsAreSwitchedByCommand() {
        CDietFrame frame(*m_doc);
        QCOMPARE(frame.ActiveCommand(), 65008);
        const QPointer<CMainView> diet = frame.ActiveView();
        QVERIFY(frame.ShowView(65008));
        QCOMPARE(frame.ActiveView(), diet.data());
        QVERIFY(!frame.ShowView(65011) && !frame.ShowView(0));
        QCOMPARE(frame.ActiveView(), diet.data());
        frame.RunCommand(65022);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(diet.isNull());
        QCOMPARE(frame.ActiveCommand(), 65022);
        // The catalogue is no tab of the diary: the next start shows the diary.
        QCOMPARE(m_doc->Settings().lastTabCommand, 65008);
    }

    void switchButtonsStayWhereTheyAre() {
        CDietFrame frame(*m_doc);
        frame.show();
        auto* bar = frame.findChild<QToolBar*>(u"commands"_s);
        QList<QRect> expected;
        for (const int command : {65008, 65009, 65010, 65022, 65023, 65024, 65057}) {
            QVERIFY(frame.ShowView(command));
            QCoreApplication::processEvents();
            QList<QRect> places;
            for (const QAction* action : bar->actions()) {
                if (action->data().toInt() >= 65008) {
                    places.append(bar->widgetForAction(const_cast<QAction*>(action))->geometry());
                }
            }
            QCOMPARE(places.size(), 7);
            expected = expected.isEmpty() ? places : expected;
            QCOMPARE(places, expected);
        }
    }

    void onlyADialogConfirmsDefaults() {
        CProfileRecord record;
        QCOMPARE(Database().Profiles().LoadRecord(record), EProfileRecord::Loaded);
        PropertyList properties = record.GetProperties();
        properties[1] = qint32{2};  // another version
        CDatabaseHandle raw = Database().GetStore().OpenDatabase(u"Ann"_s, 3, 4097, true);
        const ObjectId id = Database().GetStore().SeekToPosition(raw, 0);
        QVERIFY(Database().GetStore().WriteRecord(raw, id, properties));
        QVERIFY(m_doc->SetActiveProfile(u"Ann"_s));
        QCOMPARE(m_messages->TakeShown().size(), 1);

        CDietFrame frame(*m_doc);
        frame.RunCommand(kSwitchToWeight);
        for (QAction* action : frame.findChildren<QAction*>()) {
            if (action->text() == u"Show goal line"_s) {
                action->trigger();
            }
        }
        QVERIFY(!m_doc->Settings().weightTab.showGoalLine);
        OnDialog<CPreferencesDialog>([](CPreferencesDialog& dialog) { dialog.reject(); });
        frame.RunCommand(kCommandPreferences);
        frame.close();
        QCOMPARE(Database().Profiles().LoadRecord(record), EProfileRecord::Unreadable);
        OnDialog<CPreferencesDialog>([](CPreferencesDialog& dialog) { dialog.accept(); });
        frame.RunCommand(kCommandPreferences);
        QCOMPARE(Database().Profiles().LoadRecord(record), EProfileRecord::Loaded);
    }

    void theWindowComesBackWhereItWas() {
        const QRect place(30, 40, 500, 400);
        CDietFrame frame(*m_doc);
        frame.setGeometry(place);
        frame.show();
        frame.close();
        const CRegistrySettings stored = CRegistrySettings::Read();
        QCOMPARE(QRect(stored.positionX, stored.positionY, stored.sizeX, stored.sizeY), place);
        QCOMPARE(CDietFrame(*m_doc).geometry(), place);
    }

    void aPlaceOutsideTheScreensIsIgnored() {
        CRegistrySettings& registry = m_doc->Registry();
        // At least 40 pixels are to be seen.
        registry = {-460, 10, 500, 400, registry.userProfileName};
        QCOMPARE(CDietFrame(*m_doc).x(), -460);
        for (const int x : {20000, -461}) {
            registry = {x, 10, 500, 400, registry.userProfileName};
            const CDietFrame frame(*m_doc);
            QVERIFY(frame.x() != x);
            QCOMPARE(frame.size(), QSize(1000, 700).boundedTo(frame.screen()->availableSize()));
        }
    }

    void aSizeBeyondTheScreenIsBroughtBackToIt() {
        CRegistrySettings& registry = m_doc->Registry();
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        constexpr int kMost = std::numeric_limits<int>::max();
        const std::pair<std::array<int, 4>, QRect> rows[] = {
            {{30, 40, kMost, 400}, {screen.x(), 40, screen.width(), 400}},
            {{30, 40, 500, 100000}, {30, screen.y(), 500, screen.height()}},
            {{-kMost, kMost, kMost, kMost}, screen},
        };
        for (const auto& [stored, shown] : rows) {
            registry = {stored[0], stored[1], stored[2], stored[3], u"Ann"_s};
            QCOMPARE(CDietFrame(*m_doc).geometry(), shown);
        }
        // Neither a place nor a size of any window.
        for (const auto& [x, width] : {std::pair(kMost, 500), {30, -kMost}, {30, 0}}) {
            registry = {x, 40, width, 400, u"Ann"_s};
            QCOMPARE(CDietFrame(*m_doc).size(), QSize(1000, 700).boundedTo(screen.size()));
        }
    }

    void aTabWithoutViewBecomesTheDiary() {
        m_doc->Settings().lastTabCommand = kMonthTabCommand;
        CDietFrame frame(*m_doc);
        QCOMPARE(frame.ActiveCommand(), 65008);
        QCOMPARE(frame.windowTitle(), u"Velmora:Ann"_s);
    }
};

QTEST_MAIN(TestDietFrame)
#include "TestDietFrame.moc"
