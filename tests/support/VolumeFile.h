// A volume's file, changed and looked at past the engine while nothing has it open.
#pragma once

#include "store/engine/SqliteFile.h"
#include "store/engine/Statement.h"
#include "support/Files.h"

inline constexpr qsizetype kVolumePage = 8192;

inline void ChangeVolume(const QString& path, QAnyStringView sql) {
    CSqliteFile file;
    QCOMPARE(file.Open(path), int(kErrorSuccess));
    QCOMPARE(file.Execute(sql.toString().toLatin1().constData()), int(kErrorSuccess));
}

/// The number that a query gives, -1 without one.
inline qint64 QueryVolume(const QString& path, QAnyStringView sql) {
    CSqliteFile file;
    CStatement query;
    if (file.Open(path) != kErrorSuccess ||
        query.Prepare(file, sql.toString().toLatin1().constData()) != kErrorSuccess) {
        return -1;
    }
    query.Start({});
    return query.Next() ? query.GetInteger(0) : -1;
}

/// The first page of a table or an index.
inline qint64 RootOf(const QString& path, const QString& name) {
    return QueryVolume(
        path, QStringLiteral("SELECT rootpage FROM sqlite_schema WHERE name='%1'").arg(name));
}

/// Makes a page unreadable, or the last one. They are numbered from 1 on.
inline void DamagePage(const QString& path, qint64 page = 0) {
    QByteArray bytes = Load(path);
    const qsizetype last = bytes.size() / kVolumePage;
    QVERIFY(page >= 0 && page <= last);
    bytes.replace(((page > 0 ? page : last) - 1) * kVolumePage, kVolumePage,
                  QByteArray(kVolumePage, '\x55'));
    Save(path, bytes);
}

/// Copies the volume and its journal from the middle of a unit of work, as a killed program leaves
/// them: all records are lost without the journal.
inline void CopyInterrupted(const QString& path, const QString& copy) {
    CSqliteFile file;
    QCOMPARE(file.Open(path), int(kErrorSuccess));
    QCOMPARE(file.Execute("PRAGMA cache_size=1; PRAGMA cache_spill=1; BEGIN;"
                          "UPDATE records SET body=zeroblob(length(body));"
                          "CREATE TABLE torn(x); INSERT INTO torn VALUES(zeroblob(200000))"),
             int(kErrorSuccess));
    const QString journal = QStringLiteral("-journal");
    QVERIFY(QFile::copy(path, copy) && QFile::copy(path + journal, copy + journal));
    file.Rollback();
}
