// What a window shows and how, as one text: a window that looks or reads otherwise reads so here.
#pragma once

#include <QBoxLayout>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QSplitter>
#include <QStyle>
#include <QTabWidget>
#include <QTreeView>

#include "controls/ReportList.h"
#include "controls/RowDelegate.h"

using namespace Qt::StringLiterals;

/// In the order of the layouts, each in brackets with the margins ("+" are the style's) and the
/// spacing it sets. After a widget's name and texts comes what differs from the start of its
/// class; least heights are in lines of its font, least widths of buttons in pixels around their
/// texts. "^" has the focus, "*n" is a share of the room, "~" a gap, "@" an alignment in
/// hexadecimal, "says" an accessible name, "said" one that is the widget's name.
class CPortrait {
  public:
    static QString Of(const QWidget& window) {
        CPortrait portrait;
        portrait.Draw(window);
        QStringList tabs;
        for (const QWidget* next = window.nextInFocusChain(); next != &window;
             next = next->nextInFocusChain()) {
            if ((next->focusPolicy() & Qt::TabFocus) != 0 && next->isEnabled() &&
                next->isVisibleTo(&window) && !next->objectName().startsWith(u"qt_"_s)) {
                tabs.append(next->objectName());
            }
        }
        // A size that nobody chose depends on the font.
        const bool isChosen = window.width() % 10 == 0 && window.height() % 10 == 0;
        return If(window.isWindow(), window.windowTitle() + u' ') +
               If(window.isWindow() && isChosen,
                  u"%1x%2 "_s.arg(window.width()).arg(window.height())) +
               portrait.m_parts.join(u' ') + u" Tab: "_s + tabs.join(u' ');
    }
    /// Stands for texts that would be too long; empty for none.
    static QString DigestOf(const QStringList& texts) {
        const QByteArray all = texts.join(u'|').toUtf8();
        return If(!texts.isEmpty(), u" ..%1 %2.. "_s.arg(texts.size()).arg(qChecksum(all), 0, 16));
    }
    /// The shape of an icon.
    static QString InkOf(const QIcon& icon) {
        const QImage image = icon.pixmap(32, 32).toImage();
        QByteArray ink;
        for (int i = 0; i < image.width() * image.height(); ++i) {
            const QColor color = image.pixelColor(i % image.width(), i / image.width());
            ink.append(color.alpha() < 128 ? ' ' : color.red() < 128 ? '#' : '.');
        }
        return If(!icon.isNull(), u" icon "_s + QString::number(qChecksum(ink), 16));
    }
    /// What the clock gives changes from run to run; whole hours are those of a test.
    static QString TextOf(QTime time) {
        return time.msecsSinceStartOfDay() % 3'600'000 == 0 ? time.toString(u"HH:mm"_s) : u"now"_s;
    }
    static QString TextOf(QDate day) {
        return day == QDate::currentDate() ? u"today"_s : day.toString(Qt::ISODate);
    }
    /// A long text without its middle.
    static QString Short(const QString& text) {
        return text.size() < 100 ? text : text.first(30) + DigestOf({text}) + text.last(20);
    }
    /// What a named widget in sight holds; the last one, "focus", says which has the focus.
    struct CState {
        QString name;
        QString value;
        QStringList rows;
    };
    static QList<CState> StateOf(const QWidget& window) {
        QList<CState> state;
        for (const auto* widget : window.findChildren<QWidget*>()) {
            const QString name = widget->objectName();
            const auto* view = qobject_cast<const QTreeView*>(widget);
            const QStringList rows = view ? RowTexts(*view) : QStringList();
            const QString value = (view ? rows.first() : ValueOf(*widget)) + Colours(*widget);
            if (!name.isEmpty() && !name.startsWith(u"qt_"_s) && !value.isEmpty() &&
                widget->isVisibleTo(&window)) {
                state.append({name, Short(value), rows.mid(1)});
            }
        }
        if (const auto* focus = window.focusWidget(); focus != nullptr) {
            const bool isNamed = !focus->objectName().isEmpty();
            state.append({u"focus"_s, isNamed ? focus->objectName() : ValueOf(*focus), {}});
        }
        return state;
    }

  private:
    static QString If(bool is, const QString& text) { return is ? text : QString(); }
    static QString Aligned(Qt::Alignment alignment, Qt::Alignment usual) {
        return If((alignment & ~Qt::AlignVCenter) != (usual & ~Qt::AlignVCenter),
                  u'@' + QString::number(alignment.toInt(), 16));
    }

    void Draw(const QWidget& widget) {
        if (const auto* tabs = qobject_cast<const QTabWidget*>(&widget)) {
            for (int page = 0; page < tabs->count(); ++page) {
                m_parts.append(u'/' + tabs->tabText(page) + u'/');
                DrawLayout(*tabs->widget(page)->layout());
            }
        } else if (const auto* split = qobject_cast<const QSplitter*>(&widget)) {
            m_parts.append(split->orientation() == Qt::Horizontal ? u"beside"_s : u"above"_s);
            m_parts.last() += If(split->childrenCollapsible(), u" or nothing"_s);
            for (int i = 0; i < split->count(); ++i) {
                Draw(*split->widget(i));
            }
        } else if (widget.objectName() == u"content") {
            DrawLayout(*widget.findChild<QLayout*>());
        } else if (const QString own = Own(widget); !own.isNull()) {
            m_parts.append(own + Facts(widget));
        } else if (widget.layout() != nullptr) {
            DrawLayout(*widget.layout());
        }
    }
    void DrawLayout(const QLayout& layout) {
        const auto* style = qApp->style();
        const QMargins margins = layout.contentsMargins();
        const int usual = style->pixelMetric(QStyle::PM_LayoutLeftMargin);
        const QString edges = u"%1,%2,%3,%4"_s.arg(margins.left())
                                  .arg(margins.top())
                                  .arg(margins.right())
                                  .arg(margins.bottom());
        const int gap = style->pixelMetric(QStyle::PM_LayoutVerticalSpacing);
        m_parts.append(u'(' +
                       (margins == QMargins(usual, usual, usual, usual)
                            ? u"+"_s
                            : If(!margins.isNull(), edges)) +
                       If(layout.spacing() != gap, u'/' + QString::number(layout.spacing())));
        const auto* box = qobject_cast<const QBoxLayout*>(&layout);
        for (int i = 0; i < layout.count(); ++i) {
            QLayoutItem& item = *layout.itemAt(i);
            if (item.widget() != nullptr && item.widget()->isHidden()) {
                continue;
            }
            if (item.widget() != nullptr) {
                Draw(*item.widget());
            } else if (item.layout() != nullptr) {
                DrawLayout(*item.layout());
            } else {
                m_parts.append(u'~' + QString::number(item.sizeHint().height()));
            }
            const int share = box != nullptr ? box->stretch(i) : 0;
            m_parts.last() +=
                Aligned(item.alignment(), {}) + If(share > 0, u'*' + QString::number(share));
        }
        m_parts.last() += u')';
    }

    /// Null for a widget that only holds others.
    static QString Own(const QWidget& widget) {
        const QString named = widget.objectName() + u'=';
        if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
            const QString buddy = label->buddy() ? u'>' + label->buddy()->objectName() : QString();
            return named.chopped(1) + u'\'' + label->text() + u'\'' + buddy +
                   If(label->wordWrap(), u" wraps"_s) +
                   If((label->textInteractionFlags() & Qt::TextSelectableByKeyboard) != 0,
                      u" selectable"_s) +
                   If(label->margin() > 0, u" in "_s + QString::number(label->margin())) +
                   Aligned(label->alignment(), Qt::AlignLeft);
        }
        if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
            const auto* push = qobject_cast<const QPushButton*>(&widget);
            return named + u'[' + button->text() + u']' + If(button->isChecked(), u"x"_s) +
                   If(push && push->isDefault(), u"!"_s) + If(push && push->autoDefault(), u"?"_s);
        }
        if (const auto* edit = qobject_cast<const QLineEdit*>(&widget)) {
            return named + Field(*edit);
        }
        if (const auto* box = qobject_cast<const QComboBox*>(&widget)) {
            const int characters = box->minimumContentsLength();
            return named + (box->isEditable() ? Field(*box->lineEdit()) : box->currentText()) +
                   u'{' + Items(*box) + u'}' + If(box->completer(), u" completes"_s) +
                   If(box->sizeAdjustPolicy() == QComboBox::AdjustToMinimumContentsLengthWithIcon,
                      u" short"_s) +
                   If(characters > 0, u" of "_s + QString::number(characters));
        }
        if (const auto* moment = qobject_cast<const QDateTimeEdit*>(&widget)) {
            return named + moment->displayFormat() + If(moment->calendarPopup(), u"+"_s);
        }
        if (const auto* text = qobject_cast<const QPlainTextEdit*>(&widget)) {
            return named + text->toPlainText() + If(!text->tabChangesFocus(), u" keeps Tab"_s);
        }
        if (const auto* view = qobject_cast<const QTreeView*>(&widget)) {
            return named + Rows(*view);
        }
        if (const auto* bar = qobject_cast<const QTabBar*>(&widget)) {
            QString tabs;
            for (int tab = 0; tab < bar->count(); ++tab) {
                tabs += u'/' + bar->tabText(tab) + If(tab == bar->currentIndex(), u"^"_s) +
                        bar->tabToolTip(tab);
            }
            return named + tabs + If(bar->drawBase(), u" base"_s) +
                   If(bar->expanding(), u" wide"_s);
        }
        return widget.layout() == nullptr && named.size() > 1 ? named : QString();
    }
    static QString Field(const QLineEdit& edit) {
        return u'"' + edit.text() + u'"' +
               If(edit.maxLength() < 32767, QString::number(edit.maxLength())) +
               If(edit.cursorPosition() < edit.text().size(),
                  u" from "_s + QString::number(edit.cursorPosition())) +
               If(edit.hasSelectedText(), u" selected"_s);
    }
    static QString ValueOf(const QWidget& widget) {
        if (const auto* moment = qobject_cast<const QDateTimeEdit*>(&widget)) {
            return moment->displayFormat().startsWith(u'H') ? TextOf(moment->time())
                                                            : TextOf(moment->date());
        }
        const auto* label = qobject_cast<const QLabel*>(&widget);
        const auto* edit = qobject_cast<const QLineEdit*>(&widget);
        const auto* box = qobject_cast<const QComboBox*>(&widget);
        const auto* button = qobject_cast<const QAbstractButton*>(&widget);
        const auto* spin = qobject_cast<const QSpinBox*>(&widget);
        const auto* slider = qobject_cast<const QSlider*>(&widget);
        return label  ? label->text() + widget.accessibleDescription()
               : edit ? u'"' + edit->text() + u'"' + If(edit->hasSelectedText(), u" selected"_s)
               : box  ? box->currentText() + u'{' + Items(*box) + u'}'
               : button
                   ? If(button->isCheckable(), (button->isChecked() ? u'x' : u'-') + button->text())
               : spin   ? spin->text()
               : slider ? QString::number(slider->value())
                        : Own(widget).section(u'=', 1) + widget.accessibleDescription();
    }
    /// Of a widget that does not have those of its window.
    static QString Colours(const QWidget& widget) {
        QString colours;
        for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Text}) {
            const QColor own = widget.palette().color(role);
            colours += If(own != widget.window()->palette().color(role), u' ' + own.name());
        }
        return colours;
    }
    static QString Items(const QComboBox& box) {
        QStringList items;
        for (int i = 0; i < box.count(); ++i) {
            items.append(box.itemText(i));
        }
        return Ends(items).join(u',');
    }
    /// The first two and the last.
    static QStringList Ends(const QStringList& texts) {
        const QStringList middle{u"..%1.."_s.arg(texts.size())};
        return texts.size() < 5 ? texts : texts.first(2) + middle + texts.last(1);
    }
    /// Titles, then rows, of cells between two '|', those below an expanded one after a '-'; "*"
    /// ends a selected row, "x" is checked.
    static QStringList RowTexts(const QTreeView& view, const QModelIndex& parent = {}) {
        const QAbstractItemModel& model = *view.model();
        const auto alignment = [](const QVariant& is) {
            return Qt::Alignment::fromInt(is.isNull() ? Qt::AlignLeft : is.toInt());
        };
        QStringList rows;
        for (int row = parent.isValid() ? 0 : -1; row < model.rowCount(parent); ++row) {
            QStringList cells;
            const bool isReport = qobject_cast<const CReportList*>(&view) != nullptr;
            const QString heading =
                isReport && row >= 0 ? HeadingOf(model.index(row, 0)) : QString();
            for (int column = 0; column < model.columnCount(); ++column) {
                const auto title = [&](int role) {
                    return model.headerData(column, Qt::Horizontal, role);
                };
                const auto usual = alignment(title(Qt::TextAlignmentRole));
                const QModelIndex cell = model.index(row, column, parent);
                const auto own = alignment(cell.data(Qt::TextAlignmentRole));
                cells.append(row < 0
                                 ? title(Qt::DisplayRole).toString() + Aligned(usual, Qt::AlignLeft)
                                 : cell.data().toString() + Aligned(own, usual) +
                                       InkOf(cell.data(Qt::DecorationRole).value<QIcon>()) +
                                       If(cell.data(Qt::CheckStateRole).toInt() > 0, u"x"_s));
                if (view.selectionModel()->isSelected(cell) &&
                    !cell.siblingAtColumn(column + 1).isValid()) {
                    cells.last() += u'*';
                }
            }
            rows.append(If(!heading.isEmpty(), heading + u"/ "_s) + If(parent.isValid(), u"-"_s) +
                        Short(cells.join(u'|')));
            if (const QModelIndex own = model.index(row, 0, parent); view.isExpanded(own)) {
                rows.append(RowTexts(view, own));
            }
        }
        return rows;
    }
    /// How a list or tree behaves; said when it is not as most lists or grids do.
    static constexpr QStringView kUsual[] = {u"flat closed uniform rows fixed short clearable ",
                                             u"flat closed uniform locked fixed short thin"};
    static QString TraitsOf(const QTreeView& list) {
        const QHeaderView& header = *list.header();
        return If(!list.rootIsDecorated(), u"flat "_s) + If(!list.itemsExpandable(), u"closed "_s) +
               If(list.uniformRowHeights(), u"uniform "_s) +
               If(list.allColumnsShowFocus(), u"rows "_s) +
               If(list.editTriggers() == QTreeView::NoEditTriggers, u"locked "_s) +
               If(!header.sectionsMovable(), u"fixed "_s) +
               If(!header.stretchLastSection(), u"short "_s) +
               If(header.isSortIndicatorClearable(), u"clearable "_s) +
               If(header.minimumSectionSize() < 10, u"thin"_s);
    }
    static QString Rows(const QTreeView& view) {
        const auto* hint = view.findChild<QLabel*>(u"emptyHint"_s);
        const QString traits = TraitsOf(view);
        return If(hint && hint->isVisible(), u"("_s + (hint ? Own(*hint) : QString()) + u") "_s) +
               u'{' + If(view.isHeaderHidden(), u"-"_s) + Ends(RowTexts(view)).join(u"; "_s) +
               u'}' + If(view.selectionMode() == QTreeView::ExtendedSelection, u" many"_s) +
               If(view.horizontalScrollBarPolicy() == Qt::ScrollBarAlwaysOff, u" unscrolled"_s) +
               If(view.header()->isSortIndicatorShown(), u" sorts"_s) +
               If(view.sizeHintForRow(0) * 2 < view.fontMetrics().height() * 3, u" tight"_s) +
               If(std::ranges::find(kUsual, traits) == std::end(kUsual),
                  u" ("_s + traits.trimmed() + u')');
    }
    static QString Facts(const QWidget& widget) {
        const QString said = widget.accessibleName();
        const bool isNamed = said.compare(widget.objectName(), Qt::CaseInsensitive) == 0;
        const auto* button = qobject_cast<const QAbstractButton*>(&widget);
        const QFontMetrics font = widget.fontMetrics();
        const int text = button ? font.size(Qt::TextShowMnemonic, button->text()).width() : 0;
        const int width = widget.minimumWidth();
        const int height = widget.minimumHeight();
        return If(!said.isEmpty(), isNamed ? u" said"_s : u" says '"_s + said + u'\'') +
               If(!widget.toolTip().isEmpty(),
                  widget.toolTip() == said ? u" tip"_s : u" tip '"_s + widget.toolTip() + u'\'') +
               If(!widget.isEnabled(), u" off"_s) +
               If(widget.contextMenuPolicy() == Qt::CustomContextMenu, u" menu"_s) +
               If(widget.window()->focusWidget() == &widget, u"^"_s) + If(width == 1, u" w1"_s) +
               If(width > 1 && button, u" w+"_s + QString::number(width - text)) +
               If(widget.maximumWidth() < QWIDGETSIZE_MAX && widget.maximumWidth() != width,
                  u" <%1"_s.arg((widget.maximumWidth() - font.height()) /
                                font.averageCharWidth())) +
               If(height > 0, height % font.height() == 0
                                  ? u" h"_s + QString::number(height / font.height())
                                  : u" h%1px"_s.arg(height));
    }

    QStringList m_parts;
};
