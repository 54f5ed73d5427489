#include "exercise/ExercisesMainView.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>

#include "app/LeftOutText.h"
#include "controls/ColorDialog.h"
#include "controls/ReportList.h"
#include "diary/EmptyHint.h"
#include "diary/ListSizes.h"
#include "exercise/ExerciseDays.h"
#include "exercise/ExerciseEditDialog.h"
#include "exercise/ExercisesGraph.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kNameCharacters = 24;

enum EColumn { kExercise, kExerciseTime };

constexpr auto kNothingDone =
    "No exercise yet on this day.\n"
    "Press Insert to add what you did."_L1;

QString CellText(const CExerciseEntry& entry, int column, EEnergyUnit unit) {
    switch (column) {
        case kExercise:
            return ExerciseNameText(entry);
        case kExerciseTime:
            return ExerciseTimeText(entry.GetMinutes());
        default:
            return ExerciseEnergyText(entry.GetEnergyKcal(), unit);
    }
}

}  // namespace

CExercisesMainView::CExercisesMainView(CVelmoraDoc& doc, QWidget* parent)
    : CDiaryView(doc, doc.Settings().exerciseTab.splitterPerMille, parent) {
    setObjectName(u"exercisesView"_s);
    CreateList();
    CreateGraph();
    CreateActions();
    CreateGraphActions();
    LayOutTab();
    DataChanged();
}

void CExercisesMainView::StoreLayout() {
    const std::vector<int> widths = m_list->GetColumnWidths();
    for (size_t column = 0; column < m_shownWidths.size(); ++column) {
        if (widths[column] != m_shownWidths[column]) {
            std::ranges::copy(widths, Doc().Settings().exerciseTab.columnWidths.begin());
            m_shownWidths = widths;
        }
    }
}

void CExercisesMainView::DataChanged() {
    BuildColumns();
    Reload();
    ShowSplit();
}

void CExercisesMainView::CreateList() {
    m_list = new CReportList(u"Exercises"_s, this);
    m_list->setObjectName(u"exercises"_s);
    m_list->setMinimumHeight(m_list->fontMetrics().height() * kLeastListRows);

    m_hint = CreateEmptyHint(m_list, kNothingDone);
}

void CExercisesMainView::CreateGraph() {
    m_pane = new QWidget(Splitter());
    m_pane->setObjectName(u"graphPane"_s);
    m_pane->setAutoFillBackground(true);
    m_pane->setContextMenuPolicy(Qt::CustomContextMenu);

    m_headline = new QLabel(m_pane);
    m_headline->setObjectName(u"headline"_s);
    m_headline->setAlignment(Qt::AlignCenter);
    m_headline->setWordWrap(true);
    m_graph = new CExercisesGraph(Doc(), m_pane);
    m_graph->setObjectName(u"graph"_s);
    m_graph->setFocusPolicy(Qt::StrongFocus);  // the menu key opens the commands
    auto* layout = new QVBoxLayout(m_pane);
    layout->setContentsMargins(0, 2, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_headline);
    layout->addWidget(m_graph, 1);
}

void CExercisesMainView::CreateActions() {
    SetCommands(m_list,
                {
                    {"Add exercise...", "Add exercise", kAddKeys, kAnywhere, [this] { Add(); }},
                    {"Edit exercise...", "", {Qt::Key_Return}, kInList, [this] { Edit(); }},
                    {"Delete exercise...",
                     "Delete exercise",
                     {Qt::Key_Delete},
                     kInList,
                     [this] { Delete(); }},
                },
                CreateFrameAction(u"Exercises..."_s, kSwitchToExlib));
}

void CExercisesMainView::CreateGraphActions() {
    struct CColorCommand {
        const char* text;
        const char* prompt;
        quint32 CExerciseTabSettings::*setting;
    };
    constexpr CColorCommand kColors[] = {
        {"Text color...", "Select text color:", &CExerciseTabSettings::textColor},
        {"Line color...", "Select line color:", &CExerciseTabSettings::lineColor},
        {"Bar color...", "Select bar graph color:", &CExerciseTabSettings::barColor},
        {"Background color...", "Select background color:", &CExerciseTabSettings::backgroundColor},
    };
    std::vector<QAction*> actions = {CreateFrameAction(u"Targets..."_s, kCommandTargets)};
    for (const CColorCommand& color : kColors) {
        auto* action = new QAction(QLatin1StringView(color.text), this);
        connect(action, &QAction::triggered, this,
                [this, color] { ChooseColor(QLatin1StringView(color.prompt), color.setting); });
        actions.push_back(action);
    }
    connect(m_pane, &QWidget::customContextMenuRequested, this,
            [this, actions](const QPoint& position) { ShowMenu(actions, m_pane, position); });
}

void CExercisesMainView::BuildColumns() {
    auto widths = Doc().Settings().exerciseTab.columnWidths;
    const QString unit = UnitName(Doc().Preferences().energyUnit, EUnitForm::Abbreviated);
    const QString energyTitle = u"Energy burned(%1)"_s.arg(unit);
    m_list->SetColumns({u"Exercise"_s, u"Ex. time"_s, energyTitle});
    if (widths == CExerciseTabSettings().columnWidths) {
        // Until the user drags a column, names and the longest title get room.
        widths[0] = std::max(widths[0], m_list->fontMetrics().averageCharWidth() * kNameCharacters);
        widths[2] = std::max(widths[2],
                             m_list->fontMetrics().horizontalAdvance(energyTitle) + kTitleMargin);
    }
    m_shownWidths.clear();
    m_list->SetColumnWidths({widths.begin(), widths.end()});
    m_shownWidths = m_list->GetColumnWidths();
    // Connected once the columns have their widths: only what the user drags is kept.
    connect(m_list->header(), &QHeaderView::sectionResized, this, &CExercisesMainView::StoreLayout,
            Qt::UniqueConnection);
}

void CExercisesMainView::Reload(int select) {
    CExerciseList list = ListExercises(Doc().Database(), Doc().dayShown, Doc().dayShown);
    m_exercises = std::move(list.entries);
    ShowRows();
    ShowNote(DamageText(list.leftOut, kEntryWords));
    ShowGraph();
    if (select >= 0) {
        m_list->SelectRow(select);
    }
}

void CExercisesMainView::ShowRows() {
    m_list->SetRows({static_cast<int>(m_exercises.size()),
                     [this](int row, int column) {
                         return CellText(m_exercises[row].entry, column,
                                         Doc().Preferences().energyUnit);
                     },
                     {}});
    m_hint->setVisible(m_exercises.empty());
}

void CExercisesMainView::ShowGraph() {
    const CExerciseTabSettings& settings = Doc().Settings().exerciseTab;
    QPalette colors = m_pane->palette();
    colors.setColor(QPalette::Window, ColorOf(settings.backgroundColor));
    colors.setColor(QPalette::WindowText, ColorOf(settings.textColor));
    m_pane->setPalette(colors);
    const ExerciseWeek week = ExerciseWeekOf(Doc(), Doc().dayShown);
    m_headline->setText(ExerciseHeadline(week.back(), Doc().Preferences().energyUnit));
    m_graph->Show(week);
}

ListedExercises CExercisesMainView::SelectedExercises() const {
    ListedExercises selected;
    for (const int row : m_list->SelectedRows()) {
        selected.push_back(m_exercises[row]);
    }
    return selected;
}

void CExercisesMainView::Add() {
    CExerciseForm form(Doc(), NewExercise(Doc().dayShown, QTime::currentTime()));
    CExerciseEditDialog dialog(form, this);
    if (dialog.exec() == QDialog::Accepted && AddExercise(Doc().Database(), form.GetResult())) {
        Reload();
        // What was added stands behind all others of its moment.
        for (int row = static_cast<int>(m_exercises.size()) - 1; row >= 0; --row) {
            if (m_exercises[row].entry == form.GetResult()) {
                m_list->SelectRow(row);
                break;
            }
        }
    }
}

void CExercisesMainView::Edit() {
    const std::vector<int> rows = m_list->SelectedRows();
    if (!MayEditExercise(static_cast<int>(rows.size()))) {
        return;
    }
    const CListedExercise exercise = m_exercises[rows.front()];
    CExerciseForm form(Doc(), exercise.entry);
    CExerciseEditDialog dialog(form, this);
    if (dialog.exec() == QDialog::Accepted) {
        EditExercise(Doc().Database(), exercise, form.GetResult());
        Reload(rows.front());
        // A new time may have moved it.
        const auto moved =
            std::ranges::find(m_exercises, exercise.record, &CListedExercise::record);
        if (moved != m_exercises.end()) {
            m_list->SelectRow(static_cast<int>(moved - m_exercises.begin()));
        }
    }
}

void CExercisesMainView::Delete() {
    const int focused = std::max(0, m_list->currentIndex().row());
    if (DeleteExercises(Doc().Database(), SelectedExercises()) > 0) {
        Reload(focused);
    }
}

void CExercisesMainView::ChooseColor(const QString& prompt,
                                     quint32 CExerciseTabSettings::*setting) {
    quint32& color = Doc().Settings().exerciseTab.*setting;
    if (const auto chosen = AskColor(prompt, ColorOf(color))) {
        color = *chosen;
        Doc().SaveSettings();
        ShowGraph();
    }
}
