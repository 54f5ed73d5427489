// Texts of strangers may have control characters, which end lines and steer terminals.
#pragma once

#include <QString>
#include <algorithm>
#include <utility>

/// One of the 65 control characters: a line break, a tab, an escape and so on.
inline bool IsControl(QChar character) {
    return character < u' ' || (character >= u'\x7F' && character < u'\xA0');
}

/// The text with a blank in place of each control character.
inline QString WithoutControls(QString text) {
    if (std::ranges::any_of(std::as_const(text), IsControl)) {
        std::ranges::replace_if(text, IsControl, u' ');
    }
    return text;
}
