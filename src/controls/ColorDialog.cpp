#include "controls/ColorDialog.h"

#include <QGridLayout>
#include <QLabel>
#include <QSlider>
#include <QVBoxLayout>
#include <array>

using namespace Qt::StringLiterals;

namespace {

struct CChannel {
    QLatin1StringView label;
    QLatin1StringView objectName;
};

/// In the order of the sliders and of the bytes, lowest first.
constexpr std::array<CChannel, 3> kChannels = {{
    {"Red:"_L1, "red"_L1},
    {"Green:"_L1, "green"_L1},
    {"Blue:"_L1, "blue"_L1},
}};

constexpr int kSampleHeight = 40;

}  // namespace

QColor ColorOf(quint32 rgb) {
    return {static_cast<int>(rgb & 0xFF), static_cast<int>(rgb >> 8 & 0xFF),
            static_cast<int>(rgb >> 16 & 0xFF)};
}

quint32 RgbOf(const QColor& color) {
    return static_cast<quint32>(color.red() | color.green() << 8 | color.blue() << 16);
}

CColorDialog::CColorDialog(const QString& prompt, quint32 rgb, QWidget* parent)
    : CDialog(u"Select color"_s, parent), m_sample(new QLabel) {
    auto* promptLabel = new QLabel(prompt);
    promptLabel->setWordWrap(true);
    Content()->addWidget(promptLabel);

    auto* grid = new QGridLayout;
    Content()->addLayout(grid);
    for (int channel = 0; channel < 3; ++channel) {
        auto* label = new QLabel(kChannels[channel].label);
        QSlider* slider = m_sliders[channel] = new QSlider(Qt::Horizontal);
        slider->setObjectName(kChannels[channel].objectName);
        slider->setRange(0, 255);
        slider->setPageStep(16);
        slider->setValue(static_cast<int>(rgb >> 8 * channel & 0xFF));
        label->setBuddy(slider);
        m_values[channel] = new QLabel;
        m_values[channel]->setObjectName(kChannels[channel].objectName + "Value"_L1);
        m_values[channel]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        m_values[channel]->setMinimumWidth(fontMetrics().horizontalAdvance(u"255"_s));
        grid->addWidget(label, channel, 0);
        grid->addWidget(slider, channel, 1);
        grid->addWidget(m_values[channel], channel, 2);
        connect(slider, &QSlider::valueChanged, this, &CColorDialog::ShowColor);
    }

    m_sample->setObjectName(u"sample");
    m_sample->setAccessibleName(u"Sample"_s);
    m_sample->setMinimumHeight(kSampleHeight);
    m_sample->setFrameShape(QFrame::Box);
    m_sample->setAutoFillBackground(true);
    Content()->addWidget(m_sample);
    Content()->addStretch();
    ShowColor();
}

quint32 CColorDialog::GetRgb() const {
    quint32 rgb = 0;
    for (int channel = 0; channel < 3; ++channel) {
        rgb |= static_cast<quint32>(m_sliders[channel]->value()) << 8 * channel;
    }
    return rgb;
}

void CColorDialog::ShowColor() {
    for (int channel = 0; channel < 3; ++channel) {
        m_values[channel]->setNum(m_sliders[channel]->value());
    }
    QPalette colors = m_sample->palette();
    colors.setColor(QPalette::Window, ColorOf(GetRgb()));
    m_sample->setPalette(colors);
    m_sample->setAccessibleDescription(ColorOf(GetRgb()).name());
}
