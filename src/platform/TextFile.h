// The buffered 8-bit text file of every exchange: lines end in CR LF when written, and in CR, LF
// or CR LF when read.
#pragma once

#include <QFile>
#include <QFileDevice>
#include <QString>
#include <memory>

#include "platform/TextCodec.h"

/// Open for reading or for writing, never both. A file being written replaces the old one only
/// when Close succeeds, so a full disk leaves the old file as it was. Two targets are written
/// directly instead: what is no regular file (a pipe, a device), and a file in a folder where
/// nothing can be created. A file that is not closed before this object goes is discarded.
///
/// Text is in the OEM code page of the user's locale.
class CTextFile {
  public:
    /// Longest line in bytes; what follows is handed out as the next line.
    static constexpr int kMaxLineBytes = 4095;

    CTextFile();
    ~CTextFile();

    /// False when the file cannot be opened. A UTF-8 mark at the start makes the text UTF-8.
    bool OpenForReading(const QString& path);
    /// False when the file cannot be created.
    bool Create(const QString& path);
    /// False when something written did not reach the file, the old file, if any, then being kept;
    /// or when reading broke off before the end of the file.
    bool Close();

    /// False at the end of the file. NUL bytes are kept as NUL characters.
    bool ReadLine(QString& line);
    /// Length in bytes of the file being read; 0 for a pipe.
    [[nodiscard]] qint64 GetLength() const;

    void WriteBytes(QByteArrayView bytes);
    void WriteText(QStringView text);
    void WriteLine(QStringView text);
    /// Adds to `bytes` what WriteText would write: for lines that are put together before their
    /// turn comes.
    void AppendText(QByteArray& bytes, QStringView text) const;

  private:
    void StartBuffer();
    bool FillBuffer();
    void FlushBuffer();
    bool FinishOutput();

    COemCodec m_codec;
    bool m_isUtf8 = false;
    bool m_isAtEnd = false;
    bool m_isLineFeedDue = false;  ///< the last line ended in CR, so an LF now belongs to it
    bool m_hasFailed = false;
    std::unique_ptr<QFile> m_input;
    std::unique_ptr<QFileDevice> m_output;
    // Bytes m_begin to m_end of the buffer are read and not yet handed out, or written and not yet
    // passed on.
    QByteArray m_buffer;
    qsizetype m_begin = 0;
    qsizetype m_end = 0;
};
