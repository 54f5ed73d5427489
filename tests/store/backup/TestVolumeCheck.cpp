// What a check finds in a volume, and what a repair saves of a damaged one.
#include "app/BackupRules.h"
#include "diary/DiaryFixture.h"
#include "platform/LateProgress.h"
#include "store/backup/Repair.h"
#include "store/backup/Salvage.h"
#include "store/backup/VolumeCheck.h"
#include "store/backup/VolumeSummary.h"
#include "store/engine/WatchedWork.h"
#include "support/ComposedSamples.h"
#include "support/DataRows.h"
#include "support/DeepTrees.h"

class TestVolumeCheck : public CDiaryTest {
    Q_OBJECT

  private slots:
    void init() {
        MakeDiary();
        AddCatalogue();
        for (const auto kind : {kMenus, kRecipes}) {
            const qint32 category = AddCategory(Database(), u"Week"_s, kind);
            const qint32 id = AddComposed(Database(), kind, category, u"Stew"_s);
            QVERIFY(AddPart(Database(), kind, id, u"Soup"_s, 80));
        }
        m_doc->KeepWeightGraphSpan(2);
        AddEntry(u"Tea"_s, QTime(8, 0));
        AddDone(u"Walking"_s, kDay, QTime(9, 0), 30, 100);
        QVERIFY(Database().Weight().Write(-1, MakeWeight(kDay, QTime(7, 0), 80)));
    }
    void cleanup() { DropVolume(); }

    void whatIsWrongIsFound_data() {
        AddRows<const char*, const char*>({
            {"body", "UPDATE records SET body=x'FF' WHERE id=@foods",
             "Foods: record @ is damaged."},
            {"one property less",
             "UPDATE records SET body=(SELECT body FROM records WHERE id=@exercises) WHERE "
             "id=@foods",
             "Foods: record @ is listed under another first value than it has."},
            {"other layout",
             "UPDATE records SET body=(SELECT body FROM records WHERE id=@foods) WHERE id=@menus",
             "Menus: record @ has 77 values instead of 61."},
            {"gone", "DELETE FROM records WHERE id=@foods",
             "Foods: records that are listed but missing: 1."},
            {"index", "UPDATE blocks SET count=count+1 WHERE database=#Foods",
             "Foods: the list of records is damaged; 0 of 4 entries can be read."},
            {"database", "DELETE FROM databases WHERE name='Ann_Weight'",
             "Ann: the database 'Ann_Weight' is missing.|Note: Records that belong to no database: "
             "1. They only take room.|Lists of records that belong to no database: 1."},
            {"profile", "UPDATE databases SET name='Bob' WHERE name='Ann'",
             "Bob: the database 'Bob_Diet' is missing.|Bob: the database 'Bob_Weight' is missing.|"
             "Bob: the database 'Bob_Exercises' is missing.|Ann_Diet: there is no profile 'Ann'.|"
             "Ann_Weight: there is no profile 'Ann'.|Ann_Exercises: there is no profile 'Ann'.|"
             "Note: Small values of profiles that are gone: 2."},
            {"kind", "UPDATE databases SET type=9 WHERE name='Exlib'",
             "Exlib: a database of an unknown kind.|The database 'Exlib' is missing."},
            {"order", "UPDATE databases SET sort=64 WHERE name='Foods'",
             "Foods: the records are in another order than they should be."},
            {"names", "DELETE FROM databases",
             "Note: Records that belong to no database: 69. They only take room.|Note: "
             "NutrientNames: 0 names instead of 54.|Lists of records that belong to no database: "
             "9.|Note: Small values of profiles that are gone: 2."},
            {"name", "UPDATE databases SET name='Goods' WHERE name='Foods'",
             "Goods: a database of an unknown kind.|The database 'Foods' is missing."},
            {"diary's name", "UPDATE databases SET name='Ann_Eiet' WHERE name='Ann_Diet'",
             "Ann: the database 'Ann_Diet' is missing."},
            {"diary's kind", "UPDATE databases SET type=9 WHERE name='Ann_Diet'",
             "Ann: the database 'Ann_Diet' is missing.|Ann_Diet: a database of an unknown kind."},
            {"diary's other kind",
             "UPDATE databases SET type=(SELECT type FROM databases WHERE name='Ann_Weight') WHERE "
             "name='Ann_Diet' AND 0<@diet",
             "Ann: the database 'Ann_Diet' is missing.|Ann_Diet: record @ has 62 values instead of "
             "15."},
            {"block", "UPDATE blocks SET database=database+64 WHERE database=#Foods",
             "Note: Records that belong to no database: 3. They only take room.|Lists of records "
             "that belong to no database: 1."},
            {"block of a diary", "UPDATE blocks SET database=database+64 WHERE database=#Diet",
             "Note: Records that belong to no database: 1. They only take room.|Lists of records "
             "that belong to no database: 1."},
            {"table", "CREATE TABLE more(id); CREATE INDEX some ON more(id) WHERE id>1",
             "Note: The table 'more' is of another program."},
            {"identity", "UPDATE identity SET body=x'00'",
             "The identity of the data file is damaged."},
            {"history", "UPDATE history_changes_1 SET seal=0",
             "The history of changes is damaged: some cannot be undone."},
            {"number in a list", "UPDATE main.records SET id=id+1048576 WHERE id=@diet",
             "Ann_Diet: records that are listed but missing: 1.|Note: Records that belong to no "
             "database: 1. They only take room."},
            {"value", "INSERT INTO named_values VALUES(99, 'find', 'x')",
             "Note: Small values of profiles that are gone: 1."},
        });
    }
    void whatIsWrongIsFound() {
        const auto& [sql, lines] = DataRow<const char*, const char*>();
        QString statement = QString::fromLatin1(sql);
        ObjectId meant = 0;
        for (const auto& [word, items] :
             {std::pair<QString, CItemDatabaseBase*>{u"@foods"_s, &Database().Foods()},
              {u"@menus"_s, &Database().Menus()},
              {u"@exercises"_s, &Database().Exercises()},
              {u"@diet"_s, &Database().Diet()}}) {
            meant = statement.endsWith(word) ? items->RecordAt(0) : meant;
            statement.replace(word, QString::number(items->RecordAt(0)));
        }
        statement.replace(u"#Foods"_s, QString::number(Database().Foods().GetId()));
        statement.replace(u"#Diet"_s, QString::number(Database().Diet().GetId()));
        m_doc.reset();
        const QString before = Summary();
        QString expected = QString::fromLatin1(lines);
        expected.replace(u'@', QString::number(meant));
        QCOMPARE(LinesAfter(statement), expected);
        // Nothing but a damaged record is lost.
        QVERIFY(Repair());
        CFindings findings;
        QVERIFY(CheckFile(Volume(), findings));
        QVERIFY2(!findings.HasFaults(), qPrintable(Lines(findings)));
        QVERIFY(statement.contains(u" records "_s) || Summary() == before);
        m_messages->TakeShown();
    }

    void recordsAgainstTheirLayout() {
        const std::tuple<CItemDatabaseBase&, int, PropertyValue, QString> rows[] = {
            {Database().Foods(), 1, QString(129, u'x'),
             u"has 129 characters as 'Name', which may have 128"_s},
            {Database().Foods(), 3, std::numeric_limits<double>::infinity(),
             u"has no number as 'Food energy'"_s},
            {Database().Diet(), 1, qint32{6}, u"has 6 as 'Meal', which goes from 0 to 5"_s},
            {Database().Diet(), 0, qint64{-1}, u"has no date as 'Date and time'"_s},
            {Database().Weight(), 1, qint32{80}, u"has a value of another type as 'Weight (kg)'"_s},
        };
        for (auto [items, number, value, fault] : rows) {
            const ObjectId record = Swap(items, number, value);
            CFindings findings;
            QVERIFY(CheckData(Database(), findings));
            QVERIFY2(Lines(findings).endsWith(u": record %1 %2."_s.arg(record).arg(fault)),
                     qPrintable(Lines(findings)));
            QCOMPARE(findings.CountFaults(), 1);
            QCOMPARE(Swap(items, number, value), record);
        }
    }

    void aTreeWithoutAnEndIsDamage_data() {
        AddRows<const char*, int, int, const char*>({
            {"deep", "blocks", 25, 1,
             "The file is damaged: not all pages of 'blocks' can be read."},
            {"wide index", "directory", 18, 60,
             "The file is damaged: not all pages of 'directory' can be read."},
            {"list of tables", "", 18, 60, "The file 'v.db' is damaged."},
        });
    }
    /// Following such a tree takes more stack than there is, or more time.
    void aTreeWithoutAnEndIsDamage() {
        const auto& [name, levels, cells, line] = DataRow<const char*, int, int, const char*>();
        m_doc.reset();
        const qint64 root = std::max<qint64>(1, RootOf(Volume(), QString::fromLatin1(name)));
        const QByteArray hostile = WithDeepTree(Load(Volume()), kVolumePage, root, levels, cells);
        Save(Volume(), hostile);
        QString expected = QString::fromLatin1(line);
        expected.replace(u"v.db"_s, Volume());
        CFindings findings;
        QVERIFY(CheckFile(Volume(), findings));
        QCOMPARE(Lines(findings), expected);
        QVERIFY(!RestoreBackup(Volume(), Path(u"other.db"_s), QDateTime::currentDateTime()));
        QCOMPARE(m_messages->Said(), u"The file '%1' is damaged."_s.arg(Volume()));
    }

    void whatRecordsSayOfEachOther() {
        QVERIFY(Database().Foods().Write(-1, MakeFood(77, u"Fig"_s, u"raw"_s)));
        const ObjectId fig = Database().Foods().RecordAt(Database().Foods().Count() - 1);
        QVERIFY(AddPart(Database(), kMenus, kFirstComposedId + 99, u"Egg"_s));
        CFindings findings;
        QVERIFY(CheckData(Database(), findings));
        QCOMPARE(Lines(findings),
                 u"Foods: record %1 is in category 77, which does not exist.|"
                 "Note: Menus: components that belong to no item: 1."_s.arg(fig));
    }

    void whatIsNobodysIsNotGivenAway() {
        const QString diet = QString::number(Database().Diet().RecordAt(0));
        (void)LinesAfter(
            u"INSERT INTO records SELECT 9999, body FROM records WHERE id=%1;"
            "UPDATE named_values SET value='Zoe' WHERE owner<>0 AND name='';"
            "UPDATE records SET body=x'FF' WHERE id=%1"_s.arg(diet));
        QVERIFY(Repair());
        const QString said = m_messages->Said();
        QVERIFY2(said.contains(u"Foods: 3 kept, 0 lost.\n"_s) &&
                     said.contains(u"Ann_Diet: 0 kept, 1 lost.\n"_s) &&
                     said.contains(u"Records whose database is not known: 1.\n"_s),
                 qPrintable(said));
        constexpr auto kTables =
            "SELECT count(*) FROM sqlite_schema WHERE name LIKE 'named_values%'";
        QCOMPARE(QueryVolume(Volume(), kTables), 0);
    }

    /// What a repair would keep as it is, is no reason for one.
    void whatCanBeReadIsNotRepaired() {
        PropertyValue meal = qint32{6};
        PropertyValue longName = QString(129, u'x');
        QVERIFY(Swap(Database().Diet(), 1, meal) != 0);
        QVERIFY(Swap(Database().Menus(), 3, longName) != 0);
        const QString food = QString::number(Database().Foods().RecordAt(0));
        m_doc.reset();
        const QByteArray volume = Load(Volume());
        QVERIFY(!Repair());
        QCOMPARE(m_messages->Said(),
                 u"Nothing was repaired: the faults are within records, and a repair keeps every "
                 "record that can be read."_s);
        QCOMPARE(Load(Volume()), volume);
        // With something else, it remains.
        (void)LinesAfter(u"UPDATE records SET body=x'FF' WHERE id="_s + food);
        QVERIFY(Repair());
        QVERIFY(m_messages->Said().contains(u"\nFaults that remain: 2.\n"_s));
    }

    void aCancelledCheckOrRepairIsNone() {
        m_doc.reset();
        const auto delay = std::exchange(CLateProgress::delayMs, -1);
        QByteArray volume = Load(Volume());
        for (const bool isSound : {true, false}) {
            volume[0] = isSound ? volume[0] : 'X';
            Save(Volume(), volume);
            m_messages->progress = {};
            m_messages->progress.cancelAfterPumps = isSound ? 1 : 3;
            QVERIFY(!Repair());
            QCOMPARE(m_messages->Said(), u"Nothing was repaired: it was cancelled."_s);
            QCOMPARE(Load(Volume()), volume);
        }
        m_messages->progress = {};
        CLateProgress::delayMs = delay;
    }

    /// Also during a single statement, which SQLite's own check is.
    void aLongStatementCanBeCancelled() {
        m_doc.reset();
        CSqliteFile file;
        QCOMPARE(file.Open(Volume()), int(kErrorSuccess));
        int pulses = 0;
        {
            const CWatchedWork work(file, [&pulses](qint64, qint64) { return ++pulses < 3; });
            QCOMPARE(file.Execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n "
                                  "LIMIT 10000000) SELECT sum(i) FROM n"),
                     int(kErrorOperationAborted));
            QVERIFY(work.IsCancelled());
        }
        QCOMPARE(pulses, 3);
        QCOMPARE(file.Execute("SELECT count(*) FROM records"), int(kErrorSuccess));
    }

    /// A page that can no longer be read has no rows.
    void aVolumeThatShrinksIsReadAsFarAsItGoes() {
        m_doc.reset();
        qint64 calls = -Load(Volume()).size() / kVolumePage;
        QCOMPARE(CSalvage().Read(Volume(), [&calls](qint64, qint64) { return ++calls < 2; }),
                 int(kErrorOperationAborted));
        CSalvage salvage;
        QCOMPARE(
            salvage.Read(Volume(), [this](qint64, qint64) { return QFile::resize(Volume(), 0); }),
            int(kErrorBadFormat));
    }

  private:
    /// A value of the first record, whose identifier is returned; 0 when it cannot be written.
    ObjectId Swap(CItemDatabaseBase& items, int number, PropertyValue& value) {
        CRecordStore& store = Database().GetStore();
        CDatabaseHandle handle{items.GetId()};
        const ObjectId record = items.RecordAt(0);
        PropertyList properties;
        (void)store.ReadRecord(record, properties);
        std::swap(properties[number], value);
        return store.WriteRecord(handle, record, properties) ? record : 0;
    }
    QString Volume() const { return Path(u"v.db"_s); }
    bool Repair() { return RepairData(Volume(), QDateTime::currentDateTime()); }
    /// Of what is in the volume, which is not open.
    QString Summary() {
        CStorageEngine engine;
        CVolumeSummary summary;
        const bool isRead =
            engine.Mount(Volume()) == kErrorSuccess && Summarize(engine, summary) == kErrorSuccess;
        return isRead ? SummaryText(summary) : QString();
    }
    static QString Lines(const CFindings& findings) {
        QStringList lines;
        for (const CFinding& finding : findings.List()) {
            lines.append(FindingLine(finding));
        }
        return lines.join(u'|');
    }
    QString LinesAfter(const QString& statement) {
        m_doc.reset();
        ChangeVolume(Volume(), statement);
        CFindings findings;
        const bool isChecked = CheckFile(Volume(), findings);
        return isChecked ? Lines(findings) : u"cannot be checked"_s;
    }
};

QTEST_GUILESS_MAIN(TestVolumeCheck)
#include "TestVolumeCheck.moc"
