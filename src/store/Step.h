// The name under which a command can be undone.
#pragma once

#include <QString>

class CRecordStore;

/// Asked before a change that is larger than the history.
inline constexpr auto kGoOnWithoutUndo = "This cannot be undone. Do you want to go on?";

/// Shows what the history has to report, if anything.
void ShowHistoryNotices(CRecordStore& store);

/// A step of the history, open while this lives. What is stored meanwhile, in one unit of work or
/// several, is undone together. A step within another belongs to it: commands may call commands.
/// The end of the outermost one shows what the history has to report.
class CStep {
  public:
    /// `name` completes "Undo ...": "delete of 3 entries".
    CStep(CRecordStore& store, const QString& name);
    ~CStep();
    CStep(const CStep&) = delete;
    CStep& operator=(const CStep&) = delete;

    /// For a name that is known only later; applies from the next change on.
    void Rename(const QString& name);
    /// The step will have taken back all its changes when it ends: nothing of it is kept.
    void Cancel();
    /// Call before the first change with the bytes of all records that the step deletes or
    /// overwrites. When they are more than the history holds, asks whether to go on without undo;
    /// then the history of what the step changes is emptied and the step is not recorded. False
    /// when the answer was No.
    [[nodiscard]] bool MayGoOn(qint64 bytes);

  private:
    CRecordStore& m_store;
};
