#include "platform/Messages.h"

namespace {
CMessageSeam* installedSeam = nullptr;
int muteDepth = 0;

CMessageSeam& Seam() {
    Q_ASSERT_X(installedSeam != nullptr, "Messages", "no message seam is installed");
    return *installedSeam;
}
}  // namespace

CMessageSeam::CMessageSeam() : m_previous(installedSeam) {
    installedSeam = this;
}

CMessageSeam::~CMessageSeam() {
    installedSeam = m_previous;
}

void ShowMessage(const QString& text, EMessageIcon icon) {
    ShowMessage(CMessage{text, icon});
}

void ShowMessage(const CMessage& message) {
    if (muteDepth == 0) {
        Seam().Show(message);
    }
}

bool AskYesNo(const QString& text, EAnswer proposed) {
    return Seam().AskYesNo(text, proposed);
}

QString ChooseFileToOpen(const CFileChoice& choice) {
    return Seam().ChooseFileToOpen(choice);
}

QString ChooseFileToSave(const CFileChoice& choice) {
    return Seam().ChooseFileToSave(choice);
}

QString ChooseFolder(const QString& title, const QString& initial) {
    return Seam().ChooseFolder(title, initial);
}

std::unique_ptr<CProgress> CreateProgress(const QString& caption) {
    return Seam().CreateProgress(caption);
}

CMuteMessages::CMuteMessages() {
    ++muteDepth;
}

CMuteMessages::~CMuteMessages() {
    --muteDepth;
}

CWaitCursor::CWaitCursor() {
    Seam().BeginWait();
}

CWaitCursor::~CWaitCursor() {
    Seam().EndWait();
}

QString FormatText(QLatin1StringView pattern, std::initializer_list<CTextArgument> arguments) {
    return FormatText(pattern, std::span(arguments.begin(), arguments.size()));
}

QString FormatText(QLatin1StringView pattern, std::span<const CTextArgument> arguments) {
    QString result;
    auto argument = arguments.begin();
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        if (pattern[i] != u'%' || i + 1 == pattern.size()) {
            result += pattern[i];
            continue;
        }
        const qsizetype start = i;
        ++i;
        if (pattern[i] == u'%') {
            result += u'%';
            continue;
        }
        if (pattern[i] == u'l') {
            ++i;
        }
        if (argument == arguments.end()) {
            result += pattern.mid(start, i + 1 - start);
            continue;
        }
        result += argument->Text();
        ++argument;
    }
    return result;
}
