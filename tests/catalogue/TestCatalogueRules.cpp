// Fields and numbers of exchange files, what makes a food fit to be stored, finding.
#include <cmath>
#include <limits>

#include "catalogue/CatalogueKinds.h"
#include "catalogue/CsvFields.h"
#include "catalogue/FindItems.h"
#include "catalogue/FoodRules.h"
#include "support/CatalogueTest.h"
#include "support/DataRows.h"

using namespace Qt::StringLiterals;

class TestCatalogueRules : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void aLineFallsIntoFields_data() {
        AddRows<QString, QStringList>({
            {"empty", u""_s, {}},
            {"blanks", u"  \t"_s, {}},
            {"last comma closes", u"a,b,"_s, {u"a"_s, u"b"_s}},
            {"empty fields", u",, ,x"_s, {u""_s, u""_s, u""_s, u"x"_s}},
            {"blank behind the closing quote",
             u"1, \"Milk, whole\" ,2"_s,
             {u"1"_s, u"Milk"_s, u"whole"_s, u"2"_s}},
            {"comma in quotes", u"\"Milk, whole\",2"_s, {u"Milk, whole"_s, u"2"_s}},
            {"quotes within", u"\"a \"b\" c\",d"_s, {u"a \"b\" c"_s, u"d"_s}},
            {"quote without partner", u"\"Milk, whole"_s, {u"Milk"_s, u"whole"_s}},
            {"empty quotes", u"\"\",\"\""_s, {u""_s, u"\""_s}},
            {"one quote", u"\""_s, {}},
            {"closing quote alone", u"a\",b"_s, {u"a"_s, u"b"_s}},
        });
    }
    void aLineFallsIntoFields() {
        const auto& [line, expected] = DataRow<QString, QStringList>();
        CCsvFields fields(line);
        QStringList found;
        while (const std::optional<QStringView> field = fields.Next()) {
            found.append(field->toString());
        }
        QCOMPARE(found, expected);
    }

    void numbersAreReadAsFarAsTheyGo_data() {
        AddRows<QString, double>({
            {"plain", u"717.004"_s, 717.004},
            {"no digits before the point", u".5"_s, 0.5},
            {"negative", u"-3.25"_s, -3.25},
            {"leading part", u"12abc"_s, 12.0},
            {"exponent", u"1.5e3"_s, 1500.0},
            {"19 characters", u"1234567890123456.25"_s, 1234567890123456.25},
            {"empty", {}, 0.0},
            {"20 characters", u"1234567890123456.250"_s, 0.0},
            {"too large", u"1e999"_s, 0.0},
        });
    }
    void numbersAreReadAsFarAsTheyGo() {
        const auto& [field, number] = DataRow<QString, double>();
        QCOMPARE(ImportedNumber(field), number);
    }

    void numbersAreWrittenWithThreeDecimals_data() {
        AddRows<double, QByteArray>({
            {"fraction", 1.5, "1.500,"},
            {"leading zeros", 0.007, "0.007,"},
            // The nearest double to 1.0005 lies below it, the one to 0.0015 above.
            {"half below", 1.0005, "1.000,"},
            {"half above", 0.0015, "0.002,"},
            {"carry", 999.9996, "1000.000,"},
            {"negative", -1.25, "-1.250,"},
            {"large", 123456789012345.0, "123456789012345.000,"},
            {"largest", 1e308, QByteArray::number(1e308, 'f', 3).append(',')},
            {"nan", std::nan(""), "0.000,"},
            {"inf", std::numeric_limits<double>::infinity(), "0.000,"},
        });
    }
    void numbersAreWrittenWithThreeDecimals() {
        const auto& [number, text] = DataRow<double, QByteArray>();
        QByteArray line;
        AppendNumber(line, number);
        QCOMPARE(line, text);
    }

    void aFoodIsRefusedForTheFirstReason() {
        const qint32 dairy = AddCategory(Database(), u"Dairy"_s);
        QVERIFY(Database().Foods().Write(-1, MakeFood(dairy, u"Milk"_s, u"whole"_s)));
        using CServings = std::vector<std::pair<QString, double>>;
        const auto refusal = [&, this](qint32 category, const QString& name, const QString& type,
                                       const CServings& servings, int position = -1,
                                       EServingMode mode = EServingMode::Weighed) {
            CFoodItem food = MakeFood(category, name, type);
            food.SetServingName(0, {});
            for (size_t i = 0; i < servings.size(); ++i) {
                food.SetServingName(static_cast<int>(i), servings[i].first);
                food.SetServingWeight(static_cast<int>(i), servings[i].second);
            }
            return CheckFood(Database(), food, mode, position).value_or(u"taken"_s);
        };
        const CServings cup = {{u"1 cup"_s, 240}};
        QCOMPARE(refusal(-1, {}, {}, {}), u"Please enter food name"_s);
        QCOMPARE(refusal(-1, u"Milk"_s, {}, {}), u"Please enter food type"_s);
        QCOMPARE(refusal(dairy, u"Milk"_s, u"whole"_s, {}),
                 u"Food 'Milk, whole' already exists in category 'Dairy'."_s);
        QCOMPARE(refusal(-1, u"Milk"_s, u"dry"_s, {}), u"Please enter at least one serving."_s);
        QCOMPARE(refusal(-1, u"Milk"_s, u"dry"_s, {cup[0], {u"1 tbsp"_s, 0}}),
                 u"Please enter weight in gm for serving 1 tbsp"_s);
        QCOMPARE(refusal(-1, u"Milk"_s, u"dry"_s, cup), u"There is no category selected."_s);
        QCOMPARE(refusal(dairy, u"Milk"_s, u"dry"_s, cup), u"taken"_s);
        QCOMPARE(refusal(dairy, u"Milk"_s, u"whole"_s, cup, 0), u"taken"_s);  // its own double
        QCOMPARE(
            refusal(dairy, u"Milk"_s, u"dry"_s, {{u"1 cup"_s, 0}}, -1, EServingMode::OneServing),
            u"taken"_s);
    }

    void findLooksInNameAndTypeWithoutCase_data() {
        AddRows<QString, QString, int, int>({
            {"by name", u"mil"_s, u""_s, 0, 0},
            {"goes on behind the last match", u"MIL"_s, u""_s, 1, 2},
            {"by both", u"milk"_s, u"SKIM"_s, 0, 2},
            {"by type alone", u""_s, u"stra\u00dfe"_s, 0, 1},
            {"does not start over", u"milk"_s, u""_s, 3, -1},
            {"does not see the settings", u""_s, u""_s, 3, -1},
        });
    }
    void findLooksInNameAndTypeWithoutCase() {
        const auto& [name, type, first, found] = DataRow<QString, QString, int, int>();
        for (const auto& [foodName, foodType] : {std::pair{u"Milk"_s, u"whole"_s},
                                                 {u"Butter"_s, u"STRASSE"_s},
                                                 {u"Buttermilk"_s, u"skimmed"_s}}) {
            QVERIFY(Database().Foods().Write(-1, MakeFood(1, foodName, foodType)));
        }
        QVERIFY(Database().SaveViewSettings(kFoods, CViewSettings()));
        QCOMPARE(FindNextItem(Database(), kFoods, name, {type}, first), found);
        QCOMPARE(Database().CountItems(kFoods), 3);
    }

    void init() { MakeVolume(); }
    void cleanup() { DropVolume(); }
};

QTEST_GUILESS_MAIN(TestCatalogueRules)
#include "TestCatalogueRules.moc"
