#include "diary/weight/BmiDialog.h"

#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "controls/ColorDialog.h"
#include "controls/Colors.h"
#include "controls/ReportList.h"
#include "controls/RowDelegate.h"

using namespace Qt::StringLiterals;

namespace {

enum EColumn { kWeightColumn, kBmiColumn, kRiskColumn };
constexpr int kRiskMargin = 3;

/// Rows keep their own colours when they are selected.
class CBmiDelegate : public CRowDelegate {
  public:
    CBmiDelegate(const std::vector<CBmiTableItem>& items, QObject* parent)
        : CRowDelegate(parent), m_items(items) {}

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        CRowDelegate::initStyleOption(option, index);
        const QColor background = ColorOf(m_items[index.row()].background);
        option->backgroundBrush = background;
        option->palette.setColor(QPalette::Text, ReadableTextColor(background));
        option->state &= ~QStyle::State_Selected;
    }

  private:
    const std::vector<CBmiTableItem>& m_items;
};

class CBmiList : public CReportList {
  public:
    CBmiList(std::vector<CBmiTableItem> items, QWidget* parent)
        : CReportList(u"Body Mass Index"_s, parent), m_items(std::move(items)) {
        setObjectName(u"bmiTable"_s);
        SetColumns({{.title = u"Weight"_s, .kind = CReportColumn::EKind::Number},
                    {.title = u"BMI"_s, .kind = CReportColumn::EKind::Number},
                    {.title = u"Health risk"_s}});
        setHeaderHidden(true);
        setSelectionMode(QAbstractItemView::SingleSelection);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        header()->setMinimumSectionSize(1);
        setItemDelegate(new CBmiDelegate(m_items, this));
        SetRows({static_cast<int>(m_items.size()),
                 [this](int row, int column) { return CellText(m_items[row], column); }});
    }

    /// Selects the row of the current weight and scrolls it into view.
    void ShowCurrent() {
        const auto current = std::ranges::find_if(
            m_items, [](const CBmiTableItem& item) { return item.risk.endsWith("<--"_L1); });
        SelectRow(static_cast<int>(current - m_items.begin()));
        scrollTo(currentIndex(), PositionAtCenter);
    }

  protected:
    void resizeEvent(QResizeEvent* event) override {
        CReportList::resizeEvent(event);
        const int quarter = width() / 4;
        const int risk = width() / 2 - verticalScrollBar()->sizeHint().width() - kRiskMargin;
        SetColumnWidths({quarter, quarter, std::max(1, risk)});
    }
    void showEvent(QShowEvent* event) override {
        CReportList::showEvent(event);
        ShowCurrent();
    }
    [[nodiscard]] bool ShowsSelection() const override { return false; }

  private:
    static QString CellText(const CBmiTableItem& item, int column) {
        switch (column) {
            case kWeightColumn:
                return item.weight;
            case kBmiColumn:
                return item.bmi;
            default:
                return item.risk;
        }
    }

    std::vector<CBmiTableItem> m_items;
};

}  // namespace

CBmiDialog::CBmiDialog(const CBmiView& bmi, QWidget* parent) : CDialog(u"BMI"_s, parent) {
    auto* text = new QLabel(bmi.text, this);
    text->setObjectName(u"bmi"_s);
    auto* heading = new QLabel(u"Body Mass Index"_s, this);
    auto* list = new CBmiList(bmi.table, this);
    heading->setBuddy(list);
    Content()->addWidget(text);
    Content()->addWidget(heading);
    Content()->addWidget(list, 1);
    HideCancel();
    list->setFocus();
    SetPreferredSize(320, 420);
}
