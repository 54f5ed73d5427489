#include "diary/WeightList.h"

#include <algorithm>
#include <limits>

#include "app/DateText.h"
#include "app/UnitTexts.h"
#include "diary/WeightForm.h"

using namespace Qt::StringLiterals;

namespace {

enum EColumn { kDateColumn, kWeightColumn, kChangeColumn, kFirstTapeColumn };
constexpr int kBodyFatColumn = kFirstTapeColumn + kTapeCount;
static_assert(kBodyFatColumn + 1 == CWeightTabSettings::kColumnCount);

}  // namespace

void CWeightList::Reload() {
    constexpr auto kAnyMoment = std::numeric_limits<FileTime>();
    // A message on the way may have the old rows painted once more.
    CEntryRange<CWeightEntry> all =
        ReadEntries(m_doc.Database().Weight(), {kAnyMoment.min(), kAnyMoment.max()});
    m_all = std::move(all);
}

int CWeightList::RowOfMoment(FileTime moment) const {
    const auto later = std::ranges::upper_bound(
        m_all.entries, moment, {},
        [](const CListed<CWeightEntry>& listed) { return listed.entry.GetMoment(); });
    const int row = static_cast<int>(later - m_all.entries.begin()) - 1;
    return std::min(std::max(row, 0), Count() - 1);
}

QStringList CWeightList::ColumnTitles() const {
    const CPreferences& preferences = m_doc.Preferences();
    const QString weightUnit = UnitName(preferences.weightUnit, EUnitForm::Abbreviated);
    const QString tapeUnit = TapeUnitName(preferences);
    QStringList titles = {u"Date"_s, u"Weight(%1)"_s.arg(weightUnit),
                          u"Weight change(%1)"_s.arg(weightUnit)};
    for (int slot = 0; slot < kTapeCount; ++slot) {
        titles.append(u"%1(%2)"_s.arg(MeasurementName(slot), tapeUnit));
    }
    titles.append(MeasurementName(kBodyFatSlot));
    return titles;
}

QString CWeightList::CellText(int row, int column) const {
    const CWeightEntry& entry = Entry(row);
    const CPreferences& preferences = m_doc.Preferences();
    switch (column) {
        case kDateColumn:
            return ShownDate(DateOf(entry.GetMoment()));
        case kWeightColumn:
            return WeightText(entry.GetWeightKg());
        case kChangeColumn:
            return ChangeText(entry.GetWeightKg() - m_doc.Settings().targets.startWeightKg);
        case kBodyFatColumn:
            return preferences.FormatNumber(entry.GetMeasurement(kBodyFatSlot));
        default:
            return preferences.FormatNumber(
                TapeShown(entry.GetMeasurement(column - kFirstTapeColumn), preferences));
    }
}

double CWeightList::SortKey(int row, int column) const {
    const CWeightEntry& entry = Entry(row);
    switch (column) {
        case kDateColumn:
            return static_cast<double>(entry.GetMoment());
        case kWeightColumn:
        case kChangeColumn:
            return entry.GetWeightKg();
        case kBodyFatColumn:
            return entry.GetMeasurement(kBodyFatSlot);
        default:
            return entry.GetMeasurement(column - kFirstTapeColumn);
    }
}

QString CWeightList::WeightText(double kg) const {
    const CPreferences& preferences = m_doc.Preferences();
    switch (preferences.weightUnit) {
        case EWeightUnit::Pounds:
            return preferences.FormatNumber(KgToPounds(kg));
        case EWeightUnit::Kilograms:
            return preferences.FormatNumber(kg);
        case EWeightUnit::Stones:
            return StonesText(kg, [&](double pounds) { return preferences.FormatNumber(pounds); });
        default:
            return {};
    }
}

/// Stones read it in plain pounds.
QString CWeightList::ChangeText(double kg) const {
    const CPreferences& preferences = m_doc.Preferences();
    switch (preferences.weightUnit) {
        case EWeightUnit::Kilograms:
            return preferences.FormatNumber(kg);
        case EWeightUnit::Pounds:
        case EWeightUnit::Stones:
            return preferences.FormatNumber(KgToPounds(kg));
        default:
            return {};
    }
}
