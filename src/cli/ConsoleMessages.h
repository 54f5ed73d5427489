// The message seam of the command line: messages go to standard error, results to standard output;
// files come from the arguments; questions are answered as AnswerYes says.
#pragma once

#include "platform/Messages.h"

class CConsoleMessages : public CMessageSeam {
  public:
    /// Answers questions with Yes from now on, instead of No.
    void AnswerYes() { m_answersYes = true; }

    void Show(const CMessage& message) override;
    bool AskYesNo(const QString& text, EAnswer proposed) override;
    QString ChooseFileToOpen(const CFileChoice& choice) override;
    QString ChooseFileToSave(const CFileChoice& choice) override;
    QString ChooseFolder(const QString& title, const QString& initial) override;
    std::unique_ptr<CProgress> CreateProgress(const QString& caption) override;

  private:
    bool m_answersYes = false;
};
