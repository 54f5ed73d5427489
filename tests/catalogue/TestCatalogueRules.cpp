// Fields and numbers of exchange files, what makes a food fit to be stored, finding.
#include <QTemporaryDir>
#include <QTest>
#include <cmath>
#include <limits>

#include "catalogue/CatalogueKinds.h"
#include "catalogue/CsvFields.h"
#include "catalogue/FindItems.h"
#include "catalogue/FoodRules.h"
#include "catalogue/FoodSamples.h"
#include "support/RecordingMessages.h"

using namespace Qt::StringLiterals;

class TestCatalogueRules : public QObject {
    Q_OBJECT

  private slots:
    void aLineFallsIntoFields_data() {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QStringList>("fields");
        QTest::newRow("empty") << u""_s << QStringList();
        QTest::newRow("blanks") << u"  \t"_s << QStringList();
        QTest::newRow("last comma closes") << u"a,b,"_s << QStringList({u"a"_s, u"b"_s});
        QTest::newRow("empty fields") << u",, ,x"_s << QStringList({u""_s, u""_s, u""_s, u"x"_s});
        QTest::newRow("blank behind the closing quote")
            << u"1, \"Milk, whole\" ,2"_s << QStringList({u"1"_s, u"Milk"_s, u"whole"_s, u"2"_s});
        QTest::newRow("comma in quotes")
            << u"\"Milk, whole\",2"_s << QStringList({u"Milk, whole"_s, u"2"_s});
        QTest::newRow("quotes within")
            << u"\"a \"b\" c\",d"_s << QStringList({u"a \"b\" c"_s, u"d"_s});
        QTest::newRow("quote without partner")
            << u"\"Milk, whole"_s << QStringList({u"Milk"_s, u"whole"_s});
        QTest::newRow("empty quotes") << u"\"\",\"\""_s << QStringList({u""_s, u"\""_s});
        QTest::newRow("one quote") << u"\""_s << QStringList();
        QTest::newRow("closing quote alone") << u"a\",b"_s << QStringList({u"a"_s, u"b"_s});
    }
    void aLineFallsIntoFields() {
        QFETCH(QString, line);
        CCsvFields fields(line);
        QStringList found;
        while (const std::optional<QStringView> field = fields.Next()) {
            found.append(field->toString());
        }
        QTEST(found, "fields");
    }

    void longTextsAreCut() {
        QCOMPARE(CutImportedText(QString(127, u'x')), QString(127, u'x'));
        QCOMPARE(CutImportedText(QString(128, u'x')), QString(124, u'x') + u"..."_s);
    }

    void numbersAreReadAsFarAsTheyGo_data() {
        QTest::addColumn<QString>("field");
        QTest::addColumn<double>("number");
        QTest::newRow("plain") << u"717.004"_s << 717.004;
        QTest::newRow("no digits before the point") << u".5"_s << 0.5;
        QTest::newRow("negative") << u"-3.25"_s << -3.25;
        QTest::newRow("leading part") << u"12abc"_s << 12.0;
        QTest::newRow("exponent") << u"1.5e3"_s << 1500.0;
        QTest::newRow("none") << u"abc"_s << 0.0;
        QTest::newRow("point alone") << u"."_s << 0.0;
        QTest::newRow("19 characters") << u"1234567890123456.25"_s << 1234567890123456.25;
        QTest::newRow("20 characters") << u"1234567890123456.250"_s << 0.0;
        QTest::newRow("nan") << u"nan"_s << 0.0;
        QTest::newRow("inf") << u"inf"_s << 0.0;
        QTest::newRow("too large") << u"1e999"_s << 0.0;
    }
    void numbersAreReadAsFarAsTheyGo() {
        QFETCH(QString, field);
        QTEST(ImportedNumber(field), "number");
    }

    void numbersAreWrittenWithThreeDecimals_data() {
        QTest::addColumn<double>("number");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("zero") << 0.0 << QByteArray("0.000,");
        QTest::newRow("fraction") << 1.5 << QByteArray("1.500,");
        QTest::newRow("leading zeros") << 0.007 << QByteArray("0.007,");
        // The nearest double to 1.0005 lies below it, the one to 0.0015 above.
        QTest::newRow("half below") << 1.0005 << QByteArray("1.000,");
        QTest::newRow("half above") << 0.0015 << QByteArray("0.002,");
        QTest::newRow("carry") << 999.9996 << QByteArray("1000.000,");
        QTest::newRow("negative") << -1.25 << QByteArray("-1.250,");
        QTest::newRow("large") << 123456789012345.0 << QByteArray("123456789012345.000,");
        QTest::newRow("largest") << 1e308 << QByteArray::number(1e308, 'f', 3).append(',');
        QTest::newRow("nan") << std::nan("") << QByteArray("0.000,");
        QTest::newRow("inf") << std::numeric_limits<double>::infinity() << QByteArray("0.000,");
    }
    void numbersAreWrittenWithThreeDecimals() {
        QFETCH(double, number);
        QByteArray line;
        AppendNumber(line, number);
        QTEST(line, "text");
    }

    void aFoodIsRefusedForTheFirstReason_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QStringList>("servings");
        QTest::addColumn<bool>("weighed");
        QTest::addColumn<bool>("hasCategory");
        QTest::addColumn<QString>("message");
        const QStringList none;
        const QStringList weighed = {u"1 cup"_s, u"240"_s};
        QTest::newRow("name") << u""_s << u""_s << none << true << false
                              << u"Please enter food name"_s;
        QTest::newRow("type") << u"Milk"_s << u""_s << none << true << false
                              << u"Please enter food type"_s;
        QTest::newRow("exists") << u"Milk"_s << u"whole"_s << none << true << true
                                << u"Food 'Milk, whole' already exists in category 'Dairy'."_s;
        QTest::newRow("serving") << u"Milk"_s << u"dry"_s << none << true << false
                                 << u"Please enter at least one serving."_s;
        QTest::newRow("weight") << u"Milk"_s << u"dry"_s
                                << (weighed + QStringList{u"1 tbsp"_s, u"0"_s}) << true << false
                                << u"Please enter weight in gm for serving 1 tbsp"_s;
        QTest::newRow("category") << u"Milk"_s << u"dry"_s << weighed << true << false
                                  << u"There is no category selected."_s;
        QTest::newRow("same name, other type")
            << u"Milk"_s << u"dry"_s << weighed << true << true << QString();
        QTest::newRow("one serving needs no weight")
            << u"Milk"_s << u"dry"_s << QStringList{u"1 cup"_s, u"0"_s} << false << true
            << QString();
    }
    void aFoodIsRefusedForTheFirstReason() {
        QFETCH(QString, name);
        QFETCH(QString, type);
        QFETCH(QStringList, servings);
        QFETCH(bool, weighed);
        QFETCH(bool, hasCategory);
        const qint32 dairy = AddCategory(Database(), u"Dairy"_s);
        QVERIFY(Database().Foods().Write(-1, MakeFood(dairy, u"Milk"_s, u"whole"_s)));
        CFoodItem food;
        food.SetCategoryId(hasCategory ? dairy : -1);
        food.SetName(name);
        food.SetType(type);
        for (int i = 0; i < servings.size(); i += 2) {
            food.SetServingName(i / 2, servings[i]);
            food.SetServingWeight(i / 2, servings[i + 1].toDouble());
        }
        const EServingMode mode = weighed ? EServingMode::Weighed : EServingMode::OneServing;
        QTEST(CheckFood(Database(), food, mode, -1).value_or(QString()), "message");
    }

    void anEditedFoodIsNotItsOwnDouble() {
        const qint32 dairy = AddCategory(Database(), u"Dairy"_s);
        const CFoodItem milk = MakeFood(dairy, u"Milk"_s, u"whole"_s);
        QVERIFY(Database().Foods().Write(-1, milk));
        QVERIFY(!CheckFood(Database(), milk, EServingMode::Weighed, 0));
        QVERIFY(CheckFood(Database(), milk, EServingMode::Weighed, -1));
    }

    void findLooksInNameAndTypeWithoutCase_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("type");
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("found");
        QTest::newRow("by name") << u"mil"_s << u""_s << 0 << 0;
        QTest::newRow("goes on behind the last match") << u"MIL"_s << u""_s << 1 << 2;
        QTest::newRow("by both") << u"milk"_s << u"SKIM"_s << 0 << 2;
        QTest::newRow("by type alone") << u""_s << u"stra\u00dfe"_s << 0 << 1;
        QTest::newRow("does not start over") << u"milk"_s << u""_s << 3 << -1;
        QTest::newRow("does not see the settings") << u""_s << u""_s << 3 << -1;
    }
    void findLooksInNameAndTypeWithoutCase() {
        QFETCH(QString, name);
        QFETCH(QString, type);
        QFETCH(int, first);
        for (const auto& [foodName, foodType] : {std::pair{u"Milk"_s, u"whole"_s},
                                                 {u"Butter"_s, u"STRASSE"_s},
                                                 {u"Buttermilk"_s, u"skimmed"_s}}) {
            QVERIFY(Database().Foods().Write(-1, MakeFood(1, foodName, foodType)));
        }
        QVERIFY(Database().SaveViewSettings(ECatalogueKind::Foods, CViewSettings()));
        QTEST(FindNextItem(Database(), ECatalogueKind::Foods, name, type, first), "found");
        QCOMPARE(Database().CountItems(ECatalogueKind::Foods), 3);
    }

    void cleanup() {
        m_database.reset();
        m_folder.reset();
        QCOMPARE(m_messages.TakeShown(), QStringList());
    }

  private:
    CDatabase& Database() {
        if (m_database == nullptr) {
            m_folder = std::make_unique<QTemporaryDir>();
            m_database = std::make_unique<CDatabase>(m_folder->filePath(u"v.db"_s));
            m_database->OpenCatalogue();
        }
        return *m_database;
    }

    CRecordingMessages m_messages;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<CDatabase> m_database;
};

QTEST_GUILESS_MAIN(TestCatalogueRules)
#include "TestCatalogueRules.moc"
