#include "store/engine/TreeWalk.h"

#include <QtEndian>
#include <algorithm>

#include "store/engine/VolumeHeader.h"

namespace {
constexpr int kDeepest = 20;  ///< pages from the root to a leaf
// A page of a tree; numbers are big-endian. The places of its cells follow the header.
constexpr char kInnerOfIndex = 0x02;
constexpr char kInnerOfTable = 0x05;
constexpr int kCellCountAt = 3;
constexpr int kLastChildAt = 8;
constexpr int kInnerHeader = 12;
constexpr int kPlaceSize = 2;
}  // namespace

bool CTreeWalk::Ends(quint32 root) {
    struct CStop {
        quint32 page;
        int depth;
    };
    std::vector<CStop> ahead = {{root, 1}};
    while (!ahead.empty()) {
        const CStop stop = ahead.back();
        ahead.pop_back();
        if (stop.page == 0 || stop.page >= m_isSeen.size()) {
            continue;
        }
        if (m_isSeen[stop.page] || stop.depth > kDeepest) {
            return false;
        }
        m_isSeen[stop.page] = true;
        for (const quint32 child : ChildrenOf(stop.page)) {
            ahead.push_back({child, stop.depth + 1});
        }
    }
    return true;
}

std::vector<quint32> CTreeWalk::ChildrenOf(quint32 page) const {
    const qint64 start = (qint64{page} - 1) * kVolumePageSize;
    const int header = page == 1 ? kVolumeHeaderSize : 0;
    const QByteArray kind = m_read(start + header, 1);
    if (!kind.startsWith(kInnerOfIndex) && !kind.startsWith(kInnerOfTable)) {
        return {};
    }
    const QByteArray bytes = m_read(start, kVolumePageSize);
    if (bytes.size() < kVolumePageSize) {
        return {};
    }
    const auto number16 = [&bytes](int at) {
        return qFromBigEndian<quint16>(bytes.constData() + at);
    };
    const auto number32 = [&bytes](int at) {
        return qFromBigEndian<quint32>(bytes.constData() + at);
    };
    std::vector<quint32> children = {number32(header + kLastChildAt)};
    const int room = (kVolumePageSize - header - kInnerHeader) / kPlaceSize;
    const int cells = std::min<int>(number16(header + kCellCountAt), room);
    for (int cell = 0; cell < cells; ++cell) {
        const int at = number16(header + kInnerHeader + cell * kPlaceSize) % kVolumePageSize;
        if (at + static_cast<int>(sizeof(quint32)) <= kVolumePageSize) {
            children.push_back(number32(at));
        }
    }
    return children;
}
