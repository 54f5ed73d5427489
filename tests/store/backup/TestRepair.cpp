// What a repair saves of a volume whose pages are damaged one after another.
#include "app/BackupRules.h"
#include "diary/DiaryFixture.h"
#include "store/backup/Repair.h"
#include "store/backup/VolumeCheck.h"
#include "store/engine/RecordCodec.h"
#include "support/DataRows.h"
#include "support/VolumeFile.h"

class TestRepair : public CDiaryTest {
    Q_OBJECT

  private slots:
    void init() {
        MakeDiary();
        AddCatalogue();
        AddEntry(u"Tea"_s, QTime(8, 0));
    }
    void cleanup() { DropVolume(); }

    void untouchedRecordsAreRepaired_data() {
        AddRows<char>({{"zeros", '\0'},
                       {"ones", '\xFF'},
                       {"cut", 'c'},
                       {"a byte", 'b'},
                       {"a byte and a record", 'r'}});
    }
    // Each page of the file in turn is overwritten, or the file ends there. Records on other pages
    // come back as they were, and to the diary they were in.
    void untouchedRecordsAreRepaired() {
        const auto& [fill] = DataRow<char>();
        AddManyRecords();
        std::map<ObjectId, CStored> stored;
        Collect(stored, Database().Foods());
        Collect(stored, Database().Recipes());
        Collect(stored, Database().Diet());
        const auto idsOf = [](CItemDatabaseBase& diet) {
            return QByteArray{1, static_cast<char>(diet.GetId())} +
                   static_cast<char>(diet.RecordAt(0));
        };
        const QByteArray ann = idsOf(Database().Diet());
        QVERIFY(m_doc->LoadProfile(u"Bob"_s));
        Collect(stored, Database().Diet());
        const QByteArray bob = idsOf(Database().Diet());
        m_doc.reset();
        if (fill == 'r') {
            ChangeVolume(Volume(), u"DELETE FROM records WHERE id=%1"_s.arg(qint64{ann.back()}));
        }
        const bool isByte = fill == 'b' || fill == 'r';
        const QByteArray volume = Load(Volume());
        const qsizetype pages = volume.size() / kVolumePage;
        QVERIFY(pages > 15);
        std::vector<qsizetype> places;
        for (qsizetype page = 0; !isByte && page < pages; ++page) {
            places.push_back(page * kVolumePage);
        }
        for (const auto* table : {"blocks", "directory"}) {
            const qsizetype page = RootOf(Volume(), QLatin1StringView(table)) - 1;
            for (qsizetype i = 0; isByte && i < kVolumePage; ++i) {
                if (ann.contains(volume[page * kVolumePage + i])) {
                    places.push_back(page * kVolumePage + i);
                }
            }
        }
        int repaired = 0;
        for (const qsizetype at : places) {
            QByteArray damaged = volume;
            if (isByte) {
                damaged[at] = bob[ann.indexOf(volume[at])];
            } else if (fill == 'c') {
                damaged.truncate(at + kVolumePage * 3 / 4);
            } else {
                std::fill_n(damaged.begin() + at, kVolumePage, fill);
            }
            Save(Volume(), damaged);
            CVolumeReplacement replacement(Volume(), QDateTime::currentDateTime());
            QCOMPARE(replacement.Begin(), int(kErrorSuccess));
            CRepairSummary summary;
            if (CRepair(replacement).Run(summary) != kErrorSuccess) {
                QVERIFY(fill == 'c');  // no record is left
                continue;
            }
            const QString missing = Missing(replacement.GetNewPath(), stored, damaged, fill == 'c');
            QVERIFY2(missing.isEmpty(), qPrintable(u"byte %1: %2"_s.arg(at).arg(missing)));
            ++repaired;
        }
        QVERIFY(repaired >= 8);
        Save(Volume(), volume);
        Reopen();
    }

  private:
    struct CStored {
        QByteArray body;
        ObjectId database = 0;
    };

    QString Volume() const { return Path(u"v.db"_s); }
    void AddManyRecords() {
        QVERIFY(CreateProfile(u"Bob"_s) && m_doc->LoadProfile(u"Bob"_s));
        AddEntry(u"Toast"_s, QTime(9, 0));
        QVERIFY(m_doc->LoadProfile(u"Ann"_s));
        const qint32 category = AddCategory(Database(), u"Many"_s);
        CRecordGroup group(Database().GetStore());
        for (int i = 0; i < 150; ++i) {
            AddFood(category, u"Food %1"_s.arg(i), u"type"_s, i, {});
        }
        CRecipeItem recipe;
        recipe.SetParentId(1);
        recipe.SetItemId(kFirstComposedId + 50);
        recipe.SetName(u"Long"_s);
        recipe.SetInstructions(QString(20000, u'i'));
        QVERIFY(Database().Recipes().Write(-1, recipe));
    }
    void Collect(std::map<ObjectId, CStored>& stored, CItemDatabaseBase& items) {
        PropertyList properties;
        for (int position = 0; position < items.Count(); ++position) {
            const ObjectId record = items.RecordAt(position);
            QVERIFY(Database().GetStore().ReadRecord(record, properties));
            EncodeRecord(properties, stored[record].body);
            stored[record].database = items.GetId();
        }
    }
    /// What is wrong in the repaired file; empty when it is sound and has every record whose bytes
    /// are whole in the damaged one. Of a file that was cut, the list of databases may be lost, and
    /// with it who ate what.
    static QString Missing(const QString& path, const std::map<ObjectId, CStored>& stored,
                           const QByteArray& damaged, bool isCut) {
        CStorageEngine engine;
        if (engine.Mount(path) != kErrorSuccess) {
            return u"cannot be opened"_s;
        }
        for (const auto& [record, each] : stored) {
            const qsizetype at = damaged.indexOf(each.body);
            // A record of more than a page is not in one place.
            if (at < 0 || at / kVolumePage != (at + each.body.size()) / kVolumePage) {
                continue;
            }
            PropertyList properties;
            QByteArray found;
            int position = 0;
            const bool isFound =
                engine.ReadRecord(record, properties) == kErrorSuccess &&
                engine.FindRecord(each.database, record, position) == kErrorSuccess;
            EncodeRecord(properties, found);
            if ((!isFound && !isCut) || (isFound && found != each.body)) {
                return u"record %1"_s.arg(record);
            }
        }
        (void)engine.Unmount();
        CSqliteFile file;
        CFindings findings;
        if (file.Open(path) != kErrorSuccess || CheckVolume(file, findings) != kErrorSuccess) {
            return u"cannot be checked"_s;
        }
        return findings.HasFaults() ? FindingLine(findings.List().front()) : QString();
    }
};

QTEST_GUILESS_MAIN(TestRepair)
#include "TestRepair.moc"
