// The base of the graphs: background, axes with their labels, tool tips, the description for the
// accessibility interface, and a text while there is nothing to draw.
#pragma once

#include <QWidget>
#include <vector>

#include "controls/GraphScale.h"

/// A drawn value that has a tool tip.
struct CGraphValue {
    QPointF place;  ///< logical pixels
    size_t datum;   ///< index into the graph's own data
};

/// Derived graphs compute positions in Layout, which is also called at every change of size, and
/// draw in PaintData, both within Plot(). Texts are requested only when they are shown or spoken.
/// All drawing is antialiased and in logical pixels, so it stays sharp on any screen.
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
    /// The text to show instead of a graph; empty when there is something to draw.
    virtual QString EmptyText() const = 0;
    /// Calls SetValueAxis and SetBottomLabels, and returns the values that have a tool tip.
    virtual std::vector<CGraphValue> Layout() = 0;
    /// Tool tip of a value, "31 May 2026: 71.50 kg".
    [[nodiscard]] virtual QString TextOf(size_t datum) const = 0;
    virtual void PaintData(QPainter& painter) = 0;

    /// The rectangle of the data; valid from SetValueAxis on.
    [[nodiscard]] QRectF Plot() const { return m_plot; }
    [[nodiscard]] const CScale& ValueScale() const { return m_scale; }
    /// Covers the range with as many ticks as fit; `unit` is written above the axis. `headRoom`
    /// logical pixels are kept free at the top.
    void SetValueAxis(double low, double high, const QString& unit, int headRoom = 0);
    void SetBottomLabels(std::vector<CBottomLabel> labels) { m_labels = std::move(labels); }
    /// How many labels as wide as `widest` fit along the bottom; at least 1.
    [[nodiscard]] int BottomLabelRoom(const QString& widest) const;
    /// Call when data, units or colours have changed.
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
