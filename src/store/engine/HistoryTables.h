// The tables of the history: steps, and the changes of each step in the order in which they were
// made.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

#include "store/engine/SqliteFile.h"

struct CHistoryStep {
    qint64 id = 0;     ///< ascends with time
    qint64 scope = 0;  ///< see CHistory::Watch
    QString name;      ///< "delete of 3 entries"
    bool isUndone = false;
    qint64 changes = 0;        ///< rows of changes
    qint64 bytes = 0;          ///< that the step occupies
    qint64 bytesReverted = 0;  ///< that it will occupy when it is undone or redone
};

/// One record, or a run of records that were added one after the other.
struct CHistoryChange {
    static constexpr qint64 kAbsent = -1;

    qint64 database = 0;
    qint64 record = 0;           ///< the first one of a run
    qint64 count = 1;            ///< of the run
    qint64 liveBytes = kAbsent;  ///< size of what is live now, all records of the run together
    quint64 liveChecksum = 0;    ///< see ChecksumOf; of a run, each record's continues the previous
    bool hasBody = false;        ///< false: reverting the change deletes the records
    QByteArray body;             ///< what reverting the change puts back, and where
    qint64 key = 0;
    int ordinal = 0;
};

/// Works within the caller's transaction. kErrorCorrupt also reports tables that are not ours.
///
/// The tables have a number, which is part of their names: those with the largest number are used.
/// Damaged tables are left as they are, since removing them would follow damaged links between
/// pages, possibly into those of the records.
class CHistoryTables {
  public:
    explicit CHistoryTables(CSqliteFile& file) : m_file(file) {}

    /// Reads which tables there are. Call after Release.
    EPlatformError Find();
    [[nodiscard]] bool Exist() const { return m_number > 0; }
    /// Creates tables under the next number.
    EPlatformError Create();
    void Release();

    /// Steps whose profile is no longer that of their scope's identifier are left out.
    EPlatformError ReadSteps(std::vector<CHistoryStep>& steps);
    EPlatformError WriteStep(const CHistoryStep& step);
    /// With its changes.
    EPlatformError RemoveStep(qint64 step);
    /// `number` counts from 0. A step has two lists, of what undo and what redo puts back.
    EPlatformError WriteChange(qint64 step, bool isUndone, qint64 number,
                               const CHistoryChange& change);
    EPlatformError ReadChange(qint64 step, bool isUndone, qint64 number, CHistoryChange& change);
    EPlatformError RemoveChanges(qint64 step, bool isUndone);

  private:
    EPlatformError Prepare(CStatement& statement, const char* sql);

    CSqliteFile& m_file;
    qint64 m_number = 0;  ///< 0: none
    CStatement m_writeStep;
    CStatement m_removeStep;
    CStatement m_writeChange;
    CStatement m_readChange;
    CStatement m_removeChanges;
};
