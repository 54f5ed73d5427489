// What foods become of tables: made-up ones, and real ones where they are beside the project.
#include <optional>

#include "TablesFixture.h"
#include "support/DataRows.h"

namespace {
const QString kTwoOthers = u"Other foods:Cake Other foods:Date Fruit:Apple Soups:Broth"_s;
}  // namespace

class TestFoodTables : public CTablesTest {
    Q_OBJECT

  private slots:
    void init() { MakeTables(); }
    void cleanup() { DropVolume(); }

    void amountsAreConverted_data() {
        AddRows<QByteArray, int, double>({
            {"energy", "2047=5 1008=0 2048=4", 0, 0},
            {"by specific factors", "1062=9 2047=5 2048=4", 0, 4},
            {"by general factors", "1062=9 2047=5", 0, 5},
            {"kJ", "1062=418", 0, 100},  // 418 / 4.18
            {"the largest of several", "1008=1 1003=1 1003=3.25 1003=2", 1, 3.25},
            {"not measured", "1008=1 1003=", 1, 0},
            {"a number that only begins so", "1008=1 1064=5", 6, 0},
            {"sugars of labels", "1008=1 1063=5", 6, 5},
            {"by numbers", "208=7 203=3", 1, 3},
            {"by the number of another nutrient", "1008=1 269=5", 6, 0},
            {"a number that is an id", "1008=1 204=3", 2, 0},
            {"in another unit", "1008=1 1188=0.02", 9, 20},
            {"vitamin A", "1008=1 1104=100 1105=9 1106=8", 27, 100},
            // 3 / 0.3 + 12 / 0.6 + 6 / 1.2 + 9 / 1.2 = 10 + 20 + 5 + 7.5
            {"vitamin A of its parts", "1008=1 1105=3 1107=12 1108=6 1120=9 1106=5", 27, 42.5},
            {"beta-carotene is not given", "1008=1 1108=0 1120=27 1106=24", 27, 80},  // 24 / 0.3
            {"vitamin A as retinol", "1008=1 1106=3", 27, 10},                        // 3 / 0.3
            {"vitamin E in units", "1008=1 1258=10", 28, 6.7},  // 10 x 0.67 mg
            {"vitamin E of labels", "1008=1 1124=10", 28, 6.7},
            {"vitamin D", "1008=1 1114=2.3 1110=91", 29, 0.0023},  // micrograms / 1000
            {"vitamin D in units", "1008=1 1110=92", 29, 0.0023},  // 92 / 40 = 2.3 micrograms
        });
    }
    void amountsAreConverted() {
        const auto& [amounts, nutrient, expected] = DataRow<QByteArray, int, double>();
        m_tables["nutrient.csv"] +=
            "1188,Calcium,gm,301,1\n1258,Vitamin E,IU,323,1\n1124,Vitamin E,IU,340,1\n"
            "1064,Sugars,G,269x,1\n1004,Fat,G,204,1\n204,Else,G,999,1\n";
        SetAmounts(amounts);
        QCOMPARE(Import(), u"Imported 1 foods."_s);
        CFoodItem food;
        QVERIFY(Database().Foods().Read(0, food));
        QCOMPARE(food.GetNutrientValue(nutrient), expected);
    }

    void servingsAreNinePortionsAndHundredGrams() {
        m_tables["food_portion.csv"] +=
            "5,7,,1,1000,,,0\n6,7,,1,1000,,,\n7,7,,1,9999,,,9\n"  // no weight, no text
            "4,7,,100,9999,,gm,100\n"                             // what closes the list
            "3,7,0,1,9999,,\"pat (1\"\" sq)\",5\n2,7,1,1,1000,,whole,138\n8,9,1,1,1000,,,1\n";
        QCOMPARE(Import(), u"Imported 1 foods."_s);
        QCOMPARE(
            Listed(),
            u"Fruit|Apple|raw|1 pat (1'' sq) 5; 1 cup, sliced 109; 1 cup, whole 138; 100 gm 100"_s);
        QCOMPARE(m_messages->details.last(),
                 u"Portions without a text or a weight in grams, left out: 3"_s);
        for (int i = 2; i < 12; ++i) {
            m_tables["food_portion.csv"] += "1,7,9," + QByteArray::number(i) + ",1000,,,1\n";
        }
        QCOMPARE(Import(EDuplicatePolicy::Overwrite),
                 u"Imported 1 foods. Replaced 1 existing foods."_s);
        QVERIFY(Listed().endsWith(u"; 7 cup 1; 100 gm 100"_s));
        QVERIFY(m_messages->details.last().endsWith(
            u"\nPortions after the ninth of a food, left out: 4"_s));
        m_tables.remove("food_portion.csv");
        m_tables.remove("measure_unit.csv");
        m_tables.remove("food_category.csv");
        QCOMPARE(Import(), u"Imported 1 foods."_s);
        QVERIFY(Listed().endsWith(u"|Other foods|Apple|raw|100 gm 100"_s));
    }

    void onlyFoodsAreTaken() {
        m_tables["food.csv"] =
            "publication_date,food_category_id,description,data_type,fdc_id\n"
            "x,1,Apple,sub_sample_food,6\nx,1,\"Apple, raw\",foundation_food,7\n"
            "x,1,\"Pear, raw\",survey_fndds_food,8\nx,,Plum,sr_legacy_food,9\n"
            "x,1,Fig,experimental_food,10\nx,1,\"Pear, again\",sr_legacy_food,8\n"
            "x,1,,sr_legacy_food,11\nx,1,Salt,sr_legacy_food,12\nx,1,\"Ice, " +
            QByteArray(999, 'c') + "\",sr_legacy_food,13\n";
        SetAmounts("1008=1 1300=1", {7, 8, 9, 10, 11, 6});
        m_tables["food_nutrient.csv"] += "1,12,1003,1\n";
        m_tables["nutrient.csv"] += ("1300,Iron," + QByteArray(999, 'u') + ",303,1\n").repeated(6);
        m_request.foodTypes = 0b0110;
        QCOMPARE(Import(), u"Imported 2 foods."_s);
        QCOMPARE(Listed(), u"Fruit|Pear|raw|100 gm 100|Other foods|Plum|plain|100 gm 100"_s);
        QCOMPARE(m_messages->details.last(),
                 u"Rows that are not foods: 2\nFoods of other types, left out: 1\n"
                 "Foods listed twice, the second one left out: 1\n"
                 "Foods without a name, left out: 1\n"
                 "Foods without energy, left out: 2 ('Salt, plain', 'Ice, %1...')\n"
                 "Foods in 'Other foods', since they have no category: 1\n"
                 "Nutrients in unknown units, left out: 6 (%2...)"_s.arg(
                     QString(119, u'c'), u"303 (%1...), "_s.arg(QString(37, u'u')).repeated(5)));
    }

    void brandedFoodsHaveTheirOwnTable() {
        m_tables["food.csv"] =
            "fdc_id,data_type,description,food_category_id\n"
            "1,branded_food,\"SOUP, TOMATO\",2\n2,branded_food,ACME JUICE,1\n"
            "3,branded_food,TEA,\n4,branded_food,RICE,1\n5,sr_legacy_food,Tea,1\n"
            "6,branded_food,PILLS,\n8,branded_food,BREAD,\n";
        m_tables["branded_food.csv"] =
            "fdc_id,brand_owner,brand_name,serving_size,serving_size_unit,"
            "household_serving_fulltext,branded_food_category\n"
            "2,\"Acme, Inc.\",Acme,240,ml,1 cup,Drinks\n1,\"Acme, Inc.\",Acme,30.50,GRM,,Canned\n"
            "3,\"Acme, Inc.\", ,2,g,1 bag,\n5,Acme,Acme,1,g,,Drinks\n"
            "6,,,30,MG,1 pill,Drinks\n8,,,100,g,,Drinks\n";
        SetAmounts("1008=1", {1, 2, 3, 4, 5, 6, 8});
        m_tables["food_portion.csv"] += "1,1,1,1,1000,,,240\n";
        QCOMPARE(Import(), u"Imported 7 foods."_s);
        QCOMPARE(Listed(),
                 u"Canned|Acme SOUP|TOMATO|30.5 gm 30.5; 1 cup 240; 100 gm 100|"
                 "Drinks|ACME JUICE|plain, per 100 ml|100 gm 100|"
                 "Drinks|PILLS|plain|100 gm 100|Drinks|BREAD|plain|100 gm 100|"
                 "Other foods|Acme, Inc. TEA|plain|1 bag 2; 100 gm 100|"
                 "Other foods|RICE|plain|100 gm 100|Fruit|Tea|plain|100 gm 100"_s);
        QCOMPARE(m_messages->details.last(),
                 u"Foods in 'Other foods', since they have no category: 2\n"
                 "Portions without a text or a weight in grams, left out: 1"_s);
    }

    void foodsOfOneNameAreAllKept() {
        const QByteArray longType(130, 'x');
        m_tables["food.csv"] +=
            "8,sr_legacy_food,\"Apple, raw\",1\n9,sr_legacy_food,\"Apple, raw\",2\n"
            "2000123,sr_legacy_food,\"Apple," +
            longType +
            "y\",1\n"
            "2000124,sr_legacy_food,\"Apple," +
            longType + "z\",1\n";
        SetAmounts("1008=1", {7, 8, 9, 2000123, 2000124});
        m_tables.remove("food_portion.csv");
        const QString x(130, u'x');
        // 110 + 3 + 14 = 127
        const QString all =
            u"Fruit|Apple|raw|100 gm 100|Fruit|Apple|raw (FDC 8)|100 gm 100|"
            "Fruit|Apple|%1...|100 gm 100|Fruit|Apple|%2... (FDC 2000124)|100 gm 100|"
            "Soups|Apple|raw|100 gm 100"_s.arg(x.first(124), x.first(110));
        QCOMPARE(Import(), u"Imported 5 foods."_s);
        QCOMPARE(Listed(), all);
        QVERIFY(m_messages->details.last().endsWith(
            u"same category, name and type as another, FDC number added to the type: 2"_s));
        // The same foods are recognized.
        QCOMPARE(Import(EDuplicatePolicy::Skip), u"Imported 0 foods. Skipped 5 existing foods."_s);
        QCOMPARE(Import(EDuplicatePolicy::Overwrite),
                 u"Imported 5 foods. Replaced 5 existing foods."_s);
        QCOMPARE(Listed(), all);
        QCOMPARE(Import(EDuplicatePolicy::DoNotCheck), u"Imported 5 foods."_s);
        QCOMPARE(Database().Foods().Count(), 10);
    }

    void categoriesPastTheLastGoToOtherFoods_data() {
        const auto noRoom = u"Foods in 'Other foods', since no more categories can be added: "_s;
        AddRows<int, QByteArray, QString, QString>({
            {"all have room", 252, "", u"Fruit:Apple Soups:Broth C:Cake D:Date"_s, u""_s},
            {"two have none", 253, "", kTwoOthers, QString(noRoom + u'2')},
            {"none is left", 256, "", u""_s,
             u"Foods left out, since no more categories can be added: 4"_s},
            {"a branded one has no row", 253, "fdc_id,branded_food_category\n9,C\n", kTwoOthers,
             noRoom + u"1\nFoods in 'Other foods', since they have no category: 1"_s},
        });
    }
    void categoriesPastTheLastGoToOtherFoods() {
        const auto& [count, branded, expected, detail] =
            DataRow<int, QByteArray, QString, QString>();
        AddFoodsOfFourCategories(count);
        m_tables["branded_food.csv"] = branded;
        (void)Import();
        QCOMPARE(Filed(), expected);
        QCOMPARE(m_messages->details.join(u' '), detail);
    }

    /// A disk that is full for a while files no food under a wrong category.
    void aWriteThatFailsOnceIsNoticed() {
        std::optional<CFileSizeLimit> full;
        int pumps = 1;
        for (int pump = 1; pump <= pumps; ++pump) {
            MakeVolume();
            AddFoodsOfFourCategories(253);
            m_messages->progress.onPump = [&] {
                full.reset();
                pumps = m_messages->progress.pumps;
                if (pumps == pump) {
                    full.emplace(1);
                }
            };
            const QString said = Import();
            full.reset();
            const QString filed = Filed();
            const bool isSaid = said.endsWith(u"|Import stopped.|Imported 0 foods."_s);
            QVERIFY2(filed.isEmpty() ? isSaid : filed == kTwoOthers, qPrintable(said + filed));
        }
    }

    void theSampleHasItsNineFoods() {
        m_request.folder = QStringLiteral(VELMORA_SAMPLES "/fdc-sample");
        if (!QFile::exists(m_request.folder)) {
            QSKIP("there are no sample tables");
        }
        QVERIFY(ImportFoodTables(Database(), m_request));
        QCOMPARE(m_messages->Said(), u"Imported 9 foods."_s);
        QCOMPARE(m_messages->details, QStringList{u"Rows that are not foods: 18"_s});
        // Of vitamin A, kale has 2870 / 0.6 + 27 / 1.2 units.
        QString found;
        for (const CFoodItem& food : Foods()) {
            found += u"%1 %2 %3|"_s.arg(food.GetName())
                         .arg(food.GetNutrientValue(0))
                         .arg(food.GetNutrientValue(27));
        }
        QCOMPARE(found,
                 u"Hummus 229 22.5|Tomatoes 27 0|Beans 21 0|Kale 35 4805.83|Frankfurter 314 10|"
                 "Nuts 620 35.8333|Egg 150 0|Egg 48 0|Egg 376 0|"_s);
        QVERIFY(Listed().contains(u"|Kale|raw|1 cup, pieces of ~1'' 20.6; 100 gm 100"_s));
    }

  private:
    /// Beside `count` categories of menus.
    void AddFoodsOfFourCategories(int count) {
        CRecordGroup group(Database().GetStore());
        for (int i = 0; i < count; ++i) {
            AddCategory(Database(), QString::number(i), kMenus);
        }
        QVERIFY(group.Commit());
        m_tables = kTables;
        m_tables["food_category.csv"] += "3,0300,C\n4,0400,D\n";
        m_tables["food.csv"] +=
            "8,sr_legacy_food,Broth,2\n9,branded_food,Cake,3\n10,branded_food,Date,4\n";
        SetAmounts("1008=1", {7, 8, 9, 10});
    }

    /// "Category:name" of all foods.
    QString Filed() {
        QStringList filed;
        for (const CFoodItem& food : Foods()) {
            filed.append(Database().Categories().NameOf(kFoods, food.GetCategoryId()) + u':' +
                         food.GetName());
        }
        return filed.join(u' ');
    }

    /// "Category|name|type|serving weight; serving weight" of all foods.
    QString Listed() {
        QStringList rows;
        for (const CFoodItem& food : Foods()) {
            QStringList servings;
            for (int i = 0; i < kServingCount && !food.GetServingName(i).isEmpty(); ++i) {
                servings.append(food.GetServingName(i) + u' ' +
                                QString::number(food.GetServingWeight(i)));
            }
            rows += {Database().Categories().NameOf(kFoods, food.GetCategoryId()), food.GetName(),
                     food.GetType(), servings.join(u"; "_s)};
        }
        return rows.join(u'|');
    }
};

QTEST_GUILESS_MAIN(TestFoodTables)
#include "TestFoodTables.moc"
