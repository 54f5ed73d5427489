#include "store/records/Category.h"

namespace {
// Property numbers.
enum : int { kKind, kId, kName, kLargePicture, kSmallPicture };
enum : int { kNutrient, kNutrientAgain, kNutrientName };
enum : int { kSettingsMarker, kSettingsReserved, kFirstSetting };
}  // namespace

CCategory::CCategory() : CItemRecord(kCategoryLayout) {}

ECatalogueKind CCategory::GetKind() const {
    return static_cast<ECatalogueKind>(Get<qint16>(kKind));
}

void CCategory::SetKind(ECatalogueKind kind) {
    Set(kKind, static_cast<qint16>(kind));
}

qint32 CCategory::GetId() const {
    return Get<qint32>(kId);
}

void CCategory::SetId(qint32 id) {
    Set(kId, id);
}

QString CCategory::GetName() const {
    return Get<QString>(kName);
}

void CCategory::SetName(const QString& name) {
    SetText(kName, name);
}

QByteArray CCategory::GetLargePicture() const {
    return Get<QByteArray>(kLargePicture);
}

void CCategory::SetLargePicture(const QByteArray& picture) {
    Set(kLargePicture, picture);
}

QByteArray CCategory::GetSmallPicture() const {
    return Get<QByteArray>(kSmallPicture);
}

void CCategory::SetSmallPicture(const QByteArray& picture) {
    Set(kSmallPicture, picture);
}

CNutrientName::CNutrientName() : CItemRecord(kNutrientNameLayout) {}

CNutrientName::CNutrientName(qint32 index, const QString& name) : CNutrientName() {
    Set(kNutrient, index);
    Set(kNutrientAgain, index);
    SetText(kNutrientName, name);
}

qint32 CNutrientName::GetIndex() const {
    return Get<qint32>(kNutrient);
}

QString CNutrientName::GetName() const {
    return Get<QString>(kNutrientName);
}

CViewSettings::CViewSettings() : CItemRecord(kViewSettingsLayout) {
    Set(kSettingsMarker, kMarker);
}

qint16 CViewSettings::GetSetting(int index) const {
    Q_ASSERT(index >= 0 && index < kCount);
    return Get<qint16>(kFirstSetting + index);
}

void CViewSettings::SetSetting(int index, qint16 value) {
    Q_ASSERT(index >= 0 && index < kCount);
    Set(kFirstSetting + index, value);
}
