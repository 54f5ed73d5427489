// "Report options": the days, the grouping and the diaries of a report.
#pragma once

#include "controls/Dialog.h"
#include "report/ReportRequest.h"

class QCheckBox;
class QComboBox;
class QDateEdit;

class CReportOptionsDialog : public CDialog {
    Q_OBJECT
  public:
    CReportOptionsDialog(const CReportRequest& request, QWidget* parent);
    /// The current values of the fields.
    [[nodiscard]] CReportRequest GetRequest() const;

  protected:
    bool Confirm() override;

  private:
    QDateEdit* m_from;
    QDateEdit* m_to;
    QComboBox* m_grouping;
    QCheckBox* m_diet;
    QCheckBox* m_weight;
    QCheckBox* m_exercises;
};
