#include "diary/WeightEntryList.h"

#include <QLabel>
#include <algorithm>

#include "app/DateText.h"
#include "diary/EmptyHint.h"
#include "diary/ListSizes.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto kNoWeights =
    "No weights yet.\n"
    "Press Insert to add what you weigh."_L1;

}  // namespace

CWeightEntryList::CWeightEntryList(CVelmoraDoc& doc, const CWeightList& weights, QWidget* parent)
    : CReportList(u"Weights"_s, parent),
      m_doc(doc),
      m_weights(weights),
      m_hint(CreateEmptyHint(this, kNoWeights)) {
    setObjectName(u"weights"_s);
    setMinimumHeight(fontMetrics().height() * kLeastListRows);
}

void CWeightEntryList::BuildColumns() {
    const QStringList titles = m_weights.ColumnTitles();
    SetColumns(titles);
    const auto& kept = m_doc.Settings().weightTab.columnWidths;
    m_widths.clear();
    for (int column = 0; column < titles.size(); ++column) {
        const int natural = fontMetrics().horizontalAdvance(titles[column]) + kTitleMargin;
        m_widths.push_back(kept[column] > 0 ? kept[column] : natural);
    }
    if (kept[0] <= 0) {
        m_widths[0] = fontMetrics().horizontalAdvance(ShownDate({2028, 12, 28})) + kTitleMargin;
    }
    SetColumnWidths(m_widths);
    // A column may not become as narrow as asked for.
    m_widths = GetColumnWidths();
}

void CWeightEntryList::StoreColumns() {
    const std::vector<int> widths = GetColumnWidths();
    for (size_t column = 0; column < std::min(widths.size(), m_widths.size()); ++column) {
        if (widths[column] != m_widths[column]) {
            m_doc.Settings().weightTab.columnWidths[column] = widths[column];
        }
    }
}

void CWeightEntryList::ShowRows() {
    SetRows({m_weights.Count(),
             [this](int row, int column) { return m_weights.CellText(row, column); },
             {}});
    m_hint->setVisible(m_weights.Count() == 0);
}

void CWeightEntryList::ShowDay(QDate day) {
    scrollTo(model()->index(m_weights.RowOfDay(day), 0));
}
