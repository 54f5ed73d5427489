// The servings of foods: household portions and the servings on labels.
#pragma once

#include <QHash>
#include <vector>

#include "catalogue/tables/FoodPlaces.h"
#include "catalogue/tables/TextPool.h"
#include "store/records/FoodItem.h"

class CTableFolder;

/// One serving; no name means that there is none, no grams that it cannot be used.
struct CFoodServing {
    QString name;
    double grams = 0;
    bool operator==(const CFoodServing&) const = default;
};

/// measure_unit.csv and food_portion.csv, as far as the download has them. The rows of a food are
/// ordered by "seq_num", then by "id", then as in the table.
class CFoodPortions {
  public:
    CFoodPortions(CTableFolder& folder, CFoodPlaces& places);

    [[nodiscard]] static qint64 SizeOfTable(const CTableFolder& folder);
    /// False when the table is damaged or reading was cancelled, also below.
    [[nodiscard]] bool ReadUnits();
    [[nodiscard]] bool ReadWindow(const CFoodWindow& window);
    /// Makes these the servings of a food of the window: the one on its label, if any, its
    /// portions, nine of all these at most, and "100 gm".
    void SetServings(int place, const CFoodServing& label, CFoodItem& food);

    /// Of the foods that have been given servings.
    [[nodiscard]] int CountUnusable() const { return m_unusable; }
    [[nodiscard]] int CountTooMany() const { return m_tooMany; }

  private:
    struct CPortion {
        int place = 0;
        quint32 order = 0;
        quint32 id = 0;
        quint32 name = CTextPool::kNone;  ///< its number in the pool
        double grams = 0;
    };

    CTableFolder& m_folder;
    CFoodPlaces& m_places;
    /// When the import began: a table that is gone later cannot be read.
    bool m_isThere;
    QHash<quint32, QString> m_units;
    std::vector<CPortion> m_portions;  ///< of the window
    CTextPool m_texts;
    int m_unusable = 0;  ///< without a text or a weight
    int m_tooMany = 0;
};
