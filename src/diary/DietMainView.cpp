#include "diary/DietMainView.h"

#include <QAction>
#include <QEvent>
#include <QSplitter>
#include <QTabBar>
#include <QVBoxLayout>
#include <algorithm>

#include "controls/ColorDialog.h"
#include "diary/AddFoodDialog.h"
#include "diary/DietMoveDialog.h"
#include "diary/DietTotals.h"
#include "diary/EntryList.h"
#include "diary/PaintedIcons.h"
#include "diary/TotalsList.h"

using namespace Qt::StringLiterals;

namespace {

constexpr const char* kMealTabs[] = {"B", "M", "L", "A", "D", "E", "All"};

}  // namespace

CDietMainView::CDietMainView(CVelmoraDoc& doc, QWidget* parent)
    : CDiaryView(doc, parent), m_day(doc) {
    setObjectName(u"dietView"_s);
    CreateLists();
    CreateActions();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(CreateDayBar());
    layout->addWidget(CreateMeals());
    layout->addWidget(m_splitter, 1);
    DataChanged();
    m_entries->setFocus();
}

std::vector<QAction*> CDietMainView::ToolButtons() {
    return {m_commands[kAdd], m_commands[kDelete]};
}

void CDietMainView::StoreLayout() {
    m_entries->StoreColumns();
}

void CDietMainView::DataChanged() {
    ShowColors();
    m_day.Reload();
    m_entries->BuildColumns();
    ShowDay();
    ShowSplit();
}

void CDietMainView::resizeEvent(QResizeEvent* event) {
    CDiaryView::resizeEvent(event);
    ShowSplit();
}

void CDietMainView::changeEvent(QEvent* event) {
    CDiaryView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_totals != nullptr) {
        ShowColors();
    }
}

void CDietMainView::CreateActions() {
    using View = CDietMainView;
    const std::array<CListCommand, kCommandCount> commands = {{
        {"Add entry...", "Add food/menu/recipe to meal", kAddKeys, kAnywhere},
        {"Edit entry...", "", {Qt::Key_Return}, kInList},
        {"Delete entry...", "Delete food/menu/recipe from meal", {Qt::Key_Delete}, kInList},
        {"Move entry...", "", {Qt::CTRL | Qt::Key_M}, kAnywhere},
        {"Duplicate entry...", "", {Qt::CTRL | Qt::Key_D}, kAnywhere},
    }};
    constexpr std::array<void (View::*)(), kCommandCount> kRun = {
        &View::Add, &View::Edit, &View::Delete, &View::Move, &View::Duplicate};
    for (int command = 0; command < kCommandCount; ++command) {
        m_commands[command] = CreateListAction(m_entries, commands[command]);
        connect(m_commands[command], &QAction::triggered, this, kRun[command]);
    }
    connect(m_entries, &QAbstractItemView::activated, this, &CDietMainView::Edit);

    m_nutrients = CreateFrameAction(u"Nutrients..."_s, kCommandPreferences);
    m_background = new QAction(u"Background color..."_s, this);
    connect(m_background, &QAction::triggered, this, &CDietMainView::ChooseBackgroundColor);

    SetDiaryMenus({m_commands.begin(), m_commands.end()},
                  CreateFrameAction(u"Foods..."_s, kSwitchToFoods));
}

QWidget* CDietMainView::CreateMeals() {
    m_meals = new QTabBar(this);
    m_meals->setObjectName(u"meals"_s);
    m_meals->setAccessibleName(u"Meal"_s);
    m_meals->setExpanding(false);
    m_meals->setDrawBase(false);
    for (int meal = 0; meal <= kAllMeals; ++meal) {
        const QString name = meal == kAllMeals ? u"All meals"_s : MealName(meal);
        m_meals->addTab(QLatin1StringView(kMealTabs[meal]));
        m_meals->setTabToolTip(meal, name);
        m_meals->setAccessibleTabName(meal, name);
    }
    m_meals->setCurrentIndex(Doc().selectedMeal);
    connect(m_meals, &QTabBar::currentChanged, this, [this](int meal) {
        Doc().selectedMeal = meal;
        Reload();
    });
    return m_meals;
}

void CDietMainView::CreateLists() {
    m_splitter = new QSplitter(Qt::Vertical, this);
    m_splitter->setObjectName(u"split"_s);
    m_splitter->setChildrenCollapsible(false);
    connect(m_splitter, &QSplitter::splitterMoved, this, [this](int position) {
        Doc().Settings().dietTab.splitterPerMille = PerMilleOf(position, m_splitter->height());
    });

    m_entries = new CEntryList(Doc(), m_day, m_splitter);
    connect(m_entries, &QWidget::customContextMenuRequested, this, [this](const QPoint& position) {
        ShowListMenu({m_commands.begin(), m_commands.end()}, m_entries->viewport(), position);
    });

    m_totals = new CTotalsList(m_splitter);
    m_totals->setObjectName(u"totals"_s);
    m_totals->setMinimumHeight(m_totals->fontMetrics().height() * 2);
    connect(m_totals, &QWidget::customContextMenuRequested, this, [this](const QPoint& position) {
        ShowListMenu({m_nutrients, m_background}, m_totals->viewport(), position);
    });
}

void CDietMainView::Reload(int select) {
    m_day.Reload();
    ShowDay();
    if (select >= 0) {
        m_entries->SelectRow(select);
    }
}

void CDietMainView::ShowDay() {
    m_entries->ShowRows();
    ShowTotals();
}

void CDietMainView::ShowTotals() {
    std::vector<CTotalsRow> rows;
    for (const int nutrient : Doc().Preferences().DisplayedNutrients()) {
        rows.push_back(TotalsRow(nutrient, Doc().NutrientNames().value(nutrient),
                                 Doc().Database().GetDietTotal(nutrient),
                                 Doc().Settings().targets.nutrients[nutrient],
                                 Doc().Preferences().energyUnit));
    }
    m_totals->SetTotals(std::move(rows));
}

void CDietMainView::ShowColors() {
    const auto& chosen = Doc().Settings().dietTab.backgroundColor;
    const QColor background = chosen ? ColorOf(*chosen) : QColor();
    m_entries->ShowColors(background);
    m_totals->SetBackgroundColor(background);
    const QColor buttonText = palette().color(QPalette::ButtonText);
    m_commands[kAdd]->setIcon(AddIcon(buttonText));
    m_commands[kDelete]->setIcon(DeleteIcon(buttonText));
}

void CDietMainView::ShowSplit() {
    const int height = m_splitter->height();
    const int entries = EntryListHeight(Doc().Settings().dietTab.splitterPerMille, height);
    m_splitter->setSizes({entries, std::max(0, height - entries)});
}

std::vector<CDietEntry> CDietMainView::SelectedEntries() const {
    return m_day.EntriesAt(m_entries->SelectedRows());
}

void CDietMainView::Add() {
    if (!MayAddToMeal(Doc().selectedMeal)) {
        return;
    }
    CAddFoodForm form(Doc(), CAddFoodRequest::ForNewEntry(QTime::currentTime()));
    CAddFoodDialog dialog(form, this);
    if (dialog.exec() == QDialog::Accepted) {
        AddDietEntry(Doc(), Doc().dayShown, Doc().selectedMeal, form.GetResult());
        Reload();
    }
}

void CDietMainView::Edit() {
    const std::vector<int> rows = m_entries->SelectedRows();
    if (!MayEdit(static_cast<int>(rows.size()))) {
        return;
    }
    const CDietEntry entry = m_day.Entry(rows.front());
    CAddFoodForm form(Doc(), CAddFoodRequest::ForEntry(Doc().Database(), entry));
    CAddFoodDialog dialog(form, this);
    if (dialog.exec() == QDialog::Accepted) {
        EditDietEntry(Doc(), entry, form.GetResult());
        Reload(rows.front());
    }
}

void CDietMainView::Delete() {
    const std::vector<int> rows = m_entries->SelectedRows();
    if (DeleteDietEntries(Doc(), SelectedEntries()) > 0) {
        Reload(rows.front());
    }
}

void CDietMainView::Move() {
    const std::vector<int> rows = m_entries->SelectedRows();
    const std::vector<CDietEntry> entries = SelectedEntries();
    if (!MayMove(entries)) {
        return;
    }
    CDietMoveDialog dialog({entries.front().GetMoment(), entries.front().GetMeal()}, this);
    if (dialog.exec() == QDialog::Accepted) {
        MoveDietEntries(Doc(), entries, dialog.GetPlace());
        Reload(rows.front());
    }
}

void CDietMainView::Duplicate() {
    const std::vector<int> rows = m_entries->SelectedRows();
    if (DuplicateDietEntry(Doc(), SelectedEntries())) {
        Reload(rows.front());
    }
}

void CDietMainView::ChooseBackgroundColor() {
    if (const auto color =
            AskColor(u"Select background color:"_s, m_totals->palette().color(QPalette::Base))) {
        Doc().Settings().dietTab.backgroundColor = color;
        Doc().SaveSettings();
        ShowColors();
    }
}
