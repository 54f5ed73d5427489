#include "controls/ReadableStyle.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QPainter>
#include <QStyleOption>
#include <algorithm>

#include "controls/Colors.h"

namespace {

/// Fusion's outline is Window.darker() of this many percent.
constexpr int kOutlineDarker = 140;
/// The same of Highlight, around a field with the focus.
constexpr int kFocusDarker = 125;
/// More than what is to be seen: frames and check boxes have the outline up to a tenth lighter, and
/// radio buttons have it darker.
constexpr double kOutlineContrast = kVisibleContrast * 1.2;
/// Of the line on the chosen tab, in logical pixels.
constexpr int kTabLine = 2;
/// Of Fusion's tabs: how much higher the chosen one is, and the radius of its corners.
constexpr int kTabRise = 2;
constexpr int kTabRadius = 2;

constexpr QStyle::PrimitiveElement kOutlined[] = {QStyle::PE_Frame,
                                                  QStyle::PE_FrameLineEdit,
                                                  QStyle::PE_FrameTabBarBase,
                                                  QStyle::PE_FrameTabWidget,
                                                  QStyle::PE_IndicatorCheckBox,
                                                  QStyle::PE_IndicatorRadioButton,
                                                  QStyle::PE_PanelButtonCommand};
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

/// The highlight colour, moved until it is seen on the ground.
QColor SeenHighlight(const QPalette& palette, const QColor& ground) {
    return ContrastingColor(palette.color(QPalette::Highlight), ground, kOutlineContrast);
}

/// Where Fusion has one.
void DrawFocusFrame(const QStyleOption& option, const QRect& place, const QColor& ground,
                    QPainter* painter) {
    if (option.state.testFlag(QStyle::State_KeyboardFocusChange)) {
        painter->save();
        painter->setPen(SeenHighlight(option.palette, ground));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(place.adjusted(0, 0, -1, -1));
        painter->restore();
    }
}

QColor OutlineOn(const QColor& window) {
    return ContrastingColor(window.darker(kOutlineDarker), window, kOutlineContrast);
}

/// What a focus frame is drawn on.
QColor FocusGround(const QStyleOption& option, const QWidget* widget) {
    const auto* frame = qstyleoption_cast<const QStyleOptionFocusRect*>(&option);
    const bool isSelected =
        frame != nullptr && frame->backgroundColor == option.palette.color(QPalette::Highlight);
    const bool isInView = qobject_cast<const QAbstractItemView*>(widget) != nullptr;
    return option.palette.color(isSelected ? QPalette::Highlight
                                : isInView ? QPalette::Base
                                           : QPalette::Window);
}

/// Over Fusion's own outline, which has the colour of the fills: those of the chosen tab and of the
/// others differ too little, so the chosen one also gets a line.
void OutlineTab(const QStyleOptionTab& tab, QPainter* painter) {
    const bool isChosen = tab.state.testFlag(QStyle::State_Selected);
    const bool isLast =
        tab.position == QStyleOptionTab::End || tab.position == QStyleOptionTab::OnlyOneTab;
    const QColor window = tab.palette.color(QPalette::Window);
    // The lower edge is that of the page.
    const QRect shape = tab.rect.adjusted(0, isChosen ? 0 : kTabRise, isLast ? -1 : 0, kTabRise);
    painter->save();
    painter->setClipRect(tab.rect.adjusted(0, 0, 1, isChosen ? -2 : -3));
    painter->setPen(OutlineOn(window));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(shape, kTabRadius, kTabRadius);
    if (isChosen) {
        painter->fillRect(shape.left() + 1, shape.top(), shape.width() - 1, kTabLine,
                          SeenHighlight(tab.palette, window));
    }
    painter->restore();
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
                         DrawWith<QStyleOptionTabWidgetFrame>(palette, option, draw) ||
                         DrawWith<QStyleOptionTabBarBase>(palette, option, draw) ||
                         (isPlain && DrawWith<QStyleOption>(palette, option, draw)))) {
        draw(option);
    }
    if (element == PE_FrameFocusRect && IsFusion()) {
        DrawFocusFrame(*option, option->rect, FocusGround(*option, widget), painter);
    }
}

void CReadableStyle::drawControl(ControlElement element, const QStyleOption* option,
                                 QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawControl(element, option, painter, widget);
    const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option);
    if (tab != nullptr && element == CE_TabBarTabShape && IsFusion() &&
        tab->shape == QTabBar::RoundedNorth) {
        OutlineTab(*tab, painter);
    }
    if (tab != nullptr && element == CE_TabBarTabLabel && IsFusion() &&
        tab->state.testFlag(State_HasFocus)) {
        // Qt draws that of a tab without asking this style.
        const int edge = 1 + proxy()->pixelMetric(PM_DefaultFrameWidth, option, widget);
        DrawFocusFrame(*tab, tab->rect.adjusted(edge + 1, edge, -edge - 1, -edge),
                       tab->palette.color(QPalette::Window), painter);
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
    if (control == CC_ScrollBar && IsFusion() && option->subControls.testFlag(SC_ScrollBarSlider)) {
        const QRect handle =
            proxy()->subControlRect(CC_ScrollBar, option, SC_ScrollBarSlider, widget);
        const QColor window = option->palette.color(QPalette::Window);
        painter->save();
        painter->setPen(OutlineOn(window));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(handle.adjusted(0, 0, -1, -1));
        painter->restore();
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
            const QColor outline = OutlineOn(window);
            changed.setColor(group, QPalette::Window, outline.lighter(kOutlineDarker));
            const QColor focus = palette.color(group, QPalette::Highlight).darker(kFocusDarker);
            changed.setColor(
                group, QPalette::Highlight,
                ContrastingColor(focus, window, kOutlineContrast).lighter(kFocusDarker));
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
