// Numbers as text: the C forms of files and the forms a person types and reads.
#pragma once

#include <QLocale>
#include <QString>
#include <optional>

/// The leading decimal number of `text` after blanks, as the C library reads it in the C locale;
/// 0 when there is none or when it is not finite.
double LeadingNumber(QStringView text);

/// The digits of every script as 0 to 9.
QString WithAsciiDigits(QString text);

/// What a person typed, blanks trimmed: the locale's decimal separator and the point are both
/// accepted, group separators are not; digits may be of any script. The leading number counts, as
/// in LeadingNumber. Nothing when there is no number from -1e9 to 1e9.
std::optional<double> TypedNumber(QStringView text, const QLocale& locale = QLocale());

/// No quantity of a diary comes near it; what is typed beyond it is a slip.
inline constexpr double kLargestTyped = 1e9;
/// Whether a typed number is beyond kLargestTyped, where TypedNumber has nothing.
bool IsTypedTooLarge(QStringView text, const QLocale& locale = QLocale());

/// The number in a text that the program shows, which may be of any size; 0 when there is none.
double ShownValue(QStringView text, const QLocale& locale = QLocale());

/// What counts of a typed amount, as the shortest form with the locale's decimal separator; empty
/// for an empty text. Nothing when it is negative or no number of TypedNumber.
std::optional<QString> TypedAmount(const QString& text, const QLocale& locale = QLocale());

/// "%<width>.<decimals>f" with a point, whatever the locale. Here and below, what is not finite
/// reads as the largest number of its sign, and as 0 when it is no number.
QString FixedNumber(double value, int decimals, int width = 1);

/// The same in ASCII, appended to `line`.
void AppendFixed(QByteArray& line, double value, int decimals);
/// The largest double has 309 digits before the point, and there are 100 decimals at most; sign and
/// point come with them.
inline constexpr int kMaxFixedLength = 309 + 100 + 2;
/// The same at `to`, where there is room for kMaxFixedLength. Returns its end.
char* WriteFixed(char* to, double value, int decimals);

/// FixedNumber with the locale's decimal separator, for a person to read.
QString ShownNumber(double value, int decimals, const QLocale& locale = QLocale());

/// The shortest form that reads back to the same double, with a point.
QString ShortestNumber(double value);

/// "05"; more digits where the number has them.
QString TwoDigits(int number);

/// Truncation toward zero, limited to what an int holds; 0 for NaN.
int Whole(double value);
