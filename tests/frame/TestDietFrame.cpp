#include "FrameFixture.h"

#include <QAbstractItemModelTester>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QTabWidget>
#include <QToolBar>
#include <QTreeView>
#include <limits>

#include "app/UndoRules.h"
#include "exercise/ExerciseRules.h"
#include "profile/PreferencesDialog.h"

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

class TestDietFrame : public CFrameTest {
    Q_OBJECT

  private slots:
    void init() { MakeDiary(); }

    void theMenuNamesTheStepToUndo() {
        CShownFrame frame(*m_doc);
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
        QCOMPARE(texts(), (QStringList{u"Undo"_s, u"Redo"_s}));
        // "addition of " and 20 units more are shown.
        const QString rice = u"\U0001F35A"_s;  // two units
        const std::pair<QString, QString> rows[] = {
            {QString(20, u'a'), QString(20, u'a')},
            {QString(18, u'a') + rice + u'b', QString(18, u'a') + rice + u'\u2026'},
            {QString(19, u'a') + rice, QString(19, u'a') + u'\u2026'},
            {u"Fish & chips with a sauce"_s, u"Fish && chips with a \u2026"_s},
        };
        for (const auto& [name, shown] : rows) {
            CExerciseEntry entry;
            entry.SetMoment(FirstMomentOf(kDay));
            entry.SetName(name);
            QVERIFY(AddExercise(Database(), entry));
            QCOMPARE(texts(), (QStringList{u"Undo addition of "_s + shown, u"Redo"_s}));
        }
        QVERIFY(RevertNext(Database(), EUndo::Undo, Database().Profiles().GetId()));
        QCOMPARE(texts().last(), u"Redo addition of Fish && chips with a \u2026"_s);
        QVERIFY(frame.ShowView(kSwitchToFoods));
        QVERIFY(texts().first().startsWith(u"Undo"_s) && texts().last() == u"Redo"_s);
    }

    void anyKeyMayBePressedInAnyList() {
        for (const bool hasRows : {false, true}) {
            if (hasRows) {
                FillEveryView();
            }
            m_messages->answer = false;
            QObject user;
            PressKeysInDialogs(user);
            CDietFrame frame(*m_doc);
            frame.show();
            for (const int view : kViews) {
                frame.RunCommand(view);
                frame.activateWindow();             // after a dialog
                QCoreApplication::processEvents();  // lays the view out
                PressKeysIn(*frame.ActiveView());
                QCOMPARE(frame.ActiveCommand(), view);
            }
            // In each view, and of the parts of the menu and of the recipe.
            QCOMPARE(m_messages->asked.size(), hasRows ? std::ssize(kViews) + 2 : 0);
        }
    }

    void viewsAreSwitchedByCommand() {
        m_doc->Settings().lastTabCommand = kMonthTabCommand;  // has no view
        CDietFrame frame(*m_doc);
        QCOMPARE(frame.windowTitle(), u"Velmora:Ann"_s);
        const QPointer<CMainView> diet = frame.ActiveView();
        for (const auto& [command, isView] : {std::pair(65008, true), {65011, false}, {0, false}}) {
            QCOMPARE(frame.ShowView(command), isView);
            QCOMPARE(frame.ActiveView(), diet.data());
            QCOMPARE(frame.ActiveCommand(), 65008);
        }
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
        for (const int command : kViews) {
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
        Trigger(frame, u"Show goal line"_s);
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

    void aStoredPlaceIsBroughtToTheScreen() {
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        constexpr int kMost = std::numeric_limits<int>::max();
        const std::pair<std::array<int, 4>, QRect> rows[] = {
            {{-460, 10, 500, 400}, {-460, 10, 500, 400}},  // 40 pixels are seen
            {{30, 40, kMost, 400}, {screen.x(), 40, screen.width(), 400}},
            {{30, 40, 500, 100000}, {30, screen.y(), 500, screen.height()}},
            {{-kMost, kMost, kMost, kMost}, screen},
        };
        CRegistrySettings& registry = m_doc->Registry();
        for (const auto& [stored, shown] : rows) {
            registry = {stored[0], stored[1], stored[2], stored[3], u"Ann"_s};
            const CDietFrame frame(*m_doc);
            QCOMPARE(frame.geometry(), shown);
            QCOMPARE(frame.isMaximized(), shown.height() == screen.height());
        }
        // No place of any window, or no size.
        for (const auto& [x, width] :
             {std::pair(-461, 500), {20000, 500}, {kMost, 500}, {30, -kMost}, {30, 0}}) {
            registry = {x, 40, width, 400, u"Ann"_s};
            const CDietFrame frame(*m_doc);
            QVERIFY(frame.x() != x || width <= 0);
            QCOMPARE(frame.size(), QSize(1000, 700).boundedTo(screen.size()));
        }
    }
};

QTEST_MAIN(TestDietFrame)
#include "TestDietFrame.moc"
