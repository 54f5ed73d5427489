#include "store/records/ExerciseItem.h"

namespace {
// Property numbers.
enum : int {
    kCategoryId,
    kName,
    kType,
    kEnergyRate,
    kMet,
};
}  // namespace

CExerciseItem::CExerciseItem() : CItemRecord(kExerciseLibLayout) {}

qint32 CExerciseItem::GetCategoryId() const {
    return Get<qint32>(kCategoryId);
}

void CExerciseItem::SetCategoryId(qint32 id) {
    Set(kCategoryId, id);
}

QString CExerciseItem::GetName() const {
    return Get<QString>(kName);
}

void CExerciseItem::SetName(const QString& name) {
    SetText(kName, name);
}

QString CExerciseItem::GetType() const {
    return Get<QString>(kType);
}

void CExerciseItem::SetType(const QString& type) {
    SetText(kType, type);
}

double CExerciseItem::GetEnergyRateKcalPerMinute() const {
    return Get<double>(kEnergyRate);
}

void CExerciseItem::SetEnergyRateKcalPerMinute(double rate) {
    Set(kEnergyRate, rate);
}

double CExerciseItem::GetMet() const {
    return Get<double>(kMet);
}

void CExerciseItem::SetMet(double met) {
    Set(kMet, met);
}
