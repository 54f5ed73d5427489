// The list of what was eaten: one row an entry, with a picture of its kind.
#pragma once

#include <array>

#include "controls/ReportList.h"
#include "diary/DietDay.h"

class QLabel;

/// Shows a day's rows; the day and the document outlive it.
class CEntryList : public CReportList {
    Q_OBJECT
  public:
    CEntryList(CVelmoraDoc& doc, const CDietDay& day, QWidget* parent);

    /// Columns anew, without rows.
    void BuildColumns();
    /// Keeps the widths that the user dragged in the document; the other columns go on following
    /// the window.
    void StoreColumns();
    /// The rows of the day, or a hint where there are none.
    void ShowRows();
    /// Background as for CReportList; pictures and hint stand out from it.
    void ShowColors(const QColor& background);

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void LayColumnsOut();

    CVelmoraDoc& m_doc;
    const CDietDay& m_day;
    QLabel* m_hint;
    std::vector<int> m_widths;        ///< as last laid out
    std::array<QIcon, 3> m_pictures;  ///< by item kind
};
