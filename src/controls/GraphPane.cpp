#include "controls/GraphPane.h"

#include <QAccessibleWidget>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kMargin = 6;
constexpr int kLeastHeight = 60;
constexpr double kGridAlpha = 0.18;
constexpr int kReach = 24;  ///< pixels between the pointer and a value that shows its tool tip
/// The accessible description has at most this many values, the last ones.
constexpr size_t kMostSpoken = 31;

QAccessibleInterface* DescribeGraph(const QString& /*className*/, QObject* object) {
    auto* graph = qobject_cast<CGraphPane*>(object);
    return graph == nullptr ? nullptr : new QAccessibleWidget(graph, QAccessible::Chart);
}
}  // namespace

CGraphPane::CGraphPane(const QString& accessibleName, QWidget* parent) : QWidget(parent) {
    QAccessible::installFactory(DescribeGraph);  // a second time does nothing
    setAccessibleName(accessibleName);
    setFocusPolicy(Qt::TabFocus);
    setMouseTracking(true);
}

QSize CGraphPane::minimumSizeHint() const {
    return {kLeastHeight, kLeastHeight};
}

void CGraphPane::SetValueAxis(double low, double high, const QString& unit, int headRoom) {
    const QFontMetrics font = fontMetrics();
    // The label of the top line stands below the caption.
    const double top = kMargin + font.height() * 1.5 + headRoom;
    const double bottom = height() - kMargin - font.height() * 1.6;
    const int ticks = std::clamp(static_cast<int>((bottom - top) / (font.height() * 2)) + 1, 2, 9);
    m_axis = ValueAxis(low, high, ticks);
    m_unit = unit;
    double widest = 0;
    for (const double tick : m_axis.Ticks()) {
        widest = std::max<double>(widest, font.horizontalAdvance(ValueLabel(tick)));
    }
    const double left = kMargin * 2 + widest;
    m_plot = QRectF(QPointF(left, top), QPointF(width() - kMargin * 2, std::max(bottom, top + 1)));
    m_scale = {m_axis.low, m_axis.high, m_plot.bottom(), m_plot.top()};
}

int CGraphPane::BottomLabelRoom(const QString& widest) const {
    const int width = fontMetrics().horizontalAdvance(widest + u"  "_s);
    return std::max(1, static_cast<int>(m_plot.width()) / std::max(1, width));
}

void CGraphPane::LayOut() {
    Arrange();
    QStringList spoken;
    for (size_t i = m_values.size() > kMostSpoken ? m_values.size() - kMostSpoken : 0;
         i < m_values.size(); ++i) {
        // A datum may have several places.
        if (spoken.isEmpty() || m_values[i].datum != m_values[i - 1].datum) {
            spoken.append(TextOf(m_values[i].datum));
        }
    }
    setAccessibleDescription(m_values.empty() ? EmptyText() : spoken.join(u"; "_s));
    update();
}

void CGraphPane::Arrange() {
    m_labels.clear();
    m_values = EmptyText().isEmpty() ? Layout() : std::vector<CGraphValue>();
}

void CGraphPane::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Arrange();
}

void CGraphPane::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const CColors colors = Colors();
    painter.fillRect(rect(), colors.background);
    if (hasFocus()) {
        painter.setPen(colors.text);
        painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    }
    const QString empty = EmptyText();
    if (!empty.isEmpty()) {
        painter.setPen(colors.text);
        painter.drawText(rect().adjusted(kMargin, kMargin, -kMargin, -kMargin),
                         Qt::AlignCenter | Qt::TextWordWrap, empty);
        return;
    }
    PaintAxes(painter, colors.text);
    PaintData(painter);
}

void CGraphPane::PaintAxes(QPainter& painter, const QColor& text) {
    QColor grid = text;
    grid.setAlphaF(kGridAlpha);
    const double height = fontMetrics().height();
    for (const double tick : m_axis.Ticks()) {
        const double y = m_scale.At(tick);
        painter.setPen(grid);
        painter.drawLine(QPointF(m_plot.left(), y), QPointF(m_plot.right(), y));
        painter.setPen(text);
        painter.drawText(QRectF(0, y - height / 2, m_plot.left() - kMargin, height),
                         Qt::AlignRight | Qt::AlignVCenter, ValueLabel(tick));
    }
    const int room = width() - 2 * kMargin;
    painter.drawText(QRectF(kMargin, 1, room, height), Qt::AlignLeft,
                     fontMetrics().elidedText(m_unit, Qt::ElideRight, room));
    for (const CBottomLabel& label : m_labels) {
        const double half = fontMetrics().horizontalAdvance(label.text) / 2.0;
        const double x = std::clamp(label.x, half + 1, std::max(half + 1, width() - half - 1));
        painter.setPen(text);
        painter.drawText(
            QRectF(x - half - 1, m_plot.bottom() + height * 0.55, half * 2 + 2, height),
            Qt::AlignCenter, label.text);
    }
}

QString CGraphPane::ValueLabel(double value) const {
    return ShownNumber(value == 0 ? 0 : value, m_axis.decimals);
}

bool CGraphPane::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        if (const CGraphValue* value = ValueNear(help->pos())) {
            QToolTip::showText(help->globalPos(), TextOf(value->datum), this);
        } else {
            QToolTip::hideText();
        }
        return true;
    }
    return QWidget::event(event);
}

const CGraphValue* CGraphPane::ValueNear(const QPointF& place) const {
    const CGraphValue* nearest = nullptr;
    double least = kReach;
    for (const CGraphValue& value : m_values) {
        const double distance =
            std::hypot(value.place.x() - place.x(), value.place.y() - place.y());
        if (distance <= least) {
            least = distance;
            nearest = &value;
        }
    }
    return nearest;
}
