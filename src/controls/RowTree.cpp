#include "controls/RowTree.h"

#include <QHeaderView>
#include <QPainter>
#include <algorithm>

#include "controls/Colors.h"

namespace {
/// Share of the selection's colour in the pale one.
constexpr double kPaleShare = 0.4;
}  // namespace

void CRowTree::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                       const QModelIndex& index) const {
    // Of the window, so that a dialog over it changes nothing.
    const QWidget* focus = window()->focusWidget();
    const bool isMovedByField = focus != nullptr && focus == focusProxy();
    if (focus == this || isMovedByField || (focus != nullptr && isAncestorOf(focus))) {
        QTreeView::drawRow(painter, option, index);
        FrameSelected(painter, option, index);
        return;
    }
    QStyleOptionViewItem pale = option;
    pale.state &= ~QStyle::State_Active;
    QPalette& colors = pale.palette;
    const QColor ground = MixedColor(colors.color(QPalette::Active, QPalette::Highlight),
                                     colors.color(QPalette::Active, QPalette::Base), kPaleShare);
    colors.setColor(QPalette::Inactive, QPalette::Highlight, ground);
    colors.setColor(QPalette::Inactive, QPalette::HighlightedText, ReadableTextColor(ground));
    QTreeView::drawRow(painter, pale, index);
    FrameSelected(painter, option, index);
}

void CRowTree::FrameSelected(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    if (!ShowsSelection() || !selectionModel()->isSelected(index)) {
        return;
    }
    const QColor base = option.palette.color(QPalette::Active, QPalette::Base);
    const QColor ground = option.palette.color(QPalette::Active, QPalette::Highlight);
    QRect row = option.rect;
    row.setRight(std::min(row.right(), header()->length() - header()->offset() - 1));
    painter->setPen(ContrastingColor(ground, base, kVisibleContrast));
    painter->drawRect(row.adjusted(0, 0, -1, -1));
}
