// The one seam between the rules and the user's interface: boxes in the window program,
// standard error in the command line, a script in the tests.
#pragma once

#include <QLatin1StringView>
#include <QString>
#include <functional>
#include <initializer_list>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "platform/Progress.h"

/// Result: the summary of a finished operation.
enum class EMessageIcon { Plain, Stop, Warning, Information, Result };

/// An action offered with a message; windows show it as a button.
struct CMessageAction {
    QString text;
    std::function<bool()> run;  ///< true: the message is settled and closes
    QString offer = {};         ///< a sentence for the second text where the action is shown
};

struct CMessage {
    QString text;
    EMessageIcon icon = EMessageIcon::Plain;
    QString detail = {};  ///< a second, smaller text, or empty: the file and the reason
    std::vector<CMessageAction> actions = {};
};

/// What a file dialog offers.
struct CFileChoice {
    QString title;
    QString defaultExtension;  ///< with its point, ".csv"
    QString filterName;        ///< as shown, "CSV file (*.csv)"
    QString initialName;       ///< proposed name, may be empty
};

/// The answer that Return gives to a question.
enum class EAnswer { Yes, No };

/// What rules ask of the user interface. Exactly one is in use while the program runs: the
/// constructor installs it, the destructor reinstalls its predecessor (destroy the newest first).
class CMessageSeam {
  public:
    CMessageSeam();
    virtual ~CMessageSeam();
    CMessageSeam(const CMessageSeam&) = delete;
    CMessageSeam& operator=(const CMessageSeam&) = delete;

    virtual void Show(const CMessage& message) = 0;
    /// True for Yes; every other way of leaving the question is No.
    virtual bool AskYesNo(const QString& text, EAnswer proposed) = 0;
    /// The chosen path; empty when cancelled.
    virtual QString ChooseFileToOpen(const CFileChoice& choice) = 0;
    virtual QString ChooseFileToSave(const CFileChoice& choice) = 0;
    /// The path of an existing folder; empty when cancelled.
    virtual QString ChooseFolder(const QString& title, const QString& initial) = 0;
    /// A progress window captioned `caption`; never null.
    virtual std::unique_ptr<CProgress> CreateProgress(const QString& caption) = 0;
    /// Wait cursor on and off; calls nest.
    virtual void BeginWait() {}
    virtual void EndWait() {}

  private:
    CMessageSeam* m_previous;
};

void ShowMessage(const QString& text, EMessageIcon icon = EMessageIcon::Plain);
void ShowMessage(const CMessage& message);
bool AskYesNo(const QString& text, EAnswer proposed = EAnswer::Yes);
QString ChooseFileToOpen(const CFileChoice& choice);
QString ChooseFileToSave(const CFileChoice& choice);
QString ChooseFolder(const QString& title, const QString& initial = {});
std::unique_ptr<CProgress> CreateProgress(const QString& caption);

/// Silences ShowMessage while it lives: for a first attempt that is repeated, with its messages, if
/// it fails.
class CMuteMessages {
  public:
    CMuteMessages();
    ~CMuteMessages();
    CMuteMessages(const CMuteMessages&) = delete;
    CMuteMessages& operator=(const CMuteMessages&) = delete;
};

/// Shows the wait cursor for as long as it lives.
class CWaitCursor {
  public:
    CWaitCursor();
    ~CWaitCursor();
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
};

/// One value for a placeholder of FormatText.
class CTextArgument {
  public:
    CTextArgument(QString text) : m_text(std::move(text)) {}
    CTextArgument(qint64 number) : m_text(QString::number(number)) {}
    CTextArgument(int number) : m_text(QString::number(number)) {}
    [[nodiscard]] const QString& Text() const { return m_text; }

  private:
    QString m_text;
};

/// Fills the "%s", "%d" and "%ld" of `pattern` in order; "%%" gives "%". Values are not scanned
/// again, so a name holding "%s" is kept as it is. Placeholders without an argument are kept too.
QString FormatText(QLatin1StringView pattern, std::span<const CTextArgument> arguments);
QString FormatText(QLatin1StringView pattern, std::initializer_list<CTextArgument> arguments);
