#include "store/engine/JournalCheck.h"

#include "store/engine/VolumeHeader.h"
#include "store/engine/VolumeIdentity.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <QFile>
#include <QtEndian>
#include <algorithm>
#include <bit>
#include <cstdio>
#include <utility>

namespace {
// The format of a rollback journal; numbers are big-endian. The header fills a sector; then come
// records of a page number, the page's old content and a checksum.
constexpr char kMagic[] = "\xD9\xD5\x05\xF9\x20\xA1\x63\xD7";
constexpr int kMagicSize = 8;
constexpr int kHeaderSize = 28;
constexpr int kRecordFrame = 8;  ///< page number and checksum
// The journal of a transaction over several files ends with the name of their common journal, its
// length, a checksum, and the magic again.

/// Offset of the number of cells in a page, after the page's kind and its first free block.
constexpr int kCellCountAt = 3;

bool IsPowerOfTwo(quint32 value, quint32 low, quint32 high) {
    return std::has_single_bit(value) && value >= low && value <= high;
}
}  // namespace

struct CJournalCheck::CHeader {
    quint32 recordCount;  ///< the largest number for as many as the file holds
    quint32 volumePages;  ///< before the unit
    quint32 sectorSize;
    quint32 pageSize;

    [[nodiscard]] bool IsSound() const {
        return IsPowerOfTwo(sectorSize, 32, 65536) && IsPowerOfTwo(pageSize, 512, 65536);
    }
};

CJournalCheck::CJournalCheck(QByteArray journalPath, qint64 volumeSize, VolumeReader readVolume)
    : m_path(std::move(journalPath)),
      m_volumeSize(volumeSize),
      m_readVolume(std::move(readVolume)) {}

bool CJournalCheck::MayBePlayed() const {
    struct stat status {};
    // SQLite itself refuses a journal that is not a file or cannot be read.
    if (::stat(m_path.constData(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return true;
    }
    // Opened by its bytes: the name of a folder may not be decodable.
    QFile journal;
    const int descriptor = ::open(m_path.constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0 || !journal.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered,
                                        QFileDevice::AutoCloseHandle)) {
        return true;
    }
    const QByteArray bytes = journal.read(kHeaderSize);
    if (bytes.isEmpty() || bytes[0] == '\0') {
        return true;  // its transaction has ended
    }
    journal.seek(std::max<qint64>(0, journal.size() - kMagicSize));
    const bool isOneOfSeveral = journal.read(kMagicSize) == QByteArrayView(kMagic);
    if (bytes.size() < kHeaderSize || !bytes.startsWith(kMagic) || isOneOfSeveral) {
        return false;  // not a journal of ours
    }
    const auto number = [&bytes](int at) { return qFromBigEndian<quint32>(bytes.data() + at); };
    const CHeader header{number(8), number(16), number(20), number(24)};
    return header.IsSound() && IsOfVolume(journal, header);
}

bool CJournalCheck::IsOfVolume(QFile& journal, const CHeader& header) const {
    // The transaction that creates a volume; undoing it leaves an empty file.
    if (header.volumePages == 0) {
        return IsUnfilled();
    }
    const qint64 recordSize = qint64{header.pageSize} + kRecordFrame;
    const qint64 held = (journal.size() - header.sectorSize) / recordSize;
    const qint64 count = std::min<qint64>(header.recordCount, held);
    journal.seek(header.sectorSize);
    for (qint64 i = 0; i < count; ++i) {
        const QByteArray record = journal.read(recordSize);
        const auto before = CVolumeIdentity::FindIn(record);
        if (!before) {
            continue;
        }
        const qint64 page = qint64{qFromBigEndian<quint32>(record.data())} - 1;
        const auto now =
            CVolumeIdentity::FindIn(m_readVolume(page * header.pageSize, header.pageSize));
        return now && (*now == *before || now->IsNextOf(*before));
    }
    return m_volumeSize > 0;
}

// The table of databases is always on page 2.
bool CJournalCheck::IsUnfilled() const {
    const QByteArray count = m_readVolume(kVolumePageSize + kCellCountAt, sizeof(quint16));
    return count.size() < qsizetype{sizeof(quint16)} || qFromBigEndian<quint16>(count.data()) == 0;
}

EPlatformError CJournalCheck::SetAside(QByteArray& kept) const {
    for (int n = 1;; ++n) {
        kept = m_path + ".kept-" + QByteArray::number(n);
        struct stat status {};
        if (::lstat(kept.constData(), &status) != 0) {
            const bool isRenamed = ::rename(m_path.constData(), kept.constData()) == 0;
            return isRenamed ? kErrorSuccess : kErrorAccessDenied;
        }
    }
}
