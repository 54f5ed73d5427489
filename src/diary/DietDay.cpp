#include "diary/DietDay.h"

#include "platform/Messages.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kNameColumn = 0;
constexpr int kServingColumn = 1;
constexpr int kFirstNutrientColumn = 2;

}  // namespace

void CDietDay::Reload() {
    CDatabase& database = m_doc.Database();
    // A message on the way may have the old rows painted once more.
    database.LoadDietDay(m_doc.dayShown);
    std::vector<CDietEntry> entries;
    for (int index = 0; index < database.GetDietCount(); ++index) {
        const CDietEntry& entry = *database.GetDietEntry(index);
        if (m_doc.selectedMeal == kAllMeals || entry.GetMeal() == m_doc.selectedMeal) {
            entries.push_back(entry);
        }
    }
    m_entries = std::move(entries);
    m_nutrients = m_doc.Preferences().DisplayedNutrients();
}

std::vector<CDietEntry> CDietDay::EntriesAt(const std::vector<int>& rows) const {
    std::vector<CDietEntry> entries;
    entries.reserve(rows.size());
    for (const int row : rows) {
        entries.push_back(Entry(row));
    }
    return entries;
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
            return EntryNameText(entry);
        case kServingColumn:
            return EntryServingText(entry, m_doc.Preferences());
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

QString EntryNameText(const CDietEntry& entry) {
    const QString type = entry.GetType();
    return type.isEmpty() ? entry.GetName() : entry.GetName() + u',' + type;
}

QString EntryServingText(const CDietEntry& entry, const CPreferences& preferences) {
    return FormatText("%sx%s"_L1,
                      {preferences.FormatNumber(entry.GetAmount()), entry.GetServingName()});
}
