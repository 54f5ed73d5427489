// The modeless progress window of imports, exports and reports.
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QPointer>

#include "controls/ModalLoop.h"
#include "platform/Progress.h"

class QLabel;
class QProgressBar;

/// Disables `mainWindow` (may be null) while it lives; one within another leaves that to the outer
/// one. The caption is "%s [%d%%]" once a position is set.
class CProgressWindow : public QDialog, public CProgress {
    Q_OBJECT
  public:
    CProgressWindow(const QString& caption, QWidget* mainWindow);
    ~CProgressWindow() override;

    void SetStatus(const QString& text) override;
    void SetRange(qint64 lower, qint64 upper, qint64 step) override;
    void SetPosition(qint64 position) override;
    void Step() override;
    void Show() override;
    void Hide() override;
    /// Processes pending events, but at most every few milliseconds; always at the first call after
    /// Show.
    void Pump() override;
    [[nodiscard]] bool IsCancelled() const override { return m_cancelled; }

    /// Escape and the close button cancel, too.
    void reject() override;

  private:
    CModalLoop m_loop;  ///< since Pump processes events while the work goes on
    QString m_caption;
    QPointer<QWidget> m_mainWindow;
    QPointer<QWidget> m_focusBefore;
    bool m_wasEnabled = false;
    QLabel* m_status;
    QProgressBar* m_bar;
    qint64 m_lower = 0;
    qint64 m_upper = 0;
    qint64 m_step = 1;
    qint64 m_position = 0;
    int m_percent = -1;
    bool m_cancelled = false;
    QElapsedTimer m_sincePump;  ///< invalid until pumped
};
