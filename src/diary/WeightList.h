// The entries that the weight tab lists, with the texts of their columns.
#pragma once

#include <QStringList>
#include <vector>

#include "app/VelmoraDoc.h"

/// All entries of the profile by their moments; rows count from 0. The entries are copies, read
/// once a Reload; their positions hold until the next write or deletion of a weight.
class CWeightList {
  public:
    explicit CWeightList(CVelmoraDoc& doc) : m_doc(doc) {}

    /// A record with a wrong number of properties ends the list, after its message.
    void Reload();
    [[nodiscard]] int Count() const { return static_cast<int>(m_rows.size()); }
    /// `row` 0 to Count() - 1.
    [[nodiscard]] const CWeightEntry& Entry(int row) const { return m_rows[row].entry; }
    [[nodiscard]] const CLeftOut& LeftOut() const { return m_leftOut; }
    /// Positions in the weight database.
    [[nodiscard]] std::vector<int> PositionsOf(const std::vector<int>& rows) const;
    /// The latest entry on or before the day or moment; with none, the earliest after it. -1 in an
    /// empty list.
    [[nodiscard]] int RowOfDay(QDate day) const { return RowOfMoment(LastMomentOf(day)); }
    [[nodiscard]] int RowOfMoment(FileTime moment) const;

    /// CWeightTabSettings::kColumnCount titles, "Date" to "Body fat(%)".
    [[nodiscard]] QStringList ColumnTitles() const;
    [[nodiscard]] QString CellText(int row, int column) const;
    /// The cell as a number to sort by: the moment, kg, cm or percent.
    [[nodiscard]] double SortKey(int row, int column) const;

  private:
    struct CRow {
        int position;
        CWeightEntry entry;
    };

    [[nodiscard]] QString WeightText(double kg) const;
    [[nodiscard]] QString ChangeText(double kg) const;

    CVelmoraDoc& m_doc;
    std::vector<CRow> m_rows;
    CLeftOut m_leftOut;
};
