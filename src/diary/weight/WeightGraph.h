// The weights over time, with the line from the start to the goal.
#pragma once

#include "app/VelmoraDoc.h"
#include "controls/GraphPane.h"
#include "diary/weight/WeightList.h"

/// The period that the graph shows, up to its last day.
enum class EGraphSpan { Month, ThreeMonths, Year, All };

/// The document and the list outlive it; the span is kept in the document.
class CWeightGraph : public CGraphPane {
    Q_OBJECT
  public:
    CWeightGraph(CVelmoraDoc& doc, const CWeightList& weights, QWidget* parent);
    /// Reads the entries of the list, targets, units and colours again. Call before it is shown.
    void Reload();

    /// The colours chosen by the user, or else ones that suit the palette.
    [[nodiscard]] QColor TextColor() const;
    [[nodiscard]] QColor WeightLineColor() const;
    [[nodiscard]] QColor GoalLineColor() const;
    [[nodiscard]] QColor BackgroundColor() const;

  protected:
    CColors Colors() const override { return {BackgroundColor(), TextColor()}; }
    QString EmptyText() const override;
    std::vector<CGraphValue> Layout() override;
    [[nodiscard]] QString TextOf(size_t datum) const override;
    void PaintData(QPainter& painter) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    struct CPoint {
        double day;  ///< Julian day with its fraction
        double weight;
    };

    void AddSpanButtons();
    void ShowSpanColors();
    /// Whether there is a line from start to goal to show.
    [[nodiscard]] bool HasPlan() const;
    [[nodiscard]] double Shown(double weightKg) const;
    [[nodiscard]] QString UnitText() const;
    /// First and last day shown, as Julian days.
    [[nodiscard]] std::pair<double, double> Span() const;
    void LabelDays(const CScale& days);

    CVelmoraDoc& m_doc;
    const CWeightList& m_weights;
    QWidget* m_spans;
    std::vector<CPoint> m_points;
    std::vector<QPointF> m_line;
    QPointF m_goalFrom;
    QPointF m_goalTo;
    bool m_hasGoalLine = false;
};
