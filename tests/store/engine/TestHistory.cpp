// Steps taken back and done again, compared with what was stored before and after them.
#include "store/engine/EngineSteps.h"
#include "store/engine/History.h"
#include "store/engine/StorageState.h"
#include "support/DataRows.h"
#include "support/Files.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <map>

using namespace Qt::StringLiterals;

namespace {
constexpr int kExcept = 999;
const QString kTexts = u"ab"_s.repeated(20);

/// Every record of a database in order, with its identifier.
using CContents = std::vector<std::pair<ObjectId, PropertyList>>;

/// Names of the steps that can be undone and redone, in the order in which that happens.
struct CStacks {
    QStringList undo;
    QStringList redo;
    bool operator==(const CStacks&) const = default;
};
}  // namespace

class TestHistory : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"volume.db"_s);
        Mount(true);
        for (const auto& name : {u"Foods"_s, u"Menus"_s, u"Diet"_s}) {
            m_databases.push_back(Created(*m_engine, name));
        }
        WatchAll();
    }

    void cleanup() {
        m_engine.reset();
        m_history.reset();
        m_databases.clear();
    }

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

    void anotherStepDropsWhatCouldBeRedone() {
        Step(u"first"_s, [&] { Add(0, 1); });
        Step(u"meal"_s, [&] { Add(2, 1); });
        Step(u"second"_s, [&] { Add(0, 2); });
        const ObjectId second = Contents(0)[0].back().first;
        QVERIFY(Undo(0) && Undo(0) && Undo(Scope(2)));
        QCOMPARE(Stacks(), (CStacks{{}, {u"first"_s, u"meal"_s, u"second"_s}}));
        QVERIFY(Redo(0));
        QCOMPARE(Contents(0)[0].size(), 1);
        Step(u"third"_s, [&] { Add(0, 3); });
        QCOMPARE(Stacks(), (CStacks{{u"third"_s, u"first"_s}, {u"meal"_s}}));
        QVERIFY(Contents(0)[0].back().first > second);
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

    void whatWasChangedSinceIsNotTouched_data() {
        AddRows<int>({
            {"edited", 0},
            {"deleted", 1},
            {"a deleted one's identifier used again", 2},
            {"the run of added records damaged", 3},
        });
    }
    void whatWasChangedSinceIsNotTouched() {
        const int change = std::get<0>(DataRow<int>());
        Step(u"fill"_s, [&] {
            for (int i = 0; i < 20; ++i) {
                Add(0, i % 3);
            }
        });
        const ObjectId deleted = Contents(0)[0][3].first;
        const ObjectId last = Contents(0)[0].back().first;
        if (change < 3) {
            Step(u"some"_s, [&] {
                Delete(0, 3);
                (void)m_engine->ReplaceRecord(m_databases[0], last, Numbered(7));
                (void)m_engine->ReplaceRecord(m_databases[0], last, Numbered(8));
                Delete(0, 5);
                Add(0, 9);
            });
        }
        const CStacks stacks = Stacks();
        Mount(false);
        if (change == 1) {
            QCOMPARE(m_engine->DeleteRecord(m_databases[0], last), kOk);
        } else {
            QCOMPARE(m_engine->ReplaceRecord(m_databases[0], last, Numbered(change)), kOk);
        }
        if (change == 2) {
            m_engine.reset();
            CSqliteFile file;
            QCOMPARE(file.Open(m_path), kOk);
            const QString sql = u"INSERT INTO records SELECT %1, body FROM records LIMIT 1"_s;
            QCOMPARE(file.Execute(sql.arg(deleted).toLatin1().constData()), kOk);
            QCOMPARE(file.Close(), kOk);
            Mount(false);
            QCOMPARE(m_engine->ReplaceRecord(m_databases[0], last, Numbered(8)), kOk);
        }
        const auto contents = Contents(0);
        Mount(true);
        EPlatformError error = kErrorSuccess;
        QCOMPARE(m_history->Revert(*m_history->NextUndo(0), error), EReverted::Changed);
        QCOMPARE(Contents(0), contents);
        QCOMPARE(Stacks(), stacks);
    }

    void theOldestStepsGoFirst() {
        m_history->SetLimits({.steps = 3, .bytes = 2000});
        for (int i = 0; i < 5; ++i) {
            Step(QString::number(i), [&] { Add(0, i); });
            Step(u"meal"_s, [&] { Add(2, i); });
        }
        QCOMPARE(m_history->ListSteps().size(), std::size_t(6));
        QCOMPARE(m_history->NextUndo(0)->name, u"4"_s);
        QVERIFY(Undo(0) && Undo(0) && Undo(0) && !m_history->NextUndo(0));
        // Some 120 bytes a record.
        Step(u"many"_s, [&] {
            for (int i = 0; i < 12; ++i) {
                Add(0, i);
            }
        });
        Step(u"few"_s, [&] {
            for (int i = 0; i < 5; ++i) {
                Add(0, i);
            }
        });
        QVERIFY(!m_history->IsOneWay(*m_history->NextUndo(0)));
        QVERIFY(Undo(0) && Undo(0));
        // Room is made by dropping what would be redone last.
        QCOMPARE(m_history->NextRedo(0)->name, u"many"_s);
        QCOMPARE(m_history->ListSteps().size(), std::size_t(1 + 3));
        QVERIFY(Redo(0) && !m_history->NextRedo(0));
    }

    void aStepThatIsTooLargeEmptiesTheHistory() {
        Step(u"fill"_s, [&] {
            for (int i = 0; i < 40; ++i) {
                Add(0, i);
            }
        });
        m_history->SetLimits({.steps = 3, .bytes = 2000});
        const auto filled = Contents(0);
        Step(u"small"_s, [&] { Delete(0, 0); });
        QVERIFY(!m_history->TakeNotices().hasOutgrown);
        for (const bool isAnnounced : {false, true}) {
            Step(u"meal"_s, [&] { Add(2, 1); });
            m_history->BeginStep(u"purge"_s);
            if (isAnnounced) {
                m_history->SkipStep();
            }
            for (int i = 0; i < 18; ++i) {
                Delete(0, 0);
            }
            m_history->EndStep();
            QCOMPARE(m_history->TakeNotices().hasOutgrown, !isAnnounced);
            QVERIFY(!m_history->NextUndo(0));
            QCOMPARE(m_history->NextUndo()->name, u"meal"_s);
            Step(u"next"_s, [&] { Add(0, 1); });
            QVERIFY(m_history->NextUndo(0));
        }
    }

    // Added records cost no room until they are taken back.
    void whatIsTooLargeToBeRedoneIsStillUndone() {
        m_history->SetLimits({.steps = 3, .bytes = 2000});
        Step(u"first"_s, [&] { Add(0, 1); });
        const auto before = Contents(0);
        Step(u"import"_s, [&] {
            QCOMPARE(m_engine->BeginGroup(), kOk);
            for (int i = 0; i < 40; ++i) {
                Add(0, i);
            }
            QCOMPARE(m_engine->EndGroup(), kOk);
        });
        Step(u"last"_s, [&] { Delete(0, 4); });
        QVERIFY(Undo(0));
        const CHistoryStep import = *m_history->NextUndo(0);
        QCOMPARE(import.name, u"import"_s);
        QVERIFY(m_history->IsOneWay(import));
        QVERIFY(Undo(0));
        QCOMPARE(Contents(0), before);
        QCOMPARE(Stacks(), (CStacks{{u"first"_s}, {}}));
    }

    void stepsGoWithTheirProfile() {
        Step(u"meal"_s, [&] { Add(2, 1); });
        Step(u"food"_s, [&] { Add(0, 1); });
        Mount(true);
        QCOMPARE(m_engine->DeleteDatabase(m_databases[2]), kOk);
        QCOMPARE(Stacks().undo, QStringList{u"food"_s});
        Mount(true);
        QCOMPARE(Stacks().undo, QStringList{u"food"_s});
        QCOMPARE(m_history->Clear(), kOk);
        Mount(true);
        QCOMPARE(Stacks().undo, QStringList());
    }

    // A program without a history may delete a profile and use its identifier for another one.
    void stepsOfAFormerProfileAreIgnored() {
        Step(u"meal"_s, [&] { Add(2, 1); });
        m_engine.reset();
        CSqliteFile file;
        QCOMPARE(file.Open(m_path), kOk);
        QCOMPARE(file.Execute("UPDATE databases SET name='Bob' WHERE name='Diet'"), kOk);
        QCOMPARE(file.Close(), kOk);
        Mount(true);
        QVERIFY(!m_history->NextUndo() && !m_history->NextUndo(Scope(2)));
        Step(u"food"_s, [&] { Add(0, 1); });
        QCOMPARE(m_history->ListSteps().size(), std::size_t(1));
    }

    void aDamagedHistoryStartsAgain_data() {
        AddRows<QByteArray, bool>({
            {"a changed body", "UPDATE history_changes_1 SET body=body||'x'", true},
            {"a lost change",
             "DELETE FROM history_changes_1 WHERE id=(SELECT max(id)-1 FROM "
             "history_changes_1)",
             true},
            {"a changed place", "UPDATE history_changes_1 SET ordinal=ordinal+1", true},
            {"a bad step", "UPDATE history_steps_1 SET changes=-1", false},
            {"no changes", "DROP TABLE history_changes_1", false},
            {"other columns", "ALTER TABLE history_steps_1 RENAME COLUMN bytes TO size", false},
            {"a page of changes", "history_changes_1", false},
            {"a page of steps", "history_steps_1", false},
        });
    }
    void aDamagedHistoryStartsAgain() {
        const auto& [sql, isFoundByUndo] = DataRow<QByteArray, bool>();
        Step(u"fill"_s, [&] {
            for (int i = 0; i < 9; ++i) {
                Add(0, i % 3);
            }
        });
        Step(u"delete"_s, [&] {
            Delete(0, 2);
            Delete(0, 2);
            Delete(0, 5);
        });
        m_engine.reset();
        CSqliteFile file;
        QCOMPARE(file.Open(m_path), kOk);
        qint64 page = 0;
        if (sql.contains(' ')) {
            QCOMPARE(file.Execute(sql.constData()), kOk);
        } else {
            CStatement find;
            QCOMPARE(find.Prepare(file, "SELECT rootpage FROM sqlite_schema WHERE name=?"), kOk);
            find.Start({QString::fromLatin1(sql)});
            page = find.Next() ? find.GetInteger(0) : 0;
        }
        QCOMPARE(file.Close(), kOk);
        if (page > 0) {
            constexpr int kPageBytes = 8192;
            Save(m_path, Load(m_path).replace((page - 1) * kPageBytes, kPageBytes,
                                              QByteArray(kPageBytes, '\x55')));
        }
        Mount(true);
        auto contents = Contents(0);
        if (isFoundByUndo) {
            EPlatformError error = kErrorSuccess;
            QCOMPARE(m_history->Revert(*m_history->NextUndo(0), error), EReverted::Damaged);
        } else {
            Step(u"first"_s, [&] {
                Add(0, 8);
                Add(0, 8);
            });
            const std::size_t stored = contents[0].size() + 2;
            contents = Contents(0);
            QCOMPARE(contents[0].size(), stored);
        }
        QCOMPARE(Contents(0), contents);
        QVERIFY(m_history->TakeNotices().isDamaged);
        Step(u"next"_s, [&] { Add(0, 4); });
        QVERIFY(!m_history->TakeNotices().isDamaged);
        Mount(true);
        QCOMPARE(Stacks().redo, QStringList());
        QCOMPARE(Stacks().undo,
                 isFoundByUndo ? QStringList{u"next"_s} : (QStringList{u"next"_s, u"first"_s}));
        QVERIFY(Undo(0));
        QCOMPARE(Contents(0), contents);
    }

    // Whatever page is damaged: a change that succeeds without a history succeeds with one.
    void damageInTheHistoryFailsNoChange() {
        Step(u"fill"_s, [&] { Fill(400); });
        Step(u"delete"_s, [&] { Change(300); });
        Step(u"more"_s, [&] { Change(2); });
        QVERIFY(Undo(0));
        m_engine.reset();
        const QByteArray volume = Load(m_path);
        constexpr int kPageBytes = 8192;
        int harmless = 0;
        int noticed = 0;
        for (int at = kPageBytes; at < volume.size(); at += kPageBytes) {
            const QByteArray damaged =
                QByteArray(volume).replace(at, kPageBytes, QByteArray(kPageBytes, '\x55'));
            Save(m_path, damaged);
            Mount(false);
            if (!Change(3)) {
                continue;
            }
            ++harmless;
            const auto contents = Contents(0);
            m_engine.reset();
            Save(m_path, damaged);
            Mount(true);
            m_history->BeginStep(u"change"_s);
            QVERIFY2(Change(3), qPrintable(QString::number(at / kPageBytes)));
            m_history->EndStep();
            QCOMPARE(Contents(0), contents);
            while (Undo(0)) {
            }
            noticed += m_history->TakeNotices().isDamaged ? 1 : 0;
        }
        QVERIFY(harmless > 4 && noticed > 4);
    }

  private:
    void Fill(int count) {
        QCOMPARE(m_engine->BeginGroup(), kOk);
        for (int i = 0; i < count; ++i) {
            Add(0, i % 5);
        }
        QCOMPARE(m_engine->EndGroup(), kOk);
    }
    /// In one unit: deletes, then edits and adds a record.
    bool Change(int deletions) {
        (void)m_engine->BeginGroup();
        bool isDone = true;
        ObjectId record = 0;
        for (int i = 0; i < deletions; ++i) {
            isDone = isDone && m_engine->SeekToPosition(m_databases[0], 1, record) == kOk &&
                     m_engine->DeleteRecord(m_databases[0], record) == kOk;
        }
        isDone = isDone && m_engine->SeekToPosition(m_databases[0], 1, record) == kOk &&
                 m_engine->ReplaceRecord(m_databases[0], record, {3, kTexts}) == kOk &&
                 Added(*m_engine, m_databases[0], {4, kTexts}) != 0;
        return m_engine->EndGroup() == kOk && isDone;
    }

    void Mount(bool hasHistory) {
        m_engine.reset();
        m_history.reset();
        m_engine = std::make_unique<CStorageEngine>();
        QCOMPARE(m_engine->Mount(m_path), kOk);
        m_history = std::make_unique<CHistory>(m_engine->State());
        if (hasHistory) {
            m_engine->AddListener(m_history.get());
            WatchAll();
        }
    }
    /// The last database stands for a profile with its diary, the others for the catalogue.
    void WatchAll() {
        for (std::size_t i = 0; i < m_databases.size(); ++i) {
            m_history->Watch(m_databases[i], i < 2 ? 0 : Scope(2), kExcept);
        }
    }
    int Scope(int database) { return static_cast<int>(m_databases[database]); }

    void Step(const QString& name, const std::function<void()>& run) {
        m_history->BeginStep(name);
        run();
        m_history->EndStep();
    }
    void Add(int database, int key) {
        QVERIFY(Added(*m_engine, m_databases[database], {key, kTexts}) != 0);
    }
    void Delete(int database, int position) {
        ObjectId record = 0;
        QCOMPARE(m_engine->SeekToPosition(m_databases[database], position, record), kOk);
        QCOMPARE(m_engine->DeleteRecord(m_databases[database], record), kOk);
    }

    /// A step of some units of some changes each.
    void Play(int scope, QRandomGenerator& random) {
        m_history->BeginStep(u"step"_s);
        for (int unit = random.bounded(3); unit >= 0; --unit) {
            QCOMPARE(m_engine->BeginGroup(), kOk);
            const int most = random.bounded(12) == 0 ? 1200 : 12;  // enough for several blocks
            for (int i = random.bounded(1, most); i > 0; --i) {
                const ObjectId database = m_databases[scope == 0 ? random.bounded(2) : 2];
                const int count = CountOf(*m_engine, database);
                ObjectId record = 0;
                (void)m_engine->SeekToPosition(database, random.bounded(count + 1), record);
                const PropertyList values = {random.bounded(4), QString::number(random.generate())};
                if (record == 0 || random.bounded(3) == 0) {
                    QVERIFY(Added(*m_engine, database, values) != 0);
                } else if (random.bounded(2) == 0) {
                    QCOMPARE(m_engine->ReplaceRecord(database, record, values), kOk);
                } else {
                    QCOMPARE(m_engine->DeleteRecord(database, record), kOk);
                }
            }
            QCOMPARE(m_engine->EndGroup(), kOk);
        }
        m_history->EndStep();
    }

    bool Undo(int scope) { return Revert(m_history->NextUndo(scope)); }
    bool Redo(int scope) { return Revert(m_history->NextRedo(scope)); }
    bool Revert(const std::optional<CHistoryStep>& step) {
        EPlatformError error = kErrorSuccess;
        return step && m_history->Revert(*step, error) == EReverted::Done;
    }

    CStacks Stacks() {
        CStacks stacks;
        for (const CHistoryStep& step : m_history->ListSteps()) {
            if (step.isUndone) {
                stacks.redo.append(step.name);
            } else {
                stacks.undo.prepend(step.name);
            }
        }
        return stacks;
    }

    std::vector<CContents> Contents(int scope) {
        std::vector<CContents> all;
        for (const ObjectId database : scope == 0 ? std::vector{m_databases[0], m_databases[1]}
                                                  : std::vector{m_databases[2]}) {
            CContents& contents = all.emplace_back();
            for (int position = 0; position < CountOf(*m_engine, database); ++position) {
                auto& [record, properties] = contents.emplace_back();
                (void)m_engine->SeekToPosition(database, position, record);
                (void)m_engine->ReadRecord(record, properties);
            }
        }
        return all;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    std::vector<ObjectId> m_databases;
    std::unique_ptr<CHistory> m_history;
    std::unique_ptr<CStorageEngine> m_engine;
};

QTEST_GUILESS_MAIN(TestHistory)
#include "TestHistory.moc"
