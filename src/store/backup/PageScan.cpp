#include "store/backup/PageScan.h"

#include <unistd.h>

#include <QtEndian>
#include <algorithm>
#include <array>

#include "store/engine/VolumeHeader.h"

namespace {
// The format of SQLite's files; numbers are big-endian.
constexpr int kPageCountAt = 28;
constexpr int kFirstFreeTrunkAt = 32;
constexpr uchar kTableLeaf = 0x0D;
constexpr uchar kIndexLeaf = 0x0A;
constexpr uchar kIndexInner = 0x02;
constexpr int kCellCountAt = 3;
constexpr int kLeafHeader = 8;
constexpr int kInnerHeader = 12;
constexpr int kPageNumberSize = 4;
// The most that a cell holds of a payload by itself, and what it holds of a longer one.
constexpr qint64 kMostInTable = kVolumePageSize - 35;
constexpr qint64 kMostInIndex = (kVolumePageSize - 12) * 64 / 255 - 23;
constexpr qint64 kLeast = (kVolumePageSize - 12) * 32 / 255 - 23;
constexpr qint64 kOverflow = kVolumePageSize - kPageNumberSize;
/// Longer than any record.
constexpr qint64 kMostPayload = qint64{64} << 20;

quint16 NumberAt16(QByteArrayView bytes, qsizetype at) {
    return qFromBigEndian<quint16>(bytes.data() + at);
}

quint32 NumberAt32(QByteArrayView bytes, qsizetype at) {
    return qFromBigEndian<quint32>(bytes.data() + at);
}

/// Takes values off the front of a view, never past its end.
class CByteReader {
  public:
    explicit CByteReader(QByteArrayView rest) : m_rest(rest) {}

    /// One to nine bytes, seven bits each; the ninth has eight.
    bool TakeVarint(qint64& value) {
        constexpr int kLongest = 9;
        quint64 bits = 0;
        for (int i = 0; i < kLongest && i < m_rest.size(); ++i) {
            const auto byte = static_cast<uchar>(m_rest[i]);
            if (i == kLongest - 1) {
                bits = bits << 8U | byte;
            } else {
                bits = bits << 7U | (byte & 0x7FU);
            }
            if (i == kLongest - 1 || (byte & 0x80U) == 0) {
                m_rest = m_rest.sliced(i + 1);
                value = static_cast<qint64>(bits);
                return true;
            }
        }
        return false;
    }

    bool TakeBytes(qint64 size, QByteArrayView& bytes) {
        if (size < 0 || size > m_rest.size()) {
            return false;
        }
        bytes = m_rest.first(size);
        m_rest = m_rest.sliced(size);
        return true;
    }

    [[nodiscard]] QByteArrayView Rest() const { return m_rest; }

  private:
    QByteArrayView m_rest;
};

qint64 SignedNumber(QByteArrayView bytes) {
    qint64 value = bytes.isEmpty() ? 0 : static_cast<signed char>(bytes[0]);
    for (qsizetype i = 1; i < bytes.size(); ++i) {
        value =
            static_cast<qint64>(static_cast<quint64>(value) << 8U) | static_cast<uchar>(bytes[i]);
    }
    return value;
}

/// The value of a type code; false for bytes that are no value of a volume.
bool TakeValue(qint64 type, CByteReader& body, ScannedValue& value) {
    constexpr std::array<qint64, 7> kSizes = {0, 1, 2, 3, 4, 6, 8};
    constexpr qint64 kZero = 8;
    constexpr qint64 kOne = 9;
    constexpr qint64 kFirstBlob = 12;
    QByteArrayView bytes;
    if (type == 0) {
        value = std::monostate();
        return true;
    }
    if (type == kZero || type == kOne) {
        value = type - kZero;
        return true;
    }
    if (type > 0 && type < std::ssize(kSizes)) {
        const bool isThere = body.TakeBytes(kSizes.at(type), bytes);
        value = SignedNumber(bytes);
        return isThere;
    }
    if (type < kFirstBlob || !body.TakeBytes((type - kFirstBlob) / 2, bytes)) {
        return false;
    }
    if (type % 2 == 0) {
        value = bytes.toByteArray();
    } else {
        value = CScannedText{bytes.toByteArray()};
    }
    return true;
}

bool TakeValues(QByteArrayView payload, std::vector<ScannedValue>& values) {
    CByteReader start(payload);
    qint64 headerSize = 0;
    if (!start.TakeVarint(headerSize)) {
        return false;
    }
    const qsizetype taken = payload.size() - start.Rest().size();
    if (headerSize < taken || headerSize > payload.size()) {
        return false;
    }
    CByteReader types(payload.sliced(taken, headerSize - taken));
    CByteReader body(payload.sliced(headerSize));
    while (!types.Rest().isEmpty()) {
        qint64 type = 0;
        if (!types.TakeVarint(type) || !TakeValue(type, body, values.emplace_back())) {
            return false;
        }
    }
    return body.Rest().isEmpty();
}
}  // namespace

bool CPageScan::Open(const QString& path) {
    m_file.setFileName(path);
    if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) || m_file.size() == 0) {
        return false;
    }
    m_pages = static_cast<quint32>((m_file.size() + kVolumePageSize - 1) / kVolumePageSize);
    m_isFree.assign(std::size_t{m_pages} + 1, false);
    const QByteArray first = Page(1);
    if (first.size() >= kVolumeHeaderSize) {
        m_isCut = NumberAt32(first, kPageCountAt) > m_pages;
        FindFreePages(NumberAt32(first, kFirstFreeTrunkAt));
    }
    return true;
}

// What is free may still look like rows.
void CPageScan::FindFreePages(quint32 trunk) {
    while (trunk > 1 && trunk <= m_pages && !m_isFree[trunk]) {
        m_isFree[trunk] = true;
        const QByteArray page = Page(trunk);
        if (page.size() < kVolumePageSize) {
            return;
        }
        const quint32 count = std::min<quint32>(NumberAt32(page, kPageNumberSize),
                                                kVolumePageSize / kPageNumberSize - 2);
        for (quint32 i = 0; i < count; ++i) {
            const quint32 number = NumberAt32(page, (qsizetype{i} + 2) * kPageNumberSize);
            if (number <= m_pages) {
                m_isFree[number] = true;
            }
        }
        trunk = NumberAt32(page, 0);
    }
}

// A mapped file would end the program where the disk cannot read it.
QByteArray CPageScan::Page(quint32 number) const {
    QByteArray page(kVolumePageSize, Qt::Uninitialized);
    const ssize_t read = ::pread(m_file.handle(), page.data(), kVolumePageSize,
                                 (qint64{number} - 1) * kVolumePageSize);
    page.truncate(std::max<ssize_t>(read, 0));
    return page;
}

std::optional<CPageScan::CPageKind> CPageScan::KindOf(quint32 number, QByteArrayView page) const {
    if (number < 1 || number > m_pages || m_isFree[number]) {
        return std::nullopt;
    }
    CPageKind kind;
    kind.header = number == 1 ? kVolumeHeaderSize : 0;
    if (page.size() < kind.header + kInnerHeader) {
        return std::nullopt;
    }
    const auto code = static_cast<uchar>(page[kind.header]);
    kind.isIndex = code != kTableLeaf;
    kind.isInner = code == kIndexInner;
    const int cellsAt = kind.header + (kind.isInner ? kInnerHeader : kLeafHeader);
    kind.cells = NumberAt16(page, kind.header + kCellCountAt);
    const bool isKnown = code == kTableLeaf || code == kIndexLeaf || code == kIndexInner;
    const bool hasRoom = cellsAt + 2 * kind.cells <= page.size();
    return isKnown && hasRoom ? std::optional(kind) : std::nullopt;
}

void CPageScan::ForEachRow(
    quint32 page, const std::function<void(const CRowPlace&, const CScannedRow&)>& visit) const {
    const QByteArray bytes = Page(page);
    const std::optional<CPageKind> kind = KindOf(page, bytes);
    for (int cell = 0; kind && cell < kind->cells; ++cell) {
        if (const auto row = RowIn(bytes, *kind, cell)) {
            visit({page, static_cast<quint16>(cell)}, *row);
        }
    }
}

std::optional<CScannedRow> CPageScan::RowAt(const CRowPlace& place) const {
    const QByteArray bytes = Page(place.page);
    const std::optional<CPageKind> kind = KindOf(place.page, bytes);
    return kind && place.cell < kind->cells ? RowIn(bytes, *kind, place.cell) : std::nullopt;
}

std::optional<CScannedRow> CPageScan::RowIn(QByteArrayView page, const CPageKind& kind,
                                            int cell) const {
    const int header = kind.header + (kind.isInner ? kInnerHeader : kLeafHeader);
    int at = NumberAt16(page, header + 2 * cell);
    if (kind.isInner) {
        at += kPageNumberSize;
    }
    if (at < header + 2 * kind.cells || at >= page.size()) {
        return std::nullopt;
    }
    CByteReader reader(page.sliced(at));
    CScannedRow row;
    row.isOfIndex = kind.isIndex;
    qint64 size = 0;
    if (!reader.TakeVarint(size) || (!kind.isIndex && !reader.TakeVarint(row.id))) {
        return std::nullopt;
    }
    const std::optional<QByteArray> payload = PayloadAt(reader.Rest(), size, kind.isIndex);
    return payload && TakeValues(*payload, row.values) ? std::optional(row) : std::nullopt;
}

std::optional<QByteArray> CPageScan::PayloadAt(QByteArrayView local, qint64 size,
                                               bool isIndex) const {
    const qint64 most = isIndex ? kMostInIndex : kMostInTable;
    if (size <= 0 || size > kMostPayload) {
        return std::nullopt;
    }
    const qint64 fitting = kLeast + (size - kLeast) % kOverflow;
    const qint64 here = size <= most ? size : (fitting <= most ? fitting : kLeast);
    if (here + (here < size ? kPageNumberSize : 0) > local.size()) {
        return std::nullopt;
    }
    QByteArray payload = local.first(here).toByteArray();
    quint32 next = here < size ? NumberAt32(local, here) : 0;
    while (payload.size() < size) {
        if (next < 2 || next > m_pages || m_isFree[next]) {
            return std::nullopt;
        }
        const QByteArray page = Page(next);
        const qint64 part = std::min<qint64>(kOverflow, size - payload.size());
        if (page.size() < kPageNumberSize + part) {
            return std::nullopt;
        }
        next = NumberAt32(page, 0);
        payload += QByteArrayView(page).sliced(kPageNumberSize, part);
    }
    return payload;
}
