// Records of all kinds: stored and read back whole, limits of texts, and bad indexes.
#include "store/ItemDatabase.h"
#include "store/records/Category.h"
#include "store/records/ComposedItem.h"
#include "store/records/DiaryEntries.h"
#include "store/records/ExerciseItem.h"
#include "store/records/FoodItem.h"
#include "store/records/ProfileRecord.h"
#include "support/DataRows.h"
#include "support/RecordingMessages.h"

#include <QSet>
#include <QTemporaryDir>
#include <limits>

using namespace Qt::StringLiterals;

namespace {
// A value of its own for every property; texts fill their capacity, up to 200.
PropertyValue DistinctValue(const CPropertyDescription& property, int i) {
    const PropertyList values = {
        static_cast<qint16>(-300 - i),
        70'000 + i,
        i + 1.0 / 3.0,
        QString::number(i).rightJustified(qMin(property.capacity, 200), u'\u00e9'),
        qint64{130'000'000'000'000'000} + i,
        QByteArray(100 + i, '\0') + QByteArray::number(i)};
    return *std::ranges::find(values, property.type, TypeOf);
}

PropertyList DistinctValues(const CRecordLayout& layout) {
    PropertyList values;
    for (const CPropertyDescription& property : layout.properties) {
        values.push_back(DistinctValue(property, static_cast<int>(values.size())));
    }
    return values;
}
}  // namespace

class TestItemRecords : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        m_store = std::make_unique<CRecordStore>();
        QVERIFY(m_store->MountVolume(m_folder->filePath(u"new/folder/v.db"_s)));
    }

    void cleanup() {
        m_store.reset();
        QCOMPARE(m_messages.Said(), QString());
    }

    void eachHourHasItsUsualMeal() {
        QString meals;
        for (int hour = 0; hour < 24; ++hour) {
            meals += MealName(MealAt(QTime(hour, 59))).front();
        }
        QCOMPARE(meals, u"EEEEBBBBBBMMLLAAADDDDEEE"_s);
    }

    void everyPropertyIsStored_data() {
        AddRows<const CRecordLayout*, int, quint32>({
            {"foods", &kFoodLayout, 77, 3U},
            {"menus", &kMenuLayout, 61, 3U},
            {"recipes", &kRecipeLayout, 62, 3U},
            {"exercise library", &kExerciseLibLayout, 5, 3U},
            {"categories", &kCategoryLayout, 5, 2U},
            {"nutrient names", &kNutrientNameLayout, 3, 3U},
            {"profile", &kProfileLayout, 159, 3U},
            {"diet", &kDietLayout, 62, 64U},
            {"weight", &kWeightLayout, 15, 64U},
            {"exercises", &kExercisesLayout, 11, 64U},
            {"view settings", &kViewSettingsLayout, 8, 3U},
        });
    }

    void everyPropertyIsStored() {
        const auto& [layout, count, sort] = DataRow<const CRecordLayout*, int, quint32>();
        QCOMPARE(layout->Count(), count);
        QCOMPARE(layout->SortPropertyId(), sort);
        QSet<QString> names;
        for (const CPropertyDescription& property : layout->properties) {
            names.insert(QLatin1StringView(property.name));
            QCOMPARE(property.capacity > 0, property.type == EPropertyType::Text);
        }
        QCOMPARE(names.size(), count);
        CItemDatabaseBase database(*m_store, *layout);
        QVERIFY(database.Open(false, u"Any"_s));
        CItemRecord written(*layout);
        QVERIFY(written.SetProperties(DistinctValues(*layout)));
        QVERIFY(written.GetProperties() == DistinctValues(*layout));
        QVERIFY(database.Write(-1, CItemRecord(*layout)));
        const int place = layout == &kCategoryLayout ? 0 : 1;  // its key is negative here
        QVERIFY(database.Write(-1, written));
        QVERIFY(m_store->UnmountVolume());
        QVERIFY(m_store->MountVolume(m_folder->filePath(u"new/folder/v.db"_s)));
        QVERIFY(database.Open(true, u"Any"_s));
        CItemRecord read(*layout);
        QVERIFY(database.Read(place, read));
        QVERIFY(read == written);
        read.Clear();
        CItemRecord empty(*layout);
        QVERIFY(database.Read(1 - place, empty));
        QVERIFY(empty == read);
    }

    void wrongRecordsAreReported() {
        CItemDatabaseBase menus(*m_store, kMenuLayout);
        QVERIFY(menus.Open(false));
        QVERIFY(menus.Write(-1, CRecipeItem()));
        CMenuItem menu;
        QVERIFY(!menus.ReadQuietly(0, menu));
        QVERIFY(!menus.Read(0, menu));
        // No such position: silently nothing.
        QVERIFY(!menus.Read(1, menu));
        QVERIFY(!menus.Write(1, menu));
        QCOMPARE(menus.Count(), 1);
        QVERIFY(!menus.Delete(1));
        menus.Close();
        QVERIFY(!menus.Write(-1, menu));
        QCOMPARE(m_messages.Said(),
                 u"Database error. Wrong number of properties, record #0, props = 62 (61)|"
                 "Cannot delete record. Error=2|Cannot add menu (error# 2)."_s);
    }

    void readingMovesOn() {
        CDatabaseHandle handle = m_store->OpenDatabase(u"N"_s, 3, 0, false);
        for (const qint32 key : {5, 1, 3, 3}) {
            QVERIFY(m_store->WriteRecord(handle, 0, {key}));
        }
        QVERIFY(m_store->SeekToPosition(handle, 1) != 0);
        QCOMPARE(m_store->SeekToPosition(handle, 4), 0);  // none, and nothing is sought by it
        PropertyList read;
        for (const qint32 key : {3, 3, 5}) {
            QVERIFY(m_store->ReadCurrent(handle, read));
            QVERIFY(read == PropertyList{key});
        }
        QVERIFY(!m_store->ReadCurrent(handle, read));
        QCOMPARE(m_store->FirstPositionOf(handle, 4), -1);
        QCOMPARE(m_store->FirstPositionInRange(handle, 6, 9), -1);
    }

    void textsEndAtTheirCapacity() {
        CFoodItem food;
        food.SetName(QString(200, u'n'));
        QCOMPARE(food.GetName(), QString(128, u'n'));
        CMenuItem menu;
        // The character that would be cut in two is left out.
        menu.SetName(QString(63, u'm') + u"\U0001F34E"_s);
        QCOMPARE(menu.GetName(), QString(63, u'm'));
        CCategory category;
        category.SetName(QString(200, u'c'));
        QCOMPARE(category.GetName(), QString(127, u'c'));
        CRecipeItem recipe;
        recipe.SetInstructions(QString(40'000, u'i'));
        QCOMPARE(recipe.GetInstructions(), QString(32'767, u'i'));
        PropertyList stored = CDietEntry().GetProperties();
        stored[3] = QString(65, u'c');
        stored[6] = std::numeric_limits<double>::quiet_NaN();
        CDietEntry entry;
        QVERIFY(entry.SetProperties(std::move(stored)));
        QCOMPARE(entry.GetCategory(), QString(64, u'c'));
        QCOMPARE(entry.GetNutrientValue(0), 0.0);
        entry.SetNutrientValue(1, std::numeric_limits<double>::infinity());
        QCOMPARE(entry.GetNutrientValue(1), 0.0);
        stored = entry.GetProperties();
        stored[1] = 1.0;
        QVERIFY(!entry.SetProperties(std::move(stored)));
    }

    void longServingNamesEndInDots() {
        // Characters are numbered 1 to 9, 0, 1 to 9, 0, ...
        const QString eighty = u"1234567890"_s.repeated(8);
        CFoodItem food;
        food.SetServingName(0, eighty.first(64));
        QCOMPARE(food.GetServingName(0), eighty.first(60) + u"1234"_s);
        for (const int length : {65, 80}) {
            food.SetServingName(9, eighty.first(length));
            QCOMPARE(food.GetServingName(9), eighty.first(59) + u"45..."_s);  // then 64 and 65
        }
    }

    void badIndexesAreNamed() {
        CFoodItem food;
        const CFoodItem before = food;
        for (const auto& [nutrient, serving] : {std::pair{-1, -1}, {54, 10}}) {
            QCOMPARE(food.GetNutrientValue(nutrient), 0.0);
            food.SetNutrientValue(nutrient, 1.0);
            QCOMPARE(food.GetServingName(serving), u"Index error."_s);
            QCOMPARE(food.GetServingNameW(serving), u"Index error."_s);
            food.SetServingName(serving, u"cup"_s);
            QCOMPARE(food.GetServingWeight(serving), 0.0);
            food.SetServingWeight(serving, 1.0);
            QCOMPARE(m_messages.Said(),
                     u"GetNutrientValue --> WRONG INDEX|SetNutrientValue --> WRONG INDEX|"
                     "GetServingName --> WRONG INDEX|GetServingNameW --> WRONG INDEX|"
                     "SetServingName --> WRONG INDEX.|GetServingWeight --> WRONG INDEX.|"
                     "SetServingWeight --> WRONG INDEX."_s);
        }
        QVERIFY(food == before);
        CWeightEntry weight;
        weight.SetMeasurement(13, 1.0);
        QCOMPARE(weight.GetMeasurement(13), -1.0);
        QCOMPARE(weight.GetMeasurement(-1), -1.0);
        QVERIFY(weight == CWeightEntry());
    }

    void fieldsStandAtTheirNumbers() {
        const auto has = [](const CItemRecord& record, int number, const PropertyValue& value) {
            return record.GetProperties()[number] == value;
        };
        QCOMPARE(kFoodLayout.properties[76].name, "Serving weight (gm) 10");
        QCOMPARE(kProfileLayout.properties[158].name, "Target of User defined 20");
        CFoodItem food;
        food.SetNutrientValue(53, 1.5);
        food.SetServingName(9, u"cup"_s);
        food.SetServingWeight(9, 240.0);
        QVERIFY(has(food, 56, 1.5) && has(food, 75, u"cup"_s) && has(food, 76, 240.0));
        const CNutrientName nutrient(53, u"Other"_s);
        QVERIFY(has(nutrient, 0, 53) && has(nutrient, 1, 53) && has(nutrient, 2, u"Other"_s));
        CRecipeItem recipe;
        recipe.Clear();
        recipe.SetServingName(u"4 portions"_s);
        recipe.SetInstructions(u"Stir."_s);
        QVERIFY(has(recipe, 59, u"4 portions"_s) && has(recipe, 60, 1.0));
        QVERIFY(has(recipe, 61, u"Stir."_s));
        CDietEntry entry;
        entry.SetAmount(2.0);
        QVERIFY(has(entry, 61, 2.0));
        CWeightEntry weight;
        weight.SetMeasurement(7, 21.0);
        QVERIFY(has(weight, 9, 21.0));
        CProfileRecord profile;
        profile.SetBirthDate(QDate(1980, 2, 29));
        profile.SetHeightCm(170.0);
        profile.SetSetting(79, 7);
        profile.SetGoalDate(QDate(2030, 12, 31));
        profile.SetDietType(3);
        profile.SetTarget(53, 0.5);
        QVERIFY(has(profile, 0, 262144) && has(profile, 1, 1) && has(profile, 9, qint16{1980}));
        QVERIFY(has(profile, 12, 170.0) && has(profile, 93, qint16{7}));
        QVERIFY(has(profile, 100, qint16{31}) && has(profile, 104, qint16{3}));
        QVERIFY(has(profile, 158, 0.5));
    }

  private:
    CRecordingMessages m_messages;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<CRecordStore> m_store;
};

QTEST_GUILESS_MAIN(TestItemRecords)
#include "TestItemRecords.moc"
