#include "catalogue/exchange/InstructionsField.h"

namespace {
/// Data link escape: the character after it is taken literally.
constexpr QChar kLiteral = u'\x10';

bool IsTakenFromTheEnds(QChar character) {
    return character == u'"' || character.isSpace();
}
}  // namespace

QString EscapedInstructions(const QString& text) {
    QString field;
    field.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar character = text[i];
        const QChar next = i + 1 < text.size() ? text[i + 1] : QChar();
        if (character == u'\r') {
            field += u"\\r";
            continue;
        }
        if (character == u'\n') {
            field += u"\\n";
            continue;
        }
        field += character;
        if (character == kLiteral || (character == u'\\' && (next == u'r' || next == u'n')) ||
            (character == u'"' && next == u',')) {
            field += kLiteral;
        }
    }
    if (!field.isEmpty() &&
        (IsTakenFromTheEnds(field.front()) || IsTakenFromTheEnds(field.back()))) {
        field.prepend(field.front() == u',' ? u'"' + QString(kLiteral) : QString(u'"'))
            .append(u'"');
    }
    return field;
}

QString UnescapedInstructions(QStringView field) {
    QString text;
    text.reserve(field.size());
    for (qsizetype i = 0; i < field.size(); ++i) {
        const QChar next = i + 1 < field.size() ? field[i + 1] : QChar();
        if (field[i] == u'\\' && (next == u'r' || next == u'n')) {
            text += next == u'r' ? u'\r' : u'\n';
            ++i;
        } else if (field[i] == kLiteral && i + 1 < field.size()) {
            text += next;
            ++i;
        } else {
            text += field[i];
        }
    }
    return text;
}
