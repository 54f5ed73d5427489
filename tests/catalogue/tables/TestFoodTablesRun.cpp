// The run of an import of food tables: damage, cancelling, the history.
#include "TablesFixture.h"
#include "app/UndoRules.h"
#include "support/DataRows.h"

class TestFoodTablesRun : public CTablesTest {
    Q_OBJECT

  private slots:
    void init() { MakeTables(); }
    void cleanup() { DropVolume(); }

    void damageInAnyTableStoresNothing_data() {
        AddRows<QByteArray, QByteArray, QString>({
            {"food", "food.csv", "fdc_id,data_type,description\n7 ,sr_legacy_food,A\n",
             u"food.csv, line 2: '7 ' is not a valid number for 'fdc_id'"_s},
            {"nutrient", "nutrient.csv", "id,unit_name,nutrient_nbr\nx,G,203\n",
             u"nutrient.csv, line 2: 'x' is not a valid number for 'id'"_s},
            {"number of a nutrient", "nutrient.csv",
             "id,unit_name,nutrient_nbr\n4000000000,G,203\n",
             u"nutrient.csv, line 2: the number of the nutrient is too large"_s},
            {"amount", "food_nutrient.csv", "fdc_id,nutrient_id,amount\n7,1008,52\n7,1003,1g\n",
             u"food_nutrient.csv, line 3: '1g' is not a valid number for 'amount'"_s},
            {"unit", "measure_unit.csv", "id,name\n,cup\n",
             u"measure_unit.csv, line 2: '' is not a valid number for 'id'"_s},
            {"category", "food_category.csv", "id,description\n1,\"Fruit\n",
             u"food_category.csv, line 2: the file ends within a quoted field"_s},
            {"portion", "food_portion.csv", "fdc_id,gram_weight,seq_num\n7,1,\n7,1,b\n",
             u"food_portion.csv, line 3: 'b' is not a valid number for 'seq_num'"_s},
            {"brand", "branded_food.csv", "fdc_id,branded_food_category,serving_size\n7,A,1 g\n",
             u"branded_food.csv, line 2: '1 g' is not a valid number for 'serving_size'"_s},
            {"no foods", "food.csv", {}, u"food.csv: the file cannot be opened"_s},
            {"no amounts",
             "food_nutrient.csv",
             {},
             u"food_nutrient.csv: the file cannot be opened"_s},
        });
    }
    void damageInAnyTableStoresNothing() {
        const auto& [table, bytes, error] = DataRow<QByteArray, QByteArray, QString>();
        m_tables[table] = bytes;
        if (bytes.isNull()) {
            m_tables.remove(table);
        }
        QCOMPARE(Import(), u"Cannot read the food tables."_s);
        QCOMPARE(m_messages->details, QStringList{error});
        QCOMPARE(Database().Foods().Count() + Database().Categories().Count(), 0);
    }

    /// However the rows lie, and however few foods are read at a time.
    void theOrderOfRowsDoesNotMatter() {
        AddManyFoods();
        QCOMPARE(Import(), u"Imported 40 foods."_s);
        const std::vector<CFoodItem> foods = Foods();
        for (const char* table : {"food_nutrient.csv", "food_portion.csv", "branded_food.csv"}) {
            QByteArrayList rows = m_tables[table].trimmed().split('\n');
            std::reverse(rows.begin() + 1, rows.end());
            m_tables[table] = rows.join('\n');
        }
        for (const qint64 mostAmounts : {1, 100, 10'000}) {
            for (int i = Database().Foods().Count(); i-- > 0;) {
                QVERIFY(Database().Foods().Delete(i));
            }
            m_request.mostAmounts = mostAmounts;
            QCOMPARE(Import(), u"Imported 40 foods."_s);
            QVERIFY(Foods() == foods);
        }
    }

    void aTableThatIsGoneLaterIsReported() {
        AddManyFoods();
        m_request.mostAmounts = 1;  // each food for itself
        for (const QString& table : {u"branded_food.csv"_s, u"food_portion.csv"_s}) {
            MakeVolume();
            m_messages->progress.onPump = [&] {
                constexpr int kPumpsLater = 100;
                if (m_messages->progress.pumps == kPumpsLater) {
                    QFile::remove(m_request.folder + u'/' + table);
                }
            };
            const QString said = Import();
            QCOMPARE(said, u"Cannot read the food tables.|Imported %1 foods."_s.arg(
                               Database().Foods().Count()));
            QCOMPARE(m_messages->details.first(), table + u": the file cannot be opened"_s);
            QVERIFY(Database().Foods().Count() > 0);
        }
    }

    void cancelKeepsWhatIsStored() {
        AddManyFoods();
        m_tables["food.csv"] += "50,sub_sample_food,Sample,1\n";  // told of with the summary
        int stored = 0;
        for (int pumps = 1; stored == 0 && pumps < 100; ++pumps) {
            m_messages->progress = {};
            m_messages->progress.cancelAfterPumps = pumps;
            const QString said = Import();
            stored = Database().Foods().Count();
            QCOMPARE(said, u"Import cancelled.|Imported %1 foods."_s.arg(stored));
            QCOMPARE(Database().Categories().Count() + m_messages->details.size() > 0, stored > 0);
        }
        // All tables have been read by then.
        const QStringList statuses = {u"Reading food tables..."_s, u"Importing foods..."_s};
        QCOMPARE(m_messages->progress.statuses, statuses);
        QCOMPARE(m_messages->progress.captions, QStringList{u"Velmora: Import"_s});
    }

    void anImportIsOneStep() {
        AddManyFoods();
        QCOMPARE(Import(), u"Imported 40 foods."_s);
        // What the history cannot keep is asked about before it is replaced.
        Database().GetStore().History().SetLimits({.steps = 100, .bytes = 4000});
        m_messages->answer = false;
        m_messages->asked.clear();
        QCOMPARE(Import(EDuplicatePolicy::Overwrite), QString());
        QCOMPARE(m_messages->asked, QStringList{u"This cannot be undone. Do you want to go on?"_s});
        m_messages->answer = true;
        QVERIFY(RevertNext(Database(), EUndo::Undo, kCatalogueScope));
        QCOMPARE(Database().Foods().Count() + Database().Categories().Count(), 0);
    }

  private:
    /// 40 foods, every other one branded.
    void AddManyFoods() {
        m_tables["food.csv"] = "fdc_id,data_type,description,food_category_id\n";
        m_tables["food_nutrient.csv"] = "fdc_id,nutrient_id,amount\n";
        m_tables["branded_food.csv"] = "fdc_id,brand_name,branded_food_category\n";
        m_tables["food_portion.csv"] = "id,fdc_id,amount,measure_unit_id,gram_weight\n";
        for (int i = 0; i < 40; ++i) {
            const QByteArray number = QByteArray::number(i * 17 % 40);
            const bool isBranded = i % 2 == 0;
            m_tables["food.csv"] += number + (isBranded ? ",branded_food" : ",sr_legacy_food") +
                                    ",Food " + number + ",1\n";
            m_tables["food_nutrient.csv"] +=
                number + ",1008," + number + "\n" + number + ",1003,0." + number + '\n';
            if (isBranded) {
                m_tables["branded_food.csv"] += number + ",Brand " + number + ",Branded\n";
            }
            m_tables["food_portion.csv"] +=
                "2," + number + ",2,1000,20\n1," + number + ",1,1000," + number + '\n';
        }
    }
};

QTEST_GUILESS_MAIN(TestFoodTablesRun)
#include "TestFoodTablesRun.moc"
