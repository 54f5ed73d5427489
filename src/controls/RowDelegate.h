// Rows with room around their texts.
#pragma once

#include <QStyledItemDelegate>

/// Windows and screens narrower than this, in logical pixels, use compact layouts.
inline constexpr int kNarrowWidth = 480;

/// Rows one and a half times as high as the font where the screen is not narrow.
class CRowDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;
};
