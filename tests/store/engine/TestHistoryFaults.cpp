// The history at its limits, after changes by others, and damaged.
#include "store/engine/HistoryFixture.h"
#include "support/DataRows.h"

#include <QtEndian>

using namespace Qt::StringLiterals;

class TestHistoryFaults : public CHistoryTest {
    Q_OBJECT

  private slots:
    void init() { MakeDatabases(); }
    void cleanup() { Drop(); }

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
        Step(u"many"_s, [&] { Fill(12); });
        Step(u"few"_s, [&] { Fill(5); });
        QVERIFY(!m_history->IsOneWay(*m_history->NextUndo(0)));
        QVERIFY(Undo(0) && Undo(0));
        // Room is made by dropping what would be redone last.
        QCOMPARE(m_history->NextRedo(0)->name, u"many"_s);
        QCOMPARE(m_history->ListSteps().size(), std::size_t(1 + 3));
        QVERIFY(Redo(0) && !m_history->NextRedo(0));
    }

    void aStepThatIsTooLargeEmptiesTheHistory() {
        Step(u"fill"_s, [&] { Fill(40); });
        m_history->SetLimits({.steps = 3, .bytes = 2000});
        Step(u"small"_s, [&] { Delete(0, 0); });
        QVERIFY(!m_history->TakeNotices().hasOutgrown);
        // Nor has a unit that is given up.
        QCOMPARE(m_engine->BeginGroup(), kOk);
        DeleteFirst(18);
        QCOMPARE(m_engine->UndoGroup(), kOk);
        QCOMPARE(m_engine->EndGroup(), int(kErrorOperationAborted));
        Step(u"small"_s, [&] { Delete(0, 0); });
        QVERIFY(!m_history->TakeNotices().hasOutgrown);
        for (const bool isAnnounced : {false, true}) {
            Step(u"meal"_s, [&] { Add(2, 1); });
            m_history->BeginStep(u"purge"_s);
            if (isAnnounced) {
                m_history->SkipStep();
            }
            DeleteFirst(18);
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
        Step(u"import"_s, [&] { Fill(40); });
        Step(u"last"_s, [&] { Delete(0, 4); });
        QVERIFY(Undo(0));
        const CHistoryStep import = *m_history->NextUndo(0);
        QCOMPARE(import.name, u"import"_s);
        QVERIFY(m_history->IsOneWay(import));
        // One row; to be redone, forty rows and records. Two bytes for the count, two tags, the
        // key, the text's length and its 40 units; of eight records the key is 0.
        QCOMPARE(import.changes, 1);
        QCOMPARE(import.bytes, HistoryRoom(1, 0));
        QCOMPARE(import.bytesReverted, HistoryRoom(40, 40 * (4 + 4 + 4 + 80) - 8 * 4));
        QVERIFY(Undo(0));
        QCOMPARE(Contents(0), before);
        QCOMPARE(Stacks(), (CStacks{{u"first"_s}, {}}));
    }

    // What is dropped leaves the file when it is much, such as 16 steps.
    void droppedStepsAreRemovedFromTheFileAtIntervals() {
        constexpr auto kSteps = "SELECT count(*) FROM history_steps_1";
        constexpr qint64 kRecord = HistoryRoom(1, 4 + 4 + 4 + 80);
        const auto mount = [this] {
            Mount(true);
            m_history->SetLimits({.steps = 1, .bytes = 500 * kRecord});
        };
        for (int number = 1; number <= 17; ++number) {
            mount();
            Step(QString::number(number), [&] { Add(0, number); });
            QCOMPARE(Query(kSteps), number < 17 ? number : 1);
        }
        // A part of them: what is left goes on being dropped.
        mount();
        Step(u"delete"_s, [this] { DeleteFirst(5); });
        CStorageState& state = m_engine->State();
        for (const qint64 most : {0, 2, 2, 1}) {
            CHistorySteps steps(state);
            QCOMPARE(steps.Load(), kOk);
            const auto dropAll = [&] { return steps.DropIf([](const auto&) { return true; }); };
            QCOMPARE(state.Write(dropAll), kOk);
            QCOMPARE(state.Write([&] { return steps.Tidy(most); }), kOk);
        }
        QCOMPARE(Query("SELECT count(*) FROM history_changes_1"), 1);
        QCOMPARE(Query(kSteps), 1);
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
        Step(u"fill"_s, [&] { Fill(20); });
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
            const QString sql = u"INSERT INTO records SELECT %1, body FROM records LIMIT 1"_s;
            ChangeFile(sql.arg(deleted));
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

    // A program without a history may delete a profile and use its identifier for another one.
    void stepsOfAFormerProfileAreIgnored() {
        Step(u"meal"_s, [&] { Add(2, 1); });
        ChangeFile(u"UPDATE databases SET name='Bob' WHERE name='Diet'"_s);
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
        Step(u"fill"_s, [&] { Fill(9); });
        Step(u"delete"_s, [&] {
            Delete(0, 2);
            Delete(0, 2);
            Delete(0, 5);
        });
        const bool isPage = !sql.contains(' ');
        if (isPage) {
            m_engine.reset();
            DamagePage(m_path, RootOf(m_path, QString::fromLatin1(sql)));
        } else {
            ChangeFile(QString::fromLatin1(sql));
        }
        Mount(true);
        auto contents = Contents(0);
        if (isFoundByUndo) {
            EPlatformError error = kErrorSuccess;
            QCOMPARE(m_history->Revert(*m_history->NextUndo(0), error), EReverted::Damaged);
            QCOMPARE(Contents(0), contents);
        } else {
            Step(u"first"_s, [&] {
                Add(0, 8);
                Add(0, 8);
            });
            const std::size_t stored = contents[0].size() + 2;
            contents = Contents(0);
            QCOMPARE(contents[0].size(), stored);
        }
        QVERIFY(m_history->TakeNotices().isDamaged);
        Step(u"next"_s, [&] { Add(0, 4); });
        QVERIFY(!m_history->TakeNotices().isDamaged);
        Mount(true);
        QCOMPARE(Stacks().redo, QStringList());
        QCOMPARE(Stacks().undo,
                 isFoundByUndo ? QStringList{u"next"_s} : (QStringList{u"next"_s, u"first"_s}));
        QVERIFY(Undo(0));
        QCOMPARE(Contents(0), contents);
        // Clearing removes the damaged tables, too, unless their pages may not be theirs.
        QCOMPARE(m_history->Clear(), kOk);
        QCOMPARE(m_history->TakeNotices().isPartLeft, isPage);
        QCOMPARE(Query(kTables), isPage ? 4 : 2);
    }

    void nothingIsDoneWhenDamageTookWhatTheStepDid() {
        m_history->BeginStep(u"step"_s);
        Add(0, 1);
        for (const bool isDamaged : {false, true}) {
            QCOMPARE(m_engine->BeginGroup(), kOk);
            Add(0, 2);
            QCOMPARE(m_engine->UndoGroup(), kOk);
            QCOMPARE(m_engine->EndGroup(), int(kErrorOperationAborted));
            QCOMPARE(m_history->TakeNotices().isDamaged, isDamaged);
            constexpr auto kDamage = "UPDATE history_steps_1 SET changes=-1";
            QCOMPARE(m_engine->State().file.Execute(kDamage), kOk);
        }
        QCOMPARE(m_history->EndStep(), QString());
    }

    // By another program, or by damage.
    void aRecordThatIsGoneIsDeletedFromItsPlace() {
        Step(u"fill"_s, [&] { Fill(3); });
        const ObjectId record = Contents(0)[0][1].first;
        ChangeFile(u"DELETE FROM records WHERE id=%1"_s.arg(record));
        Mount(true);
        Step(u"delete"_s, [&] { Delete(0, 1); });
        QCOMPARE(CountOf(*m_engine, m_databases[0]), 2);
    }

    void whatWasDeletedIsGoneFromTheFileAfterClearing() {
        const QString text = u"something private"_s;
        const QByteArray bytes(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
        Step(u"fill"_s, [&] {
            for (int i = 0; i < 300; ++i) {
                QVERIFY(Added(*m_engine, m_databases[0], {i % 3, text + kTexts}) != 0);
            }
        });
        Step(u"purge"_s, [&] { DeleteFirst(300); });
        QVERIFY(Load(m_path).contains(bytes));
        QCOMPARE(m_history->Clear(Scope(2)), kOk);
        QVERIFY(Load(m_path).contains(bytes));
        QCOMPARE(m_history->Clear(0), kOk);
        QVERIFY(!Load(m_path).contains(bytes));
    }

    // Whatever page of it is damaged: what succeeds without a history succeeds with one, undoing
    // does all or nothing, and the damage is reported; that of other pages is not.
    void damageInTheHistoryFailsNoChange() {
        Step(u"fill"_s, [&] { Fill(400); });
        Step(u"delete"_s, [&] { Change(300); });
        Step(u"more"_s, [&] { Change(30); });
        const auto filled = Contents(0);
        m_engine.reset();
        std::vector<qint64> pages = PagesOf(RootOf(m_path, u"history_changes_1"_s));
        QVERIFY(pages.size() > 4);
        pages.push_back(RootOf(m_path, u"history_steps_1"_s));
        const QByteArray volume = Load(m_path);
        const qint64 freePages = qFromBigEndian<quint32>(volume.constData() + kFreePagesAt);
        for (qint64 page = 2; page <= volume.size() / kVolumePage; ++page) {
            if (page == freePages) {
                continue;  // fails whatever needs a page
            }
            const bool isOfHistory = std::ranges::count(pages, page) > 0;
            const auto damaged = [&](bool hasHistory) {
                m_engine.reset();
                Save(m_path, volume);
                DamagePage(m_path, page);
                Mount(hasHistory);
            };
            damaged(false);
            const bool isDone = Change(3);
            const auto contents = Contents(0);
            QVERIFY(isDone || !isOfHistory);
            damaged(true);
            QCOMPARE(Change(3), isDone);
            QVERIFY(!isDone || Contents(0) == contents);
            while (isDone && Undo(0)) {
            }
            QCOMPARE(m_history->TakeNotices().isDamaged, isOfHistory);
            damaged(true);
            EPlatformError error = kErrorSuccess;
            const auto step = m_history->NextUndo(0);
            const EReverted reverted = step ? m_history->Revert(*step, error) : EReverted::Damaged;
            QVERIFY(!isOfHistory || reverted != EReverted::Failed);
            QVERIFY(!isOfHistory || reverted == EReverted::Done || Contents(0) == filled);
            damaged(true);
            QVERIFY(!isOfHistory || m_history->Clear() == kErrorSuccess);
            QVERIFY(!isOfHistory || (Stacks() == CStacks() && Contents(0) == filled));
            QVERIFY(!isOfHistory || m_history->TakeNotices().isPartLeft);
        }
    }

  private:
    /// In the file's header: the page that lists free pages.
    static constexpr int kFreePagesAt = 32;
    static constexpr char kTables[] =
        "SELECT count(*) FROM sqlite_schema WHERE name LIKE 'history%'";

    // The engine is gone after each of them.
    void ChangeFile(const QString& sql) {
        m_engine.reset();
        ChangeVolume(m_path, sql);
    }
    qint64 Query(const char* sql) {
        m_engine.reset();
        return QueryVolume(m_path, sql);
    }
    /// A table's pages but for those of long rows.
    std::vector<qint64> PagesOf(qint64 root) {
        constexpr char kInnerPage = 5;
        constexpr int kLastChildAt = 8;
        constexpr int kCellCountAt = 3;
        constexpr int kCellPointersAt = 12;
        const QByteArray bytes = Load(m_path).mid((root - 1) * kVolumePage, kVolumePage);
        const char* page = bytes.constData();
        std::vector<qint64> pages = {root};
        if (page[0] == kInnerPage) {
            pages.push_back(qFromBigEndian<quint32>(page + kLastChildAt));
            for (int i = 0; i < qFromBigEndian<quint16>(page + kCellCountAt); ++i) {
                const int cell = qFromBigEndian<quint16>(page + kCellPointersAt + 2 * i);
                pages.push_back(qFromBigEndian<quint32>(page + cell));
            }
        }
        return pages;
    }
};

QTEST_GUILESS_MAIN(TestHistoryFaults)
#include "TestHistoryFaults.moc"
