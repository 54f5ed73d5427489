// Rows with room around their texts.
#pragma once

#include <QStyledItemDelegate>

/// Windows and screens narrower than this, in logical pixels, use compact layouts.
inline constexpr int kNarrowWidth = 480;
/// A window that is narrow, or lower than this, has no room for what is rarely used.
inline constexpr int kLowHeight = 400;
inline bool IsSmall(QSize window) {
    return window.width() < kNarrowWidth || window.height() < kLowHeight;
}

/// Role of a text above the row, see CReportRows::heading.
inline constexpr int kHeadingRole = Qt::UserRole;

/// Of the row's first cell; empty for a row without a heading.
QString HeadingOf(const QModelIndex& index);
/// Logical pixels.
int HeadingHeight(const QStyleOptionViewItem& option);
/// A faint text, and a line from its end to that of the row.
void PaintHeading(QPainter* painter, const QStyleOptionViewItem& option, const QRect& place,
                  const QString& heading);

/// Rows one and a half times as high as the font where the screen is not narrow, and room for a
/// heading above them.
class CRowDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;

    /// The editor has the list's accessible name.
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;

  protected:
    /// The icon of a row with a pale selection is the plain one.
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
