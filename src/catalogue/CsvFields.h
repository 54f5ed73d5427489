// How a line of an exchange file falls into fields, and how fields are written.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

class CTextFile;

/// Hands out the fields of one line, one call a field. The views point into the line given.
///
/// A field that begins with a quote runs to the next quote followed by a comma, so it may hold
/// commas but not that pair; any other runs to the next comma. Its outer blanks are trimmed, then
/// a field of two characters or more loses one quote at each end.
class CCsvFields {
  public:
    explicit CCsvFields(QStringView line) : m_rest(line.trimmed()) {}
    /// Nothing when the line has no further field.
    std::optional<QStringView> Next();

  private:
    QStringView m_rest;  ///< ends in no blank
};

/// Writes lines field by field. The file outlives it.
class CCsvLineWriter {
  public:
    explicit CCsvLineWriter(CTextFile& file) : m_file(file) {}
    /// ASCII as it stands, its comma included.
    void Raw(QByteArrayView bytes) { m_line.append(bytes); }
    /// Quoted; a line break becomes a blank, since it would end the line.
    void Text(QStringView text);
    /// Three decimals: "1.500,". What is not finite is written as 0.
    void Number(double value);
    void EndLine();

  private:
    CTextFile& m_file;
    QByteArray m_line;  ///< not yet passed on
};

/// The longest text that a file keeps whole.
inline constexpr int kLongestText = 127;
/// A longer name of a serving does not come back.
inline constexpr int kLongestServingName = 63;
/// Text as a file keeps it: 128 characters or more become the first 124 and "...".
QString CutImportedText(QStringView text);
/// A number of a file: 1 to 19 characters are read, any other length gives 0.
double ImportedNumber(QStringView field);
/// Appends a number and a comma as CCsvLineWriter::Number writes it.
void AppendNumber(QByteArray& line, double value);
