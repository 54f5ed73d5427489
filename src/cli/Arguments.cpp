#include "cli/Arguments.h"

#include <algorithm>

#include "cli/NearWord.h"

using namespace Qt::StringLiterals;

namespace {
constexpr auto kOptionMark = "--"_L1;

QStringView NameOf(QStringView word) {
    return word.left(word.indexOf(u'='));
}

const COption* FindOption(std::span<const COption> options, QStringView name) {
    const auto isNamed = [&](const COption& option) {
        return name == QLatin1StringView(option.name);
    };
    const auto found = std::ranges::find_if(options, isNamed);
    if (found != options.end()) {
        return &*found;
    }
    const auto* common = std::ranges::find_if(kCommonOptions, isNamed);
    return common != std::end(kCommonOptions) ? common : nullptr;
}

QStringList NamesOf(std::span<const COption> options) {
    QStringList names;
    for (const COption& option : options) {
        names.append(QLatin1StringView(option.name));
    }
    return names;
}
}  // namespace

CArguments::CArguments(const QStringList& words, std::span<const COption> options,
                       const char* expected)
    : m_options(options) {
    bool optionsEnded = false;
    for (qsizetype at = 0; at < words.size(); ++at) {
        if (optionsEnded || !words[at].startsWith(kOptionMark)) {
            m_words.append(words[at]);
        } else if (words[at] == kOptionMark) {
            optionsEnded = true;
        } else {
            TakeOption(words, at);
        }
    }
    CheckOptions();
    CheckWords(expected);
}

bool CArguments::Has(const char* option) const {
    return m_values.contains(QLatin1StringView(option));
}

QString CArguments::Text(const char* option, const QString& fallback) const {
    return Has(option) ? m_values.value(QLatin1StringView(option)).first() : fallback;
}

QDate CArguments::Date(const char* option, QDate fallback) const {
    return ReadDate(Text(option)).value_or(fallback);
}

QTime CArguments::Time(const char* option) const {
    return ReadTime(Text(option)).value_or(QTime());
}

double CArguments::Number(const char* option, double fallback) const {
    return ReadNumber(Row(option), Text(option)).value_or(fallback);
}

int CArguments::Whole(const char* option, int fallback) const {
    return ReadWhole(Row(option), Text(option)).value_or(fallback);
}

int CArguments::Choice(const char* option, int fallback) const {
    return ReadChoice(Row(option), Text(option)).value_or(fallback);
}

int CArguments::Choices(const char* option, int fallback) const {
    return Has(option) ? ReadChoices(Row(option), Text(option)).value_or(fallback) : fallback;
}

NutrientSet CArguments::Nutrients(const char* option, NutrientSet fallback) const {
    return Has(option) ? ReadNutrients(Text(option)).value_or(fallback) : fallback;
}

std::vector<CNutrientTarget> CArguments::Targets(const char* option) const {
    std::vector<CNutrientTarget> targets;
    for (const QString& text : m_values.value(QLatin1StringView(option))) {
        if (const std::optional<CNutrientTarget> target = ReadTarget(Row(option), text)) {
            targets.push_back(*target);
        }
    }
    return targets;
}

std::vector<int> CArguments::ChoicesAfter(const char* option, const char* marker) const {
    std::vector<int> values;
    bool isAfter = false;
    for (const auto& [name, value] : m_inOrder) {
        const QByteArray latin = name.toLatin1();
        if (latin == option && isAfter) {
            values.push_back(ReadChoice(Row(option), value).value_or(0));
        } else if (Row(latin.constData()).kind == EValue::Date) {
            isAfter = latin == marker;
        }
    }
    return values;
}

const COption& CArguments::Row(const char* option) const {
    const COption* row = FindOption(m_options, QString::fromLatin1(option));
    Q_ASSERT(row != nullptr);
    return *row;
}

void CArguments::TakeOption(const QStringList& words, qsizetype& at) {
    const QString& word = words[at];
    const QString name = NameOf(word).toString();
    const COption* option = FindOption(m_options, name);
    if (option == nullptr) {
        SetError(u"unknown option "_s + name +
                 DidYouMean(name, NamesOf(m_options) + NamesOf(kCommonOptions)));
    } else if (option->kind == EValue::None) {
        TakeValue(*option, word.mid(name.size()));
    } else if (name.size() < word.size()) {
        TakeValue(*option, word.mid(name.size() + 1));
    } else if (at + 1 == words.size()) {
        SetError(name + u" needs "_s + NeededValue(*option));
    } else {
        TakeValue(*option, words[++at]);
    }
}

void CArguments::TakeValue(const COption& option, const QString& value) {
    const QString name = QLatin1StringView(option.name);
    if (m_values.contains(name) && option.need != ENeed::Repeatable) {
        SetError(name + u" is given twice"_s);
    } else if (!IsReadable(option, value)) {
        SetError(name + u" needs "_s + NeededValue(option));
    }
    m_values[name].append(value);
    m_inOrder.append({name, value});
}

void CArguments::CheckOptions() {
    for (const COption& option : m_options) {
        const bool hasRival = option.rival != nullptr && Has(option.rival);
        if (Has(option.name) && hasRival) {
            SetError(QLatin1StringView(option.name) + u" cannot be combined with "_s +
                     QLatin1StringView(option.rival));
        } else if (option.need == ENeed::Required && !Has(option.name) && !hasRival) {
            SetError(QLatin1StringView(option.name) + u" is missing"_s);
        }
    }
}

void CArguments::CheckWords(const char* expected) {
    const QStringList names = QString::fromLatin1(expected).split(u' ', Qt::SkipEmptyParts);
    if (m_words.size() < names.size()) {
        SetError(names[m_words.size()] + u" is missing"_s);
    } else if (m_words.size() > names.size()) {
        SetError(u"unexpected argument '%1'"_s.arg(m_words[names.size()]));
    }
}

void CArguments::SetError(const QString& error) {
    if (m_error.isEmpty()) {
        m_error = error;
    }
}

qsizetype FindWord(const QStringList& words, qsizetype from, std::span<const COption> options) {
    for (qsizetype at = from; at < words.size(); ++at) {
        if (!words[at].startsWith(kOptionMark)) {
            return at;
        }
        const QStringView name = NameOf(words[at]);
        const COption* option = FindOption(options, name);
        if (option == nullptr) {
            return -1;
        }
        const bool valueFollows = option->kind != EValue::None && name.size() == words[at].size();
        at += valueFollows ? 1 : 0;
    }
    return -1;
}
