#include "store/engine/UsageTable.h"

#include <QHash>
#include <algorithm>

#include "store/engine/StorageState.h"

using namespace Qt::StringLiterals;

namespace {
constexpr QStringView kTableName = u"usage_";
// In the statements, # is the number of the table.
constexpr char kCreate[] =
    "CREATE TABLE usage_#(owner INTEGER NOT NULL, kind INTEGER NOT NULL,"
    " category TEXT NOT NULL, name TEXT NOT NULL, type TEXT NOT NULL, meal INTEGER NOT NULL,"
    " count INTEGER NOT NULL, PRIMARY KEY(owner, kind, category, name, type, meal)) WITHOUT ROWID";
constexpr char kReadSums[] = "SELECT owner, sum(count), min(count) FROM usage_# GROUP BY owner";
constexpr char kRead[] =
    "SELECT kind, category, name, type, meal, count FROM usage_# WHERE owner=?1";
constexpr char kAdd[] =
    "INSERT INTO usage_# VALUES(?1,?2,?3,?4,?5,?6,?7)"
    " ON CONFLICT DO UPDATE SET count=count+excluded.count";
constexpr char kRemoveZero[] =
    "DELETE FROM usage_# WHERE owner=?1 AND kind=?2 AND category=?3 AND name=?4 AND type=?5"
    " AND meal=?6 AND count=0";
constexpr char kDeleteOwner[] = "DELETE FROM usage_# WHERE owner=?1";
constexpr char kDeleteAll[] = "DELETE FROM usage_#";
constexpr char kStamp[] = "REPLACE INTO usage_# VALUES(0,0,'','','',0,?1)";

/// The owner of the stamp.
constexpr ObjectId kStampOwner = 0;

/// A null text would be stored as no value.
QStringView Bound(const QString& text) {
    return text.isNull() ? QStringView(u"") : QStringView(text);
}
}  // namespace

std::size_t CUseHash::operator()(const CUse& use) const {
    return qHashMulti(std::size_t{0}, use.kind, use.category, use.name, use.type, use.meal);
}

EPlatformError CUsageTable::Load() {
    if (m_isLoaded || m_state.CheckReadable() != kErrorSuccess) {
        return kErrorSuccess;
    }
    qint64 stamp = 0;
    EPlatformError error = Find();
    if (error == kErrorSuccess && m_number > 0) {
        error = ReadSums(stamp);
    }
    if (error == kErrorSuccess && m_number > 0) {
        error = Prepare();
    }
    if (error != kErrorSuccess && !IsTableDamage(error)) {
        UnitAbandoned();
        return error;
    }
    m_isLoaded = true;
    m_isDamaged = error != kErrorSuccess;
    if (!m_isValid && !m_isDamaged) {
        m_isValid = m_number == 0 || static_cast<quint64>(stamp) == m_state.generation.GetNonce();
    }
    return kErrorSuccess;
}

EPlatformError CUsageTable::Find() {
    std::vector<QString> names;
    const EPlatformError error = m_state.file.ListTables(kTableName, names);
    m_number = 0;
    for (const QString& name : names) {
        m_number = std::max(m_number, name.sliced(kTableName.size()).toLongLong());
    }
    return error;
}

EPlatformError CUsageTable::ReadSums(qint64& stamp) {
    m_sums.clear();
    CStatement read;
    if (const EPlatformError error = PrepareNumbered(read, kReadSums); error != kErrorSuccess) {
        return error;
    }
    bool isSound = true;
    read.Start({});
    while (read.Next()) {
        const ObjectId owner = read.GetInteger(0);
        (owner == kStampOwner ? stamp : m_sums[owner]) = read.GetInteger(1);
        isSound = isSound && (owner == kStampOwner || read.GetInteger(2) > 0);
    }
    const EPlatformError error = read.Finish();
    return error == kErrorSuccess && !isSound ? kErrorCorrupt : error;
}

qint64 CUsageTable::SumOf(ObjectId owner) const {
    const auto sum = m_sums.find(owner);
    const bool isKnown = !m_isDamaged && (m_isValid == true || m_isWritten) && sum != m_sums.end();
    return isKnown ? sum->second : 0;
}

EPlatformError CUsageTable::Read(ObjectId owner, UseRows& rows) {
    rows.clear();
    CStatement read;
    if (const EPlatformError error = PrepareNumbered(read, kRead); error != kErrorSuccess) {
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
    EPlatformError error = Create();
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
        m_sums[owner] += count;
    }
    return error;
}

EPlatformError CUsageTable::DeleteOwner(ObjectId owner) {
    const bool isThere = m_number > 0 && !m_isDamaged && m_sums.erase(owner) > 0;
    return isThere ? RunOnce(kDeleteOwner, {owner}) : kErrorSuccess;
}

EPlatformError CUsageTable::Stamp() {
    const bool isValid = m_isValid == true || m_isWritten;
    if (m_number == 0 || m_isDamaged || !isValid) {
        return kErrorSuccess;
    }
    return RunOnce(kStamp, {static_cast<qint64>(m_state.generation.GetNextNonce())});
}

// A table whose counts are not valid is emptied.
EPlatformError CUsageTable::Create() {
    const bool isUsable = m_number > 0 && !m_isDamaged;
    if (m_isWritten || (isUsable && m_isValid == true)) {
        return kErrorSuccess;
    }
    m_isWritten = true;
    m_sums.clear();
    if (isUsable) {
        return RunOnce(kDeleteAll, {});
    }
    m_add.Release();
    m_removeZero.Release();
    m_isDamaged = false;
    ++m_number;
    const EPlatformError error = RunOnce(kCreate, {});
    return error == kErrorSuccess ? Prepare() : error;
}

void CUsageTable::UnitCommitted() {
    m_isValid = m_isValid == true || m_isWritten;
    m_isWritten = false;
}

void CUsageTable::UnitAbandoned() {
    m_add.Release();
    m_removeZero.Release();
    m_isLoaded = false;
    m_isWritten = false;
    m_sums.clear();
}

void CUsageTable::Forget() {
    UnitAbandoned();
    m_isValid.reset();
}

EPlatformError CUsageTable::Prepare() {
    const EPlatformError error = PrepareNumbered(m_add, kAdd);
    return error == kErrorSuccess ? PrepareNumbered(m_removeZero, kRemoveZero) : error;
}

EPlatformError CUsageTable::PrepareNumbered(CStatement& statement, const char* sql) {
    const QByteArray numbered = QByteArray(sql).replace('#', QByteArray::number(m_number));
    return statement.Prepare(m_state.file, numbered.constData());
}

EPlatformError CUsageTable::RunOnce(const char* sql, std::initializer_list<CSqlValue> values) {
    CStatement statement;
    const EPlatformError error = PrepareNumbered(statement, sql);
    return error == kErrorSuccess ? statement.Run(values) : error;
}
