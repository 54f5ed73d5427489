#include "store/backup/DatabaseCheck.h"

#include <algorithm>

#include "platform/Messages.h"
#include "store/backup/RecordCheck.h"
#include "store/engine/RecordCodec.h"

using namespace Qt::StringLiterals;

CIndexRows ReadIndexRows(CSqliteFile& file, ObjectId database) {
    CIndexRows rows;
    CStatement read;
    if (read.Prepare(file,
                     "SELECT ordinal, firstKey, count, entries FROM blocks WHERE database=?"
                     " ORDER BY ordinal") != kErrorSuccess) {
        rows.isSound = false;
        return rows;
    }
    qint64 lastOrdinal = 0;
    read.Start({database});
    while (read.Next()) {
        const qint64 ordinal = read.GetInteger(0);
        const qint64 firstKey = read.GetInteger(1);
        const bool isInOrder =
            ordinal > lastOrdinal && (rows.entries.empty() || rows.entries.back().key <= firstKey);
        lastOrdinal = ordinal;
        rows.expected += std::clamp<qint64>(read.GetInteger(2), 0, kBlockCapacity);
        const std::vector<CIndexEntry> entries = DecodeEntries(read.GetBlob(3));
        const bool areSound = AreEntriesSound(entries, firstKey, read.GetInteger(2));
        if (areSound) {
            rows.entries.insert(rows.entries.end(), entries.begin(), entries.end());
        }
        rows.isSound = rows.isSound && isInOrder && areSound;
    }
    rows.isSound = read.Finish() == kErrorSuccess && rows.isSound;
    return rows;
}

bool CDatabaseCheck::Check(const CDatabaseInfo& database, const CRecordLayout* layout,
                           const Visitor& visit, const Pulse& pulse) {
    m_name = database.name;
    m_unreadable = 0;
    m_missing = 0;
    if (!m_isPrepared) {
        m_isPrepared = m_reader.Prepare(m_file) == kErrorSuccess;
    }
    const CIndexRows rows = ReadIndexRows(m_file, database.id);
    if (!rows.isSound || !m_isPrepared) {
        m_isComplete = false;
        m_findings.AddFault(
            FormatText("%s: the list of records is damaged; %ld of %ld entries can be read."_L1,
                       {m_name, qint64(rows.entries.size()), rows.expected}));
    }
    if (!m_isPrepared) {
        return true;
    }
    for (const CIndexEntry& entry : rows.entries) {
        if (!pulse()) {
            return false;
        }
        m_listed.push_back(entry.record);
        CheckRecord(entry, layout, visit);
    }
    if (m_unreadable > 0) {
        m_findings.AddFault(
            FormatText("%s: records that cannot be read: %d."_L1, {m_name, m_unreadable}));
    }
    if (m_missing > 0) {
        m_findings.AddFault(
            FormatText("%s: records that are listed but missing: %d."_L1, {m_name, m_missing}));
    }
    return true;
}

void CDatabaseCheck::CheckRecord(const CIndexEntry& entry, const CRecordLayout* layout,
                                 const Visitor& visit) {
    const EPlatformError error = m_reader.ReadBody(entry.record, m_body);
    if (error != kErrorSuccess) {
        ++(error == kErrorFileNotFound ? m_missing : m_unreadable);
        return;
    }
    const auto report = [&](const QString& fault) {
        m_findings.AddFault(FormatText("%s: record %ld %s."_L1, {m_name, entry.record, fault}));
    };
    if (!DecodeRecord(m_body, m_properties)) {
        report(u"is damaged"_s);
        return;
    }
    if (KeyOf(m_properties) != entry.key) {
        report(u"is listed under another first value than it has"_s);
        return;
    }
    const auto fault = layout == nullptr
                           ? std::nullopt
                           : FaultOf(m_properties, LayoutOfRecord(m_properties, *layout));
    if (fault) {
        report(*fault);
        return;
    }
    visit(entry.record, m_properties);
}

void CDatabaseCheck::CheckLists() {
    m_reader.Release();
    m_isPrepared = false;
    std::ranges::sort(m_listed);
    int twice = 0;
    for (std::size_t i = 1; i < m_listed.size(); ++i) {
        twice += m_listed[i] == m_listed[i - 1] ? 1 : 0;
    }
    if (twice > 0) {
        m_findings.AddFault(FormatText("Records that are listed twice: %d."_L1, {twice}));
    }
    CStatement read;
    if (!m_isComplete || read.Prepare(m_file, "SELECT id FROM records") != kErrorSuccess) {
        return;
    }
    int unlisted = 0;
    read.Start({});
    while (read.Next()) {
        unlisted += std::ranges::binary_search(m_listed, read.GetInteger(0)) ? 0 : 1;
    }
    // A damaged page has been reported already. Deleting a damaged database leaves its records.
    if (read.Finish() == kErrorSuccess && unlisted > 0) {
        m_findings.AddNote(FormatText(
            "Records that belong to no database: %d. They only take room."_L1, {unlisted}));
    }
}
