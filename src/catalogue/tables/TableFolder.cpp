#include "catalogue/tables/TableFolder.h"

#include <QDir>
#include <QFileInfo>

void CTableFolder::SetProgress(CProgress& progress, qint64 bytes) {
    m_progress = &progress;
    m_bytesRead = 0;
    m_progress->SetRange(0, bytes, 1);
}

QString CTableFolder::PathOf(const CTableLayout& layout) const {
    return QDir(m_path).filePath(QString::fromLatin1(layout.file));
}

qint64 CTableFolder::SizeOf(const CTableLayout& layout) const {
    const QFileInfo info(PathOf(layout));
    return info.isFile() ? info.size() : 0;
}

CCsvTable CTableFolder::Open(const CTableLayout& layout) {
    return {PathOf(layout), layout, [this](qsizetype bytes) {
                if (m_progress == nullptr) {
                    return true;
                }
                m_bytesRead += bytes;
                m_progress->SetPosition(m_bytesRead);
                m_progress->Pump();
                return !m_progress->IsCancelled();
            }};
}

bool CTableFolder::HasReadAll(const CCsvTable& table) {
    if (m_error.isEmpty()) {
        m_error = table.GetError();
    }
    return table.GetError().isEmpty() && !table.IsCancelled();
}
