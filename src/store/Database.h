// The database object: the single owner of the volume and of every database handle. Views and
// dialogs reach the data through it and nothing else.
#pragma once

#include "store/Catalogue.h"
#include "store/CatalogueSearch.h"
#include "store/Categories.h"
#include "store/ComposedItems.h"
#include "store/DayEntries.h"
#include "store/Profiles.h"
#include "store/RecordStore.h"
#include "store/StoredNutrientNames.h"
#include "store/StoredViewSettings.h"
#include "store/backup/VolumeBackups.h"

class CStep;

/// Lives from start-up to exit. Its parts hand out positions that are valid until the next change
/// of their database.
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
    /// Whether a path is the volume itself or its journal, which no export may overwrite.
    [[nodiscard]] bool IsVolume(const QString& path) const;
    CVolumeBackups& Backups() { return m_backups; }
    /// From now on, the program makes backups by itself, and shows why one could not be made.
    void StartBackups();
    /// Call instead of CStep::MayGoOn before a change of much data, such as an import: makes a
    /// backup as well if one is due. Not within a unit of work.
    [[nodiscard]] bool MayChangeMuch(CStep& step, qint64 room);

    CCatalogue& Catalogue() { return m_catalogue; }
    CItemDatabase<CFoodItem>& Foods() { return m_catalogue.Foods(); }
    CItemDatabase<CMenuItem>& Menus() { return m_catalogue.Menus(); }
    CItemDatabase<CRecipeItem>& Recipes() { return m_catalogue.Recipes(); }
    CItemDatabase<CExerciseItem>& Exlib() { return m_catalogue.Exlib(); }
    CItemDatabaseBase& Items(ECatalogueKind kind) { return m_catalogue.Items(kind); }
    CCategories& Categories() { return m_categories; }
    CCatalogueSearch& Search() { return m_search; }
    CUsage& Usage() { return m_usage; }
    CComposedItems& Composed() { return m_composed; }
    CStoredNutrientNames& NutrientNames() { return m_nutrientNames; }
    /// Of the foods or exercise library view.
    CStoredViewSettings ViewSettings(ECatalogueKind kind);
    /// Deletes an item of any kind, a menu or recipe with its components. Failure shows "Cannot
    /// delete record. Error=%d".
    bool DeleteItem(ECatalogueKind kind, int position);

    /// Undoes or redoes a step of the history, the next one of the catalogue or of the open
    /// profile. Identifiers and positions held before are no longer valid.
    EReverted Revert(const CHistoryStep& step);

    CProfiles& Profiles() { return m_profiles; }
    CItemDatabase<CDietEntry>& Diet() { return m_profiles.Diet(); }
    CItemDatabase<CWeightEntry>& Weight() { return m_profiles.Weight(); }
    CItemDatabase<CExerciseEntry>& Exercises() { return m_profiles.Exercises(); }

  private:
    QString m_volumePath;
    EPlatformError m_refusal = kErrorSuccess;
    CRecordStore m_store;
    CStoredNutrientNames m_nutrientNames;
    CCatalogue m_catalogue;
    CCategories m_categories;
    CComposedItems m_composed;
    CProfiles m_profiles;
    CUsage m_usage;
    CCatalogueSearch m_search;
    CVolumeBackups m_backups;
};
