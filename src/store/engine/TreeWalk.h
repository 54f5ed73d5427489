// Whether the trees of pages in an SQLite file end.
#pragma once

#include <QByteArray>
#include <utility>
#include <vector>

#include "store/engine/VolumeReader.h"

/// In a damaged file, inner pages can lead to one another. A tree of twenty pages can then take
/// SQLite longer than anybody lives, and one as deep as the file has pages overflows its stack.
/// Only inner pages are read; what else is wrong with a page, SQLite itself reports in good time.
class CTreeWalk {
  public:
    CTreeWalk(VolumeReader read, qint64 pageCount)
        : m_read(std::move(read)), m_isSeen(static_cast<std::size_t>(pageCount) + 1) {}

    /// False when a page of the tree belongs to it twice or to one that was walked before, or is
    /// deeper than SQLite's statements go. Pages are counted from 1.
    bool Ends(quint32 root);

  private:
    [[nodiscard]] std::vector<quint32> ChildrenOf(quint32 page) const;

    VolumeReader m_read;
    std::vector<bool> m_isSeen;  ///< by page
};
