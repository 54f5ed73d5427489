#include "store/engine/NamedValues.h"

#include "store/engine/StorageState.h"

namespace {
constexpr QStringView kTable = u"named_values";
constexpr char kCreate[] =
    "CREATE TABLE IF NOT EXISTS named_values(owner INTEGER NOT NULL, name TEXT NOT NULL,"
    " value TEXT NOT NULL, PRIMARY KEY(owner, name)) WITHOUT ROWID";
constexpr char kRead[] =
    "SELECT value FROM named_values WHERE owner=?1 AND name=?2 AND (owner=0 OR"
    " (SELECT value FROM named_values WHERE owner=?1 AND name='')="
    "(SELECT name FROM databases WHERE id=?1))";
// The value with the empty name is the profile's name.
constexpr char kDeleteFormer[] =
    "DELETE FROM named_values WHERE owner=?1 AND owner<>0 AND"
    " (SELECT value FROM named_values WHERE owner=?1 AND name='') IS NOT"
    " (SELECT name FROM databases WHERE id=?1)";
constexpr char kWriteOwner[] =
    "REPLACE INTO named_values SELECT id, '', name FROM databases WHERE id=?1";
constexpr char kWrite[] = "REPLACE INTO named_values VALUES(?1,?2,?3)";
constexpr char kDeleteOwner[] = "DELETE FROM named_values WHERE owner=?1";
}  // namespace

CSqliteFile& CNamedValues::File() const {
    return m_state.file;
}

EPlatformError CNamedValues::ReadFrom(CSqliteFile& file, ObjectId owner, const QString& name,
                                      std::optional<QString>& value) {
    value.reset();
    std::vector<QString> tables;
    if (const EPlatformError error = file.ListTables(kTable, tables);
        error != kErrorSuccess || tables.empty()) {
        return error;
    }
    CStatement read;
    if (const EPlatformError error = read.Prepare(file, kRead); error != kErrorSuccess) {
        return error;
    }
    read.Start({owner, name});
    if (read.Next()) {
        value = read.GetText(0);
    }
    return read.Finish();
}

EPlatformError CNamedValues::Write(ObjectId owner, const QString& name, const QString& value) {
    if (!m_state.file.IsOpen()) {
        return kErrorInvalidParameter;
    }
    return m_state.Write([&] { return WriteInUnit(owner, name, value); });
}

EPlatformError CNamedValues::WriteInUnit(ObjectId owner, const QString& name,
                                         const QString& value) {
    EPlatformError error = RunOnce(kCreate, {});
    if (error == kErrorSuccess) {
        error = RunOnce(kDeleteFormer, {owner});
    }
    if (error == kErrorSuccess) {
        error = RunOnce(kWriteOwner, {owner});
    }
    return error == kErrorSuccess ? RunOnce(kWrite, {owner, name, value}) : error;
}

EPlatformError CNamedValues::DeleteOwner(ObjectId owner) {
    std::vector<QString> tables;
    if (const EPlatformError error = m_state.file.ListTables(kTable, tables);
        error != kErrorSuccess || tables.empty()) {
        return error;
    }
    return m_state.Write([&] { return RunOnce(kDeleteOwner, {owner}); });
}

EPlatformError CNamedValues::RunOnce(const char* sql, std::initializer_list<CSqlValue> values) {
    CStatement statement;
    const EPlatformError error = statement.Prepare(m_state.file, sql);
    return error == kErrorSuccess ? statement.Run(values) : error;
}
