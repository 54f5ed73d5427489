// How the exercise library's window behaves.
#pragma once

#include "controls/Dialog.h"
#include "store/Database.h"

class QCheckBox;

/// Kept in the view-settings record of the Exlib database.
struct CExlibViewSettings {
    bool namesInTree = true;     ///< "Show exercise names in category tree"
    int splitterPerMille = 400;  ///< the tree's share of the window

    static CExlibViewSettings Load(CDatabase& database);
    bool Save(CDatabase& database) const;
};

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
