// Records of all kinds: stored and read back whole, limits of texts, and bad indexes.
#include "store/Category.h"
#include "store/ComposedItem.h"
#include "store/DiaryEntries.h"
#include "store/ExerciseItem.h"
#include "store/FoodItem.h"
#include "store/ItemDatabase.h"
#include "store/ProfileRecord.h"
#include "support/RecordingMessages.h"

#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <limits>

using namespace Qt::StringLiterals;

namespace {
// A value of its own for every property of a layout; texts fill their capacity, up to 200.
PropertyList DistinctValues(const CRecordLayout& layout) {
    PropertyList values;
    for (int i = 0; i < layout.Count(); ++i) {
        const CPropertyDescription& property = layout.properties[i];
        switch (property.type) {
            case EPropertyType::Int16:
                values.emplace_back(static_cast<qint16>(-300 - i));
                break;
            case EPropertyType::Int32:
                values.emplace_back(70'000 + i);
                break;
            case EPropertyType::Double:
                values.emplace_back(i + 1.0 / 3.0);
                break;
            case EPropertyType::Text:
                values.emplace_back(
                    QString::number(i).rightJustified(qMin(property.capacity, 200), u'\u00e9'));
                break;
            case EPropertyType::FileTime:
                values.emplace_back(qint64{130'000'000'000'000'000} + i);
                break;
            case EPropertyType::Blob:
                values.emplace_back(QByteArray(100 + i, '\0') + QByteArray::number(i));
                break;
        }
    }
    return values;
}
}  // namespace

class TestItemRecords : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        m_messages = std::make_unique<CRecordingMessages>();
        m_folder = std::make_unique<QTemporaryDir>();
        m_store = std::make_unique<CRecordStore>();
        QVERIFY(m_store->MountVolume(m_folder->filePath(u"new/folder/v.db"_s)));
    }

    void cleanup() {
        m_store.reset();
        const auto messages = std::move(m_messages);
        QCOMPARE(messages->shown, QStringList());
    }

    void everyPropertyIsStored_data() {
        QTest::addColumn<const CRecordLayout*>("layout");
        QTest::addColumn<int>("count");
        QTest::addColumn<quint32>("sort");
        QTest::newRow("foods") << &kFoodLayout << 77 << 3U;
        QTest::newRow("menus") << &kMenuLayout << 61 << 3U;
        QTest::newRow("recipes") << &kRecipeLayout << 62 << 3U;
        QTest::newRow("exercise library") << &kExerciseLibLayout << 5 << 3U;
        QTest::newRow("categories") << &kCategoryLayout << 5 << 2U;
        QTest::newRow("nutrient names") << &kNutrientNameLayout << 3 << 3U;
        QTest::newRow("profile") << &kProfileLayout << 159 << 3U;
        QTest::newRow("diet") << &kDietLayout << 62 << 64U;
        QTest::newRow("weight") << &kWeightLayout << 15 << 64U;
        QTest::newRow("exercises") << &kExercisesLayout << 11 << 64U;
        QTest::newRow("view settings") << &kViewSettingsLayout << 8 << 3U;
    }

    void everyPropertyIsStored() {
        QFETCH(const CRecordLayout*, layout);
        QFETCH(int, count);
        QFETCH(quint32, sort);
        QCOMPARE(layout->Count(), count);
        QCOMPARE(layout->SortPropertyId(), sort);
        QSet<QByteArray> names;
        for (const CPropertyDescription& property : layout->properties) {
            names.insert(property.name);
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
        QCOMPARE(m_messages->TakeShown(),
                 QStringList{
                     u"Database error. Wrong number of properties, record #0, props = 62 (61)"_s});
        // No such position: silently nothing.
        QVERIFY(!menus.Read(1, menu));
        QVERIFY(!menus.Write(1, menu));
        QCOMPARE(menus.Count(), 1);
        QVERIFY(!menus.Delete(1));
        QCOMPARE(m_messages->TakeShown(), QStringList{u"Cannot delete record. Error=2"_s});
        menus.Close();
        QVERIFY(!menus.Write(-1, menu));
        QCOMPARE(m_messages->TakeShown(), QStringList{u"Cannot add menu (error# 2)."_s});
    }

    void failuresOfTheStoreShowTheirNumbers() {
        QVERIFY(!m_store->OpenDatabase(u"Nowhere"_s, 3, 0, true).IsValid());
        QCOMPARE(m_messages->TakeShown(), QStringList());
        QVERIFY(!m_store->OpenDatabase(QString(32, u'x'), 3, 0, false).IsValid());
        QCOMPARE(m_messages->TakeShown(), QStringList{u"ERROR: CeOpenDatabaseEx failed (123)"_s});
        QCOMPARE(m_messages->lastIcon, EMessageIcon::Stop);
        CRecordStore second;
        QVERIFY(!second.MountVolume(m_folder->filePath(u"new/folder/v.db"_s)));
        QCOMPARE(m_messages->TakeShown(), QStringList{u"ERROR: CeMountDBVol failed (32)"_s});
    }

    void readingMovesOn() {
        CDatabaseHandle handle = m_store->OpenDatabase(u"N"_s, 3, 0, false);
        for (const qint32 key : {5, 1, 3, 3}) {
            QVERIFY(m_store->WriteRecord(handle, 0, {key}));
        }
        QVERIFY(m_store->SeekToPosition(handle, 1) != 0);
        PropertyList read;
        for (const qint32 key : {3, 3, 5}) {
            QVERIFY(m_store->ReadCurrent(handle, read));
            QVERIFY(read == PropertyList{key});
        }
        QVERIFY(!m_store->ReadCurrent(handle, read));
        QCOMPARE(m_store->FirstPositionOf(handle, 3), 1);
        QCOMPARE(m_store->FirstPositionOf(handle, 4), -1);
        QCOMPARE(m_store->FirstPositionInRange(handle, 4, 9), 3);
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

    void longServingNamesEndInDots_data() {
        QTest::addColumn<int>("length");
        QTest::addColumn<QString>("stored");
        // Characters are numbered 1 to 9, 0, 1 to 9, 0, ...
        const QString sixty = u"1234567890"_s.repeated(6);
        QTest::newRow("64 fit") << 64 << sixty + u"1234"_s;
        QTest::newRow("65: 59 stay, then 64 and 65") << 65 << sixty.first(59) + u"45..."_s;
        QTest::newRow("80 are as 65") << 80 << sixty.first(59) + u"45..."_s;
    }

    void longServingNamesEndInDots() {
        QFETCH(int, length);
        QFETCH(QString, stored);
        CFoodItem food;
        food.SetServingName(9, u"1234567890"_s.repeated(8).first(length));
        QCOMPARE(food.GetServingName(9), stored);
        QVERIFY(stored.size() == 64);
    }

    void badIndexesAreNamed() {
        CFoodItem food;
        const CFoodItem before = food;
        QStringList expected;
        for (const int index : {-1, 54}) {
            QCOMPARE(food.GetNutrientValue(index), 0.0);
            food.SetNutrientValue(index, 1.0);
            expected << u"GetNutrientValue --> WRONG INDEX"_s
                     << u"SetNutrientValue --> WRONG INDEX"_s;
        }
        for (const int index : {-1, 10}) {
            QCOMPARE(food.GetServingName(index), u"Index error."_s);
            QCOMPARE(food.GetServingNameW(index), u"Index error."_s);
            food.SetServingName(index, u"cup"_s);
            QCOMPARE(food.GetServingWeight(index), 0.0);
            food.SetServingWeight(index, 1.0);
            expected << u"GetServingName --> WRONG INDEX"_s << u"GetServingNameW --> WRONG INDEX"_s
                     << u"SetServingName --> WRONG INDEX."_s
                     << u"GetServingWeight --> WRONG INDEX."_s
                     << u"SetServingWeight --> WRONG INDEX."_s;
        }
        QCOMPARE(m_messages->TakeShown(), expected);
        QVERIFY(food == before);
        CWeightEntry weight;
        weight.SetMeasurement(13, 1.0);
        QCOMPARE(weight.GetMeasurement(13), -1.0);
        QCOMPARE(weight.GetMeasurement(-1), -1.0);
        QVERIFY(weight == CWeightEntry());
    }

    void fieldsStandAtTheirNumbers() {
        CFoodItem food;
        food.SetNutrientValue(53, 1.5);
        food.SetServingName(9, u"cup"_s);
        food.SetServingWeight(9, 240.0);
        QVERIFY(food.GetProperties()[56] == PropertyValue(1.5));
        QVERIFY(food.GetProperties()[75] == PropertyValue(u"cup"_s));
        QVERIFY(food.GetProperties()[76] == PropertyValue(240.0));
        CRecipeItem recipe;
        recipe.Clear();
        recipe.SetServingName(u"4 portions"_s);
        recipe.SetInstructions(u"Stir."_s);
        QVERIFY(recipe.GetProperties()[59] == PropertyValue(u"4 portions"_s));
        QVERIFY(recipe.GetProperties()[60] == PropertyValue(1.0));
        QVERIFY(recipe.GetProperties()[61] == PropertyValue(u"Stir."_s));
        CDietEntry entry;
        entry.SetAmount(2.0);
        QVERIFY(entry.GetProperties()[61] == PropertyValue(2.0));
        CWeightEntry weight;
        weight.SetMeasurement(7, 21.0);
        QVERIFY(weight.GetProperties()[9] == PropertyValue(21.0));
        CProfileRecord profile;
        profile.SetBirthDate(QDate(1980, 2, 29));
        profile.SetHeightCm(170.0);
        profile.SetSetting(79, 7);
        profile.SetGoalDate(QDate(2030, 12, 31));
        profile.SetDietType(3);
        profile.SetTarget(53, 0.5);
        const PropertyList& stored = profile.GetProperties();
        QVERIFY(stored[0] == PropertyValue(qint32{262144}));
        QVERIFY(stored[1] == PropertyValue(qint32{1}));
        QVERIFY(stored[9] == PropertyValue(qint16{1980}));
        QVERIFY(stored[12] == PropertyValue(170.0));
        QVERIFY(stored[93] == PropertyValue(qint16{7}));
        QVERIFY(stored[100] == PropertyValue(qint16{31}));
        QVERIFY(stored[104] == PropertyValue(qint16{3}));
        QVERIFY(stored[158] == PropertyValue(0.5));
        QCOMPARE(profile.GetBirthDate(), QDate(1980, 2, 29));
        QVERIFY(!profile.GetStartDate().isValid());
    }

  private:
    std::unique_ptr<CRecordingMessages> m_messages;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<CRecordStore> m_store;
};

QTEST_GUILESS_MAIN(TestItemRecords)
#include "TestItemRecords.moc"
