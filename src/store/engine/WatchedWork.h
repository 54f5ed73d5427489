// Progress of long statements, which can be cancelled.
#pragma once

#include "store/engine/SqliteFile.h"

/// While it lives, statements of the file call `progress` now and then with the figures of the last
/// Update. SQLite allows it no statement on the same file, so nothing else may use the file
/// meanwhile, not even a window that is painted.
class CWatchedWork {
  public:
    CWatchedWork(CSqliteFile& file, CopyProgress progress);
    ~CWatchedWork();
    CWatchedWork(const CWatchedWork&) = delete;
    CWatchedWork& operator=(const CWatchedWork&) = delete;

    /// Between statements. False once it was cancelled; statements then fail with
    /// kErrorOperationAborted.
    bool Update(qint64 done, qint64 total);
    [[nodiscard]] bool IsCancelled() const { return m_isCancelled; }

  private:
    CSqliteFile& m_file;
    CopyProgress m_progress;
    qint64 m_done = 0;
    qint64 m_total = 1;
    bool m_isCancelled = false;
};
