// 8-bit text in the OEM code page of the user's locale.
#pragma once

#include <QByteArray>
#include <QLocale>
#include <QString>

/// One single-byte code page. Bytes below 128 are ASCII. Every byte decodes to some character and
/// encodes back to itself, so text that is read and written again keeps its bytes.
///
/// A codec is a cheap value: the tables of a page are built at its first use, shared by all its
/// codecs and kept until the program ends.
class COemCodec {
  public:
    /// The single-byte page of that number (437, 850, 852, ...); 437 for an unknown one.
    explicit COemCodec(int codePage = 437);
    /// The OEM code page that belongs to a locale: 437 for US English and the C locale.
    static int CodePageOf(const QLocale& locale);

    [[nodiscard]] QString Decode(QByteArrayView bytes) const;
    /// One byte per UTF-16 unit; '?' for what the code page cannot hold.
    [[nodiscard]] QByteArray Encode(QStringView text) const;

    /// The same into the caller's memory, which has room for as many units as the input.
    void DecodeTo(QChar* units, QByteArrayView bytes) const;
    void EncodeTo(char* bytes, QStringView text) const;

  private:
    struct CTables;
    static const CTables& TablesOf(int codePage);

    const CTables* m_tables;
};
