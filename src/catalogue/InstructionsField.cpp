#include "catalogue/InstructionsField.h"

#include <algorithm>

namespace {
/// What an escape stands for, and its letter.
struct CEscape {
    char16_t character;
    char16_t letter;
};
constexpr CEscape kEscapes[] = {
    {u'\r', u'r'}, {u'\n', u'n'}, {u'"', u'q'}, {u' ', u's'}, {u'\t', u't'}, {u'\\', u'\\'},
};

const CEscape* EscapeOfLetter(QChar letter) {
    const auto* found = std::ranges::find(kEscapes, letter.unicode(), &CEscape::letter);
    return found == std::end(kEscapes) ? nullptr : found;
}

const CEscape* EscapeOf(QChar character) {
    const auto* found = std::ranges::find(kEscapes, character.unicode(), &CEscape::character);
    return found == std::end(kEscapes) ? nullptr : found;
}
}  // namespace

QString EscapedInstructions(const QString& text) {
    QString field;
    field.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar character = text[i];
        const bool isAtEnd = i == 0 || i + 1 == text.size();
        const QChar next = i + 1 < text.size() ? text[i + 1] : QChar();
        bool escapes = character == u'\r' || character == u'\n';
        if (character == u'"') {
            escapes = isAtEnd || next == u',';
        } else if (character == u' ' || character == u'\t') {
            escapes = isAtEnd;
        } else if (character == u'\\') {
            // Where another backslash may follow it in the field, or a letter stands.
            const bool nextIsLast = i + 2 == text.size();
            escapes = EscapeOfLetter(next) != nullptr || next == u'\r' || next == u'\n' ||
                      next == u'"' || (nextIsLast && next.isSpace());
        }
        if (escapes) {
            field += u'\\';
            field += QChar(EscapeOf(character)->letter);
        } else {
            field += character;
        }
    }
    return field;
}

QString UnescapedInstructions(QStringView field) {
    QString text;
    text.reserve(field.size());
    for (qsizetype i = 0; i < field.size(); ++i) {
        const CEscape* escape =
            field[i] == u'\\' && i + 1 < field.size() ? EscapeOfLetter(field[i + 1]) : nullptr;
        text += escape == nullptr ? field[i] : QChar(escape->character);
        i += escape == nullptr ? 0 : 1;
    }
    return text;
}
