#include "controls/ReadableStyle.h"

#include <QApplication>
#include <QStyleOption>
#include <algorithm>

#include "controls/Colors.h"

namespace {

/// Fusion's outline is Window.darker() of this many percent.
constexpr int kOutlineDarker = 140;
/// More than what is to be seen: frames and check boxes have the outline up to a tenth lighter, and
/// radio buttons have it darker.
constexpr double kOutlineContrast = kVisibleContrast * 1.2;

constexpr QStyle::PrimitiveElement kOutlined[] = {
    QStyle::PE_Frame, QStyle::PE_FrameLineEdit, QStyle::PE_IndicatorCheckBox,
    QStyle::PE_IndicatorRadioButton, QStyle::PE_PanelButtonCommand};
constexpr QStyle::ComplexControl kOutlinedControls[] = {QStyle::CC_ComboBox, QStyle::CC_Slider,
                                                        QStyle::CC_SpinBox};

/// Calls `draw` with a copy of the option that has the palette; false for another kind of option.
template <typename Option, typename Draw>
bool DrawWith(const QPalette& palette, const QStyleOption* option, const Draw& draw) {
    const auto* known = qstyleoption_cast<const Option*>(option);
    if (known == nullptr) {
        return false;
    }
    Option changed(*known);
    changed.palette = palette;
    draw(&changed);
    return true;
}

}  // namespace

void CReadableStyle::Use() {
    if (dynamic_cast<CReadableStyle*>(QApplication::style()) == nullptr) {
        QApplication::setStyle(new CReadableStyle(QApplication::style()->name()));
    }
}

void CReadableStyle::polish(QPalette& palette) {
    QProxyStyle::polish(palette);
    palette = ReadablePalette(palette);
}

void CReadableStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                   QPainter* painter, const QWidget* widget) const {
    const auto draw = [&](const QStyleOption* changed) {
        QProxyStyle::drawPrimitive(element, changed, painter, widget);
    };
    const bool isOutlined =
        IsFusion() && std::ranges::find(kOutlined, element) != std::end(kOutlined);
    const QPalette palette = isOutlined ? Outlined(option->palette) : QPalette();
    // The panel of a tool button comes with an option of no kind.
    const bool isPlain = option->type == QStyleOption::SO_Default;
    if (!isOutlined || !(DrawWith<QStyleOptionFrame>(palette, option, draw) ||
                         DrawWith<QStyleOptionButton>(palette, option, draw) ||
                         (isPlain && DrawWith<QStyleOption>(palette, option, draw)))) {
        draw(option);
    }
}

void CReadableStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                        QPainter* painter, const QWidget* widget) const {
    const auto draw = [&](const QStyleOptionComplex* changed) {
        QProxyStyle::drawComplexControl(control, changed, painter, widget);
    };
    const bool isOutlined =
        IsFusion() && std::ranges::find(kOutlinedControls, control) != std::end(kOutlinedControls);
    const QPalette palette = isOutlined ? Outlined(option->palette) : QPalette();
    if (!isOutlined || !(DrawWith<QStyleOptionComboBox>(palette, option, draw) ||
                         DrawWith<QStyleOptionSlider>(palette, option, draw) ||
                         DrawWith<QStyleOptionSpinBox>(palette, option, draw))) {
        draw(option);
    }
}

bool CReadableStyle::IsFusion() const {
    return baseStyle()->inherits("QFusionStyle");
}

QPalette CReadableStyle::Outlined(const QPalette& palette) const {
    const QPalette* known = m_outlined.object(palette.cacheKey());
    if (known == nullptr) {
        QPalette changed = palette;
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
            const QColor window = palette.color(group, QPalette::Window);
            const QColor outline =
                ContrastingColor(window.darker(kOutlineDarker), window, kOutlineContrast);
            changed.setColor(group, QPalette::Window, outline.lighter(kOutlineDarker));
        }
        // The parts of a control are drawn with the palette of the whole.
        m_outlined.insert(changed.cacheKey(), new QPalette(changed));
        m_outlined.insert(palette.cacheKey(), new QPalette(changed));
        known = m_outlined.object(palette.cacheKey());
    }
    QPalette outlined = *known;
    outlined.setCurrentColorGroup(palette.currentColorGroup());
    return outlined;
}
