// What a graph draws, as a text in its own terms.
#pragma once

#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QWidget>

using namespace Qt::StringLiterals;

/// What is drawn with which pen and brush, then the points as "x,y" in percent of the plot, which
/// the first line of the grid and the lines above it span. Texts have no place: it depends on the
/// font. What is like the step before is not said again.
class CDrawing : public QPaintDevice, private QPaintEngine {
  public:
    explicit CDrawing(QWidget& graph) : QPaintEngine(AllFeatures), m_graph(graph) {
        graph.render(this, {}, {}, QWidget::DrawWindowBackground);
    }
    [[nodiscard]] QString Text() const {
        const auto first = std::ranges::find(m_steps, u"line"_s, &CStep::what);
        const QPointF from = first->points.first();
        const QPointF to = {first->points.last().x(), m_top};
        const auto percent = [](double part, double whole) {
            return std::round(part / whole * 1000) / 10;
        };
        QString text;
        QString last;
        for (const CStep& step : m_steps) {
            text += step.what + step.style == last ? QString() : u"; "_s + step.what + step.style;
            last = step.what + step.style;
            for (const QPointF& point : step.points) {
                text += u" %1,%2"_s.arg(percent(point.x() - from.x(), to.x() - from.x()))
                            .arg(percent(point.y() - from.y(), to.y() - from.y()));
            }
        }
        return text;
    }

  private:
    struct CStep {
        QString what;
        QString style;
        QPolygonF points;
    };
    void Add(const QString& what, const QPolygonF& points) {
        const QPen pen = painter()->pen();
        QString style = pen.style() == Qt::NoPen
                            ? QString()
                            : u" %1 %2%3"_s.arg(pen.color().name(QColor::HexArgb))
                                  .arg(pen.widthF())
                                  .arg(pen.style() == Qt::SolidLine ? u""_s : u" dashed"_s);
        if (painter()->brush().style() != Qt::NoBrush) {
            style += u" on "_s + painter()->brush().color().name();
        }
        m_steps.append({what, style, points});
    }
    [[nodiscard]] QPaintEngine* paintEngine() const override { return const_cast<CDrawing*>(this); }
    [[nodiscard]] int metric(PaintDeviceMetric metric) const override {
        return metric == PdmWidth              ? m_graph.width()
               : metric == PdmHeight           ? m_graph.height()
               : metric == PdmDevicePixelRatio ? 1
               : metric == PdmDepth            ? 32
                                               : 96;
    }
    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    [[nodiscard]] Type type() const override { return User; }
    void updateState(const QPaintEngineState&) override {}
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawLines(const QLineF* lines, int count) override {
        for (int i = 0; i < count; ++i) {
            Add(u"line"_s, {lines[i].p1(), lines[i].p2()});
            m_top = std::min(m_top, lines[i].p2().y());
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
    void drawTextItem(const QPointF&, const QTextItem& item) override {
        Add(u'\'' + item.text().trimmed() + u'\'', {});
    }

    QWidget& m_graph;
    QList<CStep> m_steps;
    double m_top = std::numeric_limits<double>::max();  ///< of the lines
};
