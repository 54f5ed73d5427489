#include "controls/PaintedIcons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace {

// Pictures are drawn on a square of 16 units and kept at twice and four times that for dense
// screens.
constexpr int kUnits = 16;
constexpr int kSizes[] = {16, 32, 64};

template <typename Draw>
QIcon Painted(const QColor& color, Draw draw) {
    QIcon icon;
    for (const int size : kSizes) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(double(size) / kUnits, double(size) / kUnits);
        painter.setPen(QPen(color, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        draw(painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

void DrawApple(QPainter& painter) {
    QPainterPath apple(QPointF(8, 5.5));
    apple.cubicTo(3, 3, 1, 8, 4, 12.5);
    apple.cubicTo(5.5, 15, 7, 14.2, 8, 13.8);
    apple.cubicTo(9, 14.2, 10.5, 15, 12, 12.5);
    apple.cubicTo(15, 8, 13, 3, 8, 5.5);
    painter.drawPath(apple);
    painter.drawLine(QPointF(8, 5.5), QPointF(9.5, 1.8));
}

void DrawCard(QPainter& painter) {
    painter.drawRect(QRectF(3, 1.5, 10, 13));
    for (const double y : {5.0, 8.0, 11.0}) {
        painter.drawLine(QPointF(5.5, y), QPointF(10.5, y));
    }
}

void DrawPot(QPainter& painter) {
    QPainterPath pot(QPointF(3.5, 6.5));
    pot.lineTo(3.5, 12);
    pot.quadTo(3.5, 14, 5.5, 14);
    pot.lineTo(10.5, 14);
    pot.quadTo(12.5, 14, 12.5, 12);
    pot.lineTo(12.5, 6.5);
    painter.drawPath(pot);
    painter.drawLine(QPointF(1.5, 6.5), QPointF(14.5, 6.5));
    painter.drawLine(QPointF(6, 1.5), QPointF(6, 4));
    painter.drawLine(QPointF(10, 1.5), QPointF(10, 4));
}

}  // namespace

QIcon KindIcon(EItemKind kind, const QColor& color) {
    switch (kind) {
        case EItemKind::Menu:
            return Painted(color, DrawCard);
        case EItemKind::Recipe:
            return Painted(color, DrawPot);
        default:
            return Painted(color, DrawApple);
    }
}

QIcon AddIcon(const QColor& color) {
    return Painted(color, [](QPainter& painter) {
        painter.drawLine(QPointF(8, 2.5), QPointF(8, 13.5));
        painter.drawLine(QPointF(2.5, 8), QPointF(13.5, 8));
    });
}

QIcon DeleteIcon(const QColor& color) {
    return Painted(color, [](QPainter& painter) {
        painter.drawLine(QPointF(2, 4), QPointF(14, 4));
        painter.drawLine(QPointF(6.5, 1.8), QPointF(9.5, 1.8));
        painter.drawPolyline(QPolygonF({{3.5, 4}, {4.5, 14.5}, {11.5, 14.5}, {12.5, 4}}));
        painter.drawLine(QPointF(6.7, 7), QPointF(6.9, 11.5));
        painter.drawLine(QPointF(9.3, 7), QPointF(9.1, 11.5));
    });
}
