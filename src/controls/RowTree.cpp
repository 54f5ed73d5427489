#include "controls/RowTree.h"

namespace {

/// Share of the selection's colour in the pale one.
constexpr double kPaleShare = 0.4;

QColor Mix(const QColor& a, const QColor& b, double shareOfA) {
    const auto mix = [shareOfA](int first, int second) {
        return qRound(first * shareOfA + second * (1 - shareOfA));
    };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

}  // namespace

void CRowTree::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                       const QModelIndex& index) const {
    // Of the window, so that a dialog over it changes nothing.
    const QWidget* focus = window()->focusWidget();
    const bool isMovedByField = focus != nullptr && focus == focusProxy();
    if (focus == this || isMovedByField || (focus != nullptr && isAncestorOf(focus))) {
        QTreeView::drawRow(painter, option, index);
        return;
    }
    QStyleOptionViewItem pale = option;
    pale.state &= ~QStyle::State_Active;
    QPalette& colors = pale.palette;
    colors.setColor(QPalette::Inactive, QPalette::Highlight,
                    Mix(colors.color(QPalette::Active, QPalette::Highlight),
                        colors.color(QPalette::Active, QPalette::Base), kPaleShare));
    colors.setColor(QPalette::Inactive, QPalette::HighlightedText,
                    colors.color(QPalette::Active, QPalette::Text));
    QTreeView::drawRow(painter, pale, index);
}
