// Small values that no record has a place for, in one table of the volume: find texts, kept
// answers and the like.
#pragma once

#include <QString>
#include <optional>

#include "store/engine/SqliteFile.h"
#include "store/engine/StorageEngine.h"

/// A value has an owner, the database identifier of a profile or 0 for the volume, and a name,
/// which is not empty. The engine's state outlives this. Writes are part of an open group.
///
/// Invariants:
/// 1. The table is created with the first value. A volume without it is complete, and its version
///    stays the same: a program that does not know the table keeps it.
/// 2. Values count for the profile alone that they were written for. A program that does not know
///    the table leaves the values of a profile that it deletes behind, and may give the profile's
///    identifier to another; so the name of the profile is stored among its values, and values
///    under another name are ignored.
class CNamedValues {
  public:
    explicit CNamedValues(CStorageState& state) : m_state(state) {}

    /// Nothing when there is no such value or it cannot be read.
    [[nodiscard]] std::optional<QString> Read(ObjectId owner, const QString& name);
    /// Platform error numbers.
    EPlatformError Write(ObjectId owner, const QString& name, const QString& value);
    EPlatformError DropOwner(ObjectId owner);
    /// Write as a part of the change under way.
    EPlatformError WriteInUnit(ObjectId owner, const QString& name, const QString& value);

  private:
    [[nodiscard]] bool HasTable();
    EPlatformError RunOnce(const char* sql, std::initializer_list<CSqlValue> values);

    CStorageState& m_state;
};
