// The name under which a command can be undone.
#pragma once

#include <QLatin1StringView>
#include <QString>

class CRecordStore;

/// The commands that the names of steps begin with. DoneText knows each in the past.
inline constexpr QLatin1StringView kAdditionStep("addition");
inline constexpr QLatin1StringView kCopyStep("copy");
inline constexpr QLatin1StringView kCutStep("cut");
inline constexpr QLatin1StringView kDeleteStep("delete");
inline constexpr QLatin1StringView kDuplicateStep("duplicate");
inline constexpr QLatin1StringView kEditStep("edit");
inline constexpr QLatin1StringView kMoveStep("move");
inline constexpr QLatin1StringView kRenameStep("rename");

/// Asked before a change that is larger than the history.
inline constexpr auto kGoOnWithoutUndo = "This cannot be undone. Do you want to go on?";

/// Shows what the history has to report, if anything.
void ShowHistoryNotices(CRecordStore& store);

/// "Moved 3 entries to Lunch." for the step "move of 3 entries" and the place "to Lunch", which may
/// be empty. Empty for a step that has a message of its own, such as an import.
QString DoneText(const QString& step, const QString& place = {});

/// A step of the history, open while this lives. What is stored meanwhile, in one unit of work or
/// several, is undone together. A step within another belongs to it: commands may call commands.
/// The end of the outermost one shows what the history has to report, and a status text.
class CStep {
  public:
    /// `name` completes "Undo ...": "delete of 3 entries".
    CStep(CRecordStore& store, const QString& name);
    ~CStep();
    CStep(const CStep&) = delete;
    CStep& operator=(const CStep&) = delete;

    /// For a name that is known only later; applies from the next change on.
    void Rename(const QString& name);
    /// Replaces DoneText as the status text: a whole sentence.
    void SetStatusText(const QString& text) { m_statusText = text; }
    /// The step will have taken back all its changes when it ends: nothing of it is kept, nor of
    /// provisional steps that earlier programs have left.
    void Cancel();
    /// The step may be cancelled yet, or no longer; applies from the next change on. Until it is
    /// final it leaves the other steps as they are, those that can be redone included.
    void SetProvisional(bool isProvisional);
    /// Call before the first change with the HistoryRoom of all records that the step deletes or
    /// overwrites. When the history does not have it, asks whether to go on without undo; then the
    /// history of what the step changes is emptied and the step is not recorded. False when the
    /// answer was No.
    [[nodiscard]] bool MayGoOn(qint64 room);

  private:
    CRecordStore& m_store;
    QString m_statusText;
};
