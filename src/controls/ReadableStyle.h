// The desktop's style, with a palette that can be read and outlines that can be seen.
#pragma once

#include <QCache>
#include <QPalette>
#include <QProxyStyle>

/// The palette follows the desktop's: it is made readable each time the desktop changes it. The
/// outlines of fields, buttons, check boxes, tabs, scroll bars and frames, also those around what
/// has the focus, are changed only where Qt's own Fusion draws them, which has them at a contrast
/// of about 2.
class CReadableStyle : public QProxyStyle {
  public:
    explicit CReadableStyle(const QString& base) : QProxyStyle(base) {}
    /// Makes it the application's style, over the one in use; a second time does nothing.
    static void Use();

    using QProxyStyle::polish;
    void polish(QPalette& palette) override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;

  private:
    [[nodiscard]] bool IsFusion() const;
    /// The palette with a Window from which Fusion derives an outline that is seen on the given
    /// one; the same for a palette returned by it.
    [[nodiscard]] QPalette Outlined(const QPalette& palette) const;

    /// By the key of a palette, which is also part of the key of what Fusion caches.
    mutable QCache<qint64, QPalette> m_outlined;
};
