// The frame of a graph: background, axes with their labels, what is said on hovering and to the
// accessibility interface, and what stands there while there is nothing to draw.
#pragma once

#include <QWidget>
#include <vector>

#include "controls/GraphScale.h"

/// One thing that can be pointed at.
struct CGraphValue {
    QPointF place;  ///< logical pixels
    size_t datum;   ///< index into the graph's own data
};

/// Derived graphs lay their data out in Layout, at every change of size too, and draw it in
/// PaintData, both within Plot(). Words are asked for only when they are shown or spoken. All
/// drawing is antialiased and in logical pixels, so it stays sharp on any screen.
class CGraphPane : public QWidget {
    Q_OBJECT
  public:
    CGraphPane(const QString& accessibleName, QWidget* parent);

    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    struct CColors {
        QColor background;
        QColor text;
    };
    struct CBottomLabel {
        double x;
        QString text;
    };

    virtual CColors Colors() const = 0;
    /// What to say instead of drawing; empty when there is something to draw.
    virtual QString EmptyText() const = 0;
    /// Calls SetValueAxis and SetBottomLabels, and gives the values that can be pointed at.
    virtual std::vector<CGraphValue> Layout() = 0;
    /// "31 May 2026: 71.50 kg".
    [[nodiscard]] virtual QString TextOf(size_t datum) const = 0;
    virtual void PaintData(QPainter& painter) = 0;

    /// The rectangle of the data; valid from SetValueAxis on.
    [[nodiscard]] QRectF Plot() const { return m_plot; }
    [[nodiscard]] const CScale& ValueScale() const { return m_scale; }
    /// Covers the range with as many ticks as fit; `unit` stands over the axis. `headRoom` is kept
    /// free at the top.
    void SetValueAxis(double low, double high, const QString& unit, int headRoom = 0);
    void SetBottomLabels(std::vector<CBottomLabel> labels) { m_labels = std::move(labels); }
    /// How many labels like this one fit along the bottom.
    [[nodiscard]] int BottomLabelRoom(const QString& widest) const;
    /// To be called when data, units or colours have changed.
    void LayOut();

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

  private:
    void Arrange();
    void PaintAxes(QPainter& painter, const QColor& text);
    [[nodiscard]] QString ValueLabel(double value) const;
    [[nodiscard]] const CGraphValue* ValueNear(const QPointF& place) const;

    QRectF m_plot;
    CAxis m_axis;
    CScale m_scale{0, 1, 0, 1};
    QString m_unit;
    std::vector<CBottomLabel> m_labels;
    std::vector<CGraphValue> m_values;
};
