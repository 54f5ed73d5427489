#include "catalogue/items/FoodRules.h"

#include "catalogue/items/CatalogueKinds.h"
#include "platform/Messages.h"

using namespace Qt::StringLiterals;

EServingMode ServingModeOf(const CFoodItem& food) {
    return food.IsWeighed() ? EServingMode::Weighed : EServingMode::OneServing;
}

std::optional<QString> CheckFood(CDatabase& database, const CFoodItem& food, EServingMode mode,
                                 int position) {
    const CItemTexts& texts = KindOf(ECatalogueKind::Foods).item;
    if (food.GetName().isEmpty()) {
        return QString::fromLatin1(texts.noName);
    }
    if (food.GetType().isEmpty()) {
        return QString::fromLatin1(texts.noType);
    }
    if (database.Catalogue().FindItem(ECatalogueKind::Foods, food.GetCategoryId(), food.GetName(),
                                      food.GetType(), position) >= 0) {
        return FormatText(
            QLatin1StringView(texts.exists),
            {food.GetName(), food.GetType(),
             database.Categories().NameOf(ECatalogueKind::Foods, food.GetCategoryId())});
    }
    bool hasServing = false;
    std::optional<int> unweighed;
    for (int serving = 0; serving < kServingCount; ++serving) {
        if (food.GetServingName(serving).isEmpty()) {
            continue;
        }
        hasServing = true;
        if (!unweighed && !(food.GetServingWeight(serving) > 0)) {
            unweighed = serving;
        }
    }
    if (!hasServing) {
        return u"Please enter at least one serving."_s;
    }
    if (mode == EServingMode::Weighed && unweighed) {
        return FormatText("Please enter weight in gm for serving %s"_L1,
                          {food.GetServingName(*unweighed)});
    }
    if (food.GetCategoryId() < 0) {
        return kNoCategorySelected;
    }
    return std::nullopt;
}
