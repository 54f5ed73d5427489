// How a long operation shows its progress and learns that the user cancelled it.
#pragma once

#include <QString>

/// A modeless progress display with a Cancel button. Cancel is only noticed while Pump runs.
class CProgress {
  public:
    CProgress() = default;
    virtual ~CProgress() = default;
    CProgress(const CProgress&) = delete;
    CProgress& operator=(const CProgress&) = delete;

    virtual void SetStatus(const QString& text) = 0;
    virtual void SetRange(qint64 lower, qint64 upper, qint64 step) = 0;
    virtual void SetPosition(qint64 position) = 0;
    /// Moves on by the step of SetRange.
    virtual void Step() = 0;
    virtual void Show() = 0;
    virtual void Hide() = 0;
    virtual void Pump() = 0;
    [[nodiscard]] virtual bool IsCancelled() const = 0;
};
