// Texts cut to a length.
#pragma once

#include <QStringView>

/// The first `length` UTF-16 units of a longer text, or one less so as not to split a surrogate
/// pair.
inline QStringView CutText(QStringView text, qsizetype length) {
    if (text.size() <= length) {
        return text;
    }
    const bool isInPair = length > 0 && text[length - 1].isHighSurrogate();
    return text.first(isInPair ? length - 1 : length);
}
