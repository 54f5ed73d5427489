#include "controls/PaintedIcons.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>

#include "controls/FilledPaths.h"

using namespace Qt::StringLiterals;

namespace {

/// Everything is drawn on a square of this many units.
constexpr int kUnits = 16;
constexpr double kLineWidth = 1.4;
constexpr double kDisabledOpacity = 0.35;

using DrawIcon = void (*)(QPainter& painter);

class CPaintedIconEngine : public QIconEngine {
  public:
    CPaintedIconEngine(DrawIcon draw, const QColor& color) : m_draw(draw), m_color(color) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State /*state*/) override {
        const int side = std::min(rect.width(), rect.height());
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.x() + (rect.width() - side) / 2.0,
                           rect.y() + (rect.height() - side) / 2.0);
        painter->scale(double(side) / kUnits, double(side) / kUnits);
        if (mode == QIcon::Disabled) {
            painter->setOpacity(kDisabledOpacity);
        }
        const auto role =
            mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText;
        const QColor color = m_color.isValid() ? m_color : QGuiApplication::palette().color(role);
        painter->setPen(QPen(color, kLineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        m_draw(*painter);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        return pixmap;
    }

    [[nodiscard]] QIconEngine* clone() const override { return new CPaintedIconEngine(*this); }

  private:
    DrawIcon m_draw;
    QColor m_color;
};

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

void DrawAdd(QPainter& painter) {
    painter.drawLine(QPointF(8, 2.5), QPointF(8, 13.5));
    painter.drawLine(QPointF(2.5, 8), QPointF(13.5, 8));
}

void DrawDelete(QPainter& painter) {
    painter.drawLine(QPointF(2, 4), QPointF(14, 4));
    painter.drawLine(QPointF(6.5, 1.8), QPointF(9.5, 1.8));
    painter.drawPolyline(QPolygonF({{3.5, 4}, {4.5, 14.5}, {11.5, 14.5}, {12.5, 4}}));
    painter.drawLine(QPointF(6.7, 7), QPointF(6.9, 11.5));
    painter.drawLine(QPointF(9.3, 7), QPointF(9.1, 11.5));
}

void DrawNewFolder(QPainter& painter) {
    painter.drawPolyline(
        QPolygonF({{8, 13}, {1.5, 13}, {1.5, 3}, {6, 3}, {7.5, 5}, {14.5, 5}, {14.5, 8}}));
    painter.drawLine(QPointF(12, 9.5), QPointF(12, 14.5));
    painter.drawLine(QPointF(9.5, 12), QPointF(14.5, 12));
}

void DrawLens(QPainter& painter) {
    painter.drawEllipse(QPointF(6.5, 6.5), 4.5, 4.5);
    painter.drawLine(QPointF(9.8, 9.8), QPointF(14, 14));
}

void DrawLensAndArrow(QPainter& painter) {
    painter.drawEllipse(QPointF(5.5, 5.5), 4, 4);
    painter.drawLine(QPointF(8.4, 8.4), QPointF(11, 11));
    painter.drawLine(QPointF(13, 2), QPointF(13, 8));
    painter.drawPolyline(QPolygonF({{11, 6}, {13, 8.2}, {15, 6}}));
    painter.drawLine(QPointF(3, 14), QPointF(13, 14));
}

void DrawRefused(QPainter& painter) {
    painter.drawPolygon(QPolygonF({{8, 1.8}, {15, 14.2}, {1, 14.2}}));
    painter.drawLine(QPointF(8, 6), QPointF(8, 9.5));
    painter.drawPoint(QPointF(8, 12));
}

/// The drawing that is installed as the program's icon, too.
std::vector<CFilledPath> ReadProgramDrawing() {
    QFile file(u":/velmora.svg"_s);
    return file.open(QIODevice::ReadOnly) ? ReadFilledPaths(file.readAll())
                                          : std::vector<CFilledPath>();
}

void DrawProgram(QPainter& painter) {
    static const std::vector<CFilledPath> drawing = ReadProgramDrawing();
    for (const CFilledPath& shape : drawing) {
        painter.fillPath(shape.path, shape.color);
    }
}

DrawIcon DrawingOf(EIcon icon) {
    switch (icon) {
        case EIcon::Apple:
            return DrawApple;
        case EIcon::Card:
            return DrawCard;
        case EIcon::Pot:
            return DrawPot;
        case EIcon::Add:
            return DrawAdd;
        case EIcon::Delete:
            return DrawDelete;
        case EIcon::NewFolder:
            return DrawNewFolder;
        case EIcon::Find:
            return DrawLens;
        case EIcon::FindNext:
            return DrawLensAndArrow;
        case EIcon::Refused:
            return DrawRefused;
    }
    return DrawCard;
}

}  // namespace

QIcon PaintedIcon(EIcon icon, const QColor& color) {
    return QIcon(new CPaintedIconEngine(DrawingOf(icon), color));
}

QIcon ProgramIcon() {
    return QIcon(new CPaintedIconEngine(DrawProgram, QColor()));
}
