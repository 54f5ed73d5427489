// "Purge": the days and the diaries to remove entries from.
#pragma once

#include <functional>

#include "controls/Dialog.h"
#include "diary/PurgeRules.h"

class QCheckBox;
class QDateEdit;

class CPurgeDialog : public CDialog {
    Q_OBJECT
  public:
    CPurgeDialog(QDate today, QWidget* parent);
    /// The current values of the fields.
    [[nodiscard]] CPurgeRequest GetRequest() const;

  private:
    QDateEdit* m_begin;
    QDateEdit* m_end;
    QCheckBox* m_diet;
    QCheckBox* m_exercises;
    QCheckBox* m_weights;
};

/// The command "Purge...". `changed` is called after the removal and before the totals are shown,
/// for views to reload.
void RunPurge(CVelmoraDoc& doc, QWidget* parent, const std::function<void()>& changed);
