// "Select color": one RGB value by three sliders.
#pragma once

#include "controls/Dialog.h"

class QLabel;
class QSlider;

/// A colour as the settings store it: red in the low byte.
QColor ColorOf(quint32 rgb);
quint32 RgbOf(const QColor& color);

class CColorDialog : public CDialog {
    Q_OBJECT
  public:
    /// `prompt` such as "Select background color:".
    CColorDialog(const QString& prompt, quint32 rgb, QWidget* parent);
    [[nodiscard]] quint32 GetRgb() const;

  private:
    void ShowColor();

    QSlider* m_sliders[3];
    QLabel* m_values[3];
    QLabel* m_sample;
};
