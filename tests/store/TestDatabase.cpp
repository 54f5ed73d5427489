// Categories, lists, names, profiles and diaries through the database object.
#include "support/CatalogueTest.h"
#include "support/Files.h"

using namespace Qt::StringLiterals;

class TestDatabase : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void init() { MakeVolume(); }

    void cleanup() { DropVolume(); }

    void categoriesAreNumberedWithinTheirKind() {
        QCOMPARE(AddCategory(Database(), u"Fruit"_s), 1);
        QCOMPARE(AddCategory(Database(), u"Bread"_s), 2);
        QCOMPARE(AddCategory(Database(), u"Meat"_s, kMenus), 1);
        QCOMPARE(AddCategory(Database(), u"Fruit"_s), -1);
        QCOMPARE(AddCategory(Database(), u"fruit"_s), 3);
        // The largest identifier is given again after its category is gone.
        QVERIFY(Database().Categories().Delete(Database().Categories().Find(kFoods, u"fruit"_s)));
        QCOMPARE(AddCategory(Database(), u"Meat"_s), 3);
        // A renamed one keeps its own.
        CCategory renamed;
        renamed.SetName(u"Fruits"_s);
        QVERIFY(Database().Categories().AddOrUpdate(0, renamed));
        QCOMPARE(Database().Categories().IdOf(kFoods, u"Fruits"_s), 1);
        CCategory late;
        late.SetKind(kFoods);
        late.SetId(CViewSettings::kMarker - 2);
        QVERIFY(Database().Categories().Write(-1, late));
        QCOMPARE(AddCategory(Database(), u"Last"_s), CViewSettings::kMarker - 1);
        QCOMPARE(AddCategory(Database(), u"None"_s), -1);
    }

    void nutrientNamesAreBroughtTo54() {
        const auto lastNameAfterRestart = [this] {
            Reopen();
            const QStringList names = Database().NutrientNames().ReadNames();
            return names.size() == 54 && names[29] == u"Vitamin D (UI)"_s ? names[53] : QString();
        };
        QVERIFY(Database().NutrientNames().SaveName(54, 54, u"none"_s));
        QCOMPARE(m_messages->Said(), u"Cannot save nutrient name."_s);
        {
            // The first that cannot be deleted is the last that is tried.
            QVERIFY(Database().NutrientNames().SaveName(-1, 54, u"One more"_s));
            const CFileSizeLimit full(1);
            QVERIFY(!m_doc->OpenCatalogue());
            QCOMPARE(m_messages->Said(),
                     u"Cannot delete record. Error=112|Cannot open database."_s);
        }
        Reopen();
        // One too few and one too many.
        for (const bool isOneMissing : {true, false}) {
            QVERIFY(Database().NutrientNames().SaveName(53, 53, u"Lycopene (mg)"_s));
            QCOMPARE(lastNameAfterRestart(), u"Lycopene (mg)"_s);
            CDatabaseHandle raw = OpenRaw(u"NutrientNames"_s);
            QVERIFY(isOneMissing ? Database().GetStore().DeleteRecord(raw, 0)
                                 : Database().NutrientNames().SaveName(-1, 54, u"One more"_s));
            QCOMPARE(lastNameAfterRestart(), u"User defined 20"_s);
        }
    }

    void uniqueNamesAreToldApartByCase() {
        const QStringList names = {u"pear"_s, u"Pear"_s, u"apple"_s, u"pear"_s};
        for (const qint32 category : {2, 1}) {
            for (const QString& name : names) {
                QVERIFY(Database().Foods().Write(-1, MakeFood(category, name, u"t"_s)));
            }
        }
        QVERIFY(Database().ViewSettings(kFoods).Save(CViewSettings()));
        const CUniqueNames all = Database().Catalogue().FillArrayWithUniqueFoodNames(-1);
        QCOMPARE(all.names.size(), 6U);
        QCOMPARE(all.names[0].categoryId, 1);
        QCOMPARE(all.names[0].name, u"apple"_s);
        QCOMPARE(all.names[5].categoryId, 2);
        QVERIFY(!all.leftOut.IsAnything());
        QCOMPARE(Database().Catalogue().FillArrayWithUniqueFoodNames(2).names.size(), 3U);
        QCOMPARE(Database().Catalogue().FillArrayWithUniqueFoodNames(7).names.size(), 0U);
        CDatabaseHandle raw = OpenRaw(u"Foods"_s);
        QVERIFY(Database().GetStore().WriteRecord(raw, 0, {qint32{1}}));
        const CUniqueNames cut = Database().Catalogue().FillArrayWithUniqueFoodNames(-1);
        QCOMPARE(cut.names.size(), 3U);
        QVERIFY(cut.leftOut.isEnded);
        QCOMPARE(cut.leftOut.damaged, 1);
        QCOMPARE(cut.leftOut.beyond, 4);  // the foods of category 2
        QCOMPARE(m_messages->Said(),
                 u"FillArrayWithUniqueFoodNames --> Database error. Wrong number of "
                 "properties, record #4, props = 1 (77)"_s);
    }

    void aListReportsADamagedRecordRightAfterIt() {
        QVERIFY(Database().Foods().Write(-1, MakeFood(1, u"Pear"_s, u"raw"_s)));
        CDatabaseHandle raw = OpenRaw(u"Foods"_s);
        QVERIFY(Database().GetStore().WriteRecord(raw, 0, {CViewSettings::kMarker + 1}));
        const auto isWhole = [this] {
            const CCategoryList list = Database().Catalogue().FillCategoryList(kFoods, 1);
            return list.entries.size() == 1 && !list.leftOut.IsAnything();
        };
        QVERIFY(isWhole());
        QCOMPARE(m_messages->Said(), QString());  // no food
        QVERIFY(Database().GetStore().WriteRecord(raw, 0, {qint32{2}}));
        QVERIFY(isWhole());
        QCOMPARE(m_messages->Said(),
                 u"Database error. Wrong number of properties, record #1, props = 1 (77)"_s);
    }

    void listsEndAt1024() {
        CRecordGroup group(Database().GetStore());
        for (int i = 0; i < 1025; ++i) {
            CExerciseItem item;
            item.SetCategoryId(1);
            item.SetName(QString::number(i));
            QVERIFY(Database().Exlib().Write(-1, item));
        }
        QVERIFY(group.Commit());
        const CCategoryList list = Database().Catalogue().FillCategoryList(kExercises, 1);
        QCOMPARE(list.entries.size(), 1024U);
        QCOMPARE(list.leftOut.beyond, 1);
        // A row of 64 bytes, the record's 15 and its name; of so many only the odd ones are read,
        // 5 of one digit, 45, 450 and 12: (512 x 79 + 2 x 1493) x 1024 / 512.
        QCOMPARE(Database().Exlib().EstimateRoom({0, 3}), 3 * (64 + 15 + 2));
        QCOMPARE(Database().Exlib().EstimateRoom({1, 1024}), 86868);
        QCOMPARE(Database().Catalogue().FillCategoryList(kExercises, 1, kNoCapacity).entries.size(),
                 1025U);
        const CUniqueNames unique = Database().Catalogue().FillArrayWithUniqueExlibNames(1);
        QCOMPARE(unique.names.size(), 1024U);
        QCOMPARE(unique.leftOut.beyond, 1);
        // Nothing is left out of a list that is just full.
        QVERIFY(Database().Exlib().Delete(0));
        QVERIFY(!Database().Catalogue().FillCategoryList(kExercises, 1).leftOut.IsAnything());
        QVERIFY(!Database().Catalogue().FillArrayWithUniqueExlibNames(1).leftOut.IsAnything());
    }

    void damageIsPassedOverAndCounted() {
        for (const char* name : {"Apple", "Bean", "Carrot", "Dill", "Egg"}) {
            QVERIFY(Database().Foods().Write(-1, MakeFood(1, QLatin1StringView(name), u"raw"_s)));
        }
        QVERIFY(Database().Foods().Write(-1, MakeFood(2, u"Fig"_s, u"raw"_s)));
        Damage(Database().Foods(), 1);
        Damage(Database().Foods(), 3, 5);  // says that it is of the other category
        const auto namesOf = [](const auto& items) {
            QStringList names;
            for (const auto& item : items) {
                names.append(item.name);
            }
            return names.join(u' ');
        };
        const CCategoryList list = Database().Catalogue().FillCategoryList(kFoods, 1);
        QCOMPARE(namesOf(list.entries), u"Apple Carrot Egg"_s);
        QCOMPARE(list.leftOut.damaged, 2);
        QCOMPARE(list.leftOut.beyond, 0);
        const CUniqueNames unique = Database().Catalogue().FillArrayWithUniqueFoodNames(1);
        QCOMPARE(namesOf(unique.names), u"Apple Carrot Egg"_s);
        QCOMPARE(unique.leftOut.damaged, 2);
        QCOMPARE(Database().Catalogue().FillCategoryList(kFoods, 2).leftOut.damaged, 0);
        // With its positions gone nobody knows what is missing.
        Change("UPDATE blocks SET entries=x'00'");
        QVERIFY(Database().Catalogue().FillCategoryList(kFoods, 1).leftOut.isUnknown);
        QVERIFY(Database().Catalogue().FillArrayWithUniqueFoodNames(1).leftOut.isUnknown);
        CDatabaseHandle raw = OpenRaw(u"Foods"_s);
        PropertyList properties;
        QVERIFY(!Database().GetStore().ReadCurrent(raw, properties));
        QCOMPARE(raw.nextPosition, 0);
        m_messages->TakeShown();  // of the nutrients' names
    }

    void viewSettingsAreKeptOnce() {
        CViewSettings settings;
        QVERIFY(!Database().ViewSettings(kExercises).Read(settings));
        for (const qint16 width : {75, 120}) {
            settings.SetSetting(5, width);
            QVERIFY(Database().ViewSettings(kExercises).Save(settings));
        }
        Reopen();
        CViewSettings read;
        QVERIFY(Database().ViewSettings(kExercises).Read(read));
        QCOMPARE(read.GetSetting(5), qint16{120});
        QCOMPARE(Database().Exlib().Count(), 1);
    }

    void menusAreFoundUnderTheirParent() {
        CMenuItem menu;
        menu.SetParentId(1);
        menu.SetItemId(500);
        for (const EItemKind type : {EItemKind::Food, EItemKind::Menu}) {
            menu.SetItemKind(type);
            QVERIFY(Database().Menus().Write(-1, menu));
        }
        QCOMPARE(Database().Composed().FindComponent(ECatalogueKind::Menus, 1, 500), 1);
        QCOMPARE(Database().Composed().FindComponent(ECatalogueKind::Menus, 2, 500), -1);
        QCOMPARE(Database().Composed().FindComponent(ECatalogueKind::Menus, 1, 501), -1);
    }

    void aProfileIsFourDatabases() {
        QVERIFY(!Database().Profiles().Open(u"Anna"_s, false));
        QCOMPARE(Database().Profiles().GetNumberOfUserProfiles(), 0);
        QVERIFY(Database().Profiles().Open(u"Anna"_s, true));
        QVERIFY(Database().Profiles().Open(QString(21, u'b'), true));
        QCOMPARE(Database().Profiles().ReadNames(), QStringList({u"Anna"_s, QString(21, u'b')}));
        QVERIFY(Database().GetStore().DeleteDatabase(u"Anna_Weight"_s, kWeightType));
        QVERIFY(!Database().Profiles().Open(u"Anna"_s, false));
        QVERIFY(!Database().Diet().IsOpen());
        QVERIFY(Database().Profiles().Delete(u"Anna"_s));
        QCOMPARE(Database().Profiles().ReadNames(), QStringList{QString(21, u'b')});
        QVERIFY(!Database().Profiles().IsNameTaken(u"Anna"_s));
        QVERIFY(Database().Profiles().Open(QString(21, u'b'), false));
    }

    void profilesCannotTakeOtherDatabases() {
        QVERIFY(Database().Profiles().Open(u"Anna"_s, true));
        for (const QString& name : {u"foods"_s, u"Anna_Diet"_s}) {
            QVERIFY(!Database().Profiles().Open(name, true));
            QCOMPARE(m_messages->Said(), u"ERROR: CeOpenDatabaseEx failed (183)"_s);
            QVERIFY(Database().Profiles().Delete(name));
        }
        QVERIFY(!Database().Profiles().Open(QString(22, u'x'), true));
        QCOMPARE(m_messages->Said(), u"ERROR: CeOpenDatabaseEx failed (123)"_s);
        QCOMPARE(m_messages->lastIcon, EMessageIcon::Stop);
        QVERIFY(Database().Profiles().Open(u"Anna"_s, false));
    }

    void aClosedVolumeHasNoProfiles() {
        Database().CloseCatalogue();
        QCOMPARE(Database().Profiles().GetNumberOfUserProfiles(), 0);
        QVERIFY(Database().Profiles().IsNameTaken(u"Anna"_s));
        QVERIFY(!Database().Profiles().Open(u"Anna"_s, true));
        QVERIFY(!Database().Profiles().Delete(u"Anna"_s));
        QVERIFY(!Database().Profiles().SaveValue(u"name"_s, u"value"_s));
        QVERIFY(!Database().Catalogue().FillCategoryList(kFoods, 1).leftOut.IsAnything());
        QCOMPARE(m_messages->Said(),
                 u"GetNumberOfUserProfiles:: Unknown error.|Cannot delete database."_s);
    }

    void aDayHolds128EntriesAndTheirSum() {
        QVERIFY(Database().Profiles().Open(u"Anna"_s, true));
        const QDate day(2024, 2, 29);
        CRecordGroup group(Database().GetStore());
        for (int i = 0; i < 129; ++i) {
            CDietEntry entry;
            entry.SetMoment(ToFileTime(day, QTime(i / 10, 0)));
            entry.SetName(QString::number(i));
            entry.SetNutrientValue(0, 0.5);
            QVERIFY(Database().Diet().Write(-1, entry));
        }
        for (const FileTime moment : {FirstMomentOf(day) - 1, LastMomentOf(day) + 1}) {
            CDietEntry entry;
            entry.SetMoment(moment);
            QVERIFY(Database().Diet().Write(-1, entry));
        }
        QVERIFY(group.Commit());
        const CDayEntries loaded = ReadDay(Database().Diet(), day);
        QCOMPARE(loaded.Count(), 128);
        QCOMPARE(loaded.LeftOut().beyond, 1);
        QCOMPARE(loaded.GetTotal(0), 64.0);
        QCOMPARE(loaded.GetTotal(-1), -1.0);
        QCOMPARE(loaded.GetTotal(54), -1.0);
        QCOMPARE(loaded.GetEntry(127)->GetName(), u"127"_s);
        QCOMPARE(ReadDay(Database().Diet(), QDate()).Count(), 0);
        QVERIFY(loaded.GetEntry(128) == nullptr);
        QVERIFY(loaded.GetEntry(-1) == nullptr);
        QCOMPARE(m_messages->Said(), u"Invalid index|Invalid index"_s);
    }

  private:
    CDatabaseHandle OpenRaw(const QString& name) {
        return Database().GetStore().OpenDatabase(name, 3, 0, true);
    }
};

QTEST_GUILESS_MAIN(TestDatabase)
#include "TestDatabase.moc"
