// The profiles of the volume, and the four databases of the one that is open.
#pragma once

#include <QStringList>
#include <optional>

#include "store/ItemDatabase.h"
#include "store/records/DiaryEntries.h"
#include "store/records/ProfileRecord.h"

/// What the open profile has for a record.
enum class EProfileRecord {
    Missing,
    Loaded,
    Unreadable,  ///< of another version, or damaged
};

/// The store outlives it.
class CProfiles {
  public:
    explicit CProfiles(CRecordStore& store);

    int GetNumberOfUserProfiles();
    /// In order of creation.
    QStringList ReadNames();
    /// Whether any database stands where one of the profile's four would be, names compared
    /// without case.
    bool IsNameTaken(const QString& name);
    /// Opens the profile's four databases; closes those of another profile first. Any failure
    /// fails the whole open.
    bool Open(const QString& name, bool mayCreate);
    void Close();
    /// Deletes the four databases, however many of them exist. A failed deletion shows "Cannot
    /// delete database.".
    bool Delete(const QString& name);
    /// Leaves `record` as it was unless one is loaded.
    EProfileRecord LoadRecord(CProfileRecord& record);
    /// Writes over the stored record, or adds it when there is none to be found.
    bool SaveRecord(const CProfileRecord& record);

    /// A small value of the open profile that no record has a place for; nothing when none is
    /// stored. It goes with the profile.
    std::optional<QString> ReadValue(const QString& name);
    /// False when it is not stored, also for want of an open profile.
    [[nodiscard]] bool SaveValue(const QString& name, const QString& value);

    CItemDatabase<CDietEntry>& Diet() { return m_diet; }
    CItemDatabase<CWeightEntry>& Weight() { return m_weight; }
    CItemDatabase<CExerciseEntry>& Exercises() { return m_exercises; }

  private:
    CRecordStore& m_store;
    CItemDatabase<CProfileRecord> m_profile;
    CItemDatabase<CDietEntry> m_diet;
    CItemDatabase<CWeightEntry> m_weight;
    CItemDatabase<CExerciseEntry> m_exercises;
};
