#include "controls/ProgressWindow.h"

#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/Messages.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QSize kWindowSize(200, 100);
/// Short enough to feel live, long enough to cost nothing in a loop over records.
constexpr qint64 kPumpIntervalMs = 10;

}  // namespace

CProgressWindow::CProgressWindow(const QString& caption, QWidget* mainWindow)
    : QDialog(mainWindow),
      m_caption(caption),
      m_mainWindow(mainWindow),
      m_status(new QLabel(this)),
      m_bar(new QProgressBar(this)) {
    setWindowTitle(caption);
    setModal(false);
    m_status->setObjectName(u"status");
    m_status->setTextFormat(Qt::PlainText);
    m_bar->setObjectName(u"progress");
    m_bar->setAccessibleName(caption);
    m_bar->setRange(0, 100);
    m_bar->setValue(0);
    auto* cancel = new QPushButton(u" Cancel "_s, this);
    cancel->setObjectName(u"cancel");
    connect(cancel, &QPushButton::clicked, this, &CProgressWindow::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(u"Progress"_s, this));
    layout->addWidget(m_status);
    layout->addWidget(m_bar);
    layout->addWidget(cancel, 0, Qt::AlignHCenter);
    resize(sizeHint().expandedTo(kWindowSize));

    if (m_mainWindow != nullptr) {
        m_focusBefore = m_mainWindow->focusWidget();
        m_wasEnabled = m_mainWindow->isEnabled();
        m_mainWindow->setEnabled(false);
        // Disabling the main window has disabled its child windows, too.
        setEnabled(true);
    }
}

CProgressWindow::~CProgressWindow() {
    if (m_mainWindow == nullptr || !m_wasEnabled) {
        return;
    }
    m_mainWindow->setEnabled(true);
    // Disabling took the focus away.
    if (m_focusBefore != nullptr) {
        m_focusBefore->setFocus();
    }
}

void CProgressWindow::SetStatus(const QString& text) {
    m_status->setText(text);
}

void CProgressWindow::SetRange(qint64 lower, qint64 upper, qint64 step) {
    m_lower = lower;
    m_upper = upper;
    m_step = step;
}

void CProgressWindow::SetPosition(qint64 position) {
    m_position = position;
    const int percent =
        m_upper > m_lower ? static_cast<int>(position * 100 / (m_upper - m_lower)) : 0;
    if (percent == m_percent) {
        return;
    }
    m_percent = percent;
    m_bar->setValue(std::clamp(percent, 0, 100));
    setWindowTitle(FormatText("%s [%d%%]"_L1, {m_caption, percent}));
}

void CProgressWindow::Step() {
    SetPosition(m_position + m_step);
}

void CProgressWindow::Show() {
    show();
    m_sincePump.invalidate();
}

void CProgressWindow::Hide() {
    hide();
}

void CProgressWindow::Pump() {
    if (m_sincePump.isValid() && !m_sincePump.hasExpired(kPumpIntervalMs)) {
        return;
    }
    QCoreApplication::processEvents();
    m_sincePump.start();
}

void CProgressWindow::reject() {
    m_cancelled = true;
    hide();
    if (m_mainWindow != nullptr) {
        m_mainWindow->raise();
        m_mainWindow->activateWindow();
    }
}
