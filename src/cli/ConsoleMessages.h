// The command line's answers to the rules: messages on standard error, results on standard
// output, files from the arguments, Yes only when --yes was given.
#pragma once

#include "platform/Messages.h"

class CConsoleMessages : public CMessageSeam {
  public:
    void AnswerYes() { m_answersYes = true; }

    void Show(const CMessage& message) override;
    bool AskYesNo(const QString& text) override;
    QString ChooseFileToOpen(const CFileChoice& choice) override;
    QString ChooseFileToSave(const CFileChoice& choice) override;
    std::unique_ptr<CProgress> CreateProgress(const QString& caption) override;

  private:
    bool m_answersYes = false;
};
