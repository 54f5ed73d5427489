// The preferences of the exercise library's window.
#pragma once

#include "controls/Dialog.h"
#include "store/Database.h"

class QCheckBox;

class CExlibPreferencesDialog : public CDialog {
    Q_OBJECT
  public:
    CExlibPreferencesDialog(CDatabase& database, QWidget* parent);

  protected:
    bool Confirm() override;

  private:
    CDatabase& m_database;
    QCheckBox* m_namesInTree;
};
