#include "diary/DietDay.h"

#include <algorithm>

#include "app/ItemTexts.h"
#include "app/LeftOutText.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kNameColumn = 0;
constexpr int kServingColumn = 1;
constexpr int kFirstNutrientColumn = 2;

}  // namespace

void CDietDay::Reload() {
    // A message shown while reading may repaint the old rows, so they stay until the end.
    CDayEntries day = ReadDay(m_doc.Database().Diet(), m_doc.dayShown);
    m_day = std::move(day);
    m_rows.clear();
    for (int place = 0; place < m_day.Count(); ++place) {
        if (m_doc.selectedMeal == kAllMeals ||
            m_day.Entries()[place].entry.GetMeal() == m_doc.selectedMeal) {
            m_rows.push_back(place);
        }
    }
    m_nutrients = m_doc.Preferences().DisplayedNutrients();
}

QString CDietDay::LeftOutText() const {
    return ::LeftOutText(m_day.LeftOut(), kEntryWords, m_day.Count(),
                         "The list and the totals cover the first %s of this day's %s entries.");
}

ListedEntries<CDietEntry> CDietDay::EntriesAt(const std::vector<int>& rows) const {
    ListedEntries<CDietEntry> entries;
    entries.reserve(rows.size());
    for (const int row : rows) {
        entries.push_back(Listed(row));
    }
    return entries;
}

std::vector<int> CDietDay::AddedRows(std::vector<CDietPlace> places) const {
    std::vector<int> rows;
    for (int row = Count() - 1; row >= 0; --row) {
        const CDietEntry& entry = Entry(row);
        const auto place = std::ranges::find_if(places, [&entry](const CDietPlace& each) {
            return each.moment == entry.GetMoment() && each.meal == entry.GetMeal();
        });
        if (place != places.end()) {
            places.erase(place);
            rows.push_back(row);
        }
    }
    std::ranges::reverse(rows);
    return rows;
}

QString CDietDay::HeadingOf(int row) const {
    const qint32 meal = Entry(row).GetMeal();
    const bool isSameAsAbove = row > 0 && Entry(row - 1).GetMeal() == meal;
    return isSameAsAbove || meal < 0 || meal >= kMealCount ? QString() : MealName(meal);
}

QStringList CDietDay::ColumnTitles() const {
    QStringList titles{u"Name"_s, u"Serving"_s};
    const QStringList& names = m_doc.NutrientNames();
    for (const int nutrient : m_nutrients) {
        titles.append(names.value(nutrient));
    }
    return titles;
}

QString CDietDay::CellText(int row, int column) const {
    const CDietEntry& entry = Entry(row);
    switch (column) {
        case kNameColumn:
            return NameAndType(entry.GetName(), entry.GetType());
        case kServingColumn:
            return ServingText(m_doc.Preferences().FormatNumber(entry.GetAmount()),
                               entry.GetServingName());
        default:
            break;
    }
    const int nutrient = m_nutrients[column - kFirstNutrientColumn];
    return m_doc.Preferences().FormatNutrient(nutrient, entry.GetNutrientValue(nutrient));
}

int CDietDay::SettingOfColumn(int column) const {
    return column < kFirstNutrientColumn
               ? column
               : kFirstNutrientColumn + m_nutrients[column - kFirstNutrientColumn];
}
