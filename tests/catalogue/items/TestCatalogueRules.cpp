// Fields and numbers of exchange files, what makes a food fit to be stored, finding.
#include <cmath>
#include <limits>

#include "catalogue/exchange/CsvFields.h"
#include "catalogue/items/CatalogueRules.h"
#include "catalogue/items/FoodRules.h"
#include "platform/TextFile.h"
#include "support/CatalogueTest.h"

class TestCatalogueRules : public CCatalogueTest {
    Q_OBJECT

  private slots:
    void aLineFallsIntoFields() {
        const std::pair<QString, QString> rows[] = {
            {u"  \t"_s, u""_s},
            {u"a,b,"_s, u"<a><b>"_s},
            {u",, ,x"_s, u"<><><><x>"_s},
            {u"1, \"Milk, whole\" ,2"_s, u"<1><Milk><whole><2>"_s},  // a blank behind the quote
            {u"\"Milk, whole\",2"_s, u"<Milk, whole><2>"_s},
            {u"\"a \"b\" c\",d"_s, u"<a \"b\" c><d>"_s},
            {u"\"\",\"\""_s, u"<><\">"_s},
            {u"\""_s, u""_s},
            {u"\" a \", \"\" b \"\",c"_s, u"<a>< b ><c>"_s},  // trimmed, then unquoted
            {u"\u00A0a\u2003,\vb\f\t"_s, u"<a><b>"_s},
            {u" \"\",\"a"_s, u"<><a>"_s},
            {u"\u0001a\u001F,"_s, u"<\u0001a\u001F>"_s},  // no blanks
        };
        for (const auto& [line, expected] : rows) {
            CCsvFields fields(line);
            QString found;
            while (const std::optional<QStringView> field = fields.Next()) {
                found += u'<' + field->toString() + u'>';
            }
            QCOMPARE(found, expected);
        }
        // The nearest double: no other number is between it and its text.
        QVERIFY(ImportedNumber(u"96.48064786969077") == 96.48064786969077);
    }

    void numbersAreWrittenWithThreeDecimals() {
        const std::pair<double, QByteArray> rows[] = {
            {-0.0, "-0.000,"},
            {0.0015, "0.002,"},
            {1e308, QByteArray::number(1e308, 'f', 3).append(',')},
            {std::nan(""), "0.000,"},
            {std::numeric_limits<double>::infinity(), "0.000,"},
        };
        CTextFile file;
        QVERIFY(file.Create(Path(u"numbers.csv"_s)));
        CCsvLineWriter line(file);
        QByteArray expected;
        for (const auto& [number, text] : rows) {
            line.Number(number);
            expected += text;
        }
        line.EndLine();
        QVERIFY(file.Close());
        QCOMPARE(Load(Path(u"numbers.csv"_s)), expected + "\r\n");
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

    void anItemThatCannotBeReadIsNotRenamed() {
        for (const char* type : {"clear", "thick"}) {
            QVERIFY(Database().Foods().Write(-1, MakeFood(1, u"Soup"_s, QLatin1StringView(type))));
        }
        Change("UPDATE records SET body=substr(body, 1, length(body) - 1) WHERE id=?",
               {Database().Foods().RecordAt(1)});
        CCatalogueRules rules(Database(), kFoods);
        QCOMPARE(rules.RenameItems(1, u"Soup"_s, u" Broth "_s), QString());
        QCOMPARE(m_messages->Said(), u"Cannot rename foods."_s);
        QCOMPARE(rules.ItemsOfName(1, u"Broth"_s).entries.size(), 1U);
        const auto left = rules.ItemsOfName(1, u"Soup"_s).entries;
        QCOMPARE(left.size(), 1U);
        QCOMPARE(left.front().type, u"thick"_s);
    }

    void init() { MakeVolume(); }
    void cleanup() { DropVolume(); }
};

QTEST_GUILESS_MAIN(TestCatalogueRules)
#include "TestCatalogueRules.moc"
