// How a line of an exchange file is split into fields, and how fields are written.
#pragma once

#include <QByteArray>
#include <QSet>
#include <QStringList>
#include <optional>
#include <vector>

#include "catalogue/items/TextLimits.h"

class CTextFile;

/// Splits one line into fields, one per call. The views point into the line.
///
/// A field that begins with a quote ends at the next quote followed by a comma, so it may contain
/// commas but not that pair; any other field ends at the next comma. The field is trimmed, then one
/// quote at each end is removed if it has two characters or more.
class CCsvFields {
  public:
    explicit CCsvFields(QStringView line);
    /// Nothing when the line has no further field.
    std::optional<QStringView> Next();
    /// The next field as ImportedNumber reads it.
    std::optional<double> NextNumber();

  private:
    // The rest of the line, without blanks at its end.
    const QChar* m_at;
    const QChar* m_end;
};

/// Counts distinct texts and keeps the first of them for a message.
class CDistinctTexts {
  public:
    void Add(const QString& text);
    [[nodiscard]] int Count() const { return static_cast<int>(m_texts.size()); }
    /// "'Soup', 'Stew', ...".
    [[nodiscard]] QString First() const;

  private:
    QSet<QString> m_texts;
    QStringList m_first;
};

/// Writes lines field by field, and collects what an import will not read back unchanged. The file
/// outlives it.
class CCsvLineWriter {
  public:
    explicit CCsvLineWriter(CTextFile& file) : m_file(file) {}
    /// Appends ASCII text unchanged; it contains its own comma.
    void Raw(QByteArrayView bytes);
    /// Appends the text in quotes; a line break becomes a blank, since it would end the line.
    void Text(QStringView text);
    /// The same for a text whose quotes are already escaped.
    void EscapedText(QStringView text);
    /// Three decimals: "1.500,". A number that is not finite is written as 0.
    void Number(double value);
    /// `item` names the item of the line, for LongLines.
    void EndLine(const QString& item = QString());

    /// Texts that an import will change because of their quotes.
    [[nodiscard]] const CDistinctTexts& ChangedTexts() const { return m_changedTexts; }
    /// Items with lines longer than CTextFile::kMaxLineBytes, which an import splits.
    [[nodiscard]] const CDistinctTexts& LongLines() const { return m_longLines; }

  private:
    /// Makes room for `bytes` more; the caller writes them and then advances m_size.
    char* Room(qsizetype bytes);

    CTextFile& m_file;
    // The line not yet written.
    std::vector<char> m_line;
    size_t m_size = 0;
    CDistinctTexts m_changedTexts;
    CDistinctTexts m_longLines;
};

/// A text of a file as it is stored: one longer than `longest` is cut there, with "..." as its last
/// three characters.
QString CutImportedText(QStringView text, int longest = kLongestText);
/// A number of a file: 1 to 19 characters are read, any other length gives 0.
double ImportedNumber(QStringView field);
