#include "controls/PickList.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "controls/ListPane.h"
#include "controls/OverlayPlace.h"
#include "controls/ReportList.h"

CPickList::CPickList(QWidget* parent)
    : QWidget(parent), m_list(new CReportList({}, this)), m_pane(new CListPane(this)) {
    setObjectName(u"pickList");
    setAutoFillBackground(true);
    hide();
    m_list->setObjectName(u"pickListRows");
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_pane->SetList(m_list);
    layout->addWidget(m_pane);

    OverlayArea(parent)->installEventFilter(this);
    m_list->installEventFilter(this);
    m_list->viewport()->installEventFilter(this);
    connect(m_list, &CReportList::clicked, this, &CPickList::Pick);
    connect(m_list, &CReportList::activated, this, &CPickList::Pick);
}

void CPickList::Open(QWidget* above, const CPickRows& content, const QString& current) {
    const QStringList& rows = content.rows;
    if (!IsOpen()) {
        m_focusBefore = window()->focusWidget();
    }
    m_above = above;
    m_list->setAccessibleName(content.header);
    m_list->SetColumn(content.header);
    m_list->SetRows({.count = static_cast<int>(rows.size()),
                     .text = [rows](int row, int) { return rows[row]; }});
    m_pane->SetNote(content.note);
    Place();
    show();
    raise();
    m_list->setFocus();
    m_list->SelectRow(std::max(0, static_cast<int>(rows.indexOf(current))));
    if (!rows.contains(current)) {
        m_list->clearSelection();
    }
}

bool CPickList::IsOpen() const {
    return !isHidden();
}

void CPickList::Close() {
    if (!IsOpen()) {
        return;
    }
    // Before hiding, which would pass the focus to whatever comes next.
    if (m_focusBefore != nullptr && isAncestorOf(window()->focusWidget())) {
        m_focusBefore->setFocus();
    }
    hide();
}

bool CPickList::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && IsOpen() && watched == OverlayArea(parentWidget())) {
        Place();
    }
    if (watched == m_list && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Escape || key == Qt::Key_Tab || key == Qt::Key_Backtab) {
            Close();
            return true;
        }
    }
    // The first click of a double click picks; the second must not reach what opens in its place.
    if (watched == m_list->viewport() && event->type() == QEvent::MouseButtonDblClick) {
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void CPickList::Pick(const QModelIndex& index) {
    if (!IsOpen() || !index.isValid()) {
        return;
    }
    const QString row = index.data().toString();
    Close();
    emit Picked(row);
}

void CPickList::Place() {
    setGeometry(OverlayPlace(parentWidget(), m_above));
}
