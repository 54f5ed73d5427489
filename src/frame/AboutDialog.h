// "About Velmora": what the program is, and what it is built with.
#pragma once

#include "controls/Dialog.h"

class CAboutDialog : public CDialog {
    Q_OBJECT
  public:
    CAboutDialog(const QString& backupFolder, QWidget* parent);
};
