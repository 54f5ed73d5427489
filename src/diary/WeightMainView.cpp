#include "diary/WeightMainView.h"

#include <QAction>
#include <QEvent>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>

#include "diary/BmiDialog.h"
#include "diary/DietTotals.h"
#include "diary/PaintedIcons.h"
#include "diary/WeightEditDialog.h"
#include "diary/WeightEntryList.h"
#include "diary/WeightGraph.h"
#include "diary/WeightRules.h"

using namespace Qt::StringLiterals;

constexpr CWeightMainView::CGraphColor CWeightMainView::kGraphColors[] = {
    {"Text color...", "Select text color:", &CWeightTabSettings::textColor,
     &CWeightGraph::TextColor},
    {"Weight line color...", "Select weight line color:", &CWeightTabSettings::weightLineColor,
     &CWeightGraph::WeightLineColor},
    {"Goal line color...", "Select goal line color:", &CWeightTabSettings::goalLineColor,
     &CWeightGraph::GoalLineColor},
    {"Background color...", "Select background color:", &CWeightTabSettings::backgroundColor,
     &CWeightGraph::BackgroundColor},
};

CWeightMainView::CWeightMainView(CVelmoraDoc& doc, QWidget* parent)
    : CDiaryView(doc, parent), m_weights(doc) {
    setObjectName(u"weightView"_s);
    CreateLists();
    CreateActions();
    CreateGraphActions();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(CreateDayBar());
    layout->addWidget(m_splitter, 1);
    DataChanged();
    m_entries->setFocus();
}

std::vector<QAction*> CWeightMainView::ToolButtons() {
    return {m_commands[kAdd], m_commands[kDelete]};
}

void CWeightMainView::StoreLayout() {
    m_entries->StoreColumns();
}

void CWeightMainView::DataChanged() {
    ShowIcons();
    const QSignalBlocker quiet(m_goalLine);
    m_goalLine->setChecked(Doc().Settings().weightTab.showGoalLine);
    m_weights.Reload();
    m_entries->BuildColumns();
    m_entries->ShowRows();
    m_entries->ShowDay(Doc().dayShown);
    m_graph->Reload();
    ShowSplit();
}

void CWeightMainView::DayChanged() {
    m_entries->SelectRow(m_weights.RowOfDay(Doc().dayShown));
}

void CWeightMainView::resizeEvent(QResizeEvent* event) {
    CDiaryView::resizeEvent(event);
    ShowSplit();
}

void CWeightMainView::changeEvent(QEvent* event) {
    CDiaryView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_commands[kDelete] != nullptr) {
        ShowIcons();
    }
}

void CWeightMainView::CreateLists() {
    m_splitter = new QSplitter(Qt::Vertical, this);
    m_splitter->setObjectName(u"split"_s);
    m_splitter->setChildrenCollapsible(false);
    connect(m_splitter, &QSplitter::splitterMoved, this, [this](int position) {
        Doc().Settings().weightTab.splitterPerMille = PerMilleOf(position, m_splitter->height());
    });

    m_entries = new CWeightEntryList(Doc(), m_weights, m_splitter);
    connect(m_entries, &QWidget::customContextMenuRequested, this, [this](const QPoint& position) {
        ShowListMenu({m_commands.begin(), m_commands.end()}, m_entries->viewport(), position);
    });

    m_graph = new CWeightGraph(Doc(), m_splitter);
    m_graph->setObjectName(u"graph"_s);
    m_graph->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_graph, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& position) { ShowListMenu(m_graphActions, m_graph, position); });
}

void CWeightMainView::CreateActions() {
    using View = CWeightMainView;
    const std::array<CListCommand, kCommandCount> commands = {{
        {"Add weight...", "Add weight measurement", kAddKeys, kAnywhere},
        {"Edit weight...", "", {Qt::Key_Return}, kInList},
        {"Delete weight...", "Delete weight measurement", {Qt::Key_Delete}, kInList},
    }};
    constexpr std::array<void (View::*)(), kCommandCount> kRun = {&View::Add, &View::Edit,
                                                                  &View::Delete};
    for (int command = 0; command < kCommandCount; ++command) {
        m_commands[command] = CreateListAction(m_entries, commands[command]);
        connect(m_commands[command], &QAction::triggered, this, kRun[command]);
    }
    connect(m_entries, &QAbstractItemView::activated, this, &View::Edit);

    auto* bmi = new QAction(u"BMI..."_s, this);
    connect(bmi, &QAction::triggered, this, &View::ShowBmi);
    SetDiaryMenus({m_commands.begin(), m_commands.end()}, bmi);
}

void CWeightMainView::CreateGraphActions() {
    m_goalLine = new QAction(u"Show goal line"_s, this);
    m_goalLine->setCheckable(true);
    connect(m_goalLine, &QAction::toggled, this, &CWeightMainView::ShowGoalLine);
    m_graphActions = {CreateFrameAction(u"Targets..."_s, kCommandTargets), m_goalLine};
    for (const CGraphColor& color : kGraphColors) {
        auto* action = new QAction(QLatin1StringView(color.text), this);
        connect(action, &QAction::triggered, this, [this, &color] { ChooseColor(color); });
        m_graphActions.push_back(action);
    }
}

void CWeightMainView::Reload() {
    m_weights.Reload();
    m_entries->ShowRows();
    m_graph->Reload();
}

void CWeightMainView::ReloadAndSelect(int row) {
    Reload();
    m_entries->SelectRow(row);
}

void CWeightMainView::ShowIcons() {
    const QColor buttonText = palette().color(QPalette::ButtonText);
    m_commands[kAdd]->setIcon(AddIcon(buttonText));
    m_commands[kDelete]->setIcon(DeleteIcon(buttonText));
}

void CWeightMainView::ShowSplit() {
    const int height = m_splitter->height();
    const int entries = EntryListHeight(Doc().Settings().weightTab.splitterPerMille, height);
    m_splitter->setSizes({entries, std::max(0, height - entries)});
}

void CWeightMainView::Add() {
    const CProfileSettings& settings = Doc().Settings();
    CWeightForm form(NewWeightEntry(Doc(), QTime::currentTime()), settings.preferences,
                     settings.user.isMale);
    CWeightEditDialog dialog(form, this);
    if (dialog.exec() == QDialog::Accepted && AddWeight(Doc(), form.GetEntry())) {
        Reload();
        m_entries->SelectRow(m_weights.RowOfMoment(form.GetEntry().GetMoment()));
    }
}

void CWeightMainView::Edit() {
    const std::vector<int> rows = m_entries->SelectedRows();
    if (!MayEditWeight(static_cast<int>(rows.size()))) {
        return;
    }
    const int position = m_weights.PositionsOf(rows).front();
    const std::optional<CWeightEntry> entry = WeightToEdit(Doc(), position);
    if (!entry) {
        return;
    }
    const CProfileSettings& settings = Doc().Settings();
    CWeightForm form(*entry, settings.preferences, settings.user.isMale);
    CWeightEditDialog dialog(form, this);
    if (dialog.exec() == QDialog::Accepted) {
        EditWeight(Doc(), position, form.GetEntry());
        ReloadAndSelect(rows.front());
    }
}

void CWeightMainView::Delete() {
    const std::vector<int> rows = m_entries->SelectedRows();
    if (DeleteWeights(Doc(), m_weights.PositionsOf(rows)) > 0) {
        ReloadAndSelect(rows.front());
    }
}

void CWeightMainView::ShowBmi() {
    CBmiDialog dialog(BmiOnDay(Doc(), Doc().dayShown), this);
    dialog.exec();
}

void CWeightMainView::ShowGoalLine(bool isShown) {
    Doc().Settings().weightTab.showGoalLine = isShown;
    Doc().SaveSettings();
    m_graph->Reload();
}

void CWeightMainView::ChooseColor(const CGraphColor& color) {
    if (const auto chosen =
            AskColor(QLatin1StringView(color.prompt), (m_graph->*color.current)())) {
        Doc().Settings().weightTab.*color.setting = chosen;
        Doc().SaveSettings();
        m_graph->Reload();
    }
}
