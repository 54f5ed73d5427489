#include "platform/NumberText.h"

#include <QVarLengthArray>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace {
constexpr int kMaxDecimals = 100;
/// Numbers up to this length are read without allocating.
constexpr qsizetype kOrdinaryLength = 64;
/// Of the shortest form of a double.
constexpr size_t kMaxShortestLength = 24;

bool IsBlank(char16_t c) {
    return c == u' ' || (c >= u'\t' && c <= u'\r');
}

bool IsDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

bool IsNumberPart(char16_t c) {
    return IsDigit(c) || c == u'.' || c == u'e' || c == u'E' || c == u'+' || c == u'-';
}

/// For an unsigned number outside the range of a double: whether it is too large, not too small.
bool IsTooLarge(QByteArrayView number) {
    const qsizetype exponent = std::max(number.indexOf('e'), number.indexOf('E'));
    return exponent < 0 ? number[0] != '0' && number[0] != '.' : number[exponent + 1] != '-';
}

/// The leading number of `text`, in which `separator` counts as a point; nothing when there is
/// none. Infinite where it is too large for a double.
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
    // from_chars would accept a second minus sign.
    if (number.size() == firstDigit || number[firstDigit] == '-') {
        return {};
    }
    double value = 0;
    const auto result = std::from_chars(number.cbegin(), number.cend(), value);
    if (result.ec == std::errc::result_out_of_range) {
        if (!IsTooLarge({number.cbegin() + firstDigit, result.ptr})) {
            return 0;
        }
        return firstDigit > 0 ? -HUGE_VAL : HUGE_VAL;
    }
    return result.ec == std::errc{} ? std::optional(value) : std::nullopt;
}

std::optional<double> FindLocaleNumber(QStringView text, const QLocale& locale) {
    const QString separator = locale.decimalPoint();
    return FindLeadingNumber(WithAsciiDigits(text.trimmed().toString()),
                             separator.size() == 1 ? separator[0].unicode() : u'.');
}

/// The rounded number in units of its last decimal. -1 where this quick way does not apply: near
/// halves, which depend on the exact binary value, and for negative or large numbers or many
/// decimals.
qint64 LastDecimals(double value, int decimals) {
    static constexpr std::array<double, 7> kPowers = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};
    constexpr double kLargest = 1e12;
    if (decimals >= std::ssize(kPowers) || std::signbit(value)) {
        return -1;
    }
    const double scaled = value * kPowers[decimals];
    if (!(scaled < kLargest)) {
        return -1;
    }
    // Only values near halves are rounded wrongly, and the next line rejects those.
    // NOLINTNEXTLINE(bugprone-incorrect-roundings)
    const auto whole = static_cast<qint64>(scaled + 0.5);
    return std::abs(scaled - static_cast<double>(whole)) < 0.499 ? whole : -1;
}

/// Sums and conversions of large values may overflow; files and lists then show the largest double,
/// and 0 for NaN.
double Finite(double value) {
    constexpr double kLargest = std::numeric_limits<double>::max();
    return std::isnan(value) ? 0 : std::clamp(value, -kLargest, kLargest);
}
}  // namespace

double LeadingNumber(QStringView text) {
    const double number = FindLeadingNumber(text, u'.').value_or(0);
    return std::isfinite(number) ? number : 0;
}

QString WithAsciiDigits(QString text) {
    for (QChar& c : text) {
        c = c.isDigit() ? QChar(static_cast<char16_t>(u'0' + c.digitValue())) : c;
    }
    return text;
}

std::optional<double> TypedNumber(QStringView text, const QLocale& locale) {
    const std::optional<double> number = FindLocaleNumber(text, locale);
    return number && std::abs(*number) <= kLargestTyped ? number : std::nullopt;
}

bool IsTypedTooLarge(QStringView text, const QLocale& locale) {
    return std::abs(FindLocaleNumber(text, locale).value_or(0)) > kLargestTyped;
}

double ShownValue(QStringView text, const QLocale& locale) {
    return FindLocaleNumber(text, locale).value_or(0);
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

char* WriteFixed(char* to, double value, int decimals) {
    const int places = std::clamp(decimals, 0, kMaxDecimals);
    const qint64 last = LastDecimals(value, places);
    if (last < 0) {
        const auto result = std::to_chars(to, to + kMaxFixedLength, Finite(value),
                                          std::chars_format::fixed, places);
        Q_ASSERT(result.ec == std::errc{});
        return result.ptr;
    }
    // Written backwards from the last digit, with at least one digit before the point.
    std::array<char, 24> digits;
    char* at = digits.end();
    auto rest = static_cast<quint64>(last);
    for (int digit = 0; digit <= places || rest > 0; ++digit) {
        if (digit == places && places > 0) {
            *--at = '.';
        }
        *--at = static_cast<char>('0' + rest % 10);
        rest /= 10;
    }
    return std::copy(at, digits.end(), to);
}

QString FixedNumber(double value, int decimals, int width) {
    std::array<char, kMaxFixedLength> text;
    const char* const end = WriteFixed(text.data(), value, decimals);
    return QString::fromLatin1(text.data(), end - text.data()).rightJustified(width);
}

void AppendFixed(QByteArray& line, double value, int decimals) {
    std::array<char, kMaxFixedLength> text;
    line.append(QByteArrayView(text.data(), WriteFixed(text.data(), value, decimals)));
}

QString ShownNumber(double value, int decimals, const QLocale& locale) {
    return FixedNumber(value, decimals).replace(u'.', locale.decimalPoint());
}

QString ShortestNumber(double value) {
    std::array<char, kMaxShortestLength> text;
    const auto result = std::to_chars(text.begin(), text.end(), Finite(value));
    return QString::fromLatin1(text.data(), result.ptr - text.data());
}

QString RoundedNumber(double value) {
    constexpr double kSmall = 0.1;
    constexpr double kHundredth = 100;
    return value < kSmall ? QString::number(value, 'g', 3)
                          : ShortestNumber(std::round(value * kHundredth) / kHundredth);
}

QString TwoDigits(int number) {
    return QString::number(number).rightJustified(2, u'0');
}

int Whole(double value) {
    if (std::isnan(value)) {
        return 0;
    }
    constexpr std::numeric_limits<int> kLimits;
    return static_cast<int>(std::clamp<double>(value, kLimits.min(), kLimits.max()));
}
