#include "catalogue/items/ExlibRules.h"

#include "catalogue/items/CatalogueKinds.h"
#include "platform/Messages.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {
constexpr auto kExercises = ECatalogueKind::Exercises;

bool IsRatedByMet(const CExerciseItem& item) {
    return !(item.GetEnergyRateKcalPerMinute() > 0) && item.GetMet() > 0;
}

/// kcal per minute, or MET.
double RatingOf(const CExerciseItem& item) {
    return IsRatedByMet(item) ? item.GetMet() : item.GetEnergyRateKcalPerMinute();
}
}  // namespace

QString ExlibRateUnit(EEnergyUnit unit) {
    return UnitName(unit, EUnitForm::Abbreviated) + u"/min"_s;
}

QString ExlibEnergyText(const CExerciseItem& item, const CPreferences& preferences) {
    const CExlibFields fields = ExlibFieldsOf(item, preferences);
    if (fields.isMet || fields.energy.isEmpty()) {
        return fields.energy;
    }
    return fields.energy + u' ' + ExlibRateUnit(preferences.energyUnit);
}

CExlibFields ExlibFieldsOf(const CExerciseItem& item, const CPreferences& preferences) {
    CExlibFields fields{
        item.GetCategoryId(), item.GetName(), item.GetType(), {}, IsRatedByMet(item)};
    const double rating = RatingOf(item);
    if (rating > 0) {
        fields.energy = preferences.FormatNumber(
            fields.isMet ? rating : EnergyShown(rating, preferences.energyUnit));
    }
    return fields;
}

std::optional<QString> TakeExlibFields(CDatabase& database, const CPreferences& preferences,
                                       const CExlibFields& fields, int position,
                                       CExerciseItem& item) {
    const CItemTexts& texts = KindOf(kExercises).item;
    const CExlibFields filled = ExlibFieldsOf(item, preferences);
    if (fields.categoryId < 0) {
        return kNoCategorySelected;
    }
    item.SetCategoryId(fields.categoryId);
    item.SetName(fields.name.trimmed());
    if (item.GetName().isEmpty()) {
        return QString::fromLatin1(texts.noName);
    }
    item.SetType(fields.type.trimmed());
    if (item.GetType().isEmpty()) {
        return QString::fromLatin1(texts.noType);
    }
    if (database.Catalogue().FindItem(kExercises, fields.categoryId, item.GetName(), item.GetType(),
                                      position) >= 0) {
        return FormatText(QLatin1StringView(texts.exists),
                          {item.GetName(), item.GetType(),
                           database.Categories().NameOf(kExercises, fields.categoryId)});
    }
    const bool isRefused = fields.energy != filled.energy && IsTypedTooLarge(fields.energy);
    if (fields.energy.trimmed().isEmpty() || isRefused) {
        return u"Please enter exercise energy value"_s;
    }
    double rating = RatingOf(item);
    if (fields.energy != filled.energy || fields.isMet != filled.isMet) {
        rating = TypedNumber(fields.energy).value_or(0);
        if (!fields.isMet) {
            rating = EnergyStored(rating, preferences.energyUnit);
        }
    }
    item.SetMet(fields.isMet ? rating : 0);
    item.SetEnergyRateKcalPerMinute(fields.isMet ? 0 : rating);
    return std::nullopt;
}
