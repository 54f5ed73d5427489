#include "store/backup/RecordCheck.h"

#include "platform/Messages.h"
#include "store/records/DiaryEntries.h"
#include "store/records/RecordFit.h"

using namespace Qt::StringLiterals;

namespace {
/// A whole number whose values have limits that its type does not show.
struct CLimitRow {
    const CRecordLayout& layout;
    int number;
    qint64 low;
    qint64 high;
};
constexpr CLimitRow kLimits[] = {
    {kCategoryLayout, 0, 0, 3},
    {kCategoryLayout, 1, 1, CViewSettings::kMarker - 1},
    {kNutrientNameLayout, 0, 0, kNutrientCount - 1},
    {kMenuLayout, 1, 0, 2},
    {kRecipeLayout, 1, 0, 2},
    {kDietLayout, 1, 0, kMealCount - 1},
    {kDietLayout, 2, 0, 2},
};

std::optional<qint64> WholeNumber(const PropertyValue& value) {
    if (const auto* small = std::get_if<qint16>(&value)) {
        return *small;
    }
    if (const auto* medium = std::get_if<qint32>(&value)) {
        return *medium;
    }
    const auto* wide = std::get_if<qint64>(&value);
    return wide == nullptr ? std::nullopt : std::optional(*wide);
}

std::optional<QString> FaultText(const PropertyValue& value, const CPropertyDescription& property) {
    const QString name = QString::fromLatin1(property.name).trimmed();
    switch (ValueFaultOf(value, property)) {
        case EValueFault::None:
            return std::nullopt;
        case EValueFault::OtherType:
            return FormatText("has a value of another type as '%s'"_L1, {name});
        case EValueFault::TooLong:
            return FormatText("has %d characters as '%s', which may have %d"_L1,
                              {qint64{TextOf(value).size()}, name, property.capacity});
        case EValueFault::NotFinite:
            return FormatText("has no number as '%s'"_L1, {name});
        case EValueFault::NoDate:
            return FormatText("has no date as '%s'"_L1, {name});
    }
    Q_UNREACHABLE();
}
}  // namespace

const CRecordLayout& LayoutOfRecord(const PropertyList& properties, const CRecordLayout& layout) {
    const bool hasSettings = &layout == &kFoodLayout || &layout == &kExerciseLibLayout;
    return hasSettings && IsPastLastItem(properties) ? kViewSettingsLayout : layout;
}

std::optional<QString> FaultOf(const PropertyList& properties, const CRecordLayout& layout) {
    const int count = static_cast<int>(properties.size());
    if (count != layout.Count()) {
        return FormatText("has %d values instead of %d"_L1, {count, layout.Count()});
    }
    for (int i = 0; i < count; ++i) {
        if (auto fault = FaultText(properties[i], layout.properties[i])) {
            return fault;
        }
    }
    for (const CLimitRow& row : kLimits) {
        const qint64 value =
            &row.layout == &layout ? WholeNumber(properties[row.number]).value_or(0) : row.low;
        if (value < row.low || value > row.high) {
            return FormatText("has %ld as '%s', which goes from %ld to %ld"_L1,
                              {value, QString::fromLatin1(layout.properties[row.number].name),
                               row.low, row.high});
        }
    }
    return std::nullopt;
}
