// The energy burned and the energy surplus over seven days.
#pragma once

#include "controls/GraphPane.h"
#include "exercise/ExerciseDays.h"

/// Of the graph and its headline: the chosen one, or one that can be read on the background while
/// it is the default and that cannot.
QColor ExerciseTextColor(const CExerciseTabSettings& tab);

/// Bars for the energy burned, a line for the surplus. The document outlives it.
class CExercisesGraph : public CGraphPane {
    Q_OBJECT
  public:
    CExercisesGraph(CVelmoraDoc& doc, QWidget* parent);
    /// Shows a week in the current unit and colours.
    void Show(const ExerciseWeek& week);

  protected:
    CColors Colors() const override;
    QString EmptyText() const override;
    std::vector<CGraphValue> Layout() override;
    [[nodiscard]] QString TextOf(size_t datum) const override;
    void PaintData(QPainter& painter) override;

  private:
    CVelmoraDoc& m_doc;
    ExerciseWeek m_week{};
    std::vector<QRectF> m_bars;
    std::vector<QPointF> m_line;
};
