// The database object: the single owner of the volume and of every database handle. Views and
// dialogs reach the data through it and nothing else.
#pragma once

#include <QStringList>
#include <array>
#include <functional>
#include <optional>
#include <vector>

#include "store/CatalogueLists.h"
#include "store/DayEntries.h"
#include "store/ItemDatabase.h"
#include "store/RecordStore.h"
#include "store/records/Category.h"
#include "store/records/ComposedItem.h"
#include "store/records/DiaryEntries.h"
#include "store/records/ExerciseItem.h"
#include "store/records/FoodItem.h"
#include "store/records/ProfileRecord.h"

/// What the open profile has for a record.
enum class EProfileRecord {
    Missing,
    Loaded,
    Unreadable,  ///< of another version, or damaged
};

/// Lives from start-up to exit. Positions handed out are valid until the next change of their
/// database. Operations return success or positions, -1 meaning not found.
class CDatabase {
  public:
    explicit CDatabase(QString volumePath);
    /// Closes the profile, the catalogue and the volume, in that order.
    ~CDatabase();
    CDatabase(const CDatabase&) = delete;
    CDatabase& operator=(const CDatabase&) = delete;

    /// Mounts the volume and opens or creates the six catalogue databases; NutrientNames is
    /// brought to exactly 54 names. Any failure closes everything again.
    bool OpenCatalogue();
    void CloseCatalogue();
    /// After a failed OpenCatalogue: which file it was, and why.
    [[nodiscard]] QString GetRefusal() const;
    CRecordStore& GetStore() { return m_store; }
    /// Whether a path leads to the volume itself or to its journal, which no export may write over.
    [[nodiscard]] bool IsVolume(const QString& path) const;

    CItemDatabase<CFoodItem>& Foods() { return m_foods; }
    CItemDatabase<CMenuItem>& Menus() { return m_menus; }
    CItemDatabase<CRecipeItem>& Recipes() { return m_recipes; }
    CItemDatabase<CExerciseItem>& Exlib() { return m_exlib; }
    CItemDatabase<CCategory>& Categories() { return m_categories; }
    /// The items of a kind without their class: for code that serves all four kinds.
    CItemDatabaseBase& Items(ECatalogueKind kind);

    /// The items of a category, the first `capacity` of them, sorted by name and type (menus and
    /// recipes by name) without case. A negative identifier gives an empty list.
    CCategoryList FillCategoryList(ECatalogueKind kind, qint32 categoryId,
                                   int capacity = kCatalogueListCapacity);
    /// Distinct food names of a category (-1: of all), the first `capacity` of them, sorted by
    /// category and then by name without case.
    CUniqueNames FillArrayWithUniqueFoodNames(qint32 categoryId,
                                              int capacity = kCatalogueListCapacity);
    CUniqueNames FillArrayWithUniqueExlibNames(qint32 categoryId,
                                               int capacity = kCatalogueListCapacity);
    /// First record of the menus (recipes) under `parentId` with item type 1 and that item
    /// identifier; -1 when there is none.
    int FindComponent(ECatalogueKind kind, qint32 parentId, qint32 itemId);
    /// The item of a category with exactly that name and type (menus and recipes: name alone);
    /// -1 when there is none. `except` is a position to pass over.
    int FindItem(ECatalogueKind kind, qint32 categoryId, const QString& name, const QString& type,
                 int except = -1);

    /// The items of a kind, without the settings and components that stand behind them; with them
    /// when the positions cannot be told apart.
    int CountItems(ECatalogueKind kind);

    // Menus and recipes with their components; `itemId` is the menu's (recipe's) own identifier.

    /// An identifier that no menu (recipe) has and no component refers to.
    qint32 AllotItemId(ECatalogueKind kind);
    /// In stored order; empty for what is no identifier of a menu or recipe, and when the positions
    /// cannot be had, which `leftOut` is told of, if given.
    std::vector<int> ComponentPositions(ECatalogueKind kind, qint32 itemId,
                                        CLeftOut* leftOut = nullptr);
    /// Failure shows "Cannot delete record. Error=%d".
    bool DeleteComponents(ECatalogueKind kind, qint32 itemId);
    /// Adds a copy of a menu or recipe under another name, components included: all or nothing.
    bool AddComposedCopy(ECatalogueKind kind, int position, const QString& name);
    /// Deletes an item of any kind, a menu or recipe with its components: all or nothing, together
    /// with a group around it. Failure shows "Cannot delete record. Error=%d".
    bool DeleteItem(ECatalogueKind kind, int position);
    /// Position of the recipe with that identifier; -1 when there is none.
    int FindRecipeById(qint32 itemId);
    /// Whether the recipe `itemId` is `wantedId` or holds it, directly or through others.
    bool RecipeHolds(qint32 itemId, qint32 wantedId);

    /// Adds (position -1) or updates a category. False without a message when its name exists in
    /// the kind; with "Cannot add category. Maximum number of categories has been reached." at
    /// 256 categories. The identifier given stands in `category` afterwards.
    bool AddOrUpdateCategory(int position, CCategory& category);
    bool DeleteCategory(int position);
    /// In stored order, which is the order of creation.
    CCategories ReadCategories(ECatalogueKind kind);
    std::vector<CCategoryEntry> ListCategories(ECatalogueKind kind) {
        return ReadCategories(kind).entries;
    }
    /// Position of the category of that name (exactly) or identifier; -1 when there is none.
    int FindCategory(ECatalogueKind kind, const QString& name);
    int FindCategory(ECatalogueKind kind, qint32 id);
    /// Identifier of the category of that name; -1 when there is none.
    qint32 CategoryIdOf(ECatalogueKind kind, const QString& name);
    /// Name of a category; empty when there is none of that identifier.
    QString CategoryNameOf(ECatalogueKind kind, qint32 id);

    /// All 54 names as the user sees them; the default stands in for one that cannot be read.
    QStringList ReadNutrientNames();
    /// Position -1 adds. A position that cannot be found shows "Cannot save nutrient name." and
    /// still counts as success.
    bool SaveNutrientName(int position, qint32 index, const QString& name);
    /// "Energy (kcal)" or "Energy (kJ)".
    static QString EnergyName(const QString& unitAbbreviation);
    /// Names nutrient 0 so.
    void RenameEnergy(const QString& unitAbbreviation);
    /// Settings of the foods or exercise library view; false when none are stored yet.
    bool ReadViewSettings(ECatalogueKind kind, CViewSettings& settings);
    /// Failure shows "Cannot save foods props (error# %d)." or "Cannot save exlib props ...".
    bool SaveViewSettings(ECatalogueKind kind, const CViewSettings& settings);

    int GetNumberOfUserProfiles();
    /// In order of creation.
    QStringList FillProfileNames();
    /// Whether any database stands where one of the profile's four would be, names compared
    /// without case.
    bool IsProfileNameTaken(const QString& name);
    /// Opens the profile's four databases; closes those of another profile first. Any failure
    /// fails the whole open.
    bool OpenProfile(const QString& name, bool mayCreate);
    void CloseProfile();
    /// Deletes the four databases, however many of them exist. A failed deletion shows "Cannot
    /// delete database.".
    bool DeleteProfile(const QString& name);
    /// Leaves `record` as it was unless one is loaded.
    EProfileRecord LoadProfileRecord(CProfileRecord& record);
    /// Writes over the stored record, or adds it when there is none to be found.
    bool SaveProfileRecord(const CProfileRecord& record);

    /// A small value of the open profile that no record has a place for; nothing when none is
    /// stored. It goes with the profile.
    std::optional<QString> ReadProfileValue(const QString& name);
    /// False when it is not stored, also for want of an open profile.
    [[nodiscard]] bool SaveProfileValue(const QString& name, const QString& value);

    CItemDatabase<CDietEntry>& Diet() { return m_diet; }
    CItemDatabase<CWeightEntry>& Weight() { return m_weight; }
    CItemDatabase<CExerciseEntry>& Exercises() { return m_exercises; }

    /// The day's diet entries, the first `capacity` of them, and their totals.
    CDayEntries LoadDietDay(QDate day, int capacity = kDietListCapacity);
    /// Weight in force on a date, in kg: the latest entry on or before it; with none, the earliest
    /// after it; with none at all, `fallbackKg`.
    double WeightOnDate(QDate day, double fallbackKg);

  private:
    std::optional<CCategoryEntry> FindCategoryEntry(
        ECatalogueKind kind, const std::function<bool(const CCategoryEntry&)>& isIt);
    CUniqueNames FillUniqueNames(ECatalogueKind kind, qint32 categoryId, int capacity);
    void BringNutrientNamesToDefault();
    void RemoveOrphanComponents(ECatalogueKind kind);

    QString m_volumePath;
    int m_refusal = kErrorSuccess;
    CRecordStore m_store;
    CItemDatabase<CNutrientName> m_nutrientNames;
    CItemDatabase<CFoodItem> m_foods;
    CItemDatabase<CMenuItem> m_menus;
    CItemDatabase<CRecipeItem> m_recipes;
    CItemDatabase<CExerciseItem> m_exlib;
    CItemDatabase<CCategory> m_categories;
    CItemDatabase<CProfileRecord> m_profile;
    CItemDatabase<CDietEntry> m_diet;
    CItemDatabase<CWeightEntry> m_weight;
    CItemDatabase<CExerciseEntry> m_exercises;

    /// Of menus and of recipes: the last identifier allotted; 0 until it has been looked for.
    std::array<qint32, 2> m_lastItemIds{};
};
