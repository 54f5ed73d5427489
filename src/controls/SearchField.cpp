#include "controls/SearchField.h"

#include <QFocusEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "controls/ListPane.h"
#include "controls/OverlayPlace.h"

using namespace Qt::StringLiterals;

CSearchField::CSearchField(std::vector<CReportColumn> columns, Search search, QWidget* over,
                           QWidget* parent)
    : QLineEdit(parent),
      m_search(std::move(search)),
      m_overlay(new QWidget(over)),
      m_list(new CReportList(u"Matches"_s, m_overlay)),
      m_pane(new CListPane(m_overlay)),
      m_pending(new QTimer(this)) {
    setObjectName(u"search"_s);
    setAccessibleName(u"Search"_s);
    setPlaceholderText(u"Search"_s);
    setClearButtonEnabled(true);
    m_overlay->setObjectName(u"searchList"_s);
    m_overlay->setAutoFillBackground(true);
    m_overlay->hide();
    m_list->setObjectName(u"searchRows"_s);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->SetColumns(std::move(columns));
    m_list->setFocusProxy(this);  // whose keys move in it: its selection is the strong one
    auto* layout = new QVBoxLayout(m_overlay);
    layout->setContentsMargins(0, 0, 0, 0);
    m_pane->SetList(m_list);
    layout->addWidget(m_pane);

    OverlayArea(over)->installEventFilter(this);
    connect(this, &QLineEdit::textEdited, this, [this] {
        m_picksFirst = false;
        ShowMatches();
    });
    // Without an interval it fires when the keys that have come meanwhile are handled.
    m_pending->setSingleShot(true);
    connect(m_pending, &QTimer::timeout, this, &CSearchField::Continue);
    connect(m_list, &CReportList::clicked, this,
            [this](const QModelIndex& index) { Pick(index.row()); });
}

bool CSearchField::IsOpen() const {
    return !m_overlay->isHidden();
}

void CSearchField::Close() {
    m_pending->stop();
    m_picksFirst = false;
    m_overlay->hide();
}

void CSearchField::ShowMatches() {
    const CSearchRows rows = m_search(text());
    m_list->SetEmptyHint(rows.hint);
    m_list->SetRows({.count = rows.count, .text = rows.text});
    m_pane->SetNote(rows.note);
    Place();
    m_overlay->show();
    m_overlay->raise();
    m_list->SelectPlace(0);
    if (rows.isPending) {
        m_pending->start();
    }
}

void CSearchField::Continue() {
    ShowMatches();
    if (m_picksFirst && !m_pending->isActive()) {
        Pick(m_list->CurrentPlace());
    }
}

void CSearchField::keyPressEvent(QKeyEvent* event) {
    constexpr int kPage = 8;
    switch (event->key()) {
        case Qt::Key_Down:
            IsOpen() ? Move(1) : ShowMatches();
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
                m_picksFirst = m_pending->isActive();
                Pick(m_list->CurrentPlace());
                return;
            }
            break;
        default:
            break;
    }
    QLineEdit::keyPressEvent(event);
}

void CSearchField::Move(int rows) {
    if (IsOpen()) {
        m_list->SelectPlace(std::max(0, m_list->CurrentPlace() + rows));
    }
}

void CSearchField::Pick(int row) {
    if (!IsOpen() || row < 0) {
        return;
    }
    Close();
    clear();
    emit Picked(row);
}

// A pop-up menu or another window borrows the focus and gives it back.
void CSearchField::focusOutEvent(QFocusEvent* event) {
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason) {
        Close();
    }
    QLineEdit::focusOutEvent(event);
}

bool CSearchField::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && IsOpen() &&
        watched == OverlayArea(m_overlay->parentWidget())) {
        Place();
    }
    return QLineEdit::eventFilter(watched, event);
}

void CSearchField::Place() {
    m_overlay->setGeometry(OverlayPlace(m_overlay->parentWidget(), this));
}
