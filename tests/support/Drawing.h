// What a graph draws, as a text in its own terms.
#pragma once

#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QWidget>

using namespace Qt::StringLiterals;

/// What is drawn with which pen and brush, then the points as "x,y", x in percent of the first
/// grid line and y as a value of the axis, which is known from the first two grid lines and their
/// labels. A label of the axis stands at its value and ends some pixels before the plot; one below
/// it has its middle at a place of the plot. What is like the step before is not said again.
class CDrawing : public QPaintDevice, private QPaintEngine {
  public:
    explicit CDrawing(QWidget& graph) : QPaintEngine(AllFeatures), m_graph(graph) {
        graph.render(this, {}, {}, QWidget::DrawWindowBackground);
    }
    [[nodiscard]] QString Text() const {
        QList<CStep> ticks;
        for (const CStep& step : m_steps) {
            if (ticks.size() < 4 && (step.what == u"line" || !ticks.isEmpty())) {
                ticks.append(step);
            }
        }
        const auto valueOf = [](const CStep& label) {
            return label.what.chopped(1).sliced(1).toDouble();
        };
        const QPointF from = ticks[0].points.first();
        const double perPercent = (ticks[0].points.last().x() - from.x()) / 100;
        const double perPixel =
            (valueOf(ticks[3]) - valueOf(ticks[1])) / (ticks[2].points.first().y() - from.y());
        const auto round = [](double number) { return std::round(number * 10) / 10; };
        QString text;
        QString last;
        for (const CStep& step : m_steps) {
            const QString what = step.what + step.style;
            text += what == last ? QString() : u"; "_s + what;
            last = what;
            for (const QPointF& point : step.points) {
                const double x = (point.x() - from.x()) / perPercent;
                const double y = valueOf(ticks[1]) + (point.y() - from.y()) * perPixel;
                if (step.width < 0) {
                    text += u" %1,%2"_s.arg(round(x)).arg(round(y));
                } else if (point.y() > from.y() + step.height) {
                    text += u" %1"_s.arg(round(x));
                } else if (x < 0) {
                    const bool isLevel = std::abs(valueOf(step) - y) <= std::abs(perPixel);
                    text += (isLevel ? u" level-%1"_s : u" off-%1"_s)
                                .arg(round(from.x() - point.x() - step.width / 2));
                }
            }
        }
        return text;
    }

  private:
    struct CStep {
        QString what;
        QString style;
        QPolygonF points;
        double width;  ///< of a text, as the height; else -1
        double height;
    };
    void Add(const QString& what, const QPolygonF& points, double width = -1, double height = -1) {
        const QPen pen = painter()->pen();
        QString style = pen.style() == Qt::NoPen
                            ? QString()
                            : u" %1 %2%3"_s.arg(pen.color().name(QColor::HexArgb))
                                  .arg(pen.widthF())
                                  .arg(pen.style() == Qt::SolidLine ? u""_s : u" dashed"_s);
        if (painter()->brush().style() != Qt::NoBrush) {
            style += u" on "_s + painter()->brush().color().name();
        }
        m_steps.append({what, style, points, width, height});
    }
    [[nodiscard]] QPaintEngine* paintEngine() const override { return const_cast<CDrawing*>(this); }
    [[nodiscard]] int metric(PaintDeviceMetric metric) const override {
        switch (metric) {
            case PdmWidth:
                return m_graph.width();
            case PdmHeight:
                return m_graph.height();
            case PdmDevicePixelRatio:
                return 1;
            case PdmDepth:
                return 32;
            default:
                return 96;
        }
    }
    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    [[nodiscard]] Type type() const override { return User; }
    void updateState(const QPaintEngineState&) override {}
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawLines(const QLineF* lines, int count) override {
        for (int i = 0; i < count; ++i) {
            Add(u"line"_s, {lines[i].p1(), lines[i].p2()});
        }
    }
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode) override {
        Add(u"course"_s, QPolygonF(QList<QPointF>(points, points + count)));
    }
    void drawRects(const QRectF* rects, int count) override {
        for (int i = 0; i < count; ++i) {
            // What comes before the first line is the background.
            const bool isBar = !m_steps.isEmpty() && m_steps.last().what != u"ground";
            Add(isBar ? u"bar"_s : u"ground"_s,
                isBar ? QPolygonF{rects[i].topLeft(), rects[i].bottomRight()} : QPolygonF());
        }
    }
    void drawEllipse(const QRectF& rect) override {
        Add(u"mark %1"_s.arg(rect.width()), {rect.center()});
    }
    void drawTextItem(const QPointF& at, const QTextItem& item) override {
        const double middle = at.y() - item.ascent() + (item.ascent() + item.descent()) / 2;
        Add(u'\'' + item.text().trimmed() + u'\'', {{at.x() + item.width() / 2, middle}},
            item.width(), item.ascent());
    }

    QWidget& m_graph;
    QList<CStep> m_steps;
};
