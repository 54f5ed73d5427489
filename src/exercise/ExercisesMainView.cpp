#include "exercise/ExercisesMainView.h"

#include <QAction>
#include <QLabel>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>

#include "app/FrameCommands.h"
#include "app/ItemTexts.h"
#include "app/LeftOutText.h"
#include "controls/ColorDialog.h"
#include "controls/ReportList.h"
#include "diary/ListSizes.h"
#include "exercise/ExerciseDays.h"
#include "exercise/ExerciseEditDialog.h"
#include "exercise/ExercisesGraph.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int kNameCharacters = 24;
/// Share of the remaining room; the other columns have a share of 1 each.
constexpr int kNameShare = 3;

enum EColumn { kExercise, kExerciseTime };

constexpr auto kNothingDone =
    "No exercise yet on this day.\n"
    "Press Insert to add what you did."_L1;

QString CellText(const CExerciseEntry& entry, int column, EEnergyUnit unit) {
    switch (column) {
        case kExercise:
            return NameAndType(entry.GetName(), entry.GetType());
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

void CExercisesMainView::DataChanged() {
    BuildColumns();
    Reload();
    ShowSplit();
}

void CExercisesMainView::CreateList() {
    m_list = new CReportList(u"Exercises"_s, this);
    m_list->setObjectName(u"exercises"_s);
    m_list->setMinimumHeight(m_list->fontMetrics().height() * kLeastListRows);
    m_list->SetEmptyHint(kNothingDone);
    connect(m_list, &CReportList::ColumnDragged, this, [this](int column, int width) {
        Doc().Settings().exerciseTab.columnWidths[static_cast<size_t>(column)] = width;
    });
}

void CExercisesMainView::CreateGraph() {
    m_pane = new QWidget(Splitter());
    m_pane->setObjectName(u"graphPane"_s);
    m_pane->setAutoFillBackground(true);
    m_pane->setContextMenuPolicy(Qt::CustomContextMenu);

    m_headline = new QLabel(m_pane);
    m_headline->setObjectName(u"headline"_s);
    m_headline->setToolTip(
        u"Energy burned by exercise on the day shown / energy eaten above the day's target "
        u"(negative: "
        "below it) / burned energy in percent of what was eaten above it"_s);
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
    const auto& kept = Doc().Settings().exerciseTab.columnWidths;
    // A column with its default width, which no user has chosen, shares the list.
    const auto byDefault = CExerciseTabSettings().columnWidths;
    const QString unit = UnitName(Doc().Preferences().energyUnit, EUnitForm::Abbreviated);
    std::vector<CReportColumn> columns = {
        {.title = u"Exercise"_s, .share = kNameShare},
        {.title = u"Ex. time"_s, .kind = CReportColumn::EKind::Number},
        {.title = u"Energy burned(%1)"_s.arg(unit), .kind = CReportColumn::EKind::Number}};
    const QFontMetrics metrics = m_list->fontMetrics();
    for (size_t column = 0; column < columns.size(); ++column) {
        const int title = metrics.horizontalAdvance(columns[column].title) + kTitleMargin;
        columns[column].least = std::max(kept[column], title);
        columns[column].width = kept[column] == byDefault[column] ? 0 : kept[column];
    }
    columns.front().least = metrics.averageCharWidth() * kNameCharacters;
    m_list->SetColumns(std::move(columns));
}

void CExercisesMainView::Reload(int select) {
    CEntryRange<CExerciseEntry> list =
        ListExercises(Doc().Database(), Doc().dayShown, Doc().dayShown);
    m_exercises = std::move(list.entries);
    ShowRows();
    ShowNote(DamageText(list.leftOut, kEntryWords));
    ShowGraph();
    if (select >= 0) {
        m_list->SelectPlace(select);
    }
}

void CExercisesMainView::ShowRows() {
    m_list->SetRows({static_cast<int>(m_exercises.size()), [this](int row, int column) {
                         return CellText(m_exercises[row].entry, column,
                                         Doc().Preferences().energyUnit);
                     }});
}

void CExercisesMainView::ShowGraph() {
    const CExerciseTabSettings& settings = Doc().Settings().exerciseTab;
    QPalette colors = m_pane->palette();
    colors.setColor(QPalette::Window, ColorOf(settings.backgroundColor));
    colors.setColor(QPalette::WindowText, ExerciseTextColor(settings));
    m_pane->setPalette(colors);
    const ExerciseWeek week = ExerciseWeekOf(Doc(), Doc().dayShown);
    m_headline->setText(ExerciseHeadline(week.back(), Doc().Preferences().energyUnit));
    m_graph->Show(week);
}

void CExercisesMainView::Add() {
    CExerciseForm form(Doc(), NewExercise(Doc().dayShown, QTime::currentTime()));
    CExerciseEditDialog dialog(form, this);
    bool isAdded = false;
    dialog.SetOnConfirmed([&] {
        isAdded = AddExercise(Doc().Database(), form.GetResult());
        return Doc().MayClose(isAdded);
    });
    if (dialog.exec() == QDialog::Accepted && isAdded) {
        Reload();
        // A new entry comes after all others of its moment.
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
    const CListed<CExerciseEntry> before = m_exercises[rows.front()];
    CExerciseForm form(Doc(), before.entry);
    CExerciseEditDialog dialog(form, this);
    dialog.SetOnConfirmed([&] {
        return Doc().MayClose(EditExercise(Doc().Database(), before.record, form.GetResult()));
    });
    if (dialog.exec() == QDialog::Accepted) {
        Reload(rows.front());
        // A new time may have moved it.
        const auto moved =
            std::ranges::find(m_exercises, before.record, &CListed<CExerciseEntry>::record);
        if (moved != m_exercises.end()) {
            m_list->SelectRow(static_cast<int>(moved - m_exercises.begin()));
        }
    }
}

void CExercisesMainView::Delete() {
    const int focused = std::max(0, m_list->CurrentPlace());
    if (DeleteExercises(Doc().Database(), EntriesOf(m_exercises, m_list->SelectedRows())) > 0) {
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
