#include "cli/ConsoleMessages.h"

#include <cstdio>

#include "cli/TableOutput.h"

using namespace Qt::StringLiterals;

namespace {
/// Scripts have no use for progress.
class CNoProgress : public CProgress {
  public:
    void SetStatus(const QString& /*text*/) override {}
    void SetRange(qint64 /*lower*/, qint64 /*upper*/, qint64 /*step*/) override {}
    void SetPosition(qint64 /*position*/) override {}
    void Step() override {}
    void Show() override {}
    void Hide() override {}
    void Pump() override {}
    [[nodiscard]] bool IsCancelled() const override { return false; }
};
}  // namespace

void CConsoleMessages::Show(const CMessage& message) {
    PrintMessage(message.icon == EMessageIcon::Result ? stdout : stderr, message.text);
    if (!message.detail.isEmpty()) {
        (void)FinishOutput();  // keeps the order; the end of the program checks the result
        PrintMessage(stderr, message.detail);
    }
}

bool CConsoleMessages::AskYesNo(const QString& text, EAnswer /*proposed*/) {
    PrintMessage(stderr, text);
    if (!m_answersYes) {
        PrintLine(stderr, u"Nothing was done. Add --yes to confirm."_s);
    }
    return m_answersYes;
}

// Commands take their file names from the arguments and never ask.
QString CConsoleMessages::ChooseFileToOpen(const CFileChoice& /*choice*/) {
    return {};
}

QString CConsoleMessages::ChooseFileToSave(const CFileChoice& /*choice*/) {
    return {};
}

QString CConsoleMessages::ChooseFolder(const QString& /*title*/, const QString& /*initial*/) {
    return {};
}

std::unique_ptr<CProgress> CConsoleMessages::CreateProgress(const QString& /*caption*/) {
    return std::make_unique<CNoProgress>();
}
