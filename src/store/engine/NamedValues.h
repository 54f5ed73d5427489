// Small values that belong to no record, in one table of the volume: find texts, kept answers.
#pragma once

#include <QString>
#include <optional>

#include "store/engine/Statement.h"
#include "store/engine/StorageEngine.h"

/// A value has an owner, the database identifier of a profile or 0 for the volume, and a name,
/// which is not empty. The engine's state outlives this. A write joins an open group, or is a unit
/// of work by itself.
///
/// Invariants:
/// 1. The table is created with the first value. A volume without it is complete and has the same
///    version; a program that does not know the table leaves it alone.
/// 2. A value is read only for the profile it was written for. A program that does not know the
///    table leaves the values of a profile that it deletes, and may reuse the profile's identifier;
///    so the profile's name is stored with its values, and values under another name are ignored.
class CNamedValues {
  public:
    explicit CNamedValues(CStorageState& state) : m_state(state) {}

    /// Sets `value` to nothing when there is none.
    EPlatformError Read(ObjectId owner, const QString& name, std::optional<QString>& value) {
        return ReadFrom(File(), owner, name, value);
    }
    static EPlatformError ReadFrom(CSqliteFile& file, ObjectId owner, const QString& name,
                                   std::optional<QString>& value);
    EPlatformError Write(ObjectId owner, const QString& name, const QString& value);
    /// Deletes all values of an owner.
    EPlatformError DeleteOwner(ObjectId owner);
    /// Write, called from within the change of a unit of work.
    EPlatformError WriteInUnit(ObjectId owner, const QString& name, const QString& value);

  private:
    [[nodiscard]] CSqliteFile& File() const;
    EPlatformError RunOnce(const char* sql, std::initializer_list<CSqlValue> values);

    CStorageState& m_state;
};
