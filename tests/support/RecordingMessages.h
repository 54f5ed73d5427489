// A user who writes down what is shown and answers as told: by a script first, then the same
// answer every time.
#pragma once

#include "platform/Messages.h"

#include <QStringList>
#include <functional>
#include <utility>

/// What a progress window was told. `cancelAfterPumps` pumps later the user has cancelled; -1 is
/// never. `onPump` does what happens elsewhere meanwhile.
struct CProgressLog {
    QStringList captions;
    QStringList statuses;
    qint64 position = 0;
    qint64 step = 1;
    int pumps = 0;
    int shows = 0;
    int cancelAfterPumps = -1;
    bool isShown = false;
    std::function<void()> onPump;
};

class CRecordingProgress : public CProgress {
  public:
    explicit CRecordingProgress(CProgressLog& log) : m_log(log) {}
    ~CRecordingProgress() override { m_log.isShown = false; }
    CRecordingProgress(const CRecordingProgress&) = delete;
    CRecordingProgress& operator=(const CRecordingProgress&) = delete;
    void SetStatus(const QString& text) override { m_log.statuses.append(text); }
    void SetRange(qint64 lower, qint64, qint64 step) override {
        m_log.position = lower;
        m_log.step = step;
    }
    void SetPosition(qint64 position) override { m_log.position = position; }
    void Step() override { m_log.position += m_log.step; }
    void Show() override {
        m_log.isShown = true;
        ++m_log.shows;
    }
    void Hide() override { m_log.isShown = false; }
    void Pump() override {
        ++m_log.pumps;
        if (m_log.onPump) {
            m_log.onPump();
        }
    }
    bool IsCancelled() const override {
        return m_log.cancelAfterPumps >= 0 && m_log.pumps >= m_log.cancelAfterPumps;
    }

  private:
    CProgressLog& m_log;
};

class CRecordingMessages : public CMessageSeam {
  public:
    void Show(const CMessage& message) override {
        shown.append(message.text);
        if (!message.detail.isEmpty()) {
            details.append(message.detail);
        }
        shownOverProgress += progress.isShown ? 1 : 0;
        lastIcon = message.icon;
        for (const CMessageAction& action : message.actions) {
            offered.append(action.text);
            if (action.text == chosenAction) {
                chosenAction.clear();
                action.run();
            }
        }
    }
    bool AskYesNo(const QString& text, EAnswer /*proposed*/) override {
        asked.append(text);
        shownOverProgress += progress.isShown ? 1 : 0;
        return answers.isEmpty() ? answer : answers.takeFirst();
    }
    QString ChooseFileToOpen(const CFileChoice& choice) override { return Choose(choice); }
    QString ChooseFileToSave(const CFileChoice& choice) override { return Choose(choice); }
    QString ChooseFolder(const QString& title, const QString& initial) override {
        return Choose({title, {}, {}, initial});
    }
    std::unique_ptr<CProgress> CreateProgress(const QString& caption) override {
        progress.captions.append(caption);
        return std::make_unique<CRecordingProgress>(progress);
    }
    void BeginWait() override { ++waits; }
    void EndWait() override { --waits; }

    /// What was shown since the last call.
    QStringList TakeShown() { return std::exchange(shown, {}); }
    /// The same with '|' between the messages.
    QString Said() { return TakeShown().join(u'|'); }

    QStringList shown;
    QStringList details;   ///< second texts
    QStringList offered;   ///< actions
    QString chosenAction;  ///< done once, when it is offered next
    EMessageIcon lastIcon = EMessageIcon::Plain;
    QStringList asked;
    QList<bool> answers;  ///< used up one a question, then `answer` stands
    bool answer = true;
    QList<CFileChoice> choices;
    QString chosenFile;  ///< empty: the file dialog is cancelled
    CProgressLog progress;
    int shownOverProgress = 0;  ///< messages while a progress window was in sight
    int waits = 0;

  private:
    QString Choose(const CFileChoice& choice) {
        choices.append(choice);
        return chosenFile;
    }
};
