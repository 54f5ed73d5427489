// Real commands whose power is lost after every file system call, or of whose calls one fails: what
// was confirmed is there, what was not is whole or absent, and told.
#include <QDir>
#include <set>

#include "app/BackupRules.h"
#include "app/UndoRules.h"
#include "catalogue/exchange/CsvExchange.h"
#include "catalogue/items/CatalogueRules.h"
#include "diary/DietRules.h"
#include "diary/PurgeRules.h"
#include "report/ReportWriter.h"
#include "store/RecordedDisk.h"
#include "store/engine/PositionIndex.h"
#include "support/CatalogueTest.h"
#include "support/DataRows.h"
#include "support/Files.h"

using namespace Qt::StringLiterals;

namespace {
/// All records of all databases by name, the counts of use and the steps of the history.
using CContents = std::map<QString, std::vector<PropertyList>>;

const QDate kDay{2024, 1, 2};
/// Small records in a database of three blocks of the index, the last one with a single entry.
constexpr int kNumbers = 2 * kBlockCapacity + 1;

CContents ContentsOf(CDatabase& database) {
    CContents contents;
    CRecordStore& store = database.GetStore();
    for (const CHistoryStep& step : store.History().ListSteps()) {
        contents[u"steps"_s].push_back({step.name, qint16{step.isUndone}, step.scope});
    }
    std::vector<CDatabaseInfo> databases;
    (void)store.EnumerateDatabases(0, databases);
    for (const CDatabaseInfo& info : databases) {
        if (info.type == kProfileType) {
            std::vector<PropertyList>& uses = contents[u"uses"_s];
            for (const auto& [item, count] : database.Usage().CountsOf(info.id)) {
                uses.push_back({static_cast<qint64>(item), count.total});
            }
            std::ranges::sort(uses);
        }
        CDatabaseHandle handle =
            store.OpenDatabase(info.name, info.sortPropertyId, info.type, true);
        std::vector<PropertyList>& records = contents[info.name];
        store.SeekToPosition(handle, 0);
        PropertyList properties;
        while (static_cast<int>(records.size()) < store.CountRecords(handle) &&
               store.ReadCurrent(handle, properties)) {
            records.push_back(properties);
        }
    }
    return contents;
}
}  // namespace

class TestBadDisk : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void initTestCase() {
        MakeVolume();
        QVERIFY(QDir().mkpath(Path(u"recorded"_s)));
        const QByteArray values = QByteArray("1,").repeated(kNutrientCount) + "0,cup,1,\r\n";
        Save(Path(u"menus.csv"_s), "<Menus>\r\n7,Menu,Week,Lunch,," + values +
                                       "7,Food,Week,Lunch,Soup," + values +
                                       "7,Food,Week,Lunch,Milk," + values);
        RecordCommands(QFile::encodeName(Path(u"recorded"_s)));
    }

    void confirmedCommandsAreWholeAndOthersAreNot() {
        CDisk disk;
        std::size_t confirmed = 0;
        std::set<CFolder> seen;  // since the last confirmed command
        int states = 0;
        for (std::size_t played = 0; played <= m_calls.size(); ++played) {
            for (; confirmed < m_ends.size() && m_ends[confirmed] <= played; ++confirmed) {
                seen.clear();
            }
            for (int draw = 0; draw < 8; ++draw) {
                const auto left = draw < 2 ? ELeft(draw) : ELeft(2 + draw % 2);
                const CFolder folder = disk.Left(left);
                if (!seen.insert(folder).second) {
                    continue;
                }
                ++states;
                const CContents found = Reopened(folder);
                const bool isBefore = found == m_contents[confirmed == 0 ? 0 : confirmed - 1];
                const bool isAfter = confirmed < m_ends.size() && found == m_contents[confirmed];
                const QString place =
                    u"after %1 calls and %2 commands, kind %3: "_s.arg(played).arg(confirmed).arg(
                        static_cast<int>(left));
                QVERIFY2(isBefore || isAfter, qPrintable(place + m_messages->Said()));
            }
            if (played < m_calls.size()) {
                disk.Play(m_calls[played]);
            }
        }
        QVERIFY(states > 500);
    }

    void aFailedCallIsToldAndUndone_data() {
        QTest::addColumn<std::size_t>("number");
        for (std::size_t number = 1; number < m_commands.size(); ++number) {
            QTest::newRow(m_commands[number].name) << number;
        }
    }
    void aFailedCallIsToldAndUndone() {
        QFETCH(const std::size_t, number);
        bool isPast = false;
        for (int call = 1; !isPast; call += call < 50 ? 1 : call / 5) {
            Open(m_volumes[number]);
            failure = std::array{EIO, ENOSPC, EDQUOT}.at(call % 3);
            callsUntilFailure = call;
            const bool isDone = m_commands[number].run();
            isPast = std::exchange(callsUntilFailure, 0) > 0;
            CompareAll(number, isDone);
            if (QTest::currentTestFailed()) {
                qInfo("call %d", call);
                return;
            }
        }
    }

    void aReplacementThatFailsLeavesTheVolume_data() {
        AddRows<bool>({{"restore", true}, {"repair", false}});
    }
    void aReplacementThatFailsLeavesTheVolume() {
        const auto& [isRestore] = DataRow<bool>();
        m_doc.reset();
        const QDateTime now(kDay, QTime(7, 30));
        const QString kept = Path(u"v-kept-2024-01-02-073000.db"_s);
        QByteArray present = m_volumes[4];
        present[0] = isRestore ? present[0] : 'X';
        Save(Path(u"b.db"_s), m_volumes[2]);
        const CContents wanted = ContentsOfFile(isRestore ? m_volumes[2] : m_volumes[4]);
        int done = 0;
        bool isPast = false;
        for (int call = 1; !isPast; ++call) {
            Save(Path(u"v.db"_s), present);
            failure = call % 2 == 0 ? EIO : ENOSPC;
            callsUntilFailure = call;
            const bool isDone = isRestore ? RestoreBackup(Path(u"b.db"_s), Path(u"v.db"_s), now)
                                          : RepairData(Path(u"v.db"_s), now);
            isPast = std::exchange(callsUntilFailure, 0) > 0;
            done += isDone ? 1 : 0;
            const QByteArray found = Load(Path(u"v.db"_s));
            QVERIFY2(isDone ? ContentsOfFile(found) == wanted && Load(kept) == present
                            : found == present && !m_messages->shown.isEmpty(),
                     qPrintable(u"call %1: %2"_s.arg(call).arg(m_messages->Said())));
            m_messages->TakeShown();
            QFile::remove(kept);
        }
        // Not only the last time: after the last step nothing fails it any more.
        QVERIFY(done > 1);
        QVERIFY(QFile::remove(Path(u"v.db"_s)));
    }

    // After the last step the disk's error is another one.
    void aBackupIsCalledNoneWhenThereIsNone() {
        Open(m_volumes[4]);
        bool isPast = false;
        for (int call = 1; !isPast; ++call) {
            failure = EIO;
            callsUntilFailure = call;
            (void)SaveBackup(Database(), Path(u"c.db"_s));
            isPast = std::exchange(callsUntilFailure, 0) > 0;
            QCOMPARE(m_messages->Said().startsWith(u"No backup"_s),
                     !QFile::remove(Path(u"c.db"_s)));
        }
    }

  private:
    /// Changes what is stored, or writes the file "out".
    struct CCommand {
        const char* name;
        std::function<bool()> run;
    };

    /// For what leaves it to its caller.
    static bool Told(bool isDone) {
        if (!isDone) {
            ShowMessage(u"It failed."_s);
        }
        return isDone;
    }
    bool OpenProfile() { return Database().Profiles().Open(u"Ann"_s, false); }
    CCatalogueRules Foods() { return {Database(), kFoods}; }
    bool Import(ECatalogueKind kind, const QString& path) {
        return ImportCatalogueFile(Database(), kind, EDuplicatePolicy::Overwrite, path);
    }
    CCatalogueRules::Entries Listed(ECatalogueKind kind, qint32 category) {
        const CCategoryList list = Database().Catalogue().FillCategoryList(kind, category);
        return Told(!list.leftOut.IsAnything()) ? list.entries : CCatalogueRules::Entries();
    }
    ListedEntries<CDietEntry> Meals() {
        const CEntryRange<CDietEntry> meals =
            ReadEntries(Database().Diet(), {FirstMomentOf(kDay), LastMomentOf(kDay)});
        return Told(!meals.leftOut.IsAnything()) ? meals.entries : ListedEntries<CDietEntry>();
    }
    /// A history that cannot be read is not one without steps.
    bool Revert(EUndo direction) {
        const bool isDone = RevertNext(Database(), direction, kCatalogueScope);
        if (m_messages->shown == QStringList{NothingText(direction)}) {
            m_messages->TakeShown();
        }
        return isDone;
    }
    CDatabaseHandle Numbers() {
        return Database().GetStore().OpenDatabase(u"Numbers"_s, PropertyId(0, EPropertyType::Int32),
                                                  9, false);
    }
    bool WriteNumber(int position, qint32 key) {
        CDatabaseHandle numbers = Numbers();
        CRecordStore& store = Database().GetStore();
        const ObjectId record = position < 0 ? 0 : store.SeekToPosition(numbers, position);
        return Told((position < 0 || record != 0) && store.WriteRecord(numbers, record, {key}));
    }
    bool DropNumber(int position) {
        CDatabaseHandle numbers = Numbers();
        return Database().GetStore().DeleteRecord(numbers, position);
    }
    bool FillNumbers() {
        CRecordGroup group(Database().GetStore());
        for (int i = 0; i < kNumbers; ++i) {
            (void)WriteNumber(-1, 2 * i);
        }
        return Told(group.Commit());
    }
    bool EatAndBurn() {
        CDietEntry eaten;
        eaten.SetMoment(FirstMomentOf(kDay));
        eaten.SetName(u"Soup"_s);
        CWeightEntry weight;
        weight.SetMoment(FirstMomentOf(kDay));
        CExerciseEntry exercise;
        exercise.SetMoment(LastMomentOf(kDay));
        CRecordGroup group(Database().GetStore());
        const bool areWritten = OpenProfile() && Database().Diet().Write(-1, eaten) &&
                                Database().Diet().Write(-1, eaten) &&
                                Database().Weight().Write(-1, weight) &&
                                Database().Exercises().Write(-1, exercise);
        return Told(group.Commit() && areWritten);
    }
    void RecordCommands(const QByteArray& folder) {
        m_doc = std::make_unique<CVelmoraDoc>(Path(u"recorded/v.db"_s));
        recordedCalls = &m_calls;
        recordedFolder = folder.constData();
        for (const CCommand& command : m_commands) {
            m_volumes.push_back(Load(Path(u"recorded/v.db"_s)));
            QVERIFY2(command.run(), qPrintable(m_messages->Said()));
            m_ends.push_back(m_calls.size());
            m_contents.push_back(ContentsOf(Database()));
            m_results.push_back(Load(Path(u"out"_s)));
            QFile::remove(Path(u"out"_s));
            QVERIFY(m_contents.size() == 1 || !m_results.back().isEmpty() ||
                    m_contents.back() != m_contents[m_contents.size() - 2]);
        }
        m_doc.reset();
        recordedFolder = nullptr;
        m_messages->TakeShown();
    }

    void Open(const QByteArray& volume) {
        m_doc.reset();
        Save(Path(u"v.db"_s), volume);
        Reopen();
        m_messages->TakeShown();
        QFile::remove(Path(u"out"_s));
    }

    /// Without what a repair does not take over.
    CContents ContentsOfFile(const QByteArray& volume) {
        CContents contents = Reopened({{"v.db", volume}});
        contents.erase(u"steps"_s);
        contents.erase(u"uses"_s);
        return contents;
    }
    CContents Reopened(const CFolder& folder) {
        QDir place(Path(u"left"_s));
        place.removeRecursively();
        place.mkpath(u"."_s);
        for (const auto& [name, bytes] : folder) {
            Save(place.filePath(QFile::decodeName(name)), bytes);
        }
        CDatabase database(place.filePath(u"v.db"_s));
        return database.OpenCatalogue() ? ContentsOf(database) : CContents();
    }

    /// What is held in memory, what the file holds, and what was said.
    void CompareAll(std::size_t number, bool isDone) {
        const QString said = m_messages->Said();
        QVERIFY(isDone || !said.isEmpty());
        QVERIFY(!isDone || Load(Path(u"out"_s)) == m_results[number]);
        const bool isLost = Database().GetStore().IsVolumeLost();
        // A full disk is no damage, nor is an error of the disk a lack of room.
        const EPlatformError error = Database().GetStore().GetLastError();
        QVERIFY(error != (failure == EIO ? kErrorDiskFull : kErrorCorrupt));
        CContents held = ContentsOf(Database());
        // After EIO a page counts as damaged.
        const bool startsAgain = said.contains(u"The history was damaged"_s) ||
                                 Database().GetStore().History().TakeNotices().isDamaged;
        m_doc.reset();
        CContents found = Reopened({{"v.db", Load(Path(u"v.db"_s))}});
        CContents before = m_contents[number - 1];
        CContents after = m_contents[number];
        if (startsAgain) {
            for (CContents* contents : {&held, &found, &before, &after}) {
                contents->erase(u"steps"_s);
            }
        }
        QVERIFY(isLost || held == found);
        QVERIFY(found == after || (!isDone && found == before));
    }

    const std::vector<CCommand> m_commands = {
        {"open", [this] { return m_doc->OpenCatalogue(); }},
        {"category", [this] { return Foods().AddCategory(u"Soups"_s) == 1; }},
        {"food", [this] { return Database().Foods().Write(-1, MakeFood(1, u"Soup"_s, u"a"_s)); }},
        {"same", [this] { return Database().Foods().Write(-1, MakeFood(1, u"Soup"_s, u"b"_s)); }},
        {"import", [this] { return Import(kFoods, QStringLiteral(VELMORA_STARTER_FOODS)); }},
        {"export", [this] { return ExportCatalogueFile(Database(), kFoods, {}, Path(u"out"_s)); }},
        {"profile", [this] { return CreateProfile(u"Ann"_s); }},
        {"entries", [this] { return EatAndBurn(); }},
        {"report",
         [this] {
             return m_doc->LoadProfile(u"Ann"_s) &&
                    WriteReport(*m_doc, {kDay, kDay}, Path(u"out"_s));
         }},
        {"menu", [this] { return Import(kMenus, Path(u"menus.csv"_s)); }},
        {"copy",
         [this] {
             const auto menus = Listed(kMenus, 1);
             return menus.size() == 1 && CCatalogueRules(Database(), kMenus).Duplicate(menus) >= 0;
         }},
        {"move",
         [this] {
             const auto foods = Listed(kFoods, 1);
             return foods.size() == 2 && Foods().Move(foods, {kNoPosition, 2, {}}) == 2;
         }},
        {"entries moved",
         [this] {
             const auto meals = OpenProfile() ? Meals() : ListedEntries<CDietEntry>();
             return meals.size() == 2 &&
                    MoveDietEntries(*m_doc, meals, {LastMomentOf(kDay), 4}) == 2;
         }},
        {"purge",
         [this] {
             return OpenProfile() && PurgeDiaries(Database(), {kDay, kDay, true, true, true});
         }},
        {"entries deleted",
         [this] {
             const auto meals = OpenProfile() ? Meals() : ListedEntries<CDietEntry>();
             return !meals.empty() && DeleteDietEntries(*m_doc, meals) == std::ssize(meals);
         }},
        {"renamed", [this] { return Foods().RenameItems(2, u"Soup"_s, u"Broth"_s) == u"Broth"_s; }},
        {"foods deleted",
         [this] {
             const auto foods = Listed(kFoods, 3);
             return foods.size() > 2 && Foods().Delete(foods) == std::ssize(foods);
         }},
        {"delete category", [this] { return Foods().DeleteCategory(2); }},
        {"undo", [this] { return Revert(EUndo::Undo); }},
        {"redo", [this] { return Revert(EUndo::Redo); }},
        {"delete menu", [this] { return Database().DeleteItem(kMenus, 0); }},
        {"delete profile", [this] { return Database().Profiles().Delete(u"Ann"_s); }},
        {"clear history", [this] { return ClearHistory(Database(), kCatalogueScope); }},
        {"fill", [this] { return FillNumbers(); }},
        {"halve a block", [this] { return WriteNumber(-1, 7); }},
        {"another key", [this] { return WriteNumber(3, 2 * kBlockCapacity + 1); }},
        {"empty a block", [this] { return DropNumber(kNumbers); }},
        {"delete all",
         [this] { return Told(Database().GetStore().DeleteDatabase(u"Numbers"_s, 9)); }},
    };
    std::vector<CCall> m_calls;
    // Of each command: the volume before it, and after it the number of calls, what is stored and
    // what "out" held.
    std::vector<QByteArray> m_volumes;
    std::vector<std::size_t> m_ends;
    std::vector<CContents> m_contents;
    std::vector<QByteArray> m_results;
};

QTEST_GUILESS_MAIN(TestBadDisk)
#include "TestBadDisk.moc"
