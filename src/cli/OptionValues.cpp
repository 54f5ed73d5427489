#include "cli/OptionValues.h"

#include "platform/FileTime.h"
#include "platform/NumberText.h"

using namespace Qt::StringLiterals;

namespace {
bool IsWithin(const COption& option, double value) {
    return value >= option.low && value <= option.high;
}

/// -1 when no nutrient has that index or exchange name.
int NutrientNamed(const QString& text) {
    bool isNumber = false;
    const int index = text.toInt(&isNumber);
    if (isNumber) {
        return index >= 0 && index < kNutrientCount ? index : -1;
    }
    for (int i = 0; i < kNutrientCount; ++i) {
        if (text.compare(QLatin1StringView(NutrientNamesOf(i).csvName), Qt::CaseInsensitive) == 0) {
            return i;
        }
    }
    return -1;
}
}  // namespace

std::optional<QDate> ReadDate(const QString& text) {
    const QDate date = QDate::fromString(text, Qt::ISODate);
    return date.isValid() && date >= DateOf(0) ? std::optional(date) : std::nullopt;
}

std::optional<QTime> ReadTime(const QString& text) {
    const QTime time = QTime::fromString(text, u"HH:mm"_s);
    return time.isValid() ? std::optional(time) : std::nullopt;
}

std::optional<double> ReadNumber(const COption& option, const QString& text) {
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    return isNumber && IsWithin(option, value) ? std::optional(value) : std::nullopt;
}

std::optional<int> ReadWhole(const COption& option, const QString& text) {
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    return isNumber && IsWithin(option, value) ? std::optional(value) : std::nullopt;
}

std::optional<int> ReadChoice(const COption& option, const QString& text) {
    const QStringList words = ChoicesOf(option);
    for (int place = 0; place < words.size(); ++place) {
        const bool isPlace = option.kind == EValue::Code && text == QString::number(place);
        if (isPlace || text.compare(words[place], Qt::CaseInsensitive) == 0) {
            return place;
        }
    }
    return std::nullopt;
}

std::optional<int> ReadChoices(const COption& option, const QString& text) {
    int bits = 0;
    for (const QString& word : text.split(u',', Qt::SkipEmptyParts)) {
        const std::optional<int> place = ReadChoice(option, word);
        if (!place) {
            return std::nullopt;
        }
        bits |= 1 << *place;
    }
    return bits;
}

std::optional<NutrientSet> ReadNutrients(const QString& text) {
    NutrientSet nutrients;
    for (const QString& name : text.split(u',', Qt::SkipEmptyParts)) {
        const int nutrient = NutrientNamed(name.trimmed());
        if (nutrient < 0) {
            return std::nullopt;
        }
        nutrients.set(nutrient);
    }
    return nutrients;
}

std::optional<CNutrientTarget> ReadTarget(const COption& option, const QString& text) {
    const qsizetype sign = text.lastIndexOf(u'=');
    const int nutrient = NutrientNamed(text.left(sign).trimmed());
    const std::optional<double> value = ReadNumber(option, text.mid(sign + 1));
    if (sign < 0 || nutrient < 0 || !value) {
        return std::nullopt;
    }
    return CNutrientTarget{nutrient, *value};
}

bool IsReadable(const COption& option, const QString& text) {
    switch (option.kind) {
        case EValue::None:
            return text.isEmpty();
        case EValue::Text:
            return true;
        case EValue::Date:
            return ReadDate(text).has_value();
        case EValue::Time:
            return ReadTime(text).has_value();
        case EValue::Number:
            return ReadNumber(option, text).has_value();
        case EValue::Whole:
            return ReadWhole(option, text).has_value();
        case EValue::Choice:
        case EValue::Code:
            return ReadChoice(option, text).has_value();
        case EValue::Choices:
            return ReadChoices(option, text).has_value();
        case EValue::Nutrients:
            return ReadNutrients(text).has_value();
        case EValue::Target:
            return ReadTarget(option, text).has_value();
    }
    return false;
}

QString NeededValue(const COption& option) {
    const QString words = ChoicesOf(option).join(u", "_s);
    const QString limits = LimitsOf(option);
    switch (option.kind) {
        case EValue::None:
            return u"no value"_s;
        case EValue::Text:
            return u"a value"_s;
        case EValue::Date:
            return u"a date such as 2026-05-31"_s;
        case EValue::Time:
            return u"a time such as 12:30"_s;
        case EValue::Number:
            return u"a number from "_s + limits;
        case EValue::Whole:
            return u"a whole number from "_s + limits;
        case EValue::Choice:
            return u"one of "_s + words;
        case EValue::Code:
            return u"one of "_s + words + u", or a number from "_s + limits;
        case EValue::Choices:
            return u"some of "_s + words;
        case EValue::Nutrients:
            return u"nutrients such as 0,1,Iron(mg)"_s;
        case EValue::Target:
            return u"a nutrient and a number from "_s + limits + u", such as Iron(mg)=18"_s;
    }
    return {};
}

QStringList ChoicesOf(const COption& option) {
    return QString::fromLatin1(option.value).split(u'|');
}

QString LimitsOf(const COption& option) {
    const double high =
        option.kind == EValue::Code ? double(ChoicesOf(option).size()) - 1 : option.high;
    return high > 0 ? FixedNumber(option.low, 0) + u" to "_s + FixedNumber(high, 0) : QString();
}
