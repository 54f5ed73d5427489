#include "platform/NumberText.h"

#include <QVarLengthArray>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace {
constexpr int kMaxDecimals = 100;
/// The largest double has 309 digits before the point; sign and point come with them.
constexpr size_t kMaxFixedLength = 309 + 2 + kMaxDecimals;
/// Longer numbers than this are read all the same, from the heap.
constexpr qsizetype kOrdinaryLength = 64;
/// The shortest form of a double has at most 24 characters.
constexpr size_t kMaxShortestLength = 32;

using CFixedText = std::array<char, kMaxFixedLength>;

bool IsBlank(char16_t c) {
    return c == u' ' || (c >= u'\t' && c <= u'\r');
}

bool IsDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

bool IsNumberPart(char16_t c) {
    return IsDigit(c) || c == u'.' || c == u'e' || c == u'E' || c == u'+' || c == u'-';
}

/// The leading number of `text`, in which `separator` counts as a point; nothing when there is
/// none or when a double cannot hold it.
std::optional<double> FindLeadingNumber(QStringView text, char16_t separator) {
    qsizetype i = 0;
    while (i < text.size() && IsBlank(text[i].unicode())) {
        ++i;
    }
    QVarLengthArray<char, kOrdinaryLength> number;
    if (i < text.size() && (text[i] == u'-' || text[i] == u'+')) {
        if (text[i] == u'-') {
            number.append('-');
        }
        ++i;
    }
    const qsizetype firstDigit = number.size();
    for (; i < text.size(); ++i) {
        const char16_t c = text[i] == separator ? u'.' : text[i].unicode();
        if (!IsNumberPart(c)) {
            break;
        }
        number.append(static_cast<char>(c));
    }
    // What from_chars would take besides: a second sign.
    if (number.size() == firstDigit || number[firstDigit] == '-') {
        return {};
    }
    double value = 0;
    const auto result = std::from_chars(number.cbegin(), number.cend(), value);
    if (result.ec != std::errc{}) {
        return {};
    }
    return value;
}

/// Writes the number and tells where it ends.
const char* WriteFixed(CFixedText& text, double value, int decimals) {
    const auto result = std::to_chars(text.begin(), text.end(), value, std::chars_format::fixed,
                                      std::clamp(decimals, 0, kMaxDecimals));
    Q_ASSERT(result.ec == std::errc{});
    return result.ptr;
}
}  // namespace

double LeadingNumber(QStringView text) {
    return FindLeadingNumber(text, u'.').value_or(0);
}

std::optional<double> TypedNumber(QStringView text, const QLocale& locale) {
    const QString separator = locale.decimalPoint();
    return FindLeadingNumber(text.trimmed(), separator.size() == 1 ? separator[0].unicode() : u'.');
}

std::optional<QString> TypedAmount(const QString& text, const QLocale& locale) {
    if (text.trimmed().isEmpty()) {
        return QString();
    }
    const std::optional<double> amount = TypedNumber(text, locale);
    if (!amount || *amount < 0) {
        return std::nullopt;
    }
    return ShortestNumber(*amount).replace(u'.', locale.decimalPoint());
}

QString FixedNumber(double value, int decimals, int width) {
    CFixedText text;
    const char* end = WriteFixed(text, value, decimals);
    return QString::fromLatin1(text.data(), end - text.data()).rightJustified(width);
}

QString ShownNumber(double value, int decimals, const QLocale& locale) {
    return FixedNumber(value, decimals).replace(u'.', locale.decimalPoint());
}

QString ShortestNumber(double value) {
    std::array<char, kMaxShortestLength> text;
    const auto result = std::to_chars(text.begin(), text.end(), value);
    return QString::fromLatin1(text.data(), result.ptr - text.data());
}

int Whole(double value) {
    if (std::isnan(value)) {
        return 0;
    }
    constexpr std::numeric_limits<int> kLimits;
    return static_cast<int>(std::clamp<double>(value, kLimits.min(), kLimits.max()));
}
