#include "store/engine/VolumeGeneration.h"

#include "store/engine/VolumeHeader.h"

EPlatformError CVolumeGeneration::Load() {
    EPlatformError error = FindPage();
    if (error != kErrorSuccess || m_page == 0) {
        return error;
    }
    error = ReadRow(m_stored);
    // A damaged row does not affect reading records; the first write fails.
    return error == kErrorCorrupt ? kErrorSuccess : error;
}

EPlatformError CVolumeGeneration::ReadRow(std::optional<CVolumeIdentity>& row) {
    CStatement read;
    const EPlatformError error = read.Prepare(m_file, "SELECT body FROM identity WHERE id=1");
    if (error != kErrorSuccess) {
        return error;
    }
    read.Start({});
    if (read.Next()) {
        row = CVolumeIdentity::FindIn(read.GetBlob(0));
    }
    return read.Finish();
}

EPlatformError CVolumeGeneration::FindPage() {
    m_page = 0;
    CStatement find;
    const EPlatformError error =
        find.Prepare(m_file, "SELECT rootpage FROM sqlite_schema WHERE name='identity'");
    if (error != kErrorSuccess) {
        return error;
    }
    find.Start({});
    if (find.Next()) {
        m_page = (find.GetInteger(0) - 1) * kVolumePageSize;
    }
    return find.Finish();
}

bool CVolumeGeneration::IsInPlace() {
    if (!m_stored) {
        return true;
    }
    const auto row = CVolumeIdentity::FindIn(m_file.ReadRaw(m_page, kVolumePageSize));
    // The next row is there when a failed unit could not be rolled back yet.
    return row == *m_stored || row == m_next;
}

std::optional<quint64> CVolumeGeneration::GetNonce() const {
    return m_stored ? std::optional(m_stored->nonce) : std::nullopt;
}

void CVolumeGeneration::Release() {
    m_update.Release();
    m_stored.reset();
    m_isParted = false;
}

EPlatformError CVolumeGeneration::Begin() {
    EPlatformError error = m_stored ? kErrorSuccess : CreateRow();
    if (error == kErrorSuccess && !m_update.IsPrepared()) {
        error = m_update.Prepare(m_file, "UPDATE identity SET body=? WHERE id=1");
    }
    if (error == kErrorSuccess && !m_isParted) {
        error = Part();
    }
    return error == kErrorSuccess ? Advance() : error;
}

// A copy made before this and edited elsewhere by a single unit would look as this unit leaves the
// file, and its journal would be played into the copy. So the first unit after opening stores
// nothing but its generation: then no other copy has the one after it.
EPlatformError CVolumeGeneration::Part() {
    EPlatformError error = Advance();
    if (error == kErrorSuccess) {
        error = Commit();
    }
    m_isParted = error == kErrorSuccess;
    return error;
}

EPlatformError CVolumeGeneration::Advance() {
    const EPlatformError error = m_file.Begin();
    if (error != kErrorSuccess) {
        return error;
    }
    m_next = m_stored->Next();
    return m_update.Run({QByteArrayView(m_next.ToBytes())});
}

bool CVolumeGeneration::IsUnitInFile() {
    m_file.Rollback();
    std::optional<CVolumeIdentity> row;
    return ReadRow(row) == kErrorSuccess && row == m_next;
}

// A commit that fails after it has invalidated the journal cannot be taken back, and doing the work
// again would do it twice.
EPlatformError CVolumeGeneration::Commit() {
    const EPlatformError error = m_file.Commit();
    if (error != kErrorSuccess && !IsUnitInFile()) {
        return error;
    }
    m_stored = m_next;
    return kErrorSuccess;
}

EPlatformError CVolumeGeneration::CreateRow() {
    const CVolumeIdentity created = CVolumeIdentity::Create();
    EPlatformError error = m_file.Begin();
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
    if (error == kErrorSuccess) {
        error = m_file.Commit();
    }
    if (error == kErrorSuccess) {
        m_stored = created;
        m_isParted = true;
        error = FindPage();
    }
    return error;
}
