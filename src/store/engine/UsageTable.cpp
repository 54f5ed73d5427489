#include "store/engine/UsageTable.h"

#include <QHash>

#include "store/engine/StorageState.h"

namespace {
constexpr QStringView kTable = u"usage";
constexpr char kCreate[] =
    "CREATE TABLE IF NOT EXISTS usage(owner INTEGER NOT NULL, kind INTEGER NOT NULL,"
    " category TEXT NOT NULL, name TEXT NOT NULL, type TEXT NOT NULL, meal INTEGER NOT NULL,"
    " count INTEGER NOT NULL, PRIMARY KEY(owner, kind, category, name, type, meal)) WITHOUT ROWID";
constexpr char kRead[] = "SELECT kind, category, name, type, meal, count FROM usage WHERE owner=?1";
constexpr char kAdd[] =
    "INSERT INTO usage VALUES(?1,?2,?3,?4,?5,?6,?7)"
    " ON CONFLICT DO UPDATE SET count=count+excluded.count";
constexpr char kRemoveZero[] =
    "DELETE FROM usage WHERE owner=?1 AND kind=?2 AND category=?3 AND name=?4 AND type=?5"
    " AND meal=?6 AND count=0";
constexpr char kDeleteOwner[] = "DELETE FROM usage WHERE owner=?1";

/// A null text would be stored as no value.
QStringView Bound(const QString& text) {
    return text.isNull() ? QStringView(u"") : QStringView(text);
}
}  // namespace

std::size_t CUseHash::operator()(const CUse& use) const {
    return qHashMulti(std::size_t{0}, use.kind, use.category, use.name, use.type, use.meal);
}

EPlatformError CUsageTable::Read(ObjectId owner, UseRows& rows) {
    rows.clear();
    bool isThere = false;
    if (const EPlatformError error = m_state.file.HasTable(kTable, isThere);
        error != kErrorSuccess || !isThere) {
        return error;
    }
    CStatement read;
    if (const EPlatformError error = read.Prepare(m_state.file, kRead); error != kErrorSuccess) {
        return error;
    }
    read.Start({owner});
    while (read.Next()) {
        const CUse use{static_cast<qint32>(read.GetInteger(0)), read.GetText(1), read.GetText(2),
                       read.GetText(3), static_cast<qint32>(read.GetInteger(4))};
        rows[use] = read.GetInteger(5);
    }
    return read.Finish();
}

EPlatformError CUsageTable::Add(ObjectId owner, const UseRows& changes) {
    return DropIfDamaged(AddRows(owner, changes));
}

EPlatformError CUsageTable::AddRows(ObjectId owner, const UseRows& changes) {
    EPlatformError error = Prepare();
    for (const auto& [use, count] : changes) {
        const QStringView category = Bound(use.category);
        const QStringView name = Bound(use.name);
        const QStringView type = Bound(use.type);
        if (error == kErrorSuccess && count != 0) {
            error =
                m_add.Run({owner, qint64{use.kind}, category, name, type, qint64{use.meal}, count});
        }
        if (error == kErrorSuccess && count < 0) {
            error =
                m_removeZero.Run({owner, qint64{use.kind}, category, name, type, qint64{use.meal}});
        }
    }
    return error;
}

EPlatformError CUsageTable::DeleteOwner(ObjectId owner) {
    bool isThere = false;
    if (const EPlatformError error = m_state.file.HasTable(kTable, isThere);
        error != kErrorSuccess || !isThere) {
        return error;
    }
    CStatement remove;
    EPlatformError error = remove.Prepare(m_state.file, kDeleteOwner);
    if (error == kErrorSuccess) {
        error = remove.Run({owner});
    }
    remove.Release();
    return DropIfDamaged(error);
}

EPlatformError CUsageTable::DropIfDamaged(EPlatformError error) {
    if (error != kErrorCorrupt) {
        return error;
    }
    Release();
    return m_state.file.Execute("DROP TABLE IF EXISTS usage");
}

void CUsageTable::Release() {
    m_add.Release();
    m_removeZero.Release();
}

EPlatformError CUsageTable::Prepare() {
    if (m_removeZero.IsPrepared()) {
        return kErrorSuccess;
    }
    Release();
    EPlatformError error = m_state.file.Execute(kCreate);
    if (error == kErrorSuccess) {
        error = m_add.Prepare(m_state.file, kAdd);
    }
    return error == kErrorSuccess ? m_removeZero.Prepare(m_state.file, kRemoveZero) : error;
}
