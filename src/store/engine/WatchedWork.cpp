#include "store/engine/WatchedWork.h"

CWatchedWork::CWatchedWork(CSqliteFile& file, CopyProgress progress)
    : m_file(file), m_progress(std::move(progress)) {
    m_file.SetPulse([this] { return Update(m_done, m_total); });
}

CWatchedWork::~CWatchedWork() {
    m_file.SetPulse({});
}

bool CWatchedWork::Update(qint64 done, qint64 total) {
    m_done = done;
    m_total = total;
    m_isCancelled = m_isCancelled || (m_progress && !m_progress(done, total));
    return !m_isCancelled;
}
