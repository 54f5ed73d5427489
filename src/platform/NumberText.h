// Numbers as text: the C forms of files and the forms a person types and reads.
#pragma once

#include <QLocale>
#include <QString>
#include <optional>

/// The leading decimal number of `text` after blanks, as the C library reads it in the C locale;
/// 0 when there is none or when it is not finite.
double LeadingNumber(QStringView text);

/// `text` with the digits of every script replaced by 0 to 9.
QString WithAsciiDigits(QString text);

/// What a person typed, blanks trimmed: the locale's decimal separator and the point are both
/// accepted, group separators are not; digits may be of any script. The leading number counts, as
/// in LeadingNumber. Nothing when there is no number from -1e9 to 1e9.
std::optional<double> TypedNumber(QStringView text, const QLocale& locale = QLocale());

/// Far above any quantity in a diary: a larger number is a typing mistake.
inline constexpr double kLargestTyped = 1e9;
/// Whether TypedNumber returns nothing because the number's magnitude exceeds kLargestTyped.
bool IsTypedTooLarge(QStringView text, const QLocale& locale = QLocale());

/// The number in a text that the program itself shows, of any size; 0 when there is none.
double ShownValue(QStringView text, const QLocale& locale = QLocale());

/// A typed amount in its shortest form, with the locale's decimal separator; empty for an empty
/// text. Nothing when it is negative or TypedNumber finds none.
std::optional<QString> TypedAmount(const QString& text, const QLocale& locale = QLocale());

/// "%<width>.<decimals>f" with a point, whatever the locale. Here and below, infinity is written as
/// the largest double of its sign and NaN as 0.
QString FixedNumber(double value, int decimals, int width = 1);

/// The same in ASCII, appended to `line`.
void AppendFixed(QByteArray& line, double value, int decimals);
/// The 309 digits of the largest double, at most 100 decimals, sign and point.
inline constexpr int kMaxFixedLength = 309 + 100 + 2;
/// The same written to `to`, which has room for kMaxFixedLength bytes. Returns its end.
char* WriteFixed(char* to, double value, int decimals);

/// FixedNumber with the locale's decimal separator, for a person to read.
QString ShownNumber(double value, int decimals, const QLocale& locale = QLocale());

/// The shortest form that reads back to the same double, with a point.
QString ShortestNumber(double value);

/// Rounded to a hundredth, or to three digits below 0.1, as ShortestNumber: "206.3", "0.004".
QString RoundedNumber(double value);

/// "05"; more digits where the number has them.
QString TwoDigits(int number);

/// Truncation toward zero, limited to what an int holds; 0 for NaN.
int Whole(double value);
