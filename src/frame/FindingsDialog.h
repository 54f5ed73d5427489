// Shows what a check of the data found, and offers to repair it.
#pragma once

#include "controls/Dialog.h"
#include "store/backup/Findings.h"

/// Accepted to repair; without faults there is nothing to repair.
class CFindingsDialog : public CDialog {
    Q_OBJECT
  public:
    CFindingsDialog(const CFindings& findings, QWidget* parent);
};
