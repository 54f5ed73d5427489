// The servings of foods: household portions and the servings on labels.
#pragma once

#include <QHash>
#include <vector>

#include "catalogue/tables/FoodPlaces.h"
#include "store/records/FoodItem.h"

class CCsvTable;
class CTableFolder;

/// One serving; no name means that there is none.
struct CFoodServing {
    QString name;
    double grams = 0;
};

/// measure_unit.csv and food_portion.csv, as far as the download has them. The rows of a food are
/// ordered by "seq_num", then by "id", wherever they are.
class CFoodPortions {
  public:
    CFoodPortions(CTableFolder& folder, CFoodPlaces& places) : m_folder(folder), m_places(places) {}

    [[nodiscard]] static qint64 SizeOfTable(const CTableFolder& folder);
    /// False when the table is damaged or reading was cancelled, also below.
    [[nodiscard]] bool ReadUnits();
    [[nodiscard]] bool ReadWindow(const CFoodWindow& window);
    /// Makes these the servings of a food of the window: the one on its label, if any, its
    /// portions, nine of all these at most, and "100 gm".
    void SetServings(int place, const CFoodServing& label, CFoodItem& food);

    /// Of the foods so far.
    [[nodiscard]] int CountUnusable() const { return m_unusable; }
    [[nodiscard]] int CountTooMany() const { return m_tooMany; }

  private:
    struct CPortion {
        int place = 0;
        quint32 order = 0;
        quint32 id = 0;
        CFoodServing serving;
    };
    bool ReadPortion(CCsvTable& table, CPortion& portion);

    CTableFolder& m_folder;
    CFoodPlaces& m_places;
    CFoodWindow m_window;
    QHash<quint32, QString> m_units;
    std::vector<CPortion> m_portions;  ///< of the window
    int m_unusable = 0;                ///< without a text or a weight
    int m_tooMany = 0;
};
