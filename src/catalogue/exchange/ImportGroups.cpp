#include "catalogue/exchange/ImportGroups.h"

#include <utility>

bool CImportGroups::MakeRoom() {
    constexpr int kGroupSize = 4096;
    if (m_records < kGroupSize) {
        return true;
    }
    if (!Commit()) {
        return false;
    }
    Begin();
    return true;
}

bool CImportGroups::Note(EStored stored) {
    switch (stored) {
        case EStored::Failed:
            return false;
        case EStored::Skipped:
            ++m_counts.skipped;
            return true;
        case EStored::Replaced:
            ++m_written.replaced;
            ++m_written.imported;
            break;
        case EStored::Added:
            ++m_written.imported;
            break;
        case EStored::Uncounted:
            break;
    }
    ++m_records;
    return true;
}

bool CImportGroups::Commit() {
    const CImportCounts written = std::exchange(m_written, {});
    m_records = 0;
    if (!m_group->Commit()) {
        return false;
    }
    m_counts.imported += written.imported;
    m_counts.replaced += written.replaced;
    return true;
}
