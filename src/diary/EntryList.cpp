#include "diary/EntryList.h"

#include "catalogue/items/CatalogueKinds.h"
#include "catalogue/items/ChosenFood.h"
#include "controls/PaintedIcons.h"
#include "diary/ListSizes.h"

using namespace Qt::StringLiterals;

namespace {

// The first two columns: their least widths in characters, and their shares of the remaining room;
// a nutrient's share is 1.
constexpr int kNameCharacters = 18;
constexpr int kServingCharacters = 14;
constexpr int kNameShare = 16;
constexpr int kServingShare = 6;

constexpr auto kNothingEatenAll =
    "Nothing eaten yet on this day.\n"
    "Choose a meal above, then press Insert to add what you ate."_L1;
constexpr auto kNothingEatenAtMeal =
    "Nothing eaten yet at this meal.\n"
    "Press Insert to add what you ate."_L1;

/// Foods for a kind that only a damaged record has.
const CCatalogueKind& KindShown(const CDietEntry& entry) {
    return KindOf(CatalogueOf(entry.GetKind()));
}

}  // namespace

CEntryList::CEntryList(CVelmoraDoc& doc, const CDietDay& day, QWidget* parent)
    : CReportList(u"Entries"_s, parent), m_doc(doc), m_day(day) {
    setObjectName(u"entries"_s);
    setMinimumHeight(fontMetrics().height() * kLeastListRows);
    connect(this, &CReportList::ColumnDragged, this, [this](int column, int width) {
        m_doc.Settings().dietTab.columnWidths[m_day.SettingOfColumn(column)] = width;
    });
}

void CEntryList::BuildColumns() {
    const int character = fontMetrics().averageCharWidth();
    std::vector<CReportColumn> columns;
    for (const QString& title : m_day.ColumnTitles()) {
        const int setting = m_day.SettingOfColumn(static_cast<int>(columns.size()));
        columns.push_back({.title = title,
                           .kind = CReportColumn::EKind::Number,
                           .width = m_doc.Settings().dietTab.columnWidths[setting]});
    }
    const auto makeText = [&](CReportColumn& column, int characters, int share) {
        column.kind = CReportColumn::EKind::Text;
        column.least = characters * character;
        column.share = share;
    };
    makeText(columns[0], kNameCharacters, kNameShare);
    makeText(columns[1], kServingCharacters, kServingShare);
    SetColumns(std::move(columns));
}

void CEntryList::ShowRows() {
    SetRows({.count = m_day.Count(),
             .text = [this](int row, int column) { return m_day.CellText(row, column); },
             .icon =
                 [this](int row) {
                     const EItemKind kind = *KindShown(m_day.Entry(row)).itemKind;
                     return m_pictures[static_cast<size_t>(kind)];
                 },
             .iconText =
                 [this](int row) {
                     return QString::fromLatin1(KindShown(m_day.Entry(row)).capitalized);
                 },
             .heading = m_doc.selectedMeal == kAllMeals
                            ? [this](int row) { return m_day.HeadingOf(row); }
                            : std::function<QString(int)>()});
    // With a large font there may be no room to share.
    SetContentWidth(0, sizeHintForColumn(0));
    SetContentWidth(1, sizeHintForColumn(1));
    SetEmptyHint(m_doc.selectedMeal == kAllMeals ? kNothingEatenAll : kNothingEatenAtMeal);
}

void CEntryList::ShowColors(const QColor& background) {
    SetBackgroundColor(background);
    const QColor text = palette().color(QPalette::Text);
    m_pictures = {PaintedIcon(EIcon::Apple, text), PaintedIcon(EIcon::Card, text),
                  PaintedIcon(EIcon::Pot, text)};
}
