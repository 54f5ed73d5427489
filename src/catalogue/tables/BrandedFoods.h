// What a download says about branded foods alone.
#pragma once

#include "catalogue/tables/FoodServings.h"
#include "catalogue/tables/TextPool.h"

class CFoodCategories;

struct CBrandedFood {
    QString brand;
    QString category;      ///< empty when there is none
    CFoodServing label;    ///< the serving on the label, if it is given in grams
    bool isPerMl = false;  ///< the values are those of 100 ml
};

/// branded_food.csv, if the download has it.
class CBrandedFoods {
  public:
    CBrandedFoods(CTableFolder& folder, CFoodPlaces& places, CFoodCategories& categories)
        : m_folder(folder), m_places(places), m_categories(categories) {}

    /// In bytes; 0 when the download does not have the table.
    [[nodiscard]] static qint64 SizeOfTable(const CTableFolder& folder);
    /// Notes the categories of the whole table as needed. False when the table is damaged or
    /// reading was cancelled.
    [[nodiscard]] bool ReadWindow(const CFoodWindow& window);
    /// Of a food of the window.
    [[nodiscard]] CBrandedFood FoodOf(int place) const;

  private:
    /// The texts by their numbers in the pool.
    struct CFood {
        double size = 0;  ///< of the serving on the label, in the unit
        quint32 brand = CTextPool::kNone;
        quint32 category = CTextPool::kNone;
        quint32 serving = CTextPool::kNone;
        quint32 unit = CTextPool::kNone;
    };
    CFood Keep(const CCsvTable& table, double size);

    CTableFolder& m_folder;
    CFoodPlaces& m_places;
    CFoodCategories& m_categories;
    CFoodWindow m_window;
    std::vector<CFood> m_foods;  ///< of the window
    CTextPool m_texts;
};
