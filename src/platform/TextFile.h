// The buffered 8-bit text file of every exchange: lines end in CR LF when written, and in CR, LF
// or CR LF when read.
#pragma once

#include <QFile>
#include <QFileDevice>
#include <QString>
#include <functional>
#include <memory>
#include <utility>

#include "platform/TextCodec.h"

/// Opens one file in its lifetime, for reading or for writing. A file being written replaces the
/// old one only when Close succeeds, so a full disk leaves the old file as it was. Two targets are
/// written directly instead: anything but a regular file (a pipe, a device), and a file in a folder
/// where nothing can be created. A file that is not closed before this object is destroyed is
/// discarded.
///
/// Anything but a regular file is read as a stream: reading may wait for data, and stops at
/// kMaxStreamBytes.
///
/// Text is in the OEM code page of the user's locale.
class CTextFile {
  public:
    static constexpr qint64 kMaxStreamBytes = 1LL << 30U;
    /// Longest line in bytes; the rest is returned as the next line.
    static constexpr int kMaxLineBytes = 4095;

    CTextFile();
    ~CTextFile();

    /// False when the file cannot be opened. A UTF-8 mark at the start makes the text UTF-8. Never
    /// waits for the other end of a pipe.
    bool OpenForReading(const QString& path, qint64 mostStreamBytes = kMaxStreamBytes);
    /// `keepWaiting` is called about ten times a second while a stream has no data; when it returns
    /// false, the file ends there.
    void SetKeepWaiting(std::function<bool()> keepWaiting) {
        m_keepWaiting = std::move(keepWaiting);
    }
    /// Who may read a file that did not exist before.
    enum class EReaders { OwnerAlone, ByUmask };
    /// False when the file cannot be created.
    bool Create(const QString& path, EReaders readers = EReaders::OwnerAlone);
    /// False when not everything written reached the file (an old file is then kept), or when
    /// reading stopped before the end of the file.
    bool Close();
    /// Whether reading stopped because a stream exceeded its limit.
    [[nodiscard]] bool IsTooLong() const { return m_isTooLong; }

    /// False at the end of the file. NUL bytes are kept as NUL characters.
    bool ReadLine(QString& line);
    /// Length in bytes of the file being read; 0 for a pipe.
    [[nodiscard]] qint64 GetLength() const;

    void WriteBytes(QByteArrayView bytes);
    void WriteText(QStringView text);
    void WriteLine(QStringView text);
    /// Appends to `bytes` what WriteText would write: for lines that are composed before they can
    /// be written.
    void AppendText(QByteArray& bytes, QStringView text) const;
    /// Encodes `text` to `bytes`, which has room for one byte per UTF-16 unit.
    void EncodeTo(char* bytes, QStringView text) const { m_codec.EncodeTo(bytes, text); }

  private:
    void ReadMark();
    bool FillBuffer();
    bool WaitForBytes();
    void FlushBuffer();
    bool FinishOutput();

    COemCodec m_codec;
    bool m_isStream = false;
    bool m_isStarted = false;
    bool m_isTooLong = false;
    bool m_isUtf8 = false;
    bool m_isAtEnd = false;
    bool m_isLineFeedDue = false;  ///< the last line ended in CR, so an LF now belongs to it
    bool m_hasFailed = false;
    qint64 m_streamBytesLeft = 0;
    std::function<bool()> m_keepWaiting;
    std::unique_ptr<QFile> m_input;
    std::unique_ptr<QFileDevice> m_output;
    // Bytes m_begin to m_end of the buffer are read ahead, or written and not yet flushed.
    QByteArray m_buffer;
    qsizetype m_begin = 0;
    qsizetype m_end = 0;
};
