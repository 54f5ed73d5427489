#include "controls/ListPane.h"

#include <QAbstractItemView>
#include <QLabel>
#include <QVBoxLayout>

namespace {
constexpr int kNoteMargin = 3;
}

CListPane::CListPane(QWidget* parent)
    : QWidget(parent), m_layout(new QVBoxLayout(this)), m_note(new QLabel(this)) {
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_note->setObjectName(u"listNote");
    m_note->setTextFormat(Qt::PlainText);
    m_note->setWordWrap(true);
    m_note->setMargin(kNoteMargin);
    m_note->hide();
    m_layout->addWidget(m_note);
}

void CListPane::SetList(QAbstractItemView* list) {
    m_layout->insertWidget(0, list, 1);
}

void CListPane::SetNote(const QString& text) {
    m_note->setText(text);
    m_note->setVisible(!text.isEmpty());
}
