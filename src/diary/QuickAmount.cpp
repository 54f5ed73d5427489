#include "diary/QuickAmount.h"

#include <QStringList>
#include <algorithm>
#include <limits>

#include "store/search/SearchWords.h"

using namespace Qt::StringLiterals;

namespace {

struct CUnitRow {
    const char* name;  ///< singular
    EMeasure measure;
    double size;
};
// Grams of the international pound and ounce; millilitres of the customary cup and its parts.
constexpr CUnitRow kUnits[] = {
    {"g", EMeasure::Weight, 1},
    {"gm", EMeasure::Weight, 1},
    {"gram", EMeasure::Weight, 1},
    {"kg", EMeasure::Weight, 1000},
    {"kilogram", EMeasure::Weight, 1000},
    {"oz", EMeasure::Weight, 28.349523125},
    {"ounce", EMeasure::Weight, 28.349523125},
    {"lb", EMeasure::Weight, 453.59237},
    {"lbs", EMeasure::Weight, 453.59237},
    {"pound", EMeasure::Weight, 453.59237},
    {"ml", EMeasure::Volume, 1},
    {"milliliter", EMeasure::Volume, 1},
    {"millilitre", EMeasure::Volume, 1},
    {"cl", EMeasure::Volume, 10},
    {"dl", EMeasure::Volume, 100},
    {"l", EMeasure::Volume, 1000},
    {"liter", EMeasure::Volume, 1000},
    {"litre", EMeasure::Volume, 1000},
    {"tsp", EMeasure::Volume, 4.92892},
    {"teaspoon", EMeasure::Volume, 4.92892},
    {"tbsp", EMeasure::Volume, 14.7868},
    {"tablespoon", EMeasure::Volume, 14.7868},
    {"fl oz", EMeasure::Volume, 29.5735},
    {"fluid ounce", EMeasure::Volume, 29.5735},
    {"cup", EMeasure::Volume, 236.588},
    {"pint", EMeasure::Volume, 473.176},
    {"quart", EMeasure::Volume, 946.353},
};

constexpr int kMostUnitWords = 2;

struct CDigits {
    double value = 0;
    qsizetype end;  ///< where they began when there are none
};

/// With at most one decimal sign when `signs` has any.
CDigits ReadDigits(QStringView text, qsizetype first, QStringView signs) {
    CDigits digits{0, first};
    double place = 0;
    for (; digits.end < text.size(); ++digits.end) {
        const QChar character = text[digits.end];
        const bool isSign = place == 0 && signs.contains(character) && digits.end > first &&
                            digits.end + 1 < text.size() && text[digits.end + 1].isDigit();
        if (isSign) {
            place = 1;
        } else if (!character.isDigit()) {
            break;
        } else if (place > 0) {
            place /= 10;
            digits.value += character.digitValue() * place;
        } else {
            digits.value = digits.value * 10 + character.digitValue();
        }
    }
    return digits;
}

/// "1/2" or a sign such as "½" at `first`; ends there when there is none. Infinite for "1/0".
CDigits ReadFraction(QStringView text, qsizetype first) {
    QString spelled = text.sliced(first).toString();
    const QString parts = spelled.isEmpty() ? QString() : spelled.front().decomposition();
    const bool isSign = parts.contains(u'\u2044');
    if (isSign) {
        spelled = parts;
    }
    const CDigits above = ReadDigits(spelled, 0, {});
    const bool hasBar = above.end > 0 && above.end < spelled.size() &&
                        (spelled[above.end] == u'/' || spelled[above.end] == u'\u2044');
    const CDigits below = hasBar ? ReadDigits(spelled, above.end + 1, {}) : CDigits{0, 0};
    if (!hasBar || below.end == above.end + 1) {
        return {0, first};
    }
    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    return {below.value == 0 ? kInfinite : above.value / below.value,
            first + (isSign ? 1 : below.end)};
}

bool BeginsWithUnit(QStringView text) {
    const CFoldedWords folded(text);
    QStringList words;
    for (int i = 0; i < std::min(folded.Count(), kMostUnitWords); ++i) {
        words.append(folded.WordAt(i).toString());
    }
    return LeadingUnit(words).has_value();
}

}  // namespace

std::optional<CLeadingAmount> LeadingAmount(QStringView text, const QLocale& locale) {
    if (text.size() > 1 && (text[0] == u'-' || text[0] == u'\u2212') && text[1].isDigit()) {
        const auto amount = LeadingAmount(text.sliced(1), locale);
        return amount ? std::optional(CLeadingAmount{-amount->value, amount->length + 1}) : amount;
    }
    CDigits read = ReadFraction(text, 0);
    bool hasFraction = read.end > 0;
    if (!hasFraction) {
        read = ReadDigits(text, 0, u"."_s + locale.decimalPoint());
        if (read.end == 0) {
            return std::nullopt;
        }
        const bool isBlank = read.end < text.size() && text[read.end] == u' ';
        const qsizetype next = read.end + (isBlank ? 1 : 0);
        if (const CDigits fraction = ReadFraction(text, next); fraction.end > next) {
            read = {read.value + fraction.value, fraction.end};
            hasFraction = true;
        }
    }
    const QStringView rest = text.sliced(read.end);
    const bool ends = rest.isEmpty() || rest.front().isSpace() ||
                      (rest.front().isLetter() && (hasFraction || BeginsWithUnit(rest)));
    return ends ? std::optional(CLeadingAmount{read.value, read.end}) : std::nullopt;
}

std::optional<CMeasureUnit> LeadingUnit(const QStringList& words) {
    for (const int count : {kMostUnitWords, 1}) {
        if (words.size() < count) {
            continue;
        }
        QStringList name = words.first(count);
        name.last() = StemOf(name.last());
        const auto* const row = std::ranges::find_if(kUnits, [&](const CUnitRow& unit) {
            return name.join(u' ') == QLatin1StringView(unit.name);
        });
        if (row != std::end(kUnits)) {
            return CMeasureUnit{row->measure, row->size, count};
        }
    }
    return std::nullopt;
}
