// The instructions of a recipe as one field of an exchange file.
#pragma once

#include <QString>

/// CR and LF become "\r" and "\n"; a backslash before any other letter is only a backslash. To read
/// every text back unchanged:
/// - a text that begins or ends with a quote or a blank gets an additional pair of quotes;
/// - a data link escape (U+0010) is inserted between a backslash and an "r" or "n", and between a
///   quote and a comma. The reader takes the character after it literally. One in the text itself
///   is doubled.
QString EscapedInstructions(const QString& text);
/// `field` is as CCsvFields returns it.
QString UnescapedInstructions(QStringView field);
