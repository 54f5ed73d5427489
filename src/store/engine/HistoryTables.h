// The tables of the history: steps, and the changes of each step in the order in which they were
// made.
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

#include "store/engine/Statement.h"

struct CHistoryStep {
    qint64 id = 0;     ///< ascends with time
    qint64 scope = 0;  ///< see CHistory::Watch
    QString name;      ///< "delete of 3 entries"
    bool isUndone = false;
    bool isDropped = false;      ///< its changes are still to be removed
    bool isProvisional = false;  ///< see CHistory::SetProvisional
    qint64 changes = 0;          ///< rows of changes
    qint64 bytes = 0;            ///< that the step occupies
    qint64 bytesReverted = 0;    ///< that it will occupy once it is undone or redone, at most
};

/// One record, or a run of records that were added one after the other, with consecutive
/// identifiers.
struct CHistoryChange {
    static constexpr int kNothing = -1;

    qint64 database = 0;
    qint64 record = 0;  ///< the first one of a run
    qint64 count = 1;   ///< 1 unless the change added records
    /// Size of what the change left, all records of a run together; kNothing after a deletion.
    qint64 liveBytes = kNothing;
    quint64 liveChecksum = 0;  ///< see ChecksumOf; of a run, each record continues the one before
    // What reverting the change puts back.
    QByteArray body = {};
    qint64 key = 0;
    int ordinal = kNothing;  ///< kNothing: it deletes the records

    [[nodiscard]] bool IsLive() const { return liveBytes != kNothing; }
    [[nodiscard]] bool PutsBack() const { return ordinal != kNothing; }
};

/// Works within the caller's transaction. kErrorCorrupt also reports tables that are not ours.
///
/// The tables have a number, which is part of their names: those with the largest one are used.
/// Damaged tables are left as they are, since removing them would follow damaged links between
/// pages, possibly to those of the records; RemoveFormer does so when the whole file is sound.
class CHistoryTables {
  public:
    explicit CHistoryTables(CSqliteFile& file) : m_file(file) {}

    /// Reads which tables there are.
    EPlatformError Find();
    [[nodiscard]] bool Exist() const { return m_number > 0; }
    /// Creates tables under the next number.
    EPlatformError Create();
    /// Releases the statements and forgets which tables there are.
    void Release();

    /// In ascending order of identifiers. A step whose profile no longer exists is a dropped one.
    /// Also reads whatever WriteStep, and WriteChange for a new step, will need: when this succeeds
    /// they do not meet damaged pages.
    EPlatformError ReadSteps(std::vector<CHistoryStep>& steps);
    /// Adds or overwrites.
    EPlatformError WriteStep(const CHistoryStep& step);
    /// With its changes.
    EPlatformError RemoveStep(qint64 step);
    /// Removes some changes of a step, at most `count` of them.
    EPlatformError RemoveSome(qint64 step, qint64 count);

    /// The tables with other numbers than those in use. Not within a transaction.
    EPlatformError FindFormer(std::vector<QString>& names);
    /// Within a transaction, when the file is sound.
    EPlatformError RemoveFormer(const std::vector<QString>& names);

    /// A step has a list of changes to undo or one to redo; `number` counts from 0. A change that
    /// is not as it was written is kErrorCorrupt.
    EPlatformError WriteChange(const CHistoryStep& step, qint64 number,
                               const CHistoryChange& change);
    EPlatformError ReadChange(const CHistoryStep& step, qint64 number, CHistoryChange& change);
    /// Removes the step's present list.
    EPlatformError RemoveChanges(const CHistoryStep& step);

  private:
    EPlatformError PrepareAll();
    EPlatformError Prepare(CStatement& statement, const char* sql);
    EPlatformError ReadLastChange(qint64& step);

    CSqliteFile& m_file;
    qint64 m_number = 0;  ///< 0: there are none
    CStatement m_writeStep;
    CStatement m_removeStep;
    CStatement m_writeChange;
    CStatement m_readChange;
    CStatement m_removeChanges;
};
