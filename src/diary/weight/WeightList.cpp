#include "diary/weight/WeightList.h"

#include <algorithm>
#include <limits>

#include "app/DateText.h"
#include "app/UnitTexts.h"
#include "diary/weight/WeightForm.h"

using namespace Qt::StringLiterals;

namespace {

enum EColumn { kDateColumn, kWeightColumn, kChangeColumn, kFirstTapeColumn };
constexpr int kBodyFatColumn = kFirstTapeColumn + kTapeCount;
static_assert(kBodyFatColumn + 1 == CWeightTabSettings::kColumnCount);

}  // namespace

void CWeightList::Reload() {
    constexpr auto kAnyMoment = std::numeric_limits<FileTime>();
    // A message shown while reading may repaint the old rows, so they stay until the end.
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
    const EWeightUnit unit = preferences.weightUnit;
    const auto number = [&](double value) { return preferences.FormatNumber(value); };
    // Unlike a report, the list shows no weights in the unit StonesAndPounds.
    const bool isBlank = unit == EWeightUnit::StonesAndPounds;
    switch (column) {
        case kDateColumn:
            return ShownDate(DateOf(entry.GetMoment()));
        case kWeightColumn:
            return isBlank ? QString() : WeightText(entry.GetWeightKg(), unit, number);
        case kChangeColumn: {
            const double changeKg = entry.GetWeightKg() - m_doc.Settings().targets.startWeightKg;
            return isBlank ? QString() : WeightChangeText(changeKg, unit, number);
        }
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
