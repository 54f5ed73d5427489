#include "controls/OverlayField.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "controls/ClearButton.h"
#include "controls/ListPane.h"
#include "controls/OverlayPlace.h"

using namespace Qt::StringLiterals;

COverlayField::COverlayField(const QString& name, std::vector<CReportColumn> columns, QWidget* over,
                             QWidget* parent)
    : QLineEdit(parent),
      m_overlay(new QWidget(over)),
      m_layout(new QVBoxLayout(m_overlay)),
      m_list(new CReportList(u"Matches"_s, m_overlay)),
      m_pane(new CListPane(m_overlay)),
      m_pending(new QTimer(this)) {
    setObjectName(name);
    AddClearButton(*this);
    m_overlay->setObjectName(name + u"List"_s);
    m_overlay->setAutoFillBackground(true);
    m_overlay->hide();
    m_list->setObjectName(name + u"Rows"_s);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setContextMenuPolicy(Qt::NoContextMenu);
    m_list->setTextElideMode(Qt::ElideMiddle);  // similar names differ at their ends
    m_list->SetColumns(std::move(columns));
    // The field's keys move in the list, so the list shows the strong selection.
    m_list->setFocusProxy(this);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_pane->SetList(m_list);
    m_layout->addWidget(m_pane, 1);

    OverlayArea(over)->installEventFilter(this);
    connect(this, &QLineEdit::textEdited, this, [this] {
        m_hasReturn = false;
        Open();
    });
    // With an interval of 0 it fires once the keys typed meanwhile have been handled.
    m_pending->setSingleShot(true);
    connect(m_pending, &QTimer::timeout, this, &COverlayField::Continue);
    connect(m_list, &CReportList::clicked, this, [this](const QModelIndex& index) {
        if (IsOpen()) {
            Pick(index.row());
        }
    });
}

bool COverlayField::IsOpen() const {
    return !m_overlay->isHidden();
}

bool COverlayField::IsPending() const {
    return m_pending->isActive();
}

void COverlayField::Close() {
    m_pending->stop();
    m_hasReturn = false;
    m_overlay->hide();
}

void COverlayField::PrepareWhileIdle(std::function<bool()> some) {
    if (!m_prepare) {
        auto* idle = new QTimer(this);
        connect(idle, &QTimer::timeout, this, [this, idle] {
            if (!m_prepare()) {
                m_prepare = nullptr;
                idle->stop();
                idle->deleteLater();
            }
        });
        idle->start();
    }
    m_prepare = std::move(some);
}

void COverlayField::Open() {
    Fill();
    Place();
    m_overlay->show();
    m_overlay->raise();
}

void COverlayField::SetRows(const CSearchRows& rows) {
    m_list->SetEmptyHint(rows.hint);
    m_list->SetRows({.count = rows.count, .text = rows.text});
    m_pane->SetNote(rows.note);
    m_list->SelectPlace(0);
    rows.isPending ? m_pending->start() : m_pending->stop();
}

void COverlayField::Continue() {
    Open();
    if (m_hasReturn && !IsPending()) {
        m_hasReturn = false;
        TakeReturn();
    }
}

void COverlayField::keyPressEvent(QKeyEvent* event) {
    constexpr int kPage = 8;
    switch (event->key()) {
        case Qt::Key_Down:
            IsOpen() ? Move(1) : Open();
            return;
        case Qt::Key_Up:
            Move(-1);
            return;
        case Qt::Key_PageDown:
            Move(kPage);
            return;
        case Qt::Key_PageUp:
            Move(-kPage);
            return;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (IsOpen()) {
                m_hasReturn = IsPending();
                if (!m_hasReturn) {
                    TakeReturn();
                }
                return;
            }
            break;
        default:
            break;
    }
    QLineEdit::keyPressEvent(event);
}

void COverlayField::Move(int rows) {
    if (IsOpen() && m_list->RowCount() > 0) {
        m_list->SelectPlace(std::max(0, m_list->CurrentPlace() + rows));
        RowChosen(m_list->CurrentPlace());
    }
}

// A pop-up menu or another window borrows the focus and gives it back.
void COverlayField::focusOutEvent(QFocusEvent* event) {
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason) {
        Close();
    }
    QLineEdit::focusOutEvent(event);
}

bool COverlayField::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && IsOpen() &&
        watched == OverlayArea(m_overlay->parentWidget())) {
        Place();
    }
    return QLineEdit::eventFilter(watched, event);
}

void COverlayField::Place() {
    const QRect room = OverlayPlace(m_overlay->parentWidget(), this);
    m_overlay->setGeometry(room.x(), room.y(), room.width(), LayOutParts(room.height()));
}
