#include "diary/DietMainView.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QSplitter>
#include <QTabBar>
#include <span>

#include "app/FrameCommands.h"
#include "catalogue/pick/AddFoodDialog.h"
#include "controls/ColorDialog.h"
#include "controls/RowDelegate.h"
#include "diary/CustomEntryDialog.h"
#include "diary/DiaryCommands.h"
#include "diary/DietMoveDialog.h"
#include "diary/DietRules.h"
#include "diary/DietTotals.h"
#include "diary/EntryClipboard.h"
#include "diary/EntryList.h"
#include "diary/QuickField.h"
#include "diary/RepeatDialog.h"
#include "diary/TotalsList.h"
#include "store/Step.h"

using namespace Qt::StringLiterals;

namespace {

constexpr const char* kMealTabs[] = {"B", "M", "L", "A", "D", "E", "All"};

}  // namespace

CDietMainView::CDietMainView(CVelmoraDoc& doc, QWidget* parent)
    : CDiaryView(doc, doc.Settings().dietTab.splitterPerMille, parent), m_day(doc) {
    setObjectName(u"dietView"_s);
    CreateMeals();
    CreateQuickField();
    CreateLists();
    CreateActions();
    LayOutTab({m_meals, m_quick});
    DataChanged();
}

void CDietMainView::DataChanged() {
    ShowColors();
    m_day.Reload();
    m_entries->BuildColumns();
    m_quick->Forget();
    ShowDay();
    ShowSplit();
}

void CDietMainView::CreateActions() {
    SetCommands(
        m_entries,
        {
            {"Add entry...", "Add food/menu/recipe to meal", kAddKeys, kAnywhere,
             [this] { Add(); }},
            {"Edit entry...", "", {Qt::Key_Return}, kInList, [this] { Edit(); }},
            {"Delete entry...",
             "Delete food/menu/recipe from meal",
             {Qt::Key_Delete},
             kInList,
             [this] { Delete(); }},
            {"Move entry...", "", {Qt::CTRL | Qt::Key_M}, kAnywhere, [this] { Move(); }},
            {"Duplicate entry...", "", {Qt::CTRL | Qt::Key_D}, kAnywhere, [this] { Duplicate(); }},
        },
        CreateFrameAction(u"Foods..."_s, kSwitchToFoods),
        {
            {"Custom entry...",
             "",
             {Qt::CTRL | Qt::SHIFT | Qt::Key_N},
             kAnywhere,
             [this] { AddCustom(); }},
            {"Cut", "", {QKeySequence::Cut}, kInList, [this] { Cut(); }},
            {"Copy", "", {QKeySequence::Copy}, kInList, [this] { Copy(); }},
            {"Paste", "", {QKeySequence::Paste}, kInList, [this] { Paste(); }},
            {"Copy to...", "", {Qt::CTRL | Qt::SHIFT | Qt::Key_C}, kAnywhere, [this] { CopyTo(); }},
            {"Repeat...", "", {Qt::CTRL | Qt::Key_R}, kAnywhere, [this] { Repeat(); }},
            {"Quick entry...", "", {Qt::CTRL | Qt::Key_L}, kAnywhere, [this] { m_quick->Call(); }},
        });
    connect(m_entries, &CReportList::OfferTaken, this, &CDietMainView::TakeOffer);

    QAction* nutrients = CreateFrameAction(u"Nutrients..."_s, kCommandPreferences);
    auto* background = new QAction(u"Background color..."_s, this);
    connect(background, &QAction::triggered, this, &CDietMainView::ChooseBackgroundColor);
    connect(m_totals, &QWidget::customContextMenuRequested, this,
            [this, nutrients, background](const QPoint& position) {
                ShowMenu({nutrients, background}, m_totals->viewport(), position);
            });
}

void CDietMainView::CreateMeals() {
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
}

void CDietMainView::CreateQuickField() {
    m_quick = new CQuickField(Doc(), this, this);
    connect(m_quick, &CQuickField::Added, this, [this](int count, QTime time) {
        const CDietPlace place{ToFileTime(Doc().dayShown, time), Doc().selectedMeal};
        ShowAdded(std::vector<CDietPlace>(static_cast<std::size_t>(count), place));
        if (m_quick->text().isEmpty()) {
            m_entries->setFocus();  // the keys of the entries and of an empty meal work again
        }
    });
    connect(m_quick, &CQuickField::Left, this, [this] { m_entries->setFocus(); });
}

void CDietMainView::resizeEvent(QResizeEvent* event) {
    m_quick->SetOnDemand(IsSmall(window()->size()));
    CDiaryView::resizeEvent(event);
}

void CDietMainView::CreateLists() {
    m_entries = new CEntryList(Doc(), m_day, this);
    m_totals = new CTotalsList(Splitter());
    m_totals->setObjectName(u"totals"_s);
    m_totals->setMinimumHeight(m_totals->fontMetrics().height() * 2);
}

void CDietMainView::Reload(int select) {
    m_day.Reload();
    ShowDay();
    if (select >= 0) {
        m_entries->SelectPlace(select);
    }
}

void CDietMainView::ShowAdded(const std::vector<CDietPlace>& places) {
    Reload();
    m_entries->SelectSeveral(m_day.AddedRows(places));
}

void CDietMainView::ShowDay() {
    m_entries->ShowRows();
    ShowNote(m_day.LeftOutText());
    ShowTotals();
    ShowOffers();
}

void CDietMainView::ShowTotals() {
    std::vector<CTotalsRow> rows;
    for (const int nutrient : Doc().Preferences().DisplayedNutrients()) {
        rows.push_back(TotalsRow(
            nutrient, Doc().NutrientNames().value(nutrient), m_day.Total(nutrient),
            Doc().Settings().targets.nutrients[nutrient], Doc().Preferences().energyUnit));
    }
    m_totals->SetTotals(std::move(rows));
}

void CDietMainView::ShowColors() {
    const auto& chosen = Doc().Settings().dietTab.backgroundColor;
    const QColor background = chosen ? ColorOf(*chosen) : QColor();
    m_entries->ShowColors(background);
    m_totals->SetBackgroundColor(background);
}

ListedEntries<CDietEntry> CDietMainView::SelectedEntries() const {
    return m_day.EntriesAt(m_entries->SelectedRows());
}

void CDietMainView::Add() {
    if (!MayAddToMeal(Doc().selectedMeal)) {
        return;
    }
    CAddFoodForm form(Doc(), CAddFoodRequest::ForNewEntry(QTime::currentTime()));
    CAddFoodDialog dialog(form, this);
    AddFrom(dialog, [&form] { return form.GetResult(); });
}

void CDietMainView::AddFrom(CDialog& dialog, const std::function<CChosenFood()>& result) {
    dialog.SetOnConfirmed([&] {
        return Doc().MayClose(AddDietEntry(Doc(), Doc().dayShown, Doc().selectedMeal, result()));
    });
    if (dialog.exec() == QDialog::Accepted) {
        ShowAdded({{ToFileTime(Doc().dayShown, result().time), Doc().selectedMeal}});
    }
}

void CDietMainView::Edit() {
    const std::vector<int> rows = m_entries->SelectedRows();
    if (!MayEdit(static_cast<int>(rows.size()))) {
        return;
    }
    const CListed<CDietEntry> before = m_day.Listed(rows.front());
    CAddFoodForm form(Doc(), CAddFoodRequest::ForEntry(Doc().Database(), before.entry));
    CAddFoodDialog dialog(form, this);
    dialog.SetOnConfirmed(
        [&] { return Doc().MayClose(EditDietEntry(Doc(), before, form.GetResult())); });
    if (dialog.exec() == QDialog::Accepted) {
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
    const ListedEntries<CDietEntry> selected = SelectedEntries();
    if (!MayMove(selected)) {
        return;
    }
    const CDietEntry& first = selected.front().entry;
    CDietMoveDialog dialog({first.GetMoment(), first.GetMeal()}, this);
    dialog.SetOnConfirmed([&] {
        const int moved = MoveDietEntries(Doc(), selected, dialog.GetPlace());
        return Doc().MayClose(moved == static_cast<int>(selected.size()));
    });
    if (dialog.exec() == QDialog::Accepted) {
        Reload(rows.front());
    }
}

void CDietMainView::Duplicate() {
    const std::vector<int> rows = m_entries->SelectedRows();
    if (DuplicateDietEntry(Doc(), SelectedEntries())) {
        Reload(rows.front());
    }
}

void CDietMainView::AddCustom() {
    if (!MayAddToMeal(Doc().selectedMeal)) {
        return;
    }
    CCustomEntryForm form(Doc(), QTime::currentTime());
    CCustomEntryDialog dialog(form, this);
    AddFrom(dialog, [&form] { return form.GetResult(); });
}

void CDietMainView::Copy() {
    const std::vector<CDietEntry> entries = EntriesToCopy(SelectedEntries());
    if (!entries.empty()) {
        QGuiApplication::clipboard()->setMimeData(
            MimeOfEntries(entries, m_entries->SelectedText()).release());
        Doc().ShowStatus(DoneText(StepName(kCopyStep, static_cast<int>(entries.size()),
                                           entries.front().GetName(), "entries"_L1),
                                  u"to the clipboard"_s));
    }
}

void CDietMainView::Cut() {
    const std::vector<int> rows = m_entries->SelectedRows();
    Copy();
    if (CutDietEntries(Doc(), SelectedEntries()) > 0) {
        Reload(rows.front());
    }
}

void CDietMainView::Paste() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (data != nullptr) {
        AddCopies(EntriesOfMime(*data));
    }
}

void CDietMainView::AddCopies(const std::vector<CDietEntry>& entries) {
    const int meal = Doc().selectedMeal;
    const CCopyPlace place{
        Doc().dayShown, {}, meal == kAllMeals ? std::nullopt : std::optional<qint32>(meal)};
    const int copied = CopyEntries(Doc(), entries, {place});
    if (copied == 0) {
        return;
    }
    std::vector<CDietPlace> added;
    for (const CDietEntry& entry : std::span(entries).first(static_cast<std::size_t>(copied))) {
        added.push_back({ToFileTime(place.day, TimeOf(entry.GetMoment())),
                         place.meal.value_or(entry.GetMeal())});
    }
    ShowAdded(added);
}

void CDietMainView::CopyTo() {
    const ListedEntries<CDietEntry> selected = SelectedEntries();
    if (!MayCopy(static_cast<int>(selected.size()))) {
        return;
    }
    const CDietEntry& first = selected.front().entry;
    CDietMoveDialog dialog({first.GetMoment(), first.GetMeal()}, this,
                           CDietMoveDialog::EPurpose::Copy);
    std::vector<CDietPlace> added;
    dialog.SetOnConfirmed([&] {
        const CDietPlace place = dialog.GetPlace();
        const int copied = CopyEntries(Doc(), EntriesToCopy(selected),
                                       {{DateOf(place.moment), TimeOf(place.moment), place.meal}});
        added.assign(static_cast<std::size_t>(copied), place);
        return Doc().MayClose(copied == std::ssize(selected));
    });
    if (dialog.exec() == QDialog::Accepted) {
        ShowAdded(added);
    }
}

void CDietMainView::Repeat() {
    const ListedEntries<CDietEntry> selected = SelectedEntries();
    const auto count = static_cast<int>(selected.size());
    if (!MayCopy(count)) {
        return;
    }
    CRepeatDialog dialog(Doc(), Doc().dayShown, count, this);
    dialog.SetOnConfirmed([&] {
        std::vector<CCopyPlace> places;
        for (const QDate day : dialog.GetDays()) {
            places.push_back({day});
        }
        const int copied = CopyEntries(Doc(), EntriesToCopy(selected), places);
        return Doc().MayClose(copied == std::ssize(places) * count);
    });
    dialog.exec();
}

void CDietMainView::TakeOffer(int offer) {
    const std::vector<CDietEntry> entries = m_offers[static_cast<std::size_t>(offer)].entries;
    AddCopies(entries);
}

void CDietMainView::ShowOffers() {
    const bool isEmptyMeal = m_day.Count() == 0 && Doc().selectedMeal != kAllMeals;
    m_offers = isEmptyMeal ? MealOffers(Doc(), Doc().dayShown, Doc().selectedMeal)
                           : std::vector<CMealOffer>();
    QStringList titles;
    for (const CMealOffer& offer : m_offers) {
        titles.append(offer.title);
    }
    m_entries->SetEmptyOffers(titles);
}

void CDietMainView::ChooseBackgroundColor() {
    if (const auto color =
            AskColor(u"Select background color:"_s, m_totals->palette().color(QPalette::Base))) {
        Doc().Settings().dietTab.backgroundColor = color;
        Doc().SaveSettings();
        ShowColors();
    }
}
