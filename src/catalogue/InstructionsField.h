// The instructions of a recipe as one field of an exchange file.
#pragma once

#include <QString>

/// CR and LF as "\r" and "\n". A quote that would end the field or be dropped at its ends becomes
/// "\q", a blank or tab that would be trimmed "\s" or "\t"; a backslash before one of these letters
/// or before another backslash is doubled.
QString EscapedInstructions(const QString& text);
QString UnescapedInstructions(QStringView field);
