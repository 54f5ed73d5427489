// A download of food tables that a test changes, and its import.
#pragma once

#include <QDir>
#include <QMap>

#include "catalogue/tables/FoodTablesImport.h"
#include "support/CatalogueTest.h"
#include "support/Files.h"

using namespace Qt::StringLiterals;

/// One food of 52 kcal with a portion.
inline const QMap<QByteArray, QByteArray> kTables = {
    {"nutrient.csv",
     "id,name,unit_name,nutrient_nbr,rank\n"
     "1008,Energy,KCAL,208,1\n2048,Energy,KCAL,958,1\n2047,Energy,KCAL,957,1\n"
     "1062,Energy,kJ,268,1\n1003,Protein,G,203,1\n1063,Sugars,G,269.3,1\n1087,Calcium,MG,301,1\n"
     "1104,Vitamin A,IU,318,1\n1105,Retinol,UG,319,1\n1107,Carotene,UG,321,1\n"
     "1108,Carotene,UG,322,1\n1120,Cryptoxanthin,UG,334,1\n1106,Vitamin A,UG,320,1\n"
     "1109,Vitamin E,MG,323,1\n1114,Vitamin D,UG,328,1\n1110,Vitamin D,IU,324,1\n"},
    {"food_category.csv", "id,code,description\n1,0100,Fruit\n2,0200,Soups\n"},
    {"measure_unit.csv", "id,name\n1000,cup\n9999,undetermined\n"},
    {"food.csv",
     "fdc_id,data_type,description,food_category_id\n7,sr_legacy_food,\"Apple, raw\",1\n"},
    {"food_nutrient.csv", "id,fdc_id,nutrient_id,amount\n1,7,1008,52\n"},
    {"food_portion.csv",
     "id,fdc_id,seq_num,amount,measure_unit_id,portion_description,modifier,gram_weight\n"
     "1,7,1,1.0,1000,,sliced,109\n"},
};
/// A test over it calls MakeTables in init.
class CTablesTest : public CCatalogueTest {
  protected:
    void MakeTables() {
        MakeVolume();
        m_tables = kTables;
        m_request = {};
    }
    QString Import(EDuplicatePolicy policy = EDuplicatePolicy::Skip) {
        WriteTables();
        m_request.policy = policy;
        m_messages->details.clear();
        (void)ImportFoodTables(Database(), m_request);  // the messages tell how it went
        return m_messages->Said();
    }
    void WriteTables() {
        m_request.folder = Path(u"tables"_s);
        QDir(m_request.folder).removeRecursively();
        QDir().mkpath(m_request.folder);
        for (auto table = m_tables.begin(); table != m_tables.end(); ++table) {
            Save(m_request.folder + u'/' + QString::fromLatin1(table.key()), table.value());
        }
    }

    /// "1008=52 1003=1" for each of the foods.
    void SetAmounts(const QByteArray& amounts, const QList<int>& foods = {7}) {
        QByteArray& table = m_tables["food_nutrient.csv"];
        table = "id,fdc_id,nutrient_id,amount\n";
        for (const int food : foods) {
            for (const QByteArray& amount : amounts.split(' ')) {
                table += "1," + QByteArray::number(food) + ',' +
                         QByteArray(amount).replace('=', ',') + '\n';
            }
        }
    }

    std::vector<CFoodItem> Foods() {
        std::vector<CFoodItem> foods(Database().Foods().Count());
        for (int i = 0; i < static_cast<int>(foods.size()); ++i) {
            if (!Database().Foods().Read(i, foods[i])) {
                QTest::qFail("a food cannot be read", __FILE__, __LINE__);
            }
        }
        return foods;
    }

    QMap<QByteArray, QByteArray> m_tables;
    CFoodTablesRequest m_request;
};
