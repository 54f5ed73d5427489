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
    /// As the fields stand.
    [[nodiscard]] CPurgeRequest GetRequest() const;

  private:
    QDateEdit* m_begin;
    QDateEdit* m_end;
    QCheckBox* m_diet;
    QCheckBox* m_exercises;
    QCheckBox* m_weights;
};

/// The command "Purge...". When entries may have gone, `changed` is called before the totals show,
/// for views to reload.
void RunPurge(CVelmoraDoc& doc, QWidget* parent, const std::function<void()>& changed);
