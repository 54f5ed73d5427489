#include "diary/DietMainView.h"

#include <QAction>
#include <QDateEdit>
#include <QEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QSplitter>
#include <QTabBar>
#include <QToolButton>
#include <algorithm>

#include "app/DateEdit.h"
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

void ShowMenu(const std::vector<QAction*>& actions, QWidget* list, const QPoint& position) {
    QMenu menu(list);
    for (QAction* action : actions) {
        menu.addAction(action);
    }
    menu.exec(list->mapToGlobal(position));
}

}  // namespace

CDietMainView::CDietMainView(CVelmoraDoc& doc, QWidget* parent)
    : CMainView(parent), m_doc(doc), m_day(doc) {
    setObjectName(u"dietView"_s);
    if (!m_doc.dayShown.isValid()) {
        m_doc.dayShown = QDate::currentDate();
    }
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

std::vector<CCommandMenu> CDietMainView::CommandBar() {
    return m_menus;
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
    CMainView::resizeEvent(event);
    ShowSplit();
}

void CDietMainView::changeEvent(QEvent* event) {
    CMainView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_totals != nullptr) {
        ShowColors();
    }
}

void CDietMainView::CreateActions() {
    struct CRow {
        const char* text;
        QList<QKeySequence> shortcuts;
        const char* toolTip;
        void (CDietMainView::*run)();
        bool onlyInList;  // keys that fields have a use for
    };
    const std::array<CRow, kCommandCount> rows = {{
        {"Add entry...",
         {Qt::Key_Insert, Qt::CTRL | Qt::Key_N},
         "Add food/menu/recipe to meal",
         &CDietMainView::Add,
         false},
        {"Edit entry...", {Qt::Key_Return}, "", &CDietMainView::Edit, true},
        {"Delete entry...",
         {Qt::Key_Delete},
         "Delete food/menu/recipe from meal",
         &CDietMainView::Delete,
         true},
        {"Move entry...", {Qt::CTRL | Qt::Key_M}, "", &CDietMainView::Move, false},
        {"Duplicate entry...", {Qt::CTRL | Qt::Key_D}, "", &CDietMainView::Duplicate, false},
    }};
    for (int command = 0; command < kCommandCount; ++command) {
        const CRow& row = rows[command];
        auto* action = new QAction(QLatin1StringView(row.text), this);
        action->setShortcuts(row.shortcuts);
        action->setShortcutContext(row.onlyInList ? Qt::WidgetShortcut : Qt::WindowShortcut);
        action->setToolTip(QLatin1StringView(row.toolTip));
        connect(action, &QAction::triggered, this, row.run);
        m_entries->addAction(action);
        m_commands[command] = action;
    }
    connect(m_entries, &QAbstractItemView::activated, this, &CDietMainView::Edit);

    m_nutrients = CreateFrameAction(u"Nutrients..."_s, kCommandPreferences);
    m_background = new QAction(u"Background color..."_s, this);
    connect(m_background, &QAction::triggered, this, &CDietMainView::ChooseBackgroundColor);

    m_menus = {
        {u"File"_s,
         {CreateFrameAction(u"Open profile..."_s, kCommandOpenProfile),
          CreateFrameAction(u"&Exit"_s, kCommandExit)}},
        {u"Edit"_s, {m_commands.begin(), m_commands.end()}},
        {u"Tools"_s,
         {CreateFrameAction(u"Preferences..."_s, kCommandPreferences),
          CreateFrameAction(u"User..."_s, kCommandUser),
          CreateFrameAction(u"Targets..."_s, kCommandTargets),
          CreateFrameAction(u"Foods..."_s, kSwitchToFoods)}},
    };
}

QAction* CDietMainView::CreateFrameAction(const QString& text, int command) {
    auto* action = new QAction(text, this);
    connect(action, &QAction::triggered, this, [this, command] { emit FrameCommand(command); });
    return action;
}

QWidget* CDietMainView::CreateDayBar() {
    auto* bar = new QWidget(this);
    m_date = CreateDateEdit(m_doc.dayShown, u"day"_s);
    m_date->setAccessibleName(u"Day shown"_s);
    connect(m_date, &QDateEdit::dateChanged, this, &CDietMainView::SetDay);

    const auto createButton = [&](const QString& name, const QKeySequence& key, auto go) {
        auto* button = new QToolButton(bar);
        button->setObjectName(name);
        button->setAccessibleName(name);
        button->setText(name);
        button->setShortcut(key);
        button->setToolTip(name + u" ("_s + key.toString(QKeySequence::NativeText) + u')');
        button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Minimum);
        connect(button, &QToolButton::clicked, this, go);
        return button;
    };
    auto* previous = createButton(u"Previous day"_s, Qt::ALT | Qt::Key_Left,
                                  [this] { SetDay(m_doc.dayShown.addDays(-1)); });
    previous->setArrowType(Qt::LeftArrow);
    auto* today =
        createButton(u"Today"_s, Qt::ALT | Qt::Key_Home, [this] { SetDay(QDate::currentDate()); });
    auto* next = createButton(u"Next day"_s, Qt::ALT | Qt::Key_Right,
                              [this] { SetDay(m_doc.dayShown.addDays(1)); });
    next->setArrowType(Qt::RightArrow);

    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(4, 2, 4, 0);
    layout->addWidget(m_date);
    layout->addWidget(previous);
    layout->addWidget(today);
    layout->addWidget(next);
    layout->addStretch(1);
    return bar;
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
    m_meals->setCurrentIndex(m_doc.selectedMeal);
    connect(m_meals, &QTabBar::currentChanged, this, [this](int meal) {
        m_doc.selectedMeal = meal;
        Reload();
    });
    return m_meals;
}

void CDietMainView::CreateLists() {
    m_splitter = new QSplitter(Qt::Vertical, this);
    m_splitter->setObjectName(u"split"_s);
    m_splitter->setChildrenCollapsible(false);
    connect(m_splitter, &QSplitter::splitterMoved, this, [this](int position) {
        m_doc.Settings().dietTab.splitterPerMille = PerMilleOf(position, m_splitter->height());
    });

    m_entries = new CEntryList(m_doc, m_day, m_splitter);
    connect(m_entries, &QWidget::customContextMenuRequested, this, [this](const QPoint& position) {
        ShowMenu({m_commands.begin(), m_commands.end()}, m_entries->viewport(), position);
    });

    m_totals = new CTotalsList(m_splitter);
    m_totals->setObjectName(u"totals"_s);
    m_totals->setMinimumHeight(m_totals->fontMetrics().height() * 2);
    connect(m_totals, &QWidget::customContextMenuRequested, this, [this](const QPoint& position) {
        ShowMenu({m_nutrients, m_background}, m_totals->viewport(), position);
    });
}

void CDietMainView::SetDay(QDate day) {
    const QSignalBlocker quiet(m_date);
    m_date->setDate(day);
    m_doc.dayShown = m_date->date();
    Reload();
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
    for (const int nutrient : m_doc.Preferences().DisplayedNutrients()) {
        rows.push_back(TotalsRow(nutrient, m_doc.NutrientNames().value(nutrient),
                                 m_doc.Database().GetDietTotal(nutrient),
                                 m_doc.Settings().targets.nutrients[nutrient],
                                 m_doc.Preferences().energyUnit));
    }
    m_totals->SetTotals(std::move(rows));
}

void CDietMainView::ShowColors() {
    const auto& chosen = m_doc.Settings().dietTab.backgroundColor;
    const QColor background = chosen ? ColorOf(*chosen) : QColor();
    m_entries->ShowColors(background);
    m_totals->SetBackgroundColor(background);
    const QColor buttonText = palette().color(QPalette::ButtonText);
    m_commands[kAdd]->setIcon(AddIcon(buttonText));
    m_commands[kDelete]->setIcon(DeleteIcon(buttonText));
}

void CDietMainView::ShowSplit() {
    const int height = m_splitter->height();
    const int entries = EntryListHeight(m_doc.Settings().dietTab.splitterPerMille, height);
    m_splitter->setSizes({entries, std::max(0, height - entries)});
}

std::vector<CDietEntry> CDietMainView::SelectedEntries() const {
    return m_day.EntriesAt(m_entries->SelectedRows());
}

void CDietMainView::Add() {
    if (!MayAddToMeal(m_doc.selectedMeal)) {
        return;
    }
    CAddFoodForm form(m_doc, CAddFoodRequest::ForNewEntry(QTime::currentTime()));
    CAddFoodDialog dialog(form, this);
    if (dialog.exec() == QDialog::Accepted) {
        AddDietEntry(m_doc, m_doc.dayShown, m_doc.selectedMeal, form.GetResult());
        Reload();
    }
}

void CDietMainView::Edit() {
    const std::vector<int> rows = m_entries->SelectedRows();
    if (!MayEdit(static_cast<int>(rows.size()))) {
        return;
    }
    const CDietEntry entry = m_day.Entry(rows.front());
    CAddFoodForm form(m_doc, CAddFoodRequest::ForEntry(m_doc.Database(), entry));
    CAddFoodDialog dialog(form, this);
    if (dialog.exec() == QDialog::Accepted) {
        EditDietEntry(m_doc, entry, form.GetResult());
        Reload(rows.front());
    }
}

void CDietMainView::Delete() {
    const std::vector<int> rows = m_entries->SelectedRows();
    if (DeleteDietEntries(m_doc, SelectedEntries()) > 0) {
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
        MoveDietEntries(m_doc, entries, dialog.GetPlace());
        Reload(rows.front());
    }
}

void CDietMainView::Duplicate() {
    const std::vector<int> rows = m_entries->SelectedRows();
    if (DuplicateDietEntry(m_doc, SelectedEntries())) {
        Reload(rows.front());
    }
}

void CDietMainView::ChooseBackgroundColor() {
    const quint32 current = RgbOf(m_totals->palette().color(QPalette::Base));
    CColorDialog dialog(u"Select background color:"_s, current, this);
    if (dialog.exec() == QDialog::Accepted) {
        m_doc.Settings().dietTab.backgroundColor = dialog.GetRgb();
        m_doc.SaveSettings();
        ShowColors();
    }
}
