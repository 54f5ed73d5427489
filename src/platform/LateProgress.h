// A progress window for work that is mostly too short for one.
#pragma once

#include <QElapsedTimer>

#include "platform/Messages.h"

/// Appears when the work has taken longer than a second.
class CLateProgress {
  public:
    static inline qint64 delayMs = 1000;  ///< a test need not wait so long

    CLateProgress(QString caption, QString status)
        : m_caption(std::move(caption)), m_status(std::move(status)) {
        m_time.start();
    }
    /// What is done of how much. False when the user has cancelled.
    bool Update(qint64 done, qint64 total);

  private:
    QString m_caption;
    QString m_status;
    QElapsedTimer m_time;
    std::unique_ptr<CProgress> m_progress;  ///< null until it appears
};
