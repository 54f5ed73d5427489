#include "platform/LateProgress.h"

bool CLateProgress::Update(qint64 done, qint64 total) {
    if (!m_progress) {
        if (m_time.elapsed() < delayMs) {
            return true;
        }
        m_progress = CreateProgress(m_caption);
        m_progress->SetStatus(m_status);
        m_progress->Show();
    }
    m_progress->SetRange(0, total, 1);
    m_progress->SetPosition(done);
    m_progress->Pump();
    return !m_progress->IsCancelled();
}
