#include "platform/TypedDate.h"

#include <QLocale>
#include <QRegularExpression>
#include <QStringList>
#include <algorithm>

#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kDaysPerWeek = 7;
constexpr int kLeastLetters = 3;
constexpr int kYearsAhead = 19;

/// The letters d, M and y in the order of the locale's short format.
QString OrderOfLocale() {
    QString order;
    for (const QChar letter : QLocale().dateFormat(QLocale::ShortFormat)) {
        if (u"dMy"_s.contains(letter) && !order.contains(letter)) {
            order.append(letter);
        }
    }
    return order.size() == 3 ? order : u"dMy"_s;
}

std::optional<QDate> Valid(QDate date) {
    return date.isValid() ? std::optional(date) : std::nullopt;
}

int WholeYear(QStringView digits, QDate today) {
    const int year = digits.toInt();
    if (digits.size() > 2) {
        return year;
    }
    const int century = today.year() - today.year() % 100;
    const int nearest = century + year;
    return nearest > today.year() + kYearsAhead          ? nearest - 100
           : nearest <= today.year() - 100 + kYearsAhead ? nearest + 100
                                                         : nearest;
}

/// Without case and accents, so that "sab" is a beginning of "sábado".
QString Folded(const QString& text) {
    QString folded = text.normalized(QString::NormalizationForm_KD).toCaseFolded();
    folded.removeIf([](QChar character) { return character.isMark(); });
    return folded;
}

std::optional<QDate> DayBefore(const QString& typed, QDate today) {
    const QString text = Folded(typed);
    std::optional<QDate> begun;
    for (int daysAgo = 0; daysAgo < kDaysPerWeek && text.size() >= kLeastLetters; ++daysAgo) {
        const QDate day = today.addDays(-daysAgo);
        for (const QLocale& locale : {QLocale(), QLocale(QLocale::English)}) {
            const QString name = Folded(locale.standaloneDayName(day.dayOfWeek()));
            if (name == text) {
                return day;  // even where another name begins with it
            }
            if (!begun && name.startsWith(text)) {
                begun = day;
            }
        }
    }
    return begun;
}

/// The parts in `order`, which has a letter for each.
std::optional<QDate> FromParts(const QStringList& parts, QStringView order, QDate held,
                               QDate today) {
    int day = held.day();
    int month = held.month();
    int year = held.year();
    for (qsizetype i = 0; i < order.size(); ++i) {
        const QString& part = parts[i];
        switch (order[i].unicode()) {
            case u'd':
                day = part.toInt();
                break;
            case u'M':
                month = part.toInt();
                break;
            default:
                year = WholeYear(part, today);
        }
    }
    return Valid(QDate(year, month, day));
}

/// Digits without separators, in `order`.
std::optional<QDate> FromRun(const QString& digits, const QString& order, QDate held, QDate today) {
    QStringList parts;
    qsizetype at = 0;
    for (const QChar letter : order) {
        const qsizetype size = letter == u'y' ? digits.size() - 4 : 2;
        parts.append(digits.sliced(at, size));
        at += size;
    }
    return FromParts(parts, order, held, today);
}

std::optional<QDate> FromNumbers(const QStringList& parts, QDate held, QDate today) {
    const QString order = OrderOfLocale();
    const qsizetype digits = parts.front().size();
    const bool isIso = digits == 4;
    switch (parts.size()) {
        case 1: {
            if (digits == 6) {
                return FromRun(parts.front(), order, held, today);
            }
            if (digits == 8) {
                const auto date = FromRun(parts.front(), order, held, today);
                return date ? date : FromRun(parts.front(), u"yMd"_s, held, today);
            }
            return FromParts(parts, isIso ? u"y" : u"d", held, today);
        }
        case 2:
            return FromParts(parts, isIso ? u"yM"_s : QString(order).remove(u'y'), held, today);
        case 3:
            return FromParts(parts, isIso ? u"yMd"_s : order, held, today);
        default:
            return std::nullopt;
    }
}

}  // namespace

std::optional<QDate> TypedDate(const QString& text, QDate held, QDate today,
                               const QString& shownFormat) {
    const QString typed = text.simplified();
    if (typed.compare("t"_L1, Qt::CaseInsensitive) == 0) {
        return today;
    }
    if (const QDate shown = QLocale().toDate(typed, shownFormat); shown.isValid()) {
        return shown;
    }
    const QString plain = WithAsciiDigits(typed);
    static const QRegularExpression kDays(u"^([+-]) ?(\\d{1,6})$"_s);
    if (const auto days = kDays.match(plain); days.hasMatch()) {
        const qint64 count = days.capturedView(2).toLongLong();
        return Valid(held.addDays(days.capturedView(1) == "-"_L1 ? -count : count));
    }
    // Some locales' formats hold marks of direction and words around the numbers.
    static const QRegularExpression kNumbers(
        u"^\\d{1,8}([^\\d\\p{L}]+\\d{1,4}){0,2}[^\\d\\p{L}]*$"_s);
    static const QRegularExpression kBetween(u"\\D+"_s);
    if (kNumbers.match(plain).hasMatch()) {
        return FromNumbers(plain.split(kBetween, Qt::SkipEmptyParts), held, today);
    }
    return DayBefore(typed, today);
}
