#include "frame/StatusLine.h"

#include <QAccessible>
#include <QLabel>
#include <QLayout>

using namespace Qt::StringLiterals;

namespace {
/// Long enough to read a sentence twice.
constexpr int kShownMs = 8000;
/// In pixels; aligns the text with the view, which has wider margins in a large window.
constexpr int kIndent = 6;
}  // namespace

CStatusLine::CStatusLine(QWidget* parent) : QStatusBar(parent), m_text(new QLabel(this)) {
    setSizeGripEnabled(false);
    m_text->setObjectName(u"status"_s);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    addWidget(m_text, 1);
    m_shown.setSingleShot(true);
    m_shown.setInterval(kShownMs);
    connect(&m_shown, &QTimer::timeout, this, &CStatusLine::ShowOrHide);
}

void CStatusLine::SetText(const QString& text) {
    m_text->setText(text);
    if (text.isEmpty()) {
        m_shown.stop();
    } else {
        m_shown.start();
        QAccessibleEvent announced(m_text, QAccessible::Alert);
        QAccessible::updateAccessibility(&announced);
    }
    ShowOrHide();
    // The window does not notice that the text takes more lines than the one before.
    layout()->activate();
    parentWidget()->layout()->invalidate();
}

void CStatusLine::SetSmall(bool isSmall) {
    m_isSmall = isSmall;
    m_text->setIndent(isSmall ? 0 : kIndent);
    ShowOrHide();
}

void CStatusLine::ShowOrHide() {
    setVisible(!m_isSmall || m_shown.isActive());
}
