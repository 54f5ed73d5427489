#include "store/engine/HistoryTables.h"

#include "store/engine/Checksum.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {
constexpr QStringView kPrefix = u"history_";
constexpr QStringView kStepsName = u"history_steps_";
constexpr QStringView kChangesName = u"history_changes_";
// In the statements, # is the number of the tables.
constexpr char kCreateSteps[] =
    "CREATE TABLE history_steps_#(id INTEGER PRIMARY KEY, scope INTEGER NOT NULL, owner TEXT,"
    " name TEXT NOT NULL, state INTEGER NOT NULL, changes INTEGER NOT NULL,"
    " bytes INTEGER NOT NULL, reverted INTEGER NOT NULL)";
constexpr char kCreateChanges[] =
    "CREATE TABLE history_changes_#(id INTEGER PRIMARY KEY, database INTEGER NOT NULL,"
    " record INTEGER NOT NULL, count INTEGER NOT NULL, live INTEGER NOT NULL,"
    " checksum INTEGER NOT NULL, key INTEGER NOT NULL, ordinal INTEGER NOT NULL,"
    " body BLOB, seal INTEGER NOT NULL)";
// The owner is the name of the scope's profile: a program that does not know the tables may delete
// a profile and use its identifier again.
constexpr char kReadSteps[] =
    "SELECT steps.id, scope, steps.name, CASE WHEN owner IS databases.name THEN state ELSE 2 END,"
    " changes, bytes, reverted FROM history_steps_# AS steps"
    " LEFT JOIN databases ON databases.id=scope ORDER BY steps.id";
constexpr char kWriteStep[] =
    "REPLACE INTO history_steps_#"
    " VALUES(?1,?2,(SELECT name FROM databases WHERE id=?2),?3,?4,?5,?6,?7)";
constexpr char kReadLastChange[] = "SELECT max(id) FROM history_changes_#";
constexpr char kRemoveStep[] = "DELETE FROM history_steps_# WHERE id=?";
constexpr char kWriteChange[] = "INSERT INTO history_changes_# VALUES(?,?,?,?,?,?,?,?,?,?)";
constexpr char kReadChange[] =
    "SELECT database, record, count, live, checksum, key, ordinal, body, seal"
    " FROM history_changes_# WHERE id=?";
constexpr char kRemoveChanges[] = "DELETE FROM history_changes_# WHERE id BETWEEN ? AND ?";
constexpr char kRemoveSome[] =
    "DELETE FROM history_changes_# WHERE id IN"
    " (SELECT id FROM history_changes_# WHERE id BETWEEN ? AND ? LIMIT ?)";

// The identifier of a change: the step, its list, the number in the list.
constexpr int kStepBits = 32;
constexpr int kListBits = 31;
constexpr qint64 kLastStep = (qint64{1} << kListBits) - 1;

/// Stored states of a step.
enum EState : qint64 { kDone, kUndone, kDropped, kProvisional };

EState StateOf(const CHistoryStep& step) {
    if (step.isDropped) {
        return kDropped;
    }
    if (step.isUndone) {
        return kUndone;
    }
    return step.isProvisional ? kProvisional : kDone;
}

/// The number in the name of a table of the history; -1 for any other name.
qint64 NumberIn(const QString& table) {
    for (const QStringView name : {kStepsName, kChangesName}) {
        if (table.startsWith(name)) {
            return table.sliced(name.size()).toLongLong();
        }
    }
    return -1;
}

qint64 FirstIdOf(qint64 step) {
    return step << kStepBits;
}

qint64 FirstIdOf(const CHistoryStep& step) {
    return FirstIdOf(step.id) + (step.isUndone ? qint64{1} << kListBits : 0);
}

quint64 SealOf(qint64 id, const CHistoryChange& change) {
    quint64 seal = ChecksumOf(change.body);
    for (const qint64 number :
         {id, change.database, change.record, change.count, change.liveBytes,
          static_cast<qint64>(change.liveChecksum), change.key, qint64{change.ordinal}}) {
        seal = ChecksumWith(seal, static_cast<quint64>(number));
    }
    return seal;
}
}  // namespace

EPlatformError CHistoryTables::Find() {
    Release();
    std::vector<QString> names;
    const EPlatformError error = m_file.ListTables(kStepsName, names);
    for (const QString& name : names) {
        m_number = std::max(m_number, NumberIn(name));
    }
    return error;
}

EPlatformError CHistoryTables::Create() {
    if (const EPlatformError error = Find(); error != kErrorSuccess) {
        return error;
    }
    ++m_number;
    for (const char* sql : {kCreateSteps, kCreateChanges}) {
        CStatement create;
        EPlatformError error = Prepare(create, sql);
        if (error == kErrorSuccess) {
            error = create.Run({});
        }
        if (error != kErrorSuccess) {
            return error;
        }
    }
    return PrepareAll();
}

void CHistoryTables::Release() {
    for (CStatement* statement :
         {&m_writeStep, &m_removeStep, &m_writeChange, &m_readChange, &m_removeChanges}) {
        statement->Release();
    }
    m_number = 0;
}

EPlatformError CHistoryTables::PrepareAll() {
    struct CRow {
        CStatement& statement;
        const char* sql;
    };
    const CRow rows[] = {{m_writeStep, kWriteStep},
                         {m_removeStep, kRemoveStep},
                         {m_writeChange, kWriteChange},
                         {m_readChange, kReadChange},
                         {m_removeChanges, kRemoveChanges}};
    for (const CRow& row : rows) {
        if (const EPlatformError error = Prepare(row.statement, row.sql); error != kErrorSuccess) {
            return error;
        }
    }
    return kErrorSuccess;
}

EPlatformError CHistoryTables::Prepare(CStatement& statement, const char* sql) {
    const QByteArray numbered = QByteArray(sql).replace('#', QByteArray::number(m_number));
    return statement.Prepare(m_file, numbered.constData());
}

EPlatformError CHistoryTables::ReadSteps(std::vector<CHistoryStep>& steps) {
    steps.clear();
    CStatement read;
    if (const EPlatformError error = Prepare(read, kReadSteps); error != kErrorSuccess) {
        return error;
    }
    bool isSound = true;
    read.Start({});
    while (read.Next()) {
        const qint64 state = read.GetInteger(3);
        const CHistoryStep& step = steps.emplace_back(
            CHistoryStep{read.GetInteger(0), read.GetInteger(1), read.GetText(2), state == kUndone,
                         state == kDropped, state == kProvisional, read.GetInteger(4),
                         read.GetInteger(5), read.GetInteger(6)});
        isSound = isSound && step.id > 0 && step.id < kLastStep && step.changes >= 0 &&
                  step.bytes >= 0 && step.bytesReverted >= 0;
    }
    qint64 last = 0;
    EPlatformError error = read.Finish();
    if (error == kErrorSuccess) {
        error = ReadLastChange(last);
    }
    if (error == kErrorSuccess) {
        error = PrepareAll();
    }
    isSound = isSound && last <= (steps.empty() ? 0 : steps.back().id);
    return error == kErrorSuccess && !isSound ? kErrorCorrupt : error;
}

EPlatformError CHistoryTables::ReadLastChange(qint64& step) {
    CStatement read;
    if (const EPlatformError error = Prepare(read, kReadLastChange); error != kErrorSuccess) {
        return error;
    }
    read.Start({});
    step = read.Next() ? read.GetInteger(0) >> kStepBits : 0;
    return read.Finish();
}

EPlatformError CHistoryTables::WriteStep(const CHistoryStep& step) {
    return m_writeStep.Run({step.id, step.scope, step.name, StateOf(step), step.changes, step.bytes,
                            step.bytesReverted});
}

EPlatformError CHistoryTables::RemoveStep(qint64 step) {
    const EPlatformError error = m_removeChanges.Run({FirstIdOf(step), FirstIdOf(step + 1) - 1});
    return error == kErrorSuccess ? m_removeStep.Run({step}) : error;
}

EPlatformError CHistoryTables::RemoveSome(qint64 step, qint64 count) {
    CStatement remove;
    const EPlatformError error = Prepare(remove, kRemoveSome);
    return error == kErrorSuccess ? remove.Run({FirstIdOf(step), FirstIdOf(step + 1) - 1, count})
                                  : error;
}

EPlatformError CHistoryTables::FindFormer(std::vector<QString>& names) {
    const EPlatformError error = m_file.ListTables(kPrefix, names);
    std::erase_if(names, [this](const QString& name) {
        const qint64 number = NumberIn(name);
        return number <= 0 || number == m_number;
    });
    return error;
}

EPlatformError CHistoryTables::RemoveFormer(const std::vector<QString>& names) {
    EPlatformError error = kErrorSuccess;
    for (const QString& name : names) {
        if (error == kErrorSuccess) {
            error = m_file.Execute(("DROP TABLE "_L1 + name).toLatin1().constData());
        }
    }
    return error;
}

EPlatformError CHistoryTables::WriteChange(const CHistoryStep& step, qint64 number,
                                           const CHistoryChange& change) {
    const qint64 id = FirstIdOf(step) + number;
    return m_writeChange.Run({id, change.database, change.record, change.count, change.liveBytes,
                              static_cast<qint64>(change.liveChecksum), change.key,
                              qint64{change.ordinal}, QByteArrayView(change.body),
                              static_cast<qint64>(SealOf(id, change))});
}

EPlatformError CHistoryTables::ReadChange(const CHistoryStep& step, qint64 number,
                                          CHistoryChange& change) {
    const qint64 id = FirstIdOf(step) + number;
    bool isSound = false;
    m_readChange.Start({id});
    if (m_readChange.Next()) {
        change = {.database = m_readChange.GetInteger(0),
                  .record = m_readChange.GetInteger(1),
                  .count = m_readChange.GetInteger(2),
                  .liveBytes = m_readChange.GetInteger(3),
                  .liveChecksum = static_cast<quint64>(m_readChange.GetInteger(4)),
                  .body = m_readChange.GetBlob(7).toByteArray(),
                  .key = m_readChange.GetInteger(5),
                  .ordinal = static_cast<int>(m_readChange.GetInteger(6))};
        isSound = static_cast<quint64>(m_readChange.GetInteger(8)) == SealOf(id, change);
    }
    const EPlatformError error = m_readChange.Finish();
    return error == kErrorSuccess && !isSound ? kErrorCorrupt : error;
}

EPlatformError CHistoryTables::RemoveChanges(const CHistoryStep& step) {
    const qint64 first = FirstIdOf(step);
    return m_removeChanges.Run({first, first + (qint64{1} << kListBits) - 1});
}
