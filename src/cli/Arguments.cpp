#include "cli/Arguments.h"

#include "platform/FileTime.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

CArguments::CArguments(const QStringList& words, std::span<const COptionDescription> options,
                       int wordCount) {
    bool optionsEnded = false;
    for (qsizetype i = 0; i < words.size(); ++i) {
        const QString& word = words[i];
        if (optionsEnded || !word.startsWith("--"_L1)) {
            m_words.append(word);
            continue;
        }
        if (word == "--"_L1) {
            optionsEnded = true;
            continue;
        }
        const auto option =
            std::ranges::find_if(options, [&](const COptionDescription& description) {
                return word == QLatin1StringView(description.name);
            });
        if (option == options.end()) {
            Note(u"unknown option "_s + word);
        } else if (m_values.contains(word)) {
            Note(word + u" is given twice"_s);
        } else if (!option->takesValue) {
            m_values.insert(word, QString());
        } else if (i + 1 == words.size()) {
            Note(word + u" needs a value"_s);
        } else {
            m_values.insert(word, words[++i]);
        }
    }
    for (const COptionDescription& option : options) {
        if (option.isRequired) {
            Require(option.name);
        }
    }
    if (m_words.size() != wordCount) {
        Note(u"%1 words are needed, %2 are given"_s.arg(wordCount).arg(m_words.size()));
    }
}

void CArguments::Require(const char* option) {
    if (!Has(option)) {
        Note(QLatin1StringView(option) + u" is missing"_s);
    }
}

bool CArguments::Has(const char* option) const {
    return m_values.contains(QLatin1StringView(option));
}

QString CArguments::Text(const char* option) const {
    return m_values.value(QLatin1StringView(option));
}

QDate CArguments::Date(const char* option) {
    const QDate date = QDate::fromString(Text(option), Qt::ISODate);
    if (!date.isValid() || date < DateOf(0)) {
        Note(QLatin1StringView(option) + u" needs a date such as 2026-05-31"_s);
    }
    return date;
}

QTime CArguments::Time(const char* option) {
    const QTime time = QTime::fromString(Text(option), u"HH:mm"_s);
    if (!time.isValid()) {
        Note(QLatin1StringView(option) + u" needs a time such as 12:30"_s);
    }
    return time;
}

double CArguments::Number(const char* option, double fallback) {
    if (!Has(option)) {
        return fallback;
    }
    bool isNumber = false;
    const double value = Text(option).toDouble(&isNumber);
    if (!isNumber || !std::isfinite(value)) {
        Note(QLatin1StringView(option) + u" needs a number"_s);
        return fallback;
    }
    return value;
}

int CArguments::Index(const char* option, int low, int high, int fallback) {
    if (!Has(option)) {
        return fallback;
    }
    bool isNumber = false;
    const int value = Text(option).toInt(&isNumber);
    if (!isNumber || value < low || value > high) {
        Note(QLatin1StringView(option) +
             u" needs a whole number from %1 to %2"_s.arg(low).arg(high));
        return fallback;
    }
    return value;
}

int CArguments::Choice(const char* option, const QStringList& choices, int fallback) {
    if (!Has(option)) {
        return fallback;
    }
    const auto index = static_cast<int>(choices.indexOf(Text(option)));
    if (index < 0) {
        Note(QLatin1StringView(option) + u" needs one of "_s + choices.join(u", "_s));
        return fallback;
    }
    return index;
}

int CArguments::Choices(const char* option, const QStringList& choices, int fallback) {
    if (!Has(option)) {
        return fallback;
    }
    int bits = 0;
    for (const QString& word : Text(option).split(u',', Qt::SkipEmptyParts)) {
        const auto index = static_cast<int>(choices.indexOf(word));
        if (index < 0) {
            Note(QLatin1StringView(option) + u" needs some of "_s + choices.join(u", "_s));
            return fallback;
        }
        bits |= 1 << index;
    }
    return bits;
}

void CArguments::Note(const QString& error) {
    if (m_error.isEmpty()) {
        m_error = error;
    }
}
