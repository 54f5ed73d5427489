#include "controls/RowDelegate.h"

#include <QScreen>
#include <QWidget>

QSize CRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QSize size = QStyledItemDelegate::sizeHint(option, index);
    const bool isNarrow = option.widget != nullptr &&
                          option.widget->screen()->availableGeometry().width() < kNarrowWidth;
    return isNarrow ? size : size.expandedTo({0, option.fontMetrics.height() * 3 / 2});
}
