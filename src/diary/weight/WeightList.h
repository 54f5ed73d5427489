// The entries that the weight tab lists, with the texts of their columns.
#pragma once

#include <QStringList>
#include <vector>

#include "app/VelmoraDoc.h"

/// All entries of the profile in order of their moments; rows count from 0. The entries are copies,
/// read by Reload.
class CWeightList {
  public:
    explicit CWeightList(CVelmoraDoc& doc) : m_doc(doc) {}

    /// A record with a wrong number of properties ends the list, after its message.
    void Reload();
    [[nodiscard]] int Count() const { return static_cast<int>(m_all.entries.size()); }
    /// `row` 0 to Count() - 1.
    [[nodiscard]] const CWeightEntry& Entry(int row) const { return m_all.entries[row].entry; }
    [[nodiscard]] const CLeftOut& LeftOut() const { return m_all.leftOut; }
    [[nodiscard]] ObjectId Record(int row) const { return m_all.entries[row].record; }
    [[nodiscard]] ListedEntries<CWeightEntry> EntriesAt(const std::vector<int>& rows) const {
        return EntriesOf(m_all.entries, rows);
    }
    /// Row of the latest entry on or before the day or moment; with none, of the earliest after it.
    /// -1 in an empty list.
    [[nodiscard]] int RowOfDay(QDate day) const { return RowOfMoment(LastMomentOf(day)); }
    [[nodiscard]] int RowOfMoment(FileTime moment) const;

    /// CWeightTabSettings::kColumnCount titles, "Date" to "Body fat(%)".
    [[nodiscard]] QStringList ColumnTitles() const;
    [[nodiscard]] QString CellText(int row, int column) const;
    /// The cell as a number to sort by: the moment, kg, cm or percent.
    [[nodiscard]] double SortKey(int row, int column) const;

  private:
    CVelmoraDoc& m_doc;
    CEntryRange<CWeightEntry> m_all;
};
