// The list of weights: one row an entry.
#pragma once

#include "controls/ReportList.h"
#include "diary/WeightList.h"

/// Shows the rows of a list; that and the document outlive it.
class CWeightEntryList : public CReportList {
    Q_OBJECT
  public:
    CWeightEntryList(CVelmoraDoc& doc, const CWeightList& weights, QWidget* parent);

    /// Columns anew, without rows.
    void BuildColumns();
    /// The rows, or a hint where there are none.
    void ShowRows();
    /// Scrolls to the entry in force on a day, without selecting it.
    void ShowDay(QDate day);

  private:
    CVelmoraDoc& m_doc;
    const CWeightList& m_weights;
};
