// The list of what was eaten: one row an entry, with a picture of its kind.
#pragma once

#include <array>

#include "controls/ReportList.h"
#include "diary/DietDay.h"

/// Shows a day's rows; the day and the document outlive it.
class CEntryList : public CReportList {
    Q_OBJECT
  public:
    CEntryList(CVelmoraDoc& doc, const CDietDay& day, QWidget* parent);

    /// Columns anew, without rows.
    void BuildColumns();
    /// The rows of the day, or a hint where there are none.
    void ShowRows();
    /// Background as for CReportList; pictures and hint stand out from it.
    void ShowColors(const QColor& background);

  private:
    CVelmoraDoc& m_doc;
    const CDietDay& m_day;
    std::array<QIcon, 3> m_pictures;  ///< by item kind
};
