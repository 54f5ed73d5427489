// The profiles of the volume, and the four databases of the one that is open.
#pragma once

#include <QStringList>
#include <array>
#include <optional>

#include "store/ItemDatabase.h"
#include "store/records/DiaryEntries.h"
#include "store/records/ProfileRecord.h"

/// The state of the open profile's record.
enum class EProfileRecord {
    Missing,
    Loaded,
    Unreadable,  ///< of another version, or damaged
};

/// Name of the database that holds a profile's diet entries.
QString DietDatabaseName(const QString& profile);

/// The store outlives it.
class CProfiles {
  public:
    explicit CProfiles(CRecordStore& store);

    int GetNumberOfUserProfiles();
    /// In order of creation.
    QStringList ReadNames();
    /// Name of the profile whose own database that is; empty when there is none.
    QString NameOf(ObjectId profile);
    /// Whether any of the profile's four database names is in use, compared without case; true
    /// when that cannot be found out.
    bool IsNameTaken(const QString& name);
    /// Opens the profile's four databases; closes those of another profile first. Any failure
    /// fails the whole open.
    bool Open(const QString& name, bool mayCreate);
    void Close();
    /// Database identifier of the open profile; 0 when none is.
    [[nodiscard]] ObjectId GetId() const { return m_profile.GetId(); }
    /// Deletes those of the four databases that exist. A failed deletion shows "Cannot delete
    /// database.".
    bool Delete(const QString& name);
    /// Changes `record` only when the result is Loaded.
    EProfileRecord LoadRecord(CProfileRecord& record);
    /// Overwrites the stored record, or adds one when none is found.
    bool SaveRecord(const CProfileRecord& record);

    /// A named value of the open profile; nothing when none is stored. Deleted with the profile.
    std::optional<QString> ReadValue(const QString& name);
    /// False when it cannot be stored or no profile is open.
    [[nodiscard]] bool SaveValue(const QString& name, const QString& value);

    CItemDatabase<CDietEntry>& Diet() { return m_diet; }
    CItemDatabase<CWeightEntry>& Weight() { return m_weight; }
    CItemDatabase<CExerciseEntry>& Exercises() { return m_exercises; }

  private:
    std::array<CItemDatabaseBase*, 3> Diaries();

    CRecordStore& m_store;
    CItemDatabase<CProfileRecord> m_profile;
    CItemDatabase<CDietEntry> m_diet;
    CItemDatabase<CWeightEntry> m_weight;
    CItemDatabase<CExerciseEntry> m_exercises;
};
