#include "platform/TextFile.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>
#include <cerrno>
#include <cstring>

#include "platform/Process.h"

namespace {
constexpr qsizetype kBufferBytes = 65536;
constexpr int kWaitMilliseconds = 100;
constexpr QByteArrayView kUtf8Mark = "\xEF\xBB\xBF";
constexpr QByteArrayView kLineEnd = "\r\n";
/// A UTF-8 character has up to three bytes after its first one.
constexpr qsizetype kMaxContinuationBytes = 3;

/// Position of the first CR or LF; the size when there is none.
qsizetype FindLineEnd(QByteArrayView bytes) {
    const qsizetype lineFeed = bytes.indexOf('\n');
    const qsizetype limit = lineFeed < 0 ? bytes.size() : lineFeed;
    const qsizetype carriageReturn = bytes.first(limit).indexOf('\r');
    return carriageReturn < 0 ? limit : carriageReturn;
}

bool IsContinuation(char byte) {
    return (static_cast<uchar>(byte) & 0xC0U) == 0x80U;
}

/// Where to cut UTF-8 text before `position` without cutting a character in two.
qsizetype CharacterStart(QByteArrayView bytes, qsizetype position) {
    qsizetype start = position;
    while (IsContinuation(bytes[start])) {
        if (--start < position - kMaxContinuationBytes) {
            return position;
        }
    }
    return start;
}
}  // namespace

CTextFile::CTextFile() : m_codec(COemCodec::CodePageOf(QLocale())) {}

CTextFile::~CTextFile() = default;

bool CTextFile::OpenForReading(const QString& path, qint64 mostStreamBytes) {
    Q_ASSERT(m_buffer.isEmpty());
    // Without O_NONBLOCK opening a pipe waits for its other end.
    const int descriptor =
        open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat status {};
    auto input = std::make_unique<QFile>();
    if (descriptor < 0 || fstat(descriptor, &status) != 0 || S_ISDIR(status.st_mode) ||
        !input->open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered,
                     QFileDevice::AutoCloseHandle)) {
        if (descriptor >= 0) {
            close(descriptor);
        }
        return false;
    }
    m_input = std::move(input);
    m_buffer.resize(kBufferBytes);
    m_isStream = !S_ISREG(status.st_mode);
    m_streamBytesLeft = mostStreamBytes;
    return true;
}

bool CTextFile::Create(const QString& path, EReaders readers) {
    Q_ASSERT(m_buffer.isEmpty());
    if (HasLostBytes(path)) {
        return false;
    }
    const QFileInfo target(path);
    // A replacement takes over the old file's mode at the end and is private until then.
    std::optional<CUserUmask> mask;
    if (readers == EReaders::ByUmask && !target.exists()) {
        mask.emplace();
    }
    std::unique_ptr<QFileDevice> output;
    if (target.exists() && !target.isFile()) {
        output = std::make_unique<QFile>(path);
    } else {
        auto replacement = std::make_unique<QSaveFile>(path);
        replacement->setDirectWriteFallback(true);
        output = std::move(replacement);
    }
    if (!output->open(QIODevice::WriteOnly)) {
        return false;
    }
    m_output = std::move(output);
    m_buffer.resize(kBufferBytes);
    return true;
}

bool CTextFile::Close() {
    if (m_output && !FinishOutput()) {
        m_hasFailed = true;
    }
    m_output.reset();
    m_input.reset();
    m_begin = m_end;
    return !m_hasFailed;
}

bool CTextFile::ReadLine(QString& line) {
    if (!m_isStarted) {
        ReadMark();
    }
    // One byte more than a line may have, for its end, and one for the LF of the line before.
    while (m_end - m_begin < kMaxLineBytes + 2 && FillBuffer()) {
    }
    if (m_isLineFeedDue && m_begin < m_end && m_buffer.at(m_begin) == '\n') {
        ++m_begin;
    }
    m_isLineFeedDue = false;
    if (m_begin == m_end) {
        return false;
    }
    const qsizetype window = std::min<qsizetype>(m_end - m_begin, kMaxLineBytes + 1);
    const QByteArrayView bytes(m_buffer.constData() + m_begin, window);
    qsizetype length = FindLineEnd(bytes);
    m_begin += length;
    if (length < window) {
        m_isLineFeedDue = bytes[length] == '\r';
        ++m_begin;
    } else if (length > kMaxLineBytes) {
        length = m_isUtf8 ? CharacterStart(bytes, kMaxLineBytes) : kMaxLineBytes;
        m_begin -= window - length;
    }
    if (m_isUtf8) {
        line = QString::fromUtf8(bytes.first(length));
    } else {
        line.resize(length);
        m_codec.DecodeTo(line.data(), bytes.first(length));
    }
    return true;
}

qint64 CTextFile::GetLength() const {
    return m_input ? m_input->size() : 0;
}

void CTextFile::WriteBytes(QByteArrayView bytes) {
    Q_ASSERT(m_output);
    while (!bytes.isEmpty()) {
        if (m_end == kBufferBytes) {
            FlushBuffer();
        }
        const qsizetype count = std::min(bytes.size(), kBufferBytes - m_end);
        std::memcpy(m_buffer.data() + m_end, bytes.data(), count);
        m_end += count;
        bytes = bytes.sliced(count);
    }
}

void CTextFile::WriteText(QStringView text) {
    Q_ASSERT(m_output);
    while (!text.isEmpty()) {
        if (m_end == kBufferBytes) {
            FlushBuffer();
        }
        const qsizetype count = std::min(text.size(), kBufferBytes - m_end);
        m_codec.EncodeTo(m_buffer.data() + m_end, text.first(count));
        m_end += count;
        text = text.sliced(count);
    }
}

void CTextFile::WriteLine(QStringView text) {
    WriteText(text);
    WriteBytes(kLineEnd);
}

void CTextFile::AppendText(QByteArray& bytes, QStringView text) const {
    const qsizetype end = bytes.size();
    bytes.resize(end + text.size());
    m_codec.EncodeTo(bytes.data() + end, text);
}

void CTextFile::ReadMark() {
    m_isStarted = true;
    while (m_end < kUtf8Mark.size() && FillBuffer()) {
    }
    m_isUtf8 = QByteArrayView(m_buffer).first(m_end).startsWith(kUtf8Mark);
    m_begin = m_isUtf8 ? kUtf8Mark.size() : 0;
}

bool CTextFile::FillBuffer() {
    if (m_isAtEnd || !m_input) {
        return false;
    }
    m_isTooLong = m_isStream && m_streamBytesLeft == 0;
    if (m_isTooLong || (m_isStream && !WaitForBytes())) {
        m_hasFailed = m_hasFailed || m_isTooLong;
        m_isAtEnd = true;
        return false;
    }
    std::memmove(m_buffer.data(), m_buffer.constData() + m_begin, m_end - m_begin);
    m_end -= m_begin;
    m_begin = 0;
    const qint64 room = kBufferBytes - m_end;
    const qint64 count = m_input->read(m_buffer.data() + m_end,
                                       m_isStream ? std::min(room, m_streamBytesLeft) : room);
    m_hasFailed = m_hasFailed || count < 0;
    m_isAtEnd = count <= 0;
    m_end += std::max<qint64>(count, 0);
    m_streamBytesLeft -= std::max<qint64>(count, 0);
    return !m_isAtEnd;
}

/// False when m_keepWaiting returns false before there is data or the end of the stream.
bool CTextFile::WaitForBytes() {
    pollfd input{m_input->handle(), POLLIN, 0};
    int ready = 0;
    while ((ready = poll(&input, 1, kWaitMilliseconds)) == 0 || (ready < 0 && errno == EINTR)) {
        if (m_keepWaiting && !m_keepWaiting()) {
            return false;
        }
    }
    return true;
}

void CTextFile::FlushBuffer() {
    if (!m_hasFailed && m_output->write(m_buffer.constData(), m_end) != m_end) {
        m_hasFailed = true;
    }
    m_end = 0;
}

bool CTextFile::FinishOutput() {
    FlushBuffer();
    // commit() does not notice when the last bytes in the device's own buffer cannot be written.
    if (m_hasFailed || !m_output->flush()) {
        return false;
    }
    if (auto* replacement = qobject_cast<QSaveFile*>(m_output.get())) {
        return replacement->commit();
    }
    m_output->close();
    return m_output->error() == QFileDevice::NoError;
}
