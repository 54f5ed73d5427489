#include "diary/weight/WeightMainView.h"

#include <QAction>
#include <QSplitter>

#include "app/FrameCommands.h"
#include "app/LeftOutText.h"
#include "diary/weight/BmiDialog.h"
#include "diary/weight/WeightEditDialog.h"
#include "diary/weight/WeightEntryList.h"
#include "diary/weight/WeightGraph.h"
#include "diary/weight/WeightRules.h"

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
    : CDiaryView(doc, doc.Settings().weightTab.splitterPerMille, parent), m_weights(doc) {
    setObjectName(u"weightView"_s);
    CreateLists();
    CreateActions();
    CreateGraphActions();
    LayOutTab();
    DataChanged();
}

void CWeightMainView::DataChanged() {
    const QSignalBlocker quiet(m_goalLine);
    m_goalLine->setChecked(Doc().Settings().weightTab.showGoalLine);
    m_weights.Reload();
    m_entries->BuildColumns();
    ShowRows();
    m_entries->ShowDay(Doc().dayShown);
    m_graph->Reload();
    ShowSplit();
}

void CWeightMainView::DayChanged() {
    m_entries->SelectRow(m_weights.RowOfDay(Doc().dayShown));
}

void CWeightMainView::CreateLists() {
    m_entries = new CWeightEntryList(Doc(), m_weights, this);
    m_graph = new CWeightGraph(Doc(), m_weights, Splitter());
    m_graph->setContextMenuPolicy(Qt::CustomContextMenu);
}

void CWeightMainView::CreateActions() {
    auto* bmi = new QAction(u"BMI..."_s, this);
    connect(bmi, &QAction::triggered, this, &CWeightMainView::ShowBmi);
    SetCommands(
        m_entries,
        {
            {"Add weight...", "Add weight measurement", kAddKeys, kAnywhere, [this] { Add(); }},
            {"Edit weight...", "", {Qt::Key_Return}, kInList, [this] { Edit(); }},
            {"Delete weight...",
             "Delete weight measurement",
             {Qt::Key_Delete},
             kInList,
             [this] { Delete(); }},
        },
        bmi);
}

void CWeightMainView::CreateGraphActions() {
    m_goalLine = new QAction(u"Show goal line"_s, this);
    m_goalLine->setCheckable(true);
    connect(m_goalLine, &QAction::toggled, this, &CWeightMainView::ShowGoalLine);
    std::vector<QAction*> actions = {CreateFrameAction(u"Targets..."_s, kCommandTargets),
                                     m_goalLine};
    for (const CGraphColor& color : kGraphColors) {
        auto* action = new QAction(QLatin1StringView(color.text), this);
        connect(action, &QAction::triggered, this, [this, &color] { ChooseColor(color); });
        actions.push_back(action);
    }
    connect(m_graph, &QWidget::customContextMenuRequested, this,
            [this, actions](const QPoint& position) { ShowMenu(actions, m_graph, position); });
}

void CWeightMainView::Reload() {
    m_weights.Reload();
    ShowRows();
    m_graph->Reload();
}

void CWeightMainView::ShowRows() {
    m_entries->ShowRows();
    ShowNote(DamageText(m_weights.LeftOut(), kEntryWords));
}

void CWeightMainView::ReloadAndSelect(int place) {
    Reload();
    m_entries->SelectPlace(place);
}

void CWeightMainView::Add() {
    const CProfileSettings& settings = Doc().Settings();
    CWeightForm form(NewWeightEntry(Doc(), QTime::currentTime()), settings.preferences,
                     settings.user.isMale);
    CWeightEditDialog dialog(form, this);
    bool isAdded = false;
    dialog.SetOnConfirmed([&] {
        isAdded = AddWeight(Doc(), form.GetEntry());
        return Doc().MayClose(isAdded);
    });
    if (dialog.exec() == QDialog::Accepted && isAdded) {
        Reload();
        m_entries->SelectRow(m_weights.RowOfMoment(form.GetEntry().GetMoment()));
    }
}

void CWeightMainView::Edit() {
    const std::vector<int> rows = m_entries->SelectedRows();
    if (!MayEditWeight(static_cast<int>(rows.size()))) {
        return;
    }
    const int place = m_entries->FirstSelectedPlace();
    const ObjectId record = m_weights.Record(rows.front());
    const std::optional<CWeightEntry> entry = WeightToEdit(Doc(), record);
    if (!entry) {
        return;
    }
    const CProfileSettings& settings = Doc().Settings();
    CWeightForm form(*entry, settings.preferences, settings.user.isMale);
    CWeightEditDialog dialog(form, this);
    dialog.SetOnConfirmed(
        [&] { return Doc().MayClose(EditWeight(Doc(), record, form.GetEntry())); });
    if (dialog.exec() == QDialog::Accepted) {
        ReloadAndSelect(place);
    }
}

void CWeightMainView::Delete() {
    const int place = m_entries->FirstSelectedPlace();
    if (DeleteWeights(Doc(), m_weights.EntriesAt(m_entries->SelectedRows())) > 0) {
        ReloadAndSelect(place);
    }
}

void CWeightMainView::ShowBmi() {
    CBmiDialog dialog(BmiOnDay(Doc(), Doc().dayShown), this);
    dialog.exec();
}

void CWeightMainView::ShowGoalLine(bool isShown) {
    Doc().Settings().weightTab.showGoalLine = isShown;
    Doc().SaveViewState();
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
