// What a download says about branded foods alone.
#pragma once

#include "catalogue/tables/FoodServings.h"
#include "catalogue/tables/TextPool.h"

class CCsvTable;
class CFoodCategories;

struct CBrandedFood {
    QString brand;
    QString category;      ///< empty when there is none
    CFoodServing label;    ///< the serving on the label; 0 when it is given in another unit
    bool isPerMl = false;  ///< the values are those of 100 ml, and there is no label
};

/// branded_food.csv, if the download has it.
class CBrandedFoods {
  public:
    CBrandedFoods(CTableFolder& folder, CFoodPlaces& places, CFoodCategories& categories);

    /// In bytes; 0 when the download does not have the table.
    [[nodiscard]] static qint64 SizeOfTable(const CTableFolder& folder);
    [[nodiscard]] bool IsThere() const { return m_isThere; }
    /// Call for each branded food, in the order of their places.
    void Expect(int place);
    /// Notes the categories of the whole table as needed, and that of the expected foods without a
    /// row. False when the table is damaged or reading was cancelled.
    [[nodiscard]] bool ReadWindow(const CFoodWindow& window);
    /// Of a food of the window.
    [[nodiscard]] CBrandedFood FoodOf(int place) const;

  private:
    /// The texts by their numbers in the pool.
    struct CFood {
        double size = 0;  ///< of the serving on the label
        quint32 brand = CTextPool::kNone;
        quint32 category = CTextPool::kNone;
        quint32 serving = CTextPool::kNone;
        bool isInGrams = false;
        bool isPerMl = false;
    };
    CFood Keep(const CCsvTable& table, double size);

    CTableFolder& m_folder;
    CFoodPlaces& m_places;
    CFoodCategories& m_categories;
    /// When the import began: a table that is gone later cannot be read.
    bool m_isThere;
    std::vector<bool> m_isMissing;  ///< by place: expected, but without a row so far
    CFoodWindow m_window;
    std::vector<CFood> m_foods;  ///< of the window
    CTextPool m_texts;
};
