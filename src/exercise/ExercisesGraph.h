// The energy burned and the energy that should be burned, over seven days.
#pragma once

#include "controls/GraphPane.h"
#include "exercise/ExerciseDays.h"

/// Bars for what was burned, a line for the surplus of what was eaten. The document outlives it.
class CExercisesGraph : public CGraphPane {
    Q_OBJECT
  public:
    CExercisesGraph(CVelmoraDoc& doc, QWidget* parent);
    /// Shows a week, with unit and colours as they are now.
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
