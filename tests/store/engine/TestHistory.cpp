// Steps taken back and done again, compared with what was stored before and after them.
#include "store/engine/HistoryFixture.h"

using namespace Qt::StringLiterals;

class TestHistory : public CHistoryTest {
    Q_OBJECT

  private slots:
    void init() { MakeDatabases(); }
    void cleanup() { Drop(); }

    // Few keys, so that most records share theirs with others.
    void stepsAreUndoneToTheStartAndRedone() {
        QRandomGenerator random(10);
        std::map<int, std::vector<std::vector<CContents>>> states;
        states[0] = {Contents(0)};
        states[Scope(2)] = {Contents(Scope(2))};
        for (int step = 0; step < 120; ++step) {
            const int scope = random.bounded(2) == 0 ? 0 : Scope(2);
            Play(scope, random);
            states[scope].push_back(Contents(scope));
            // Sometimes a part of the steps is given up.
            for (int i = random.bounded(9) / 7; i > 0 && states[scope].size() > 2; --i) {
                QVERIFY(Undo(scope));
                states[scope].pop_back();
                QCOMPARE(Contents(scope), states[scope].back());
            }
            if (random.bounded(10) == 0) {
                Mount(true);
            }
        }
        for (auto& [scope, contents] : states) {
            Play(scope, random);
            contents.push_back(Contents(scope));
            QVERIFY(contents.size() > 20);
            for (auto state = contents.rbegin() + 1; state != contents.rend(); ++state) {
                QVERIFY(Undo(scope));
                QCOMPARE(Contents(scope), *state);
            }
            QVERIFY(!m_history->NextUndo(scope));
            Mount(true);
            for (auto state = contents.begin() + 1; state != contents.end(); ++state) {
                QVERIFY(Redo(scope));
                QCOMPARE(Contents(scope), *state);
            }
            QVERIFY(!m_history->NextRedo(scope));
        }
    }

    void aStepSpansUnitsAndNothingElse() {
        m_history->BeginStep(u"two"_s);
        m_history->BeginStep(u"inner"_s);
        Add(0, 1);
        m_history->EndStep();
        m_history->RenameStep(u"both"_s);
        Add(1, 2);
        m_history->EndStep();
        Add(0, 3);
        m_history->BeginStep(u"nothing"_s);
        m_history->EndStep();
        Add(0, kExcept);
        const ObjectId record = Contents(0)[0][0].first;
        QCOMPARE(m_engine->ReplaceRecord(m_databases[0], record, {1, kTexts}), kOk);
        QCOMPARE(Stacks(), (CStacks{{u"change"_s, u"both"_s}, {}}));
        QVERIFY(Undo(0) && Undo(0));
        QCOMPARE(Contents(0)[0].size(), 1);
        QCOMPARE(Contents(0)[1].size(), 0);
    }

    // It takes the unit's other changes along.
    void aStepThatEndsWithinAUnitKeepsItsName() {
        QCOMPARE(m_engine->BeginGroup(), kOk);
        Step(u"inner"_s, [&] { Add(0, 1); });
        Add(0, 2);
        QCOMPARE(m_engine->EndGroup(), kOk);
        Add(0, 3);
        QCOMPARE(Stacks().undo, (QStringList{u"change"_s, u"inner"_s}));
    }

    void aUnitThatBeganUnwatchedKeepsTheSteps() {
        Step(u"first"_s, [&] { Add(0, 1); });
        Mount(true);
        for (const ObjectId database : m_databases) {
            m_history->Unwatch(database);
        }
        QCOMPARE(m_engine->BeginGroup(), kOk);
        Add(0, 2);
        WatchAll();
        Add(0, 3);
        QCOMPARE(m_engine->EndGroup(), kOk);
        QCOMPARE(Stacks().undo, (QStringList{u"change"_s, u"first"_s}));
    }

    void aCancelledStepLeavesNothing() {
        Step(u"kept"_s, [&] { Add(0, 1); });
        for (const bool isInOneUnit : {false, true}) {
            m_history->BeginStep(u"cancelled"_s);
            QCOMPARE(isInOneUnit ? m_engine->BeginGroup() : kErrorSuccess, kOk);
            Add(0, 2);
            QCOMPARE(Stacks().undo.first(), isInOneUnit ? u"kept"_s : u"cancelled"_s);
            Delete(0, 1);
            QCOMPARE(isInOneUnit ? m_engine->EndGroup() : kErrorSuccess, kOk);
            m_history->CancelStep();
            m_history->EndStep();
            QCOMPARE(Stacks().undo, QStringList{u"kept"_s});
        }
    }

    void onlyTheNextStepIsRevertedAndOnlyOnItsOwn() {
        for (const int key : {1, 2, 3}) {
            Step(QString::number(key), [&] { Add(0, key); });
        }
        QVERIFY(Undo(0));
        const std::vector<CHistoryStep> steps = m_history->ListSteps();
        const auto isRefused = [&](int step) {
            EPlatformError error = kErrorSuccess;
            return m_history->Revert(steps[step], error) == EReverted::Failed &&
                   error == kErrorInvalidParameter;
        };
        QVERIFY(isRefused(0));
        Step(u"nested"_s, [&] { QVERIFY(isRefused(1) && isRefused(2)); });
        QCOMPARE(m_engine->BeginGroup(), kOk);
        QVERIFY(isRefused(1) && isRefused(2));
        QCOMPARE(m_engine->EndGroup(), kOk);
        m_history->Unwatch(m_databases[0]);
        m_history->Unwatch(m_databases[1]);
        QVERIFY(isRefused(1) && isRefused(2));
        WatchAll();
        QVERIFY(Undo(0) && isRefused(2) && Redo(0) && Redo(0));
    }

    void aFailedUnitIsNotRecorded() {
        m_history->BeginStep(u"step"_s);
        Add(0, 1);
        QCOMPARE(m_engine->BeginGroup(), kOk);
        Add(0, 2);
        Delete(0, 0);
        QCOMPARE(m_engine->UndoGroup(), kOk);
        QVERIFY(m_engine->EndGroup() != kErrorSuccess);
        Add(0, 3);
        m_history->EndStep();
        QVERIFY(!m_history->TakeNotices().isDamaged);
        QVERIFY(Undo(0));
        QCOMPARE(Contents(0)[0].size(), 0);
    }
};

QTEST_GUILESS_MAIN(TestHistory)
#include "TestHistory.moc"
