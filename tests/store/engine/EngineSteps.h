// Steps over the engine that must go well, with what they give; 0 or -1 when they do not.
#pragma once

#include "store/engine/StorageEngine.h"

inline constexpr int kOk = kErrorSuccess;
inline constexpr quint32 kByNumber = PropertyId(0, EPropertyType::Int32);

inline PropertyList Numbered(qint32 number) {
    return {number, QStringLiteral("number %1").arg(number)};
}

inline ObjectId Created(CStorageEngine& engine, const QString& name, quint32 type = 0) {
    CDatabaseInfo info;
    return engine.CreateDatabase(name, type, kByNumber, info) == kOk ? info.id : 0;
}

inline ObjectId Added(CStorageEngine& engine, ObjectId database, const PropertyList& properties) {
    ObjectId record = 0;
    return engine.AddRecord(database, properties, record) == kOk ? record : 0;
}

/// In one group: as many records with the key `first`, each next key larger by `step`.
inline bool AddMany(CStorageEngine& engine, ObjectId database, int first, int step, int count) {
    bool areAdded = engine.BeginGroup() == kOk;
    for (int i = 0; i < count; ++i) {
        areAdded = Added(engine, database, Numbered(first + i * step)) != 0 && areAdded;
    }
    return engine.EndGroup() == kOk && areAdded;
}

inline int CountOf(CStorageEngine& engine, ObjectId database) {
    int count = 0;
    return engine.CountRecords(database, count) == kOk ? count : -1;
}
