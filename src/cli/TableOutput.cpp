#include "cli/TableOutput.h"

#include <algorithm>

#include "platform/ControlCharacters.h"

using namespace Qt::StringLiterals;

namespace {
/// Names may come from files of strangers, and a terminal obeys control characters.
bool IsEscaped(QChar character) {
    return character == u'\\' || IsControl(character);
}

QString EscapeOf(QChar character) {
    constexpr QStringView kNamed = u"\\\t\n\r";
    constexpr QStringView kNames = u"\\tnr";
    const qsizetype place = kNamed.indexOf(character);
    return place < 0 ? u"\\x%1"_s.arg(character.unicode(), 2, 16, QChar(u'0'))
                     : QString(u'\\') + kNames[place];
}

QString Escaped(const QString& cell) {
    if (std::ranges::none_of(cell, IsEscaped)) {
        return cell;
    }
    QString escaped;
    for (const QChar character : cell) {
        if (IsEscaped(character)) {
            escaped += EscapeOf(character);
        } else {
            escaped += character;
        }
    }
    return escaped;
}
}  // namespace

void PrintLine(std::FILE* stream, const QString& text) {
    const QByteArray bytes = text.toUtf8() + '\n';
    // A failed write sets the stream's error flag, which FinishOutput checks.
    (void)std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
}

void PrintRow(const QStringList& cells) {
    QStringList escaped;
    escaped.reserve(cells.size());
    for (const QString& cell : cells) {
        escaped.append(Escaped(cell));
    }
    PrintLine(stdout, escaped.join(u'\t'));
}

void PrintMessage(std::FILE* stream, const QString& text) {
    for (const QString& line : text.split(u'\n')) {
        PrintLine(stream, Escaped(line));
    }
}

QStringList MomentCells(FileTime moment) {
    return {DateOf(moment).toString(Qt::ISODate), TimeOf(moment).toString(Qt::ISODate)};
}

bool FinishOutput() {
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}
