// Entries of the three dated diaries. Property 0 of each is its moment.
#pragma once

#include "platform/FileTime.h"
#include "store/records/CatalogueItem.h"

/// Meal codes 0 to 5.
inline constexpr int kMealCount = 6;
/// "Breakfast" to "Evening"; `meal` 0 to 5.
QString MealName(int meal);
/// The meal that is usual at that time.
int MealAt(QTime time);

/// What was eaten: a snapshot of the item, which later changes to the catalogue do not affect.
class CDietEntry : public CNutrientItem {
  public:
    CDietEntry();
    [[nodiscard]] FileTime GetMoment() const;
    void SetMoment(FileTime moment);
    /// The stored code; outside 0 to 5 only in a damaged record.
    [[nodiscard]] qint32 GetMeal() const;
    void SetMeal(qint32 meal);
    [[nodiscard]] EItemKind GetKind() const;
    void SetKind(EItemKind kind);
    /// Name of the category, not its identifier.
    [[nodiscard]] QString GetCategory() const;
    void SetCategory(const QString& name);
    [[nodiscard]] QString GetName() const;
    void SetName(const QString& name);
    [[nodiscard]] QString GetType() const;
    void SetType(const QString& type);
    [[nodiscard]] QString GetServingName() const;
    void SetServingName(const QString& name);
    /// Number of servings.
    [[nodiscard]] double GetAmount() const;
    void SetAmount(double amount);
};

/// Body weight and measurements.
class CWeightEntry : public CItemRecord {
  public:
    static constexpr int kSlotCount = 13;
    CWeightEntry();
    [[nodiscard]] FileTime GetMoment() const;
    void SetMoment(FileTime moment);
    [[nodiscard]] double GetWeightKg() const;
    void SetWeightKg(double weightKg);
    /// Slots 0 to 6 in cm (chest, waist, hips, bicep, forearm, thigh, calf), 7 body fat in
    /// percent, 8 to 12 reserved. -1.0 outside 0 to 12.
    [[nodiscard]] double GetMeasurement(int slot) const;
    /// Ignored outside 0 to 12.
    void SetMeasurement(int slot, double value);
};

/// What was done, for how long and how much energy it burned.
class CExerciseEntry : public CItemRecord {
  public:
    CExerciseEntry();
    [[nodiscard]] FileTime GetMoment() const;
    void SetMoment(FileTime moment);
    [[nodiscard]] QString GetCategory() const;
    void SetCategory(const QString& name);
    [[nodiscard]] QString GetName() const;
    void SetName(const QString& name);
    [[nodiscard]] QString GetType() const;
    void SetType(const QString& type);
    [[nodiscard]] double GetMinutes() const;
    void SetMinutes(double minutes);
    [[nodiscard]] double GetEnergyKcal() const;
    void SetEnergyKcal(double energyKcal);
};
