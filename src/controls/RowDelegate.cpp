#include "controls/RowDelegate.h"

#include <QPainter>
#include <QScreen>
#include <QWidget>

#include "controls/Colors.h"

namespace {
constexpr int kLinePercent = 25;
constexpr int kHeadingMargin = 4;
}  // namespace

QString HeadingOf(const QModelIndex& index) {
    return index.siblingAtColumn(0).data(kHeadingRole).toString();
}

int HeadingHeight(const QStyleOptionViewItem& option) {
    return option.fontMetrics.height();
}

void PaintHeading(QPainter* painter, const QStyleOptionViewItem& option, const QRect& place,
                  const QString& heading) {
    QColor line = option.palette.color(QPalette::Text);
    painter->save();
    painter->setPen(FaintTextColor(line, option.palette.color(QPalette::Base)));
    painter->setFont(option.font);
    const QRect text = place.adjusted(kHeadingMargin, 0, -kHeadingMargin, 0);
    QRect written;
    painter->drawText(text, Qt::AlignVCenter | Qt::AlignLeft, heading, &written);
    line.setAlphaF(kLinePercent / 100.0F);
    painter->setPen(line);
    const int middle = place.center().y();
    painter->drawLine(written.right() + kHeadingMargin, middle, text.right(), middle);
    painter->restore();
}

QSize CRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    const bool isNarrow = option.widget != nullptr &&
                          option.widget->screen()->availableGeometry().width() < kNarrowWidth;
    if (!isNarrow) {
        size = size.expandedTo({0, option.fontMetrics.height() * 3 / 2});
    }
    return HeadingOf(index).isEmpty() ? size : size + QSize(0, HeadingHeight(option));
}

QWidget* CRowDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const {
    QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
    if (editor != nullptr && option.widget != nullptr) {
        editor->setAccessibleName(option.widget->accessibleName());
    }
    return editor;
}

void CRowDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    const bool isPale = option->state.testFlag(QStyle::State_Selected) &&
                        !option->state.testFlag(QStyle::State_Active);
    if (isPale && !option->icon.isNull() && option->widget != nullptr) {
        const QPixmap plain =
            option->icon.pixmap(option->decorationSize, option->widget->devicePixelRatioF());
        option->icon = QIcon(plain);
        option->icon.addPixmap(plain, QIcon::Selected);
    }
}
