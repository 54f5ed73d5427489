// The list of what was eaten: one row per entry, with an icon for its kind.
#pragma once

#include <array>

#include "controls/ReportList.h"
#include "diary/DietDay.h"

/// Shows a day's rows; the day and the document outlive it.
class CEntryList : public CReportList {
    Q_OBJECT
  public:
    CEntryList(CVelmoraDoc& doc, const CDietDay& day, QWidget* parent);

    /// Rebuilds the columns and removes the rows.
    void BuildColumns();
    /// Shows the rows of the day, or a hint if there are none.
    void ShowRows();
    /// Background as for CReportList; icons and hint stay readable on it.
    void ShowColors(const QColor& background);

  private:
    CVelmoraDoc& m_doc;
    const CDietDay& m_day;
    std::array<QIcon, 3> m_pictures;  ///< by item kind
};
