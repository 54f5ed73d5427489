#include "diary/EntryList.h"

#include <QLabel>
#include <algorithm>
#include <numeric>

#include "controls/PaintedIcons.h"
#include "diary/EmptyHint.h"
#include "diary/ListSizes.h"

using namespace Qt::StringLiterals;

namespace {

// Widths of the entry list's first two columns, in characters: at least, and at most while no
// column was dragged.
constexpr int kNameCharacters = 18;
constexpr int kMostNameCharacters = 60;
constexpr int kServingCharacters = 14;
constexpr int kMostServingCharacters = 30;

constexpr auto kNothingEatenAll =
    "Nothing eaten yet on this day.\n"
    "Choose a meal above, then press Insert to add what you ate."_L1;
constexpr auto kNothingEatenAtMeal =
    "Nothing eaten yet at this meal.\n"
    "Press Insert to add what you ate."_L1;

}  // namespace

CEntryList::CEntryList(CVelmoraDoc& doc, const CDietDay& day, QWidget* parent)
    : CReportList(u"Entries"_s, parent), m_doc(doc), m_day(day), m_hint(CreateEmptyHint(this)) {
    setObjectName(u"entries"_s);
    setMinimumHeight(fontMetrics().height() * kLeastListRows);
}

void CEntryList::BuildColumns() {
    SetColumns(m_day.ColumnTitles());
    LayColumnsOut();
}

void CEntryList::StoreColumns() {
    const std::vector<int> widths = GetColumnWidths();
    for (size_t column = 0; column < std::min(widths.size(), m_widths.size()); ++column) {
        if (widths[column] != m_widths[column]) {
            const int setting = m_day.SettingOfColumn(static_cast<int>(column));
            m_doc.Settings().dietTab.columnWidths[setting] = widths[column];
        }
    }
}

void CEntryList::ShowRows() {
    SetRows({m_day.Count(), [this](int row, int column) { return m_day.CellText(row, column); },
             [this](int row) {
                 const auto kind = static_cast<size_t>(m_day.Entry(row).GetKind());
                 return m_pictures[std::min(kind, m_pictures.size() - 1)];
             }});
    m_hint->setText(m_doc.selectedMeal == kAllMeals ? kNothingEatenAll : kNothingEatenAtMeal);
    m_hint->setVisible(m_day.Count() == 0);
}

void CEntryList::ShowColors(const QColor& background) {
    SetBackgroundColor(background);
    const QColor text = palette().color(QPalette::Text);
    m_pictures = {PaintedIcon(EIcon::Apple, text), PaintedIcon(EIcon::Card, text),
                  PaintedIcon(EIcon::Pot, text)};
    QPalette hint = m_hint->palette();
    hint.setColor(QPalette::WindowText, text);
    m_hint->setPalette(hint);
}

void CEntryList::resizeEvent(QResizeEvent* event) {
    CReportList::resizeEvent(event);
    StoreColumns();
    LayColumnsOut();
}

void CEntryList::LayColumnsOut() {
    const QStringList titles = m_day.ColumnTitles();
    const QFontMetrics metrics = fontMetrics();
    const int character = metrics.averageCharWidth();
    m_widths = {kNameCharacters * character, kServingCharacters * character};
    for (int column = static_cast<int>(m_widths.size()); column < titles.size(); ++column) {
        m_widths.push_back(metrics.horizontalAdvance(titles[column]) + kTitleMargin);
    }
    // Two thirds of the room left over go to the name, one to the serving.
    const int used = std::accumulate(m_widths.begin(), m_widths.end(), 0);
    const int spare = std::max(0, viewport()->width() - used);
    m_widths[0] = std::min(m_widths[0] + spare * 2 / 3, kMostNameCharacters * character);
    m_widths[1] = std::min(m_widths[1] + spare / 3, kMostServingCharacters * character);
    for (int column = 0; column < titles.size(); ++column) {
        const int kept = m_doc.Settings().dietTab.columnWidths[m_day.SettingOfColumn(column)];
        if (kept > 0) {
            m_widths[column] = kept;
        }
    }
    SetColumnWidths(m_widths);
}
