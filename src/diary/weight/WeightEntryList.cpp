#include "diary/weight/WeightEntryList.h"

#include "app/DateText.h"
#include "diary/ListSizes.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto kNoWeights =
    "No weights yet.\n"
    "Press Insert to add what you weigh."_L1;

}  // namespace

CWeightEntryList::CWeightEntryList(CVelmoraDoc& doc, const CWeightList& weights, QWidget* parent)
    : CReportList(u"Weights"_s, parent), m_doc(doc), m_weights(weights) {
    setObjectName(u"weights"_s);
    setMinimumHeight(fontMetrics().height() * kLeastListRows);
    SetEmptyHint(kNoWeights);
    connect(this, &CReportList::ColumnDragged, this, [this](int column, int width) {
        m_doc.Settings().weightTab.columnWidths[column] = width;
    });
}

void CWeightEntryList::BuildColumns() {
    const QStringList titles = m_weights.ColumnTitles();
    std::vector<CReportColumn> columns;
    columns.reserve(titles.size());
    for (int column = 0; column < titles.size(); ++column) {
        columns.push_back({.title = titles[column],
                           .kind = CReportColumn::EKind::Number,
                           .width = m_doc.Settings().weightTab.columnWidths[column]});
    }
    columns.front().kind = CReportColumn::EKind::Text;
    columns.front().least =
        fontMetrics().horizontalAdvance(ShownDate({2028, 12, 28})) + kTitleMargin;
    SetColumns(std::move(columns));
}

void CWeightEntryList::ShowRows() {
    SetRows({.count = m_weights.Count(),
             .text = [this](int row, int column) { return m_weights.CellText(row, column); },
             .sortKey = [this](int row, int column) { return m_weights.SortKey(row, column); }});
}

void CWeightEntryList::ShowDay(QDate day) {
    ScrollToRow(m_weights.RowOfDay(day));
}
