#include "diary/TotalsList.h"

#include <QEvent>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

enum EColumn { kNameColumn, kBarColumn, kTotalColumn, kTargetColumn, kPercentColumn };

constexpr int kTextMargin = 1;
constexpr int kRowSpace = 4;
constexpr int kLeastRowHeight = 16;
constexpr int kBarInset = 2;

constexpr QColor kFrameColor(96, 96, 96);
constexpr QColor kBorderColor(0, 0, 0);
constexpr QColor kOverColor(255, 0, 0);
constexpr QColor kRestColor(255, 255, 0);
constexpr QColor kPartColor(0, 255, 0);

/// Draws bars in their column, and texts with hardly a margin in the others, since these columns
/// are exactly as wide as their texts.
class CTotalsDelegate : public QStyledItemDelegate {
  public:
    explicit CTotalsDelegate(CTotalsList* list) : QStyledItemDelegate(list), m_list(list) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const bool isSelected = (option.state & QStyle::State_Selected) != 0;
        const QPalette& palette = m_list->palette();
        if (index.column() == kBarColumn) {
            painter->fillRect(option.rect, palette.base());
            DrawTotalsBar(*painter, option.rect, m_list->Total(index.row()).bar);
            return;
        }
        painter->fillRect(option.rect, isSelected ? palette.highlight() : palette.base());
        painter->setFont(option.font);
        painter->setPen(palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
        const QRect inside = option.rect.adjusted(kTextMargin, 0, 0, 0);
        const bool isName = index.column() == kNameColumn;
        QString text = index.data().toString();
        if (isName) {
            const QFontMetrics& metrics = option.fontMetrics;
            text = FittedName(m_list->Total(index.row()).name, inside.width(),
                              [&](const QString& part) { return metrics.horizontalAdvance(part); });
        }
        painter->drawText(inside, Qt::AlignVCenter | (isName ? Qt::AlignLeft : Qt::AlignRight),
                          text);
    }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& /*index*/) const override {
        return {0, std::max(kLeastRowHeight, option.fontMetrics.height() + kRowSpace)};
    }

  private:
    CTotalsList* m_list;
};

}  // namespace

CTotalsList::CTotalsList(QWidget* parent) : CReportList(u"Totals of the day"_s, parent) {
    SetColumns({{.title = u"Nutrient"_s},
                {.title = u"Graph"_s},
                {.title = u"Data1"_s},
                {.title = u"Data2"_s},
                {.title = u"Data3"_s}});
    setHeaderHidden(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    header()->setMinimumSectionSize(1);
    setItemDelegate(new CTotalsDelegate(this));
}

void CTotalsList::SetTotals(std::vector<CTotalsRow> rows) {
    m_rows = std::move(rows);
    SetRows({static_cast<int>(m_rows.size()),
             [this](int row, int column) { return CellText(row, column); }});
    FitColumns();
}

void CTotalsList::resizeEvent(QResizeEvent* event) {
    CReportList::resizeEvent(event);
    FitColumns();
}

void CTotalsList::changeEvent(QEvent* event) {
    CReportList::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        FitColumns();
    }
}

void CTotalsList::FitColumns() {
    const auto widthOf = [this](const QString& text) {
        return fontMetrics().horizontalAdvance(text);
    };
    int widest = 0;
    for (const CTotalsRow& row : m_rows) {
        widest = std::max(widest, widthOf(row.name + u':'));
    }
    const CTotalsColumns columns =
        TotalsColumnWidths(width(), verticalScrollBar()->sizeHint().width(), widest, widthOf);
    const std::array widths{columns.name, columns.bar, columns.total, columns.target,
                            columns.percent};
    for (int column = 0; column < static_cast<int>(widths.size()); ++column) {
        setColumnHidden(column, widths[column] <= 0);
    }
    SetColumnWidths({widths.begin(), widths.end()});
}

QString CTotalsList::CellText(int row, int column) const {
    const CTotalsRow& total = m_rows[row];
    switch (column) {
        case kNameColumn:
            return total.name + u':';
        // For screen readers and copying: the bar itself is painted.
        case kBarColumn:
            return total.percent;
        case kTotalColumn:
            return total.total;
        case kTargetColumn:
            return total.target;
        default:
            return total.percent;
    }
}

void DrawTotalsBar(QPainter& painter, const QRect& cell, const CTotalsBar& bar) {
    const QRect frame = cell.adjusted(kBarInset, kBarInset, -kBarInset, -kBarInset);
    const QRect border = frame.adjusted(1, 1, -1, -1);
    const QRect inside = border.adjusted(1, 1, -1, -1);
    if (!inside.isValid()) {
        return;
    }
    painter.fillRect(frame, kFrameColor);
    painter.fillRect(border, kBorderColor);
    painter.fillRect(inside, bar.fill == EBarFill::Over ? kOverColor : kRestColor);
    if (bar.fill == EBarFill::Partial) {
        QRect part = inside;
        part.setWidth(static_cast<int>(inside.width() * bar.percent * 0.01));
        painter.fillRect(part, kPartColor);
    }
}
