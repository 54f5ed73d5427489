#include "exercise/ExercisesGraph.h"

#include <QLocale>
#include <QPainter>
#include <algorithm>

#include "controls/ColorDialog.h"
#include "controls/Colors.h"

using namespace Qt::StringLiterals;

namespace {
constexpr double kBarShare = 0.6;
constexpr double kLineWidth = 2;
constexpr double kMarkRadius = 3;
}  // namespace

QColor ExerciseTextColor(const CExerciseTabSettings& tab) {
    const QColor ground = ColorOf(tab.backgroundColor);
    const QColor text = ColorOf(tab.textColor);
    const bool isDefault = tab.textColor == CExerciseTabSettings().textColor;
    return isDefault && Contrast(text, ground) < kReadableContrast ? ReadableTextColor(ground)
                                                                   : text;
}

CExercisesGraph::CExercisesGraph(CVelmoraDoc& doc, QWidget* parent)
    : CGraphPane(u"Exercises graph"_s, parent), m_doc(doc) {
    setObjectName(u"exercisesGraph"_s);
}

void CExercisesGraph::Show(const ExerciseWeek& week) {
    m_week = week;
    LayOut();
}

CExercisesGraph::CColors CExercisesGraph::Colors() const {
    const CExerciseTabSettings& tab = m_doc.Settings().exerciseTab;
    return {ColorOf(tab.backgroundColor), ExerciseTextColor(tab)};
}

QString CExercisesGraph::EmptyText() const {
    // Without food the surplus of a day is minus the target.
    const double target = m_doc.Settings().targets.nutrients[kEnergyIndex];
    const bool isEmpty = std::ranges::all_of(m_week, [target](const CExerciseDay& day) {
        return day.burnedKcal <= 0 && day.surplusKcal <= -target;
    });
    return isEmpty
               ? u"Neither food nor exercise in these seven days.\nPress Insert to add what you "
                 "did; its energy is set against what you ate."_s
               : QString();
}

std::vector<CGraphValue> CExercisesGraph::Layout() {
    const EEnergyUnit unit = m_doc.Preferences().energyUnit;
    double low = 0;
    double high = 0;
    for (const CExerciseDay& day : m_week) {
        high =
            std::max({high, EnergyShown(day.burnedKcal, unit), EnergyShown(day.surplusKcal, unit)});
        low = std::min(low, EnergyShown(day.surplusKcal, unit));
    }
    SetValueAxis(low, high,
                 UnitName(unit, EUnitForm::Abbreviated) + u": burned (bars), surplus (line)"_s);
    m_bars.clear();
    m_line.clear();
    std::vector<CGraphValue> values;
    std::vector<CBottomLabel> labels;
    const double width = Plot().width() / kGraphDays;
    const bool hasRoom = BottomLabelRoom(u"Wed 30"_s) >= kGraphDays;
    for (size_t i = 0; i < m_week.size(); ++i) {
        const CExerciseDay& day = m_week[i];
        const double middle = Plot().left() + (static_cast<double>(i) + 0.5) * width;
        const double burned = ValueScale().At(EnergyShown(day.burnedKcal, unit));
        const double zero = ValueScale().At(0);
        m_bars.emplace_back(QPointF(middle - width * kBarShare / 2, burned),
                            QPointF(middle + width * kBarShare / 2, zero));
        m_line.emplace_back(middle, ValueScale().At(EnergyShown(day.surplusKcal, unit)));
        labels.push_back({middle, QLocale().toString(day.day, hasRoom ? u"ddd d"_s : u"d"_s)});
        values.push_back({QPointF(middle, (burned + zero) / 2), i});
        values.push_back({m_line.back(), i});
    }
    SetBottomLabels(std::move(labels));
    return values;
}

QString CExercisesGraph::TextOf(size_t datum) const {
    const EEnergyUnit unit = m_doc.Preferences().energyUnit;
    const CExerciseDay& day = m_week[datum];
    return QLocale().toString(day.day, QLocale::ShortFormat) +
           u": burned %1, surplus %2 "_s.arg(WholeEnergy(day.burnedKcal, unit))
               .arg(WholeEnergy(day.surplusKcal, unit)) +
           UnitName(unit, EUnitForm::Abbreviated);
}

void CExercisesGraph::PaintData(QPainter& painter) {
    const CExerciseTabSettings& tab = m_doc.Settings().exerciseTab;
    painter.setPen(Qt::NoPen);
    painter.setBrush(ColorOf(tab.barColor));
    for (const QRectF& bar : m_bars) {
        painter.drawRect(bar);
    }
    painter.setPen(QPen(ExerciseTextColor(tab), 1));
    const double zero = ValueScale().At(0);
    painter.drawLine(QPointF(Plot().left(), zero), QPointF(Plot().right(), zero));
    painter.setPen(QPen(ColorOf(tab.lineColor), kLineWidth));
    painter.setBrush(ColorOf(tab.lineColor));
    painter.drawPolyline(m_line.data(), static_cast<int>(m_line.size()));
    for (const QPointF& point : m_line) {
        painter.drawEllipse(point, kMarkRadius, kMarkRadius);
    }
}
