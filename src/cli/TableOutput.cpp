#include "cli/TableOutput.h"

using namespace Qt::StringLiterals;

namespace {
QString Escaped(QString cell) {
    return cell.replace(u'\\', u"\\\\"_s)
        .replace(u'\t', u"\\t"_s)
        .replace(u'\n', u"\\n"_s)
        .replace(u'\r', u"\\r"_s);
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

QStringList MomentCells(FileTime moment) {
    return {DateOf(moment).toString(Qt::ISODate), TimeOf(moment).toString(Qt::ISODate)};
}

bool FinishOutput() {
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}
