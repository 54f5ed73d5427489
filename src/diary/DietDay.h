// The entries that the diet tab lists: those of the document's day at the document's meal, with
// the texts of their columns.
#pragma once

#include <QStringList>
#include <vector>

#include "app/VelmoraDoc.h"
#include "diary/DietRules.h"

/// Rows are indexes into the list shown, from 0. The entries are copies, which change only with the
/// next Reload.
class CDietDay {
  public:
    explicit CDietDay(CVelmoraDoc& doc) : m_doc(doc) {}

    /// Reads the document's day again and lists the entries of the selected meal.
    void Reload();
    [[nodiscard]] int Count() const { return static_cast<int>(m_rows.size()); }
    /// `row` 0 to Count() - 1.
    [[nodiscard]] const CDietEntry& Entry(int row) const { return Listed(row).entry; }
    [[nodiscard]] const CListed<CDietEntry>& Listed(int row) const {
        return m_day.Entries()[m_rows[row]];
    }
    /// Total of all entries read of the day, whatever the meal.
    [[nodiscard]] double Total(int nutrient) const { return m_day.GetTotal(nutrient); }
    /// A sentence about entries that are in neither the rows nor the totals; empty when there are
    /// none.
    [[nodiscard]] QString LeftOutText() const;
    [[nodiscard]] ListedEntries<CDietEntry> EntriesAt(const std::vector<int>& rows) const;

    /// The rows of entries that have just been added at these places: the last one of each place.
    /// An entry that is not listed has none.
    [[nodiscard]] std::vector<int> AddedRows(std::vector<CDietPlace> places) const;
    /// The name of the row's meal, where it is another one than that of the row above.
    [[nodiscard]] QString HeadingOf(int row) const;

    /// "Name", "Serving" and the names of the displayed nutrients.
    [[nodiscard]] QStringList ColumnTitles() const;
    [[nodiscard]] QString CellText(int row, int column) const;

    /// Index of a shown column in CDietTabSettings::columnWidths.
    [[nodiscard]] int SettingOfColumn(int column) const;

  private:
    CVelmoraDoc& m_doc;
    CDayEntries m_day;
    std::vector<int> m_rows;  ///< indexes into the day's entries
    std::vector<int> m_nutrients;
};
