// One food, as it is edited, exchanged and stored: 77 properties.
#pragma once

#include "store/records/ItemRecord.h"

/// A food whose serving 1 weighs nothing is in one-serving mode: its values are those of one
/// serving. Otherwise they are per 100 g and each serving has a weight in grams.
class CFoodItem : public CNutrientItem {
  public:
    CFoodItem();

    [[nodiscard]] qint32 GetCategoryId() const;
    void SetCategoryId(qint32 id);
    [[nodiscard]] QString GetName() const;
    void SetName(const QString& name);
    [[nodiscard]] QString GetType() const;
    void SetType(const QString& type);

    /// `index` 0 to 9; any other shows "GetServingName --> WRONG INDEX" and gives "Index error.".
    [[nodiscard]] QString GetServingName(int index) const;
    /// The stored text itself; bad index as above with "GetServingNameW --> WRONG INDEX".
    [[nodiscard]] const QString& GetServingNameW(int index) const;
    /// A text longer than 64 characters is cut to 65, loses those at 60 to 63 (counted from 1) and
    /// gets "..." appended, which makes 64. A bad index shows "SetServingName --> WRONG INDEX.".
    void SetServingName(int index, const QString& name);
    /// Grams. A bad index shows "GetServingWeight --> WRONG INDEX." and gives 0.
    [[nodiscard]] double GetServingWeight(int index) const;
    /// A bad index shows "SetServingWeight --> WRONG INDEX.".
    void SetServingWeight(int index, double weightGrams);

    [[nodiscard]] bool IsWeighed() const { return GetServingWeight(0) > 0; }
    /// Empties all ten servings.
    void ClearServings();
};
