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
#include <QSplitter>
#include <QStyle>
#include <QTabWidget>
#include <QTreeView>

using namespace Qt::StringLiterals;

/// In the order of the layouts, each in brackets with the margins ("+" are the
/// style's) and the spacing it sets. After
/// a widget's name and texts comes what differs from the start of its class; least widths and
/// heights are in lines of its font, those of buttons in pixels around the text. "^" has the
/// focus, "*n" is a share of the room, "~" takes what is left, "@" an alignment in hexadecimal.
class CPortrait {
  public:
    static QString Of(const QWidget& window) {
        CPortrait portrait;
        portrait.Draw(window);
        QStringList tabs;
        for (const QWidget* next = window.nextInFocusChain(); next != &window;
             next = next->nextInFocusChain()) {
            const bool isReached = (next->focusPolicy() & Qt::TabFocus) != 0 && next->isEnabled() &&
                                   next->isVisibleTo(&window) &&
                                   !next->objectName().startsWith(u"qt_"_s);
            tabs.append(isReached ? next->objectName() : QString());
        }
        tabs.removeAll(QString());
        // A size that nobody chose depends on the font.
        const bool isChosen = window.width() % 10 == 0 && window.height() % 10 == 0;
        return If(window.isWindow(), window.windowTitle() + u' ') +
               If(window.isWindow() && isChosen,
                  u"%1x%2 "_s.arg(window.width()).arg(window.height())) +
               portrait.m_parts.join(u' ') + u" Tab: "_s + tabs.join(u' ');
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
        const QMargins margins = layout.contentsMargins();
        const int usual = qApp->style()->pixelMetric(QStyle::PM_LayoutLeftMargin);
        const int gap = qApp->style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing);
        m_parts.append(u'(' +
                       (margins == QMargins(usual, usual, usual, usual)
                            ? u"+"_s
                            : If(!margins.isNull(), u"%1,%2,%3,%4"_s.arg(margins.left())
                                                        .arg(margins.top())
                                                        .arg(margins.right())
                                                        .arg(margins.bottom()))) +
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
            m_parts.last() +=
                Aligned(item.alignment(), {}) +
                If(box && box->stretch(i) > 0, u'*' + QString::number(box ? box->stretch(i) : 0));
        }
        m_parts.last() += u')';
    }

    /// Null for a widget that only holds others.
    static QString Own(const QWidget& widget) {
        const QString named = widget.objectName() + u'=';
        if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
            return named.chopped(1) + u'\'' + label->text() + u'\'' +
                   If(label->buddy(),
                      u'>' + (label->buddy() ? label->buddy()->objectName() : QString())) +
                   If(label->wordWrap(), u" wraps"_s) +
                   If(label->textFormat() == Qt::PlainText, u" plain"_s) +
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
            QStringList items;
            for (int i = 0; i < box->count(); ++i) {
                items.append(box->itemText(i));
            }
            return named + (box->isEditable() ? Field(*box->lineEdit()) : box->currentText()) +
                   u'{' + Ends(items).join(u',') + u'}' + If(box->completer(), u" completes"_s) +
                   If(box->minimumContentsLength() > 0,
                      u" of %1"_s.arg(box->minimumContentsLength()));
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
                  u" from %1"_s.arg(edit.cursorPosition())) +
               If(edit.hasSelectedText(), u" selected"_s) +
               Aligned(edit.alignment(), Qt::AlignLeft);
    }
    /// The first two and the last.
    static QStringList Ends(const QStringList& texts) {
        return texts.size() < 5
                   ? texts
                   : texts.first(2) + QStringList{u"..%1.."_s.arg(texts.size()), texts.last()};
    }
    /// Titles, then rows, of cells between two '|'; "*" is selected, "x" checked.
    static QString Rows(const QTreeView& view) {
        const QAbstractItemModel& model = *view.model();
        const auto alignment = [](const QVariant& is) {
            return Qt::Alignment::fromInt(is.isNull() ? Qt::AlignLeft : is.toInt());
        };
        QStringList rows;
        for (int row = -1; row < model.rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model.columnCount(); ++column) {
                const auto title =
                    alignment(model.headerData(column, Qt::Horizontal, Qt::TextAlignmentRole));
                const QModelIndex cell = model.index(row, column);
                cells.append(row < 0
                                 ? model.headerData(column, Qt::Horizontal).toString() +
                                       Aligned(title, Qt::AlignLeft)
                                 : cell.data().toString() +
                                       Aligned(alignment(cell.data(Qt::TextAlignmentRole)), title) +
                                       If(cell.data(Qt::CheckStateRole).toInt() > 0, u"x"_s) +
                                       If(view.selectionModel()->isSelected(cell), u"*"_s));
            }
            rows.append(cells.join(u'|'));
        }
        return u'{' + If(view.isHeaderHidden(), u"-"_s) + Ends(rows).join(u"; "_s) + u'}' +
               If(view.selectionMode() == QAbstractItemView::ExtendedSelection, u" many"_s) +
               If(view.horizontalScrollBarPolicy() == Qt::ScrollBarAlwaysOff, u" unscrolled"_s);
    }

  public:
    /// How a list behaves, where the class would have it otherwise.
    static QString TraitsOf(const QTreeView& list) {
        const QHeaderView& header = *list.header();
        return If(!list.rootIsDecorated(), u"flat "_s) + If(!list.itemsExpandable(), u"closed "_s) +
               If(list.uniformRowHeights(), u"uniform "_s) +
               If(list.allColumnsShowFocus(), u"rows "_s) +
               If(list.horizontalScrollMode() == QTreeView::ScrollPerPixel, u"smooth "_s) +
               If(list.editTriggers() == QTreeView::NoEditTriggers, u"locked "_s) +
               If(list.expandsOnDoubleClick(), u"opening "_s) +
               If(!header.sectionsMovable(), u"fixed "_s) +
               If(!header.stretchLastSection(), u"short "_s) +
               If(header.isSortIndicatorShown(), u"sorted "_s) +
               If(header.isSortIndicatorClearable(), u"clearable "_s) +
               u"least %1"_s.arg(header.minimumSectionSize());
    }

  private:
    static QString Facts(const QWidget& widget) {
        const QString said = widget.accessibleName();
        const auto* button = qobject_cast<const QAbstractButton*>(&widget);
        const int line = widget.fontMetrics().height();
        const int around =
            button ? widget.fontMetrics().size(Qt::TextShowMnemonic, button->text()).width() : 0;
        const int width = widget.minimumWidth();
        const int height = widget.minimumHeight();
        return If(!said.isEmpty(), said.compare(widget.objectName(), Qt::CaseInsensitive) == 0
                                       ? u" said"_s
                                       : u" says '"_s + said + u'\'') +
               If(!widget.toolTip().isEmpty() && widget.toolTip() != said,
                  u" tip '"_s + widget.toolTip() + u'\'') +
               If(!widget.isEnabled(), u" off"_s) +
               If(widget.contextMenuPolicy() == Qt::CustomContextMenu, u" menu"_s) +
               If(widget.window()->focusWidget() == &widget, u"^"_s) + If(width == 1, u" w1"_s) +
               If(width > 1 && button, u" w+%1"_s.arg(width - around)) +
               If(height > 0,
                  height % line == 0 ? u" h%1"_s.arg(height / line) : u" h%1px"_s.arg(height));
    }

    QStringList m_parts;
};
