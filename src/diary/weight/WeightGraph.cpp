#include "diary/weight/WeightGraph.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPainter>
#include <QToolButton>
#include <algorithm>
#include <cmath>

#include "app/DateText.h"
#include "controls/ColorDialog.h"
#include "controls/Colors.h"
#include "platform/FileTime.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kWholeDaySeconds = 24 * 60 * 60;
constexpr double kLineWidth = 2;
constexpr int kPointsAtOnce = 4;
/// Points get a mark when they are on average farther apart than this, in logical pixels.
constexpr double kMarkedDistance = 8;
constexpr double kMarkRadius = 3;

struct CSpanRow {
    EGraphSpan span;
    const char* text;
    const char* name;
    int months;
};
constexpr CSpanRow kSpans[] = {
    {EGraphSpan::Month, "1 m", "1 month", 1},
    {EGraphSpan::ThreeMonths, "3 m", "3 months", 3},
    {EGraphSpan::Year, "1 y", "1 year", 12},
    {EGraphSpan::All, "All", "All weights", 0},
};

double DayOf(FileTime moment) {
    return static_cast<double>(DateOf(moment).toJulianDay()) +
           static_cast<double>(QTime(0, 0).secsTo(TimeOf(moment))) / kWholeDaySeconds;
}
}  // namespace

CWeightGraph::CWeightGraph(CVelmoraDoc& doc, const CWeightList& weights, QWidget* parent)
    : CGraphPane(u"Weight graph"_s, parent),
      m_doc(doc),
      m_weights(weights),
      m_spans(new QWidget(this)) {
    setObjectName(u"graph"_s);
    AddSpanButtons();
}

void CWeightGraph::AddSpanButtons() {
    auto* layout = new QHBoxLayout(m_spans);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto* group = new QButtonGroup(this);
    for (const CSpanRow& row : kSpans) {
        auto* button = new QToolButton;
        button->setText(QLatin1StringView(row.text));
        button->setObjectName(QString::fromLatin1(row.name));
        button->setAccessibleName(button->objectName());
        button->setToolTip(button->objectName());
        button->setCheckable(true);
        button->setAutoRaise(true);
        button->setChecked(static_cast<int>(row.span) == m_doc.weightGraphSpan);
        group->addButton(button, static_cast<int>(row.span));
        layout->addWidget(button);
    }
    connect(group, &QButtonGroup::idClicked, this, [this](int span) {
        m_doc.KeepWeightGraphSpan(span);
        LayOut();
    });
}

void CWeightGraph::Reload() {
    m_points.clear();
    for (int row = 0; row < m_weights.Count(); ++row) {
        const CWeightEntry& entry = m_weights.Entry(row);
        if (DateOf(entry.GetMoment()).isValid()) {
            m_points.push_back({DayOf(entry.GetMoment()), Shown(entry.GetWeightKg())});
        }
    }
    m_spans->setVisible(!m_points.empty());
    ShowSpanColors();
    LayOut();
}

// The buttons have no panel between their texts and a ground that the user has chosen.
void CWeightGraph::ShowSpanColors() {
    QPalette colors;
    colors.setResolveMask(0);
    if (m_doc.Settings().weightTab.backgroundColor) {
        for (const auto role : {QPalette::Window, QPalette::Button}) {
            colors.setColor(role, BackgroundColor());
        }
        colors.setColor(QPalette::ButtonText, TextColor());
    }
    m_spans->setPalette(colors);
}

double CWeightGraph::Shown(double weightKg) const {
    return WeightShown(weightKg, m_doc.Preferences().weightUnit);
}

QString CWeightGraph::UnitText() const {
    return UnitName(SingleWeightUnit(m_doc.Preferences().weightUnit), EUnitForm::Abbreviated);
}

QString CWeightGraph::EmptyText() const {
    return m_points.empty() ? u"No weights yet.\nPress Insert to add your first weight; the graph "
                              "grows with every one."_s
                            : QString();
}

bool CWeightGraph::HasPlan() const {
    const CTargets& targets = m_doc.Settings().targets;
    return m_doc.Settings().weightTab.showGoalLine && targets.startDate.isValid() &&
           targets.goalDate > targets.startDate;
}

std::pair<double, double> CWeightGraph::Span() const {
    const auto row =
        std::ranges::find(kSpans, static_cast<EGraphSpan>(m_doc.weightGraphSpan), &CSpanRow::span);
    const int months = row == std::end(kSpans) ? 0 : row->months;
    const auto lastDay = QDate::fromJulianDay(static_cast<qint64>(m_points.back().day));
    if (months > 0) {
        return {static_cast<double>(lastDay.addMonths(-months).toJulianDay()),
                m_points.back().day + 1};
    }
    double first = m_points.front().day;
    double last = m_points.back().day;
    if (HasPlan()) {
        const CTargets& targets = m_doc.Settings().targets;
        first = std::min(first, static_cast<double>(targets.startDate.toJulianDay()));
        last = std::max(last, static_cast<double>(targets.goalDate.toJulianDay()));
    }
    // A single day has no width, so add a day on both sides.
    return last - first >= 1 ? std::pair(std::floor(first), last)
                             : std::pair(std::floor(first) - 1, last + 1);
}

std::vector<CGraphValue> CWeightGraph::Layout() {
    const auto [first, last] = Span();
    const CTargets& targets = m_doc.Settings().targets;
    QPointF from(static_cast<double>(targets.startDate.toJulianDay()),
                 Shown(targets.startWeightKg));
    QPointF to(static_cast<double>(targets.goalDate.toJulianDay()), Shown(targets.goalWeightKg));
    m_hasGoalLine = HasPlan() && ClipLine(from, to, first, last);
    const auto inSight = [first = first, last = last](const CPoint& point) {
        return point.day >= first && point.day <= last;
    };
    double low = m_hasGoalLine ? std::min(from.y(), to.y()) : m_points.back().weight;
    double high = m_hasGoalLine ? std::max(from.y(), to.y()) : m_points.back().weight;
    for (const CPoint& point : m_points) {
        if (inSight(point)) {
            low = std::min(low, point.weight);
            high = std::max(high, point.weight);
        }
    }
    SetValueAxis(low, high, u"Weight, "_s + UnitText(), m_spans->height() / 2);
    const CScale days{first, last, Plot().left(), Plot().right()};
    m_line.clear();
    std::vector<CGraphValue> values;
    for (size_t i = 0; i < m_points.size(); ++i) {
        const CPoint& point = m_points[i];
        if (inSight(point)) {
            m_line.emplace_back(days.At(point.day), ValueScale().At(point.weight));
            values.push_back({m_line.back(), i});
        }
    }
    m_line = ThinnedLine(m_line);
    m_goalFrom = QPointF(days.At(from.x()), ValueScale().At(from.y()));
    m_goalTo = QPointF(days.At(to.x()), ValueScale().At(to.y()));
    LabelDays(days);
    return values;
}

void CWeightGraph::LabelDays(const CScale& days) {
    std::vector<CBottomLabel> labels;
    for (const CDateTick& tick : DateTicks(QDate::fromJulianDay(static_cast<qint64>(days.low)),
                                           QDate::fromJulianDay(static_cast<qint64>(days.high)),
                                           BottomLabelRoom(u"MMM 0000"_s))) {
        labels.push_back({days.At(static_cast<double>(tick.day.toJulianDay())), tick.label});
    }
    SetBottomLabels(std::move(labels));
}

QString CWeightGraph::TextOf(size_t datum) const {
    const CPoint& point = m_points[datum];
    return ShownDate(QDate::fromJulianDay(static_cast<qint64>(point.day))) + u": "_s +
           m_doc.Preferences().FormatNumber(point.weight) + u' ' + UnitText();
}

void CWeightGraph::PaintData(QPainter& painter) {
    painter.setClipRect(Plot().adjusted(-kMarkRadius, -kMarkRadius, kMarkRadius, kMarkRadius));
    if (m_hasGoalLine) {
        painter.setPen(QPen(GoalLineColor(), kLineWidth, Qt::DashLine));
        painter.drawLine(m_goalFrom, m_goalTo);
    }
    painter.setPen(QPen(WeightLineColor(), kLineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    // Drawn in pieces, since the cost of a polyline grows with the square of its points.
    const auto count = static_cast<int>(m_line.size());
    for (int i = 0; i + 1 < count; i += kPointsAtOnce - 1) {
        painter.drawPolyline(m_line.data() + i, std::min(kPointsAtOnce, count - i));
    }
    if (static_cast<double>(m_line.size()) * kMarkedDistance < Plot().width()) {
        painter.setBrush(WeightLineColor());
        for (const QPointF& point : m_line) {
            painter.drawEllipse(point, kMarkRadius, kMarkRadius);
        }
    }
}

void CWeightGraph::resizeEvent(QResizeEvent* event) {
    m_spans->adjustSize();
    m_spans->move(width() - m_spans->width(), 0);
    CGraphPane::resizeEvent(event);
}

QColor CWeightGraph::TextColor() const {
    const auto& color = m_doc.Settings().weightTab.textColor;
    return color ? ColorOf(*color) : ReadableTextColor(BackgroundColor());
}

QColor CWeightGraph::WeightLineColor() const {
    const auto& color = m_doc.Settings().weightTab.weightLineColor;
    const bool isDark = ReadableTextColor(BackgroundColor()) == Qt::white;
    return color ? ColorOf(*color) : isDark ? QColor(110, 175, 255) : QColor(25, 95, 175);
}

QColor CWeightGraph::GoalLineColor() const {
    const auto& color = m_doc.Settings().weightTab.goalLineColor;
    return color ? ColorOf(*color) : QColor(0, 160, 0);
}

QColor CWeightGraph::BackgroundColor() const {
    const auto& color = m_doc.Settings().weightTab.backgroundColor;
    return color ? ColorOf(*color) : palette().color(QPalette::Base);
}
