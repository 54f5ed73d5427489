// The list under the entries: each displayed nutrient's total of the day against its target, as a
// bar and in figures.
#pragma once

#include <vector>

#include "controls/ReportList.h"
#include "diary/DietTotals.h"

/// Columns "Nutrient", "Graph", "Data1", "Data2" and "Data3", without a header.
class CTotalsList : public CReportList {
    Q_OBJECT
  public:
    explicit CTotalsList(QWidget* parent);

    void SetTotals(std::vector<CTotalsRow> rows);
    [[nodiscard]] const CTotalsRow& Total(int row) const { return m_rows[row]; }

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void FitColumns();
    [[nodiscard]] QString CellText(int row, int column) const;

    std::vector<CTotalsRow> m_rows;
};

/// Draws one bar into `cell`, on its existing background.
void DrawTotalsBar(QPainter& painter, const QRect& cell, const CTotalsBar& bar);
