#include "store/records/FoodItem.h"

#include "platform/Messages.h"

using namespace Qt::StringLiterals;

namespace {
// Property numbers.
enum : int {
    kCategoryId,
    kName,
    kType,
    kFirstNutrient,
    kFirstServing = kFirstNutrient + kNutrientCount,
};

bool IsServing(int index, const char* wrongIndex) {
    if (index >= 0 && index < kServingCount) {
        return true;
    }
    ShowMessage(QLatin1StringView(wrongIndex));
    return false;
}

int NameOf(int serving) {
    return kFirstServing + 2 * serving;
}

int WeightOf(int serving) {
    return NameOf(serving) + 1;
}
}  // namespace

CFoodItem::CFoodItem() : CNutrientItem(kFoodLayout, kFirstNutrient) {}

qint32 CFoodItem::GetCategoryId() const {
    return Get<qint32>(kCategoryId);
}

void CFoodItem::SetCategoryId(qint32 id) {
    Set(kCategoryId, id);
}

QString CFoodItem::GetName() const {
    return Get<QString>(kName);
}

void CFoodItem::SetName(const QString& name) {
    SetText(kName, name);
}

QString CFoodItem::GetType() const {
    return Get<QString>(kType);
}

void CFoodItem::SetType(const QString& type) {
    SetText(kType, type);
}

QString CFoodItem::GetServingName(int index) const {
    if (!IsServing(index, "GetServingName --> WRONG INDEX")) {
        return u"Index error."_s;
    }
    return Get<QString>(NameOf(index));
}

const QString& CFoodItem::GetServingNameW(int index) const {
    static const QString indexError = u"Index error."_s;
    if (!IsServing(index, "GetServingNameW --> WRONG INDEX")) {
        return indexError;
    }
    return Get<QString>(NameOf(index));
}

void CFoodItem::SetServingName(int index, const QString& name) {
    if (!IsServing(index, "SetServingName --> WRONG INDEX.")) {
        return;
    }
    QString stored = name;
    if (stored.size() > kShortText) {
        // The first 65 characters less those at 60 to 63, counted from 1, are 61; with the dots
        // they are 64, however long the text was.
        stored.truncate(kShortText + 1);
        stored.remove(59, 4);
        stored += "..."_L1;
    }
    SetText(NameOf(index), stored);
}

double CFoodItem::GetServingWeight(int index) const {
    if (!IsServing(index, "GetServingWeight --> WRONG INDEX.")) {
        return 0.0;
    }
    return Get<double>(WeightOf(index));
}

void CFoodItem::SetServingWeight(int index, double weightGrams) {
    if (IsServing(index, "SetServingWeight --> WRONG INDEX.")) {
        Set(WeightOf(index), weightGrams);
    }
}

void CFoodItem::ClearServings() {
    for (int i = 0; i < kServingCount; ++i) {
        SetServingName(i, QString());
        SetServingWeight(i, 0.0);
    }
}
