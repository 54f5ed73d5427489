// The instructions of a recipe as one field of an exchange file.
#pragma once

#include <QString>

/// CR and LF become "\r" and "\n"; a backslash before any other letter is a backslash. So that
/// every text comes back as it was:
/// - a text that begins or ends in a quote or a blank is put in quotes once more;
/// - a data link escape (U+0010) separates a backslash from an "r" or "n" after it, and a quote
///   from a comma. The reader takes the character after it literally. One in the text is doubled.
QString EscapedInstructions(const QString& text);
/// Takes a field as CCsvFields hands it out.
QString UnescapedInstructions(QStringView field);
