// The list of weights: one row per entry.
#pragma once

#include "controls/ReportList.h"
#include "diary/weight/WeightList.h"

/// Shows the rows of a CWeightList; that and the document outlive it.
class CWeightEntryList : public CReportList {
    Q_OBJECT
  public:
    CWeightEntryList(CVelmoraDoc& doc, const CWeightList& weights, QWidget* parent);

    /// Rebuilds the columns and removes the rows.
    void BuildColumns();
    /// Shows the rows, or a hint if there are none.
    void ShowRows();
    /// Scrolls to the entry in force on a day, without selecting it.
    void ShowDay(QDate day);

  private:
    CVelmoraDoc& m_doc;
    const CWeightList& m_weights;
};
