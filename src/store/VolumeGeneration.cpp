#include "store/VolumeGeneration.h"

int CVolumeGeneration::Load() {
    m_stored.reset();
    CStatement find;
    int error = find.Prepare(m_file, "SELECT 1 FROM sqlite_schema WHERE name='identity'");
    if (error != kErrorSuccess) {
        return error;
    }
    find.Start({});
    const bool isThere = find.Next();
    error = find.Finish();
    if (error != kErrorSuccess || !isThere) {
        return error;
    }
    CStatement read;
    error = read.Prepare(m_file, "SELECT body FROM identity WHERE id=1");
    if (error == kErrorSuccess) {
        read.Start({});
        if (read.Next()) {
            m_stored = CVolumeIdentity::FindIn(read.GetBlob(0));
        }
        error = read.Finish();
    }
    // Damage here says nothing about the records; it stops the first write.
    return error == kErrorCorrupt ? static_cast<int>(kErrorSuccess) : error;
}

void CVolumeGeneration::Release() {
    m_update.Release();
    m_stored.reset();
}

int CVolumeGeneration::Begin() {
    int error = m_stored ? static_cast<int>(kErrorSuccess) : CreateRow();
    if (error == kErrorSuccess && !m_update.IsPrepared()) {
        error = m_update.Prepare(m_file, "UPDATE identity SET body=? WHERE id=1");
    }
    if (error == kErrorSuccess) {
        error = m_file.Begin();
    }
    if (error == kErrorSuccess) {
        m_next = m_stored->Next();
        error = m_update.Run({QByteArrayView(m_next.ToBytes())});
    }
    return error;
}

void CVolumeGeneration::Confirm() {
    m_stored = m_next;
}

int CVolumeGeneration::CreateRow() {
    const CVolumeIdentity created = CVolumeIdentity::Create();
    int error = m_file.Begin();
    if (error == kErrorSuccess) {
        error = m_file.Execute(
            "CREATE TABLE IF NOT EXISTS identity(id INTEGER PRIMARY KEY, body BLOB NOT NULL)");
    }
    CStatement write;
    if (error == kErrorSuccess) {
        error = write.Prepare(m_file, "REPLACE INTO identity(id, body) VALUES(1,?)");
    }
    if (error == kErrorSuccess) {
        error = write.Run({QByteArrayView(created.ToBytes())});
    }
    write.Release();
    if (error == kErrorSuccess) {
        error = m_file.Commit();
    }
    if (error == kErrorSuccess) {
        m_stored = created;
    }
    return error;
}
