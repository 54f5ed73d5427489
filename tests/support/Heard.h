// What a screen reader and the Tab key find in a window, and whether its texts have room.
#pragma once

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

using namespace Qt::StringLiterals;

class CHeard {
  public:
    /// The controls in it that have no name, or the focus without a fitting role.
    static QStringList Nameless(QWidget& window) {
        QStringList found;
        Collect(QAccessible::queryAccessibleInterface(&window), found);
        return found;
    }

    /// What is wrong with going round by Tab and back by Shift+Tab; empty for nothing.
    static QString TabFault(QWidget& window) {
        const QList<QWidget*> there = Round(window, Qt::NoModifier);
        QList<QWidget*> back = Round(window, Qt::ShiftModifier);
        std::reverse(back.begin() + 1, back.end());
        if (there.size() > kMostStops || there != back) {
            return u"Tab: %1, Shift+Tab: %2"_s.arg(NamesOf(there), NamesOf(back));
        }
        return {};
    }

    /// The texts in sight that have less room than they need.
    static QStringList Cut(const QWidget& window) {
        QStringList cut;
        const auto add = [&cut](bool isCut, const QString& text) {
            if (isCut && !text.isEmpty()) {
                cut.append(text);
            }
        };
        for (const auto* label : Visible<QLabel>(window)) {
            const int height = label->wordWrap() ? label->heightForWidth(label->width())
                                                 : label->sizeHint().height();
            add((!label->wordWrap() && label->width() < label->sizeHint().width()) ||
                    label->height() < height,
                label->text());
        }
        for (const auto* button : Visible<QAbstractButton>(window)) {
            const auto* tool = qobject_cast<const QToolButton*>(button);
            if (tool != nullptr && (tool->arrowType() != Qt::NoArrow || !tool->icon().isNull())) {
                continue;  // shows no text
            }
            // A push button is at least as wide as several letters, which it does not need.
            const int text =
                button->fontMetrics().size(Qt::TextShowMnemonic, button->text()).width() +
                button->style()->pixelMetric(QStyle::PM_ButtonMargin, nullptr, button);
            const int needed = qobject_cast<const QPushButton*>(button) != nullptr
                                   ? text
                                   : button->minimumSizeHint().width();
            add(button->width() < needed || button->height() < button->fontMetrics().height(),
                button->text());
        }
        for (const auto* box : Visible<QComboBox>(window)) {
            QStyleOptionComboBox option;
            option.initFrom(box);
            option.editable = box->isEditable();
            const int room = box->style()
                                 ->subControlRect(QStyle::CC_ComboBox, &option,
                                                  QStyle::SC_ComboBoxEditField, box)
                                 .width();
            add(!box->isEditable() &&
                    room < box->fontMetrics().horizontalAdvance(box->currentText()),
                box->currentText());
        }
        for (const auto* bar : Visible<QTabBar>(window)) {
            for (int tab = 0; tab < bar->count(); ++tab) {
                add(bar->tabRect(tab).width() <
                        bar->fontMetrics().horizontalAdvance(bar->tabText(tab)),
                    bar->tabText(tab));
            }
        }
        for (const auto* header : Visible<QHeaderView>(window)) {
            const int margins = 2 * header->style()->pixelMetric(QStyle::PM_HeaderMargin);
            const int sorted = header->isSortIndicatorShown() ? header->sortIndicatorSection() : -1;
            for (int column = 0; column < header->count(); ++column) {
                const QString title =
                    header->model()->headerData(column, Qt::Horizontal).toString();
                const int needed = header->fontMetrics().horizontalAdvance(title) + margins +
                                   (column == sorted ? header->height() : 0);
                add(!header->isSectionHidden(column) && header->sectionSize(column) < needed,
                    title);
            }
        }
        for (const auto* list : Visible<QTreeView>(window)) {
            AddCutCells(*list, add);
        }
        return cut;
    }

  private:
    static constexpr int kMostStops = 60;
    static constexpr int kMostPresses = 1000;

    template <typename Add>
    static void AddCutCells(const QTreeView& list, const Add& add) {
        if (list.objectName() == "bmiTable"_L1) {
            return;  // its columns are shares of its width, whatever the font
        }
        // Names get the room that is left; the rest is seen by dragging their column with a mouse.
        const int first = list.isHeaderHidden() ? 0 : 1;
        for (int row = 0; row < list.model()->rowCount(); ++row) {
            for (int column = first; column < list.header()->count(); ++column) {
                const QModelIndex cell = list.model()->index(row, column);
                const QRect place = list.visualRect(cell);
                const bool isSeen = list.viewport()->rect().intersects(place) && place.width() > 0;
                add(isSeen && place.width() < list.sizeHintForIndex(cell).width(),
                    list.objectName() + u": "_s + cell.data().toString());
            }
        }
    }

    static void Collect(QAccessibleInterface* node, QStringList& found) {
        constexpr QAccessible::Role kControls[] = {
            QAccessible::PushButton, QAccessible::CheckBox, QAccessible::RadioButton,
            QAccessible::ComboBox,   QAccessible::SpinBox,  QAccessible::EditableText,
            QAccessible::Slider,     QAccessible::Tree,     QAccessible::Table,
            QAccessible::List,       QAccessible::PageTab,  QAccessible::MenuItem,
            QAccessible::Chart};
        const QAccessible::Role role = node->role();
        const QObject* object = node->object();
        const bool isControl = std::ranges::find(kControls, role) != std::end(kControls);
        const bool isNamed = !node->text(QAccessible::Name).trimmed().isEmpty();
        const bool hasFocus = role == QAccessible::Client && node->state().focusable &&
                              qobject_cast<const QTabWidget*>(object) == nullptr;
        if ((isControl && !isNamed) || hasFocus) {
            found.append(QLatin1StringView(object->metaObject()->className()) + u' ' +
                         object->objectName());
        }
        // The list that a combo box opens is read with its box.
        const bool isWhole = role == QAccessible::ComboBox || role == QAccessible::Tree ||
                             role == QAccessible::Table;
        for (int i = 0; i < node->childCount(); ++i) {
            QAccessibleInterface* child = node->child(i);
            if (child == nullptr || !child->isValid()) {
                found.append(u"nothing in "_s + node->text(QAccessible::Name));
            } else if (!isWhole || child->role() == QAccessible::EditableText) {
                Collect(child, found);
            }
        }
    }

    static QList<QWidget*> Round(const QWidget& window, Qt::KeyboardModifiers modifiers) {
        QList<QWidget*> stops = {window.focusWidget()};
        for (int presses = 0; presses < kMostPresses; ++presses) {
            QTest::keyClick(window.focusWidget(), Qt::Key_Tab, modifiers);
            if (window.focusWidget() == stops.front() && stops.size() > 1) {
                return stops;
            }
            // The parts of a date are one stop, and so are the links of a page.
            if (window.focusWidget() != stops.back()) {
                stops.append(window.focusWidget());
            }
        }
        return stops;
    }

    static QString NamesOf(const QList<QWidget*>& widgets) {
        QStringList names;
        for (const QWidget* widget : widgets.first(std::min<qsizetype>(widgets.size(), 20))) {
            names.append(widget->objectName());
        }
        return names.join(u' ');
    }

    template <typename Widget>
    static QList<Widget*> Visible(const QWidget& window) {
        QList<Widget*> widgets = window.findChildren<Widget*>();
        widgets.removeIf([](const Widget* widget) { return !widget->isVisible(); });
        return widgets;
    }
};
