#include "store/records/DiaryEntries.h"

#include <QTime>
#include <algorithm>
#include <array>

namespace {
// Property numbers; the moment is property 0 of all three.
constexpr int kMoment = 0;

namespace diet {
enum : int {
    kMeal = 1,
    kKind,
    kCategory,
    kName,
    kType,
    kFirstNutrient,
    kServingName = kFirstNutrient + kNutrientCount,
    kAmount,
};
}
namespace weight {
enum : int { kWeight = 1, kFirstSlot };
}
namespace exercise {
enum : int { kCategory = 1, kName, kType, kMinutes, kEnergy };
}

constexpr std::array<const char*, kMealCount> kMealNames = {"Breakfast", "Morning", "Lunch",
                                                            "Afternoon", "Dinner",  "Evening"};

/// The hour from which on a meal is usual.
constexpr std::array<int, kMealCount> kMealHours = {4, 10, 12, 14, 17, 21};

bool IsSlot(int slot) {
    return slot >= 0 && slot < CWeightEntry::kSlotCount;
}
}  // namespace

QString MealName(int meal) {
    return QLatin1StringView(kMealNames.at(meal));
}

int MealAt(QTime time) {
    const auto* const later = std::ranges::upper_bound(kMealHours, time.hour());
    return later == kMealHours.begin() ? kMealCount - 1
                                       : static_cast<int>(later - kMealHours.begin()) - 1;
}

CDietEntry::CDietEntry() : CNutrientItem(kDietLayout, diet::kFirstNutrient) {}

FileTime CDietEntry::GetMoment() const {
    return Get<FileTime>(kMoment);
}

void CDietEntry::SetMoment(FileTime moment) {
    Set(kMoment, moment);
}

qint32 CDietEntry::GetMeal() const {
    return Get<qint32>(diet::kMeal);
}

void CDietEntry::SetMeal(qint32 meal) {
    Set(diet::kMeal, meal);
}

EItemKind CDietEntry::GetKind() const {
    return static_cast<EItemKind>(Get<qint32>(diet::kKind));
}

void CDietEntry::SetKind(EItemKind kind) {
    Set(diet::kKind, static_cast<qint32>(kind));
}

QString CDietEntry::GetCategory() const {
    return Get<QString>(diet::kCategory);
}

void CDietEntry::SetCategory(const QString& name) {
    SetText(diet::kCategory, name);
}

QString CDietEntry::GetName() const {
    return Get<QString>(diet::kName);
}

void CDietEntry::SetName(const QString& name) {
    SetText(diet::kName, name);
}

QString CDietEntry::GetType() const {
    return Get<QString>(diet::kType);
}

void CDietEntry::SetType(const QString& type) {
    SetText(diet::kType, type);
}

QString CDietEntry::GetServingName() const {
    return Get<QString>(diet::kServingName);
}

void CDietEntry::SetServingName(const QString& name) {
    SetText(diet::kServingName, name);
}

double CDietEntry::GetAmount() const {
    return Get<double>(diet::kAmount);
}

void CDietEntry::SetAmount(double amount) {
    Set(diet::kAmount, amount);
}

CWeightEntry::CWeightEntry() : CItemRecord(kWeightLayout) {}

FileTime CWeightEntry::GetMoment() const {
    return Get<FileTime>(kMoment);
}

void CWeightEntry::SetMoment(FileTime moment) {
    Set(kMoment, moment);
}

double CWeightEntry::GetWeightKg() const {
    return Get<double>(weight::kWeight);
}

void CWeightEntry::SetWeightKg(double weightKg) {
    Set(weight::kWeight, weightKg);
}

double CWeightEntry::GetMeasurement(int slot) const {
    return IsSlot(slot) ? Get<double>(weight::kFirstSlot + slot) : -1.0;
}

void CWeightEntry::SetMeasurement(int slot, double value) {
    if (IsSlot(slot)) {
        Set(weight::kFirstSlot + slot, value);
    }
}

CExerciseEntry::CExerciseEntry() : CItemRecord(kExercisesLayout) {}

FileTime CExerciseEntry::GetMoment() const {
    return Get<FileTime>(kMoment);
}

void CExerciseEntry::SetMoment(FileTime moment) {
    Set(kMoment, moment);
}

QString CExerciseEntry::GetCategory() const {
    return Get<QString>(exercise::kCategory);
}

void CExerciseEntry::SetCategory(const QString& name) {
    SetText(exercise::kCategory, name);
}

QString CExerciseEntry::GetName() const {
    return Get<QString>(exercise::kName);
}

void CExerciseEntry::SetName(const QString& name) {
    SetText(exercise::kName, name);
}

QString CExerciseEntry::GetType() const {
    return Get<QString>(exercise::kType);
}

void CExerciseEntry::SetType(const QString& type) {
    SetText(exercise::kType, type);
}

double CExerciseEntry::GetMinutes() const {
    return Get<double>(exercise::kMinutes);
}

void CExerciseEntry::SetMinutes(double minutes) {
    Set(exercise::kMinutes, minutes);
}

double CExerciseEntry::GetEnergyKcal() const {
    return Get<double>(exercise::kEnergy);
}

void CExerciseEntry::SetEnergyKcal(double energyKcal) {
    Set(exercise::kEnergy, energyKcal);
}
