#include "store/records/ComposedItem.h"

namespace {
// Property numbers.
enum : int {
    kParentId = 0,
    kName = kComposedIdNumber + 1,
    kType,
    kFirstNutrient,
    kServingName = kFirstNutrient + kNutrientCount,
    kServingX,
    kInstructions,
};
}  // namespace

CComposedItem::CComposedItem(ECatalogueKind kind)
    : CNutrientItem(CatalogueLayoutOf(kind).layout, kFirstNutrient) {
    SetServingX(1.0);
}

qint32 CComposedItem::GetParentId() const {
    return Get<qint32>(kParentId);
}

void CComposedItem::SetParentId(qint32 id) {
    Set(kParentId, id);
}

EItemKind CComposedItem::GetItemKind() const {
    return static_cast<EItemKind>(Get<qint32>(kComposedKindNumber));
}

void CComposedItem::SetItemKind(EItemKind type) {
    Set(kComposedKindNumber, static_cast<qint32>(type));
}

qint32 CComposedItem::GetItemId() const {
    return Get<qint32>(kComposedIdNumber);
}

void CComposedItem::SetItemId(qint32 id) {
    Set(kComposedIdNumber, id);
}

QString CComposedItem::GetName() const {
    return Get<QString>(kName);
}

void CComposedItem::SetName(const QString& name) {
    SetText(kName, name);
}

QString CComposedItem::GetType() const {
    return Get<QString>(kType);
}

void CComposedItem::SetType(const QString& type) {
    SetText(kType, type);
}

QString CComposedItem::GetServingName() const {
    return Get<QString>(kServingName);
}

void CComposedItem::SetServingName(const QString& name) {
    SetText(kServingName, name);
}

double CComposedItem::GetServingX() const {
    return Get<double>(kServingX);
}

void CComposedItem::SetServingX(double servings) {
    Set(kServingX, servings);
}

void CComposedItem::Clear() {
    CItemRecord::Clear();
    SetServingX(1.0);
}

QString CComposedItem::GetInstructions() const {
    return GetLayout().Count() > kInstructions ? Get<QString>(kInstructions) : QString();
}

void CComposedItem::SetInstructions(const QString& text) {
    if (GetLayout().Count() > kInstructions) {
        SetText(kInstructions, text);
    }
}
