// How a line of an exchange file falls into fields, and how fields are written.
#pragma once

#include <QByteArray>
#include <QSet>
#include <QStringList>
#include <optional>
#include <vector>

#include "catalogue/items/TextLimits.h"

class CTextFile;

/// Hands out the fields of one line, one call a field. The views point into the line given.
///
/// A field that begins with a quote runs to the next quote followed by a comma, so it may hold
/// commas but not that pair; any other runs to the next comma. Its outer blanks are trimmed, then
/// a field of two characters or more loses one quote at each end.
class CCsvFields {
  public:
    explicit CCsvFields(QStringView line);
    /// Nothing when the line has no further field.
    std::optional<QStringView> Next();
    /// The next field as ImportedNumber reads it.
    std::optional<double> NextNumber();

  private:
    // The rest of the line, which ends in no blank.
    const QChar* m_at;
    const QChar* m_end;
};

/// Different texts: how many there are, and the first of them.
class CNotedTexts {
  public:
    void Add(const QString& text);
    [[nodiscard]] int Count() const { return static_cast<int>(m_texts.size()); }
    /// "'Soup', 'Stew', ...".
    [[nodiscard]] QString First() const;

  private:
    QSet<QString> m_texts;
    QStringList m_first;
};

/// Writes lines field by field, and notes what no import will read as it was. The file outlives it.
class CCsvLineWriter {
  public:
    explicit CCsvLineWriter(CTextFile& file) : m_file(file) {}
    /// ASCII as it stands, its comma included.
    void Raw(QByteArrayView bytes);
    /// Quoted; a line break becomes a blank, since it would end the line.
    void Text(QStringView text);
    /// The same of a text whose quotes have been taken care of.
    void EscapedText(QStringView text);
    /// Three decimals: "1.500,". What is not finite is written as 0.
    void Number(double value);
    /// `item` is whom the line belongs to.
    void EndLine(const QString& item = QString());

    /// Texts whose quotes keep them from coming back.
    [[nodiscard]] const CNotedTexts& ChangedTexts() const { return m_changedTexts; }
    /// Items with lines longer than a reader takes in one piece.
    [[nodiscard]] const CNotedTexts& LongLines() const { return m_longLines; }

  private:
    /// Room for so many bytes more; they count once m_size says so.
    char* Room(qsizetype bytes);

    CTextFile& m_file;
    // The line not yet passed on.
    std::vector<char> m_line;
    size_t m_size = 0;
    CNotedTexts m_changedTexts;
    CNotedTexts m_longLines;
};

/// Text as a file keeps it: 128 characters or more become the first 124 and "...".
QString CutImportedText(QStringView text);
/// A number of a file: 1 to 19 characters are read, any other length gives 0.
double ImportedNumber(QStringView field);
