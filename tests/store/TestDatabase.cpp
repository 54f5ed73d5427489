// Categories, lists, names, profiles and diaries through the database object.
#include "store/Database.h"
#include "support/RecordingMessages.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
CCategory Category(ECatalogueKind kind, const QString& name) {
    CCategory category;
    category.SetKind(kind);
    category.SetName(name);
    return category;
}

CFoodItem Food(qint32 categoryId, const QString& name, const QString& type) {
    CFoodItem food;
    food.SetCategoryId(categoryId);
    food.SetName(name);
    food.SetType(type);
    return food;
}

CMenuItem Menu(qint32 parentId, EItemKind type, qint32 itemId, const QString& name) {
    CMenuItem menu;
    menu.SetParentId(parentId);
    menu.SetItemKind(type);
    menu.SetItemId(itemId);
    menu.SetName(name);
    return menu;
}

CWeightEntry Weighed(QDate day, int hour, double weightKg) {
    CWeightEntry entry;
    entry.SetMoment(ToFileTime(day, QTime(hour, 0)));
    entry.SetWeightKg(weightKg);
    return entry;
}
}  // namespace

class TestDatabase : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        m_messages = std::make_unique<CRecordingMessages>();
        m_folder = std::make_unique<QTemporaryDir>();
        Reopen();
    }

    void cleanup() {
        m_database.reset();
        const auto messages = std::move(m_messages);
        QCOMPARE(messages->shown, QStringList());
    }

    void categoriesAreNumberedWithinTheirKind() {
        CCategory fruit = Category(ECatalogueKind::Foods, u"Fruit"_s);
        CCategory bread = Category(ECatalogueKind::Foods, u"Bread"_s);
        CCategory fruitMenus = Category(ECatalogueKind::Menus, u"Fruit"_s);
        QVERIFY(m_database->AddOrUpdateCategory(-1, fruit));
        QVERIFY(m_database->AddOrUpdateCategory(-1, bread));
        QVERIFY(m_database->AddOrUpdateCategory(-1, fruitMenus));
        QCOMPARE(bread.GetId(), 2);
        QCOMPARE(fruitMenus.GetId(), 1);
        CCategory again = Category(ECatalogueKind::Foods, u"Fruit"_s);
        QVERIFY(!m_database->AddOrUpdateCategory(-1, again));
        CCategory lower = Category(ECatalogueKind::Foods, u"fruit"_s);
        QVERIFY(m_database->AddOrUpdateCategory(-1, lower));
        QCOMPARE(lower.GetId(), 3);
        // The largest identifier is given again after its category is gone.
        QVERIFY(m_database->DeleteCategory(
            m_database->FindCategory(ECatalogueKind::Foods, u"fruit"_s)));
        CCategory meat = Category(ECatalogueKind::Foods, u"Meat"_s);
        QVERIFY(m_database->AddOrUpdateCategory(-1, meat));
        QCOMPARE(meat.GetId(), 3);
        // A renamed one keeps its own.
        CCategory renamed = Category(ECatalogueKind::Foods, u"Fruits"_s);
        QVERIFY(m_database->AddOrUpdateCategory(m_database->FindCategory(ECatalogueKind::Foods, 1),
                                                renamed));
        QCOMPARE(renamed.GetId(), 1);
        QCOMPARE(m_database->CategoryNameOf(ECatalogueKind::Foods, 1), u"Fruits"_s);
        QCOMPARE(m_database->CategoryIdOf(ECatalogueKind::Foods, u"Fruit"_s), -1);
        QCOMPARE(m_database->ListCategories(ECatalogueKind::Recipes).size(), 0U);
    }

    void the257thCategoryIsRefused() {
        CRecordGroup group(m_database->GetStore());
        for (int i = 0; i < 256; ++i) {
            CCategory category = Category(static_cast<ECatalogueKind>(i % 4), QString::number(i));
            QVERIFY(m_database->AddOrUpdateCategory(-1, category));
        }
        QVERIFY(group.Commit());
        CCategory last = Category(ECatalogueKind::Exercises, u"last"_s);
        QVERIFY(!m_database->AddOrUpdateCategory(-1, last));
        QCOMPARE(
            m_messages->TakeShown(),
            QStringList{u"Cannot add category. Maximum number of categories has been reached."_s});
        CCategory known = Category(ECatalogueKind::Foods, u"0"_s);
        QVERIFY(!m_database->AddOrUpdateCategory(-1, known));
    }

    void nutrientNamesAreBroughtTo54_data() {
        QTest::addColumn<int>("records");
        QTest::addColumn<QString>("lastName");
        QTest::newRow("53") << 53 << u"User defined 20"_s;
        QTest::newRow("54 keep what the user typed") << 54 << u"Lycopene (mg)"_s;
        QTest::newRow("55") << 55 << u"User defined 20"_s;
    }

    void nutrientNamesAreBroughtTo54() {
        QFETCH(int, records);
        QFETCH(QString, lastName);
        QVERIFY(m_database->SaveNutrientName(53, 53, u"Lycopene (mg)"_s));
        if (records == 55) {
            QVERIFY(m_database->SaveNutrientName(-1, 54, u"One more"_s));
        } else if (records == 53) {
            CItemDatabase<CNutrientName> names(m_database->GetStore(), kNutrientNameLayout);
            QVERIFY(names.Open(true));
            QVERIFY(names.Delete(0));
        }
        Reopen();
        const QStringList names = m_database->ReadNutrientNames();
        QCOMPARE(names.size(), 54);
        QCOMPARE(names[0], u"Energy "_s);
        QCOMPARE(names[29], u"Vitamin D (UI)"_s);
        QCOMPARE(names[53], lastName);
    }

    void energyIsNamedAfterItsUnit() {
        m_database->RenameEnergy(u"kJ"_s);
        QCOMPARE(m_database->ReadNutrientNames()[0], u"Energy (kJ)"_s);
        QVERIFY(m_database->SaveNutrientName(54, 54, u"none"_s));
        QCOMPARE(m_messages->TakeShown(), QStringList{u"Cannot save nutrient name."_s});
    }

    void listsAreSortedAndStayInTheirCategory() {
        const char* const rows[][2] = {{"pear", "raw"}, {"Apple", "stewed"}, {"apple", "Raw"}};
        QVERIFY(m_database->Foods().Write(-1, Food(3, u"Zander"_s, u"raw"_s)));
        for (const auto& row : rows) {
            QVERIFY(m_database->Foods().Write(
                -1, Food(2, QLatin1StringView(row[0]), QLatin1StringView(row[1]))));
        }
        QVERIFY(m_database->SaveViewSettings(ECatalogueKind::Foods, CViewSettings()));
        const auto& list = m_database->FillCategoryList(ECatalogueKind::Foods, 2);
        QCOMPARE(list.size(), 3U);
        // Stored as pear, Apple, apple at positions 0 to 2.
        QCOMPARE(list[0].position, 2);
        QCOMPARE(list[1].position, 1);
        QCOMPARE(list[2].position, 0);
        QCOMPARE(m_database->FillCategoryList(ECatalogueKind::Foods, 3).size(), 1U);
        QCOMPARE(m_database->FillCategoryList(ECatalogueKind::Foods, 4).size(), 0U);
        QCOMPARE(m_database->FillCategoryList(ECatalogueKind::Foods, -1).size(), 0U);
        QCOMPARE(m_database->FindItem(ECatalogueKind::Foods, 2, u"Apple"_s, u"stewed"_s), 1);
        QCOMPARE(m_database->FindItem(ECatalogueKind::Foods, 2, u"Apple"_s, u"stewed"_s, 1), -1);
        QCOMPARE(m_database->FindItem(ECatalogueKind::Foods, 3, u"Apple"_s, u"stewed"_s), -1);
    }

    void uniqueNamesAreToldApartByCase() {
        const QStringList names = {u"pear"_s, u"Pear"_s, u"apple"_s, u"pear"_s};
        for (const qint32 category : {2, 1}) {
            for (const QString& name : names) {
                QVERIFY(m_database->Foods().Write(-1, Food(category, name, u"t"_s)));
            }
        }
        QVERIFY(m_database->SaveViewSettings(ECatalogueKind::Foods, CViewSettings()));
        const auto& all = m_database->FillArrayWithUniqueFoodNames(-1);
        QCOMPARE(all.size(), 6U);
        QCOMPARE(all[0].categoryId, 1);
        QCOMPARE(all[0].name, u"apple"_s);
        QCOMPARE(all[5].categoryId, 2);
        QCOMPARE(m_database->FillArrayWithUniqueFoodNames(2).size(), 3U);
        QCOMPARE(m_database->FillArrayWithUniqueFoodNames(7).size(), 0U);
        QVERIFY(m_database->GetStore().WriteRecord(*OpenRaw(u"Foods"_s), 0, {qint32{1}}));
        QCOMPARE(m_database->FillArrayWithUniqueFoodNames(-1).size(), 3U);
        QCOMPARE(m_messages->TakeShown(),
                 QStringList{u"FillArrayWithUniqueFoodNames --> Database error. Wrong number of "
                             "properties, record #4, props = 1 (77)"_s});
    }

    void listsEndAt1024() {
        CRecordGroup group(m_database->GetStore());
        for (int i = 0; i < 1025; ++i) {
            CExerciseItem item;
            item.SetCategoryId(1);
            item.SetName(QString::number(i));
            QVERIFY(m_database->Exlib().Write(-1, item));
        }
        QVERIFY(group.Commit());
        QCOMPARE(m_database->FillCategoryList(ECatalogueKind::Exercises, 1).size(), 1024U);
        QCOMPARE(m_database->FillArrayWithUniqueExlibNames(1).size(), 1024U);
    }

    void viewSettingsAreKeptOnce() {
        CViewSettings settings;
        QVERIFY(!m_database->ReadViewSettings(ECatalogueKind::Exercises, settings));
        for (const qint16 width : {75, 120}) {
            settings.SetSetting(5, width);
            QVERIFY(m_database->SaveViewSettings(ECatalogueKind::Exercises, settings));
        }
        Reopen();
        CViewSettings read;
        QVERIFY(m_database->ReadViewSettings(ECatalogueKind::Exercises, read));
        QCOMPARE(read.GetSetting(5), qint16{120});
        QCOMPARE(m_database->Exlib().Count(), 1);
        m_database->CloseCatalogue();
        QVERIFY(!m_database->SaveViewSettings(ECatalogueKind::Exercises, settings));
        QCOMPARE(m_messages->TakeShown(), QStringList{u"Cannot save exlib props (error# 87)."_s});
    }

    void menusAreFoundUnderTheirParent() {
        QVERIFY(m_database->Menus().Write(-1, Menu(1, EItemKind::Food, 500, u"other"_s)));
        QVERIFY(m_database->Menus().Write(-1, Menu(1, EItemKind::Menu, 500, u"Brunch"_s)));
        QCOMPARE(m_database->FindMenu(1, 500), 1);
        QCOMPARE(m_database->FindMenu(2, 500), -1);
        QCOMPARE(m_database->FindMenu(1, 501), -1);
        QCOMPARE(m_database->FindItem(ECatalogueKind::Menus, 1, u"Brunch"_s, u"any"_s), 1);
    }

    void aProfileIsFourDatabases() {
        QVERIFY(!m_database->OpenProfile(u"Anna"_s, false));
        QCOMPARE(m_database->GetNumberOfUserProfiles(), 0);
        QVERIFY(m_database->OpenProfile(u"Anna"_s, true));
        QVERIFY(m_database->OpenProfile(QString(21, u'b'), true));
        QCOMPARE(m_database->FillProfileNames(), QStringList({u"Anna"_s, QString(21, u'b')}));
        QVERIFY(m_database->GetStore().DeleteDatabase(u"Anna_Weight"_s, kWeightType));
        QVERIFY(!m_database->OpenProfile(u"Anna"_s, false));
        QVERIFY(!m_database->Diet().IsOpen());
        QVERIFY(m_database->DeleteProfile(u"Anna"_s));
        QCOMPARE(m_database->FillProfileNames(), QStringList{QString(21, u'b')});
        // Six of the catalogue and four of the other profile.
        std::vector<CDatabaseInfo> databases;
        QVERIFY(m_database->GetStore().EnumerateDatabases(0, databases));
        QCOMPARE(databases.size(), 10U);
    }

    void profilesCannotTakeOtherDatabases() {
        QVERIFY(m_database->OpenProfile(u"Anna"_s, true));
        for (const QString& name : {u"foods"_s, u"Anna_Diet"_s}) {
            QVERIFY(!m_database->OpenProfile(name, true));
            QVERIFY(m_database->DeleteProfile(name));
        }
        QVERIFY(!m_database->OpenProfile(QString(22, u'x'), true));
        QCOMPARE(m_messages->TakeShown(), QStringList({u"ERROR: CeOpenDatabaseEx failed (183)"_s,
                                                       u"ERROR: CeOpenDatabaseEx failed (183)"_s,
                                                       u"ERROR: CeOpenDatabaseEx failed (123)"_s}));
        QVERIFY(m_database->OpenProfile(u"Anna"_s, false));
    }

    void theProfileRecordIsKeptOnce() {
        QVERIFY(m_database->OpenProfile(u"Anna"_s, true));
        CProfileRecord record;
        QVERIFY(!m_database->LoadProfileRecord(record));
        for (const double heightCm : {160.0, 165.0}) {
            record.SetHeightCm(heightCm);
            QVERIFY(m_database->SaveProfileRecord(record));
        }
        Reopen();
        QVERIFY(m_database->OpenProfile(u"Anna"_s, false));
        CProfileRecord read;
        QVERIFY(m_database->LoadProfileRecord(read));
        QVERIFY(read == record);
        // Another version is found but not taken.
        PropertyList other = record.GetProperties();
        other[1] = qint32{2};
        const auto handle = OpenRaw(u"Anna"_s);
        const ObjectId id = m_database->GetStore().SeekToPosition(*handle, 0);
        QVERIFY(m_database->GetStore().WriteRecord(*handle, id, other));
        CProfileRecord untouched;
        QVERIFY(m_database->LoadProfileRecord(untouched));
        QVERIFY(untouched == CProfileRecord());
        QVERIFY(m_database->SaveProfileRecord(record));
        QVERIFY(!m_database->GetStore().SeekToPosition(*handle, 1));
    }

    void aDayHolds128EntriesAndTheirSum() {
        QVERIFY(m_database->OpenProfile(u"Anna"_s, true));
        const QDate day(2024, 2, 29);
        CRecordGroup group(m_database->GetStore());
        for (int i = 0; i < 129; ++i) {
            CDietEntry entry;
            entry.SetMoment(ToFileTime(day, QTime(i / 10, 0)));
            entry.SetName(QString::number(i));
            entry.SetNutrientValue(0, 0.5);
            QVERIFY(m_database->Diet().Write(-1, entry));
        }
        for (const FileTime moment : {FirstMomentOf(day) - 1, LastMomentOf(day) + 1}) {
            CDietEntry entry;
            entry.SetMoment(moment);
            QVERIFY(m_database->Diet().Write(-1, entry));
        }
        QVERIFY(group.Commit());
        QCOMPARE(m_database->LoadDietDay(day), 128);
        QCOMPARE(m_database->GetDietTotal(0), 64.0);
        QCOMPARE(m_database->GetDietTotal(54), -1.0);
        QCOMPARE(m_database->GetDietPosition(0), 1);
        QCOMPARE(m_database->GetDietEntry(127)->GetName(), u"127"_s);
        QCOMPARE(m_database->LoadDietDay(day.addDays(1)), 1);
        QCOMPARE(m_database->LoadDietDay(day.addDays(2)), 0);
        QCOMPARE(m_database->LoadDietDay(QDate()), 0);
        QCOMPARE(m_database->GetDietPosition(0), -1);
        QVERIFY(m_database->GetDietEntry(-1) == nullptr);
        QCOMPARE(m_messages->TakeShown(), QStringList({u"Invalid index"_s, u"Invalid index"_s}));
    }

    void theWeightInForceIsTheLatestBefore() {
        QVERIFY(m_database->OpenProfile(u"Anna"_s, true));
        const QDate day(2024, 5, 10);
        QCOMPARE(m_database->WeightOnDate(day, 70.0), 70.0);
        QVERIFY(m_database->Weight().Write(-1, Weighed(day, 20, 81.0)));
        QVERIFY(m_database->Weight().Write(-1, Weighed(day, 8, 82.0)));
        QVERIFY(m_database->Weight().Write(-1, Weighed(day.addDays(5), 8, 80.0)));
        QCOMPARE(m_database->WeightOnDate(day, 70.0), 81.0);
        QCOMPARE(m_database->WeightOnDate(day.addDays(4), 70.0), 81.0);
        QCOMPARE(m_database->WeightOnDate(day.addDays(5), 70.0), 80.0);
        QCOMPARE(m_database->WeightOnDate(day.addDays(-1), 70.0), 82.0);
    }

  private:
    void Reopen() {
        m_database.reset();
        m_database = std::make_unique<CDatabase>(m_folder->filePath(u"v.db"_s));
        QVERIFY(m_database->OpenCatalogue());
    }

    std::unique_ptr<CDatabaseHandle> OpenRaw(const QString& name) {
        return std::make_unique<CDatabaseHandle>(
            m_database->GetStore().OpenDatabase(name, 3, 0, true));
    }

    std::unique_ptr<CRecordingMessages> m_messages;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<CDatabase> m_database;
};

QTEST_GUILESS_MAIN(TestDatabase)
#include "TestDatabase.moc"
