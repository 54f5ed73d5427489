#include "store/engine/RecordReader.h"

#include "store/engine/RecordCodec.h"

namespace {
/// Records up to this many identifiers ahead are reached by stepping, others by a new search.
constexpr qint64 kReach = 4;
}  // namespace

EPlatformError CRecordReader::Prepare(CSqliteFile& file) {
    return m_statement.Prepare(file, "SELECT id, body FROM records WHERE id>=? ORDER BY id");
}

void CRecordReader::Release() {
    m_statement.Release();
}

EPlatformError CRecordReader::Read(qint64 record, PropertyList& properties, int most) {
    const EPlatformError error = StepTo(record);
    if (error != kErrorSuccess) {
        return error;
    }
    return DecodeRecord(m_statement.GetBlob(1), properties, most) ? kErrorSuccess : kErrorCorrupt;
}

EPlatformError CRecordReader::ReadBody(qint64 record, QByteArray& body) {
    const EPlatformError error = StepTo(record);
    if (error == kErrorSuccess) {
        body = m_statement.GetBlob(1).toByteArray();
    }
    return error;
}

EPlatformError CRecordReader::StepTo(qint64 record) {
    if (!m_isOpen || record <= m_last || record > m_last + kReach) {
        Pause();
        m_statement.Start({record});
        m_isOpen = true;
    }
    qint64 id = 0;
    while (id < record && m_statement.Next()) {
        id = m_statement.GetInteger(0);
    }
    m_last = record;
    if (id == record) {
        return kErrorSuccess;
    }
    m_isOpen = false;
    const EPlatformError error = m_statement.Finish();
    return error == kErrorSuccess ? kErrorFileNotFound : error;
}

void CRecordReader::Pause() {
    if (m_isOpen) {
        m_isOpen = false;
        // The failing read has already reported the error.
        (void)m_statement.Finish();
    }
}
