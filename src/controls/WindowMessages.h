// The message seam of the window program: message boxes, file dialogs, the progress window, the
// wait cursor.
#pragma once

#include "platform/Messages.h"

/// Boxes are modal over the active window and titled with the program's name.
class CWindowMessages : public CMessageSeam {
  public:
    void Show(const CMessage& message) override;
    bool AskYesNo(const QString& text, EAnswer proposed) override;
    QString ChooseFileToOpen(const CFileChoice& choice) override;
    QString ChooseFileToSave(const CFileChoice& choice) override;
    QString ChooseFolder(const QString& title, const QString& initial) override;
    std::unique_ptr<CProgress> CreateProgress(const QString& caption) override;
    void BeginWait() override;
    void EndWait() override;
};
