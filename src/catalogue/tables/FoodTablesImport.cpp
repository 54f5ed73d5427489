#include "catalogue/tables/FoodTablesImport.h"

#include <QSet>

#include "catalogue/exchange/CsvFields.h"
#include "catalogue/exchange/ExistingItems.h"
#include "catalogue/exchange/ImportGroups.h"
#include "catalogue/items/CatalogueKinds.h"
#include "catalogue/tables/BrandedFoods.h"
#include "catalogue/tables/FoodCategories.h"
#include "catalogue/tables/FoodTablesReport.h"
#include "catalogue/tables/FoodValues.h"
#include "catalogue/tables/TableFolder.h"
#include "catalogue/tables/TableTexts.h"
#include "store/Step.h"

using namespace Qt::StringLiterals;

namespace {
constexpr ECatalogueKind kFoods = ECatalogueKind::Foods;

enum : int { kFdcId, kType, kDescription, kCategoryId };
constexpr CTableColumn kColumns[] = {
    {"fdc_id"}, {"data_type"}, {"description"}, {"food_category_id", false}};
constexpr CTableLayout kLayout = {"food.csv", kColumns};

class CFoodTablesRun {
  public:
    CFoodTablesRun(CDatabase& database, const CFoodTablesRequest& request);
    bool Run(CStep& step);

  private:
    bool ReadTables();
    bool ReadFoods();
    [[nodiscard]] bool IsWanted(int foodType) const {
        return foodType != kNoFood && (m_request.foodTypes >> foodType & 1) != 0;
    }
    bool StoreFoods();
    bool ReadWindow(const CFoodWindow& window);
    bool StoreRows(const std::vector<CFoodWindow>& windows);
    bool StoreFood(CCsvTable& table, int foodType, int place);
    bool MakeFood(CCsvTable& table, int foodType, int place);
    /// Texts of m_food, whose category is set; `mark` ends the type.
    void SetTexts(const CFoodTexts& texts, const QString& mark, quint32 fdcId);
    EStored Store();
    void Report(bool isCancelled);

    CDatabase& m_database;
    const CFoodTablesRequest& m_request;
    std::unique_ptr<CProgress> m_progress;
    CTableFolder m_folder;
    CFoodPlaces m_places;
    CNutrientNumbers m_nutrients;
    CFoodValues m_values;
    CFoodCategories m_categories;
    CBrandedFoods m_branded;
    CFoodPortions m_portions;
    CExistingItems m_existing;
    QSet<size_t> m_seen;  ///< hashes of category, name and type
    CFoodItem m_food;
    CImportGroups m_groups;
    CFoodTablesCounts m_counts;
    bool m_hasFailed = false;  ///< a write
};

CFoodTablesRun::CFoodTablesRun(CDatabase& database, const CFoodTablesRequest& request)
    : m_database(database),
      m_request(request),
      m_progress(CreateProgress(u"Velmora: Import"_s)),
      m_folder(request.folder),
      m_values(m_folder, m_nutrients, m_places),
      m_categories(database),
      m_branded(m_folder, m_places, m_categories),
      m_portions(m_folder, m_places),
      m_existing(database, kFoods),
      m_groups(database) {}

bool CFoodTablesRun::Run(CStep& step) {
    m_progress->SetStatus(u"Reading food tables..."_s);
    m_progress->Show();
    bool isWhole = ReadTables();
    if (isWhole) {
        m_progress->Hide();
        if (!m_database.MayChangeMuch(
                step, RoomForReplaced(m_database, kFoods, m_request.policy, m_places.Count()))) {
            return false;
        }
        m_progress->SetStatus(u"Importing foods..."_s);
        m_progress->Show();
        isWhole = StoreFoods();
    }
    const bool isCancelled = m_progress->IsCancelled();
    m_progress.reset();
    const QString error = m_folder.GetError();
    if (isCancelled) {
        ShowMessage(u"Import cancelled."_s);
    } else if (!error.isEmpty()) {
        ShowMessage({.text = u"Cannot read the food tables."_s, .detail = error});
    }
    if (m_groups.HasBegun() || error.isEmpty()) {
        Report(isCancelled);
    }
    return isWhole;
}

/// What all foods need to know.
bool CFoodTablesRun::ReadTables() {
    m_folder.SetProgress(*m_progress,
                         m_folder.SizeOf(kLayout) + CFoodValues::SizeOfTable(m_folder));
    return m_nutrients.Read(m_folder) && m_categories.Read(m_folder) && m_portions.ReadUnits() &&
           ReadFoods() && m_values.Count();
}

bool CFoodTablesRun::ReadFoods() {
    CCsvTable table = m_folder.Open(kLayout);
    quint32 fdcId = 0;
    while (table.NextRow() && table.ReadNumber(kFdcId, fdcId)) {
        const int foodType = FoodTypeOf(table.Field(kType));
        if (!IsWanted(foodType)) {
            ++(foodType == kNoFood ? m_counts.noFoods : m_counts.otherTypes);
            continue;
        }
        if (foodType == kBrandedType && m_branded.IsThere()) {
            m_branded.Expect(m_places.Count());
        } else {
            m_categories.Need(m_categories.NameOf(table.Field(kCategoryId)));
        }
        m_places.Add(fdcId);
    }
    m_places.Sort();
    return m_folder.HasReadAll(table);
}

bool CFoodTablesRun::StoreFoods() {
    const std::vector<CFoodWindow> windows = m_values.PlanWindows(m_request.mostAmounts);
    const qint64 bytesOfWindow = CFoodValues::SizeOfTable(m_folder) +
                                 CBrandedFoods::SizeOfTable(m_folder) +
                                 CFoodPortions::SizeOfTable(m_folder);
    m_folder.SetProgress(*m_progress, m_folder.SizeOf(kLayout) +
                                          bytesOfWindow * static_cast<qint64>(windows.size()));
    if (!ReadWindow(windows.front())) {
        return false;
    }
    m_groups.Begin();
    m_categories.Prepare();
    const bool isWhole = StoreRows(windows);
    m_hasFailed = !m_groups.Commit() || m_hasFailed;
    return isWhole && !m_hasFailed;
}

bool CFoodTablesRun::ReadWindow(const CFoodWindow& window) {
    return m_branded.ReadWindow(window) && m_portions.ReadWindow(window) &&
           m_values.ReadWindow(window);
}

/// The first of the windows has been read.
bool CFoodTablesRun::StoreRows(const std::vector<CFoodWindow>& windows) {
    auto window = windows.begin();
    CCsvTable table = m_folder.Open(kLayout);
    for (int place = 0; table.NextRow();) {
        const int foodType = FoodTypeOf(table.Field(kType));
        if (!IsWanted(foodType)) {
            continue;
        }
        if (place == m_places.Count()) {
            table.Refuse(u"the file changed while it was being read"_s);
            break;
        }
        if (place == window->end && !ReadWindow(*++window)) {
            return false;
        }
        if (!StoreFood(table, foodType, place)) {
            m_hasFailed = true;
            return false;
        }
        ++place;
    }
    return m_folder.HasReadAll(table);
}

/// False when a write has failed.
bool CFoodTablesRun::StoreFood(CCsvTable& table, int foodType, int place) {
    return m_groups.MakeRoom() && (!MakeFood(table, foodType, place) || m_groups.Note(Store()));
}

/// False when the food is left out.
bool CFoodTablesRun::MakeFood(CCsvTable& table, int foodType, int place) {
    quint32 fdcId = 0;
    if (!table.ReadNumber(kFdcId, fdcId)) {
        return false;  // not as when it was first read
    }
    if (m_places.PlaceOf(fdcId) != place) {
        ++m_counts.listedTwice;
        return false;
    }
    const bool isBranded = m_branded.IsThere() && foodType == kBrandedType;
    const CBrandedFood brand = isBranded ? m_branded.FoodOf(place) : CBrandedFood();
    const CFoodTexts texts = SplitBranded(brand.brand, TableText(table.Field(kDescription)));
    if (texts.name.isEmpty()) {
        ++m_counts.nameless;
        return false;
    }
    NutrientValues values;
    if (!m_values.ValuesOf(place, values)) {
        m_counts.AddWithoutEnergy(texts.name + u", "_s + texts.type);
        return false;
    }
    const qint32 categoryId = m_categories.IdOf(
        isBranded ? brand.category : m_categories.NameOf(table.Field(kCategoryId)));
    if (categoryId < 0) {
        ++m_counts.withoutPlace;
        return false;
    }
    m_food.SetCategoryId(categoryId);
    m_food.SetNutrientValues(values);
    m_portions.SetServings(place, brand.label, m_food);
    SetTexts(texts, brand.isPerMl ? u", per 100 ml"_s : QString(), fdcId);
    return true;
}

void CFoodTablesRun::SetTexts(const CFoodTexts& texts, const QString& mark, quint32 fdcId) {
    const QString name = CutImportedText(texts.name);
    QString type = MarkedType(texts.type, mark);
    const auto isNew = [&] {
        const size_t hash = qHashMulti(0, m_food.GetCategoryId(), name, type);
        const bool isSeen = m_seen.contains(hash);
        m_seen.insert(hash);
        return !isSeen;
    };
    if (!isNew()) {
        type = MarkedType(texts.type, mark + u" (FDC %1)"_s.arg(fdcId));
        (void)isNew();
        ++m_counts.marked;
    }
    m_food.SetName(name);
    m_food.SetType(type);
}

EStored CFoodTablesRun::Store() {
    const bool isChecked = m_request.policy != EDuplicatePolicy::DoNotCheck;
    const int position =
        isChecked ? m_existing.Find(m_food.GetCategoryId(), m_food.GetName(), m_food.GetType())
                  : -1;
    if (position >= 0 && m_request.policy == EDuplicatePolicy::Skip) {
        return EStored::Skipped;
    }
    if (!m_database.Foods().Write(position, m_food)) {
        return EStored::Failed;
    }
    return position >= 0 ? EStored::Replaced : EStored::Added;
}

void CFoodTablesRun::Report(bool isCancelled) {
    if (m_hasFailed) {
        m_database.GetStore().ShowFailure(
            FormatText("Cannot add food '%s, %s'."_L1, {m_food.GetName(), m_food.GetType()}));
        ShowMessage(QString::fromLatin1(KindOf(kFoods).exchange.afterFailure));
    }
    m_counts.withoutRoom = m_categories.CountWithoutRoom();
    m_counts.withoutCategory = m_categories.CountWithoutCategory();
    m_counts.unusablePortions = m_portions.CountUnusable();
    m_counts.tooManyPortions = m_portions.CountTooMany();
    m_counts.unknownUnits = m_nutrients.CountUnknownUnits();
    m_counts.firstUnknownUnits = m_nutrients.FirstUnknownUnits();
    const CImportCounts& stored = m_groups.Counts();
    const bool isNothing = isCancelled && stored.imported + stored.skipped == 0;
    ShowMessage({.text = ImportSummary(kFoods, m_request.policy, stored),
                 .icon = EMessageIcon::Result,
                 .detail = isNothing ? QString() : FoodTablesReport(m_counts)});
}
}  // namespace

bool ImportFoodTables(CDatabase& database, const CFoodTablesRequest& request) {
    CStep step(database.GetStore(), u"import of food tables"_s);
    return CFoodTablesRun(database, request).Run(step);
}
