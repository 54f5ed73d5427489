#include "diary/QuickMeasure.h"

#include <algorithm>
#include <vector>

#include "catalogue/items/FoundItem.h"
#include "diary/QuickAmount.h"
#include "platform/NumberText.h"
#include "store/search/SearchWords.h"

using namespace Qt::StringLiterals;

namespace {

struct CServing {
    QString name;
    double weightGrams;
    double count;       ///< the number its name begins with
    QStringList words;  ///< the folded words after it
};

/// Whether typed words are the beginning of a serving's: equal but for number; with `mayBeCut` the
/// last one may be unfinished.
bool IsBeginningOf(const QStringList& typed, const QStringList& serving, bool mayBeCut) {
    if (typed.isEmpty() || typed.size() > serving.size()) {
        return false;
    }
    for (qsizetype index = 0; index < typed.size(); ++index) {
        const bool isLast = index + 1 == typed.size();
        if (StemOf(typed[index]) != StemOf(serving[index]) &&
            !(mayBeCut && isLast && serving[index].startsWith(typed[index]))) {
            return false;
        }
    }
    return true;
}

QString Quoted(const CChosenFood& food) {
    return u'\'' + food.item.GetName() + u'\'';
}

/// How much an item's values are multiplied by.
struct CMultiple {
    double servings;
    double weightGrams;  ///< of a serving; 0 for a food kept per serving
};

/// Makes the item's values of that multiple the totals of `amount` servings of that name.
void TakeTotals(CChosenFood& food, const QString& serving, double amount,
                const CMultiple& multiple) {
    food.amount = amount;
    food.item.ClearServings();
    food.item.SetServingName(0, serving);
    food.item.SetServingWeight(0, amount);
    NutrientValues values = food.item.GetNutrientValues();
    for (double& value : values) {
        value = ValueOfServings(value, multiple.servings, multiple.weightGrams);
    }
    food.item.SetNutrientValues(values);
}

std::vector<CServing> ServingsOf(const CFoodItem& food) {
    std::vector<CServing> servings;
    for (int index = 0; index < kServingCount; ++index) {
        const QString name = food.GetServingName(index);
        if (name.isEmpty()) {
            continue;
        }
        const auto count = LeadingAmount(name, QLocale::c());
        const QString rest = count ? name.sliced(count->length) : name;
        servings.push_back({name, food.GetServingWeight(index),
                            count && count->value > 0 ? count->value : 1, FoldedWords(rest)});
    }
    return servings;
}

/// -1 when none has it. "tablespoon" also names "1 tbsp".
int ServingNamed(const std::vector<CServing>& servings, const QStringList& words) {
    const auto unit = LeadingUnit(words);
    const bool isUnit = unit && unit->words == words.size();
    auto named = std::ranges::find_if(servings, [&](const CServing& serving) {
        return IsBeginningOf(words, serving.words, !isUnit);
    });
    if (named == servings.end() && isUnit) {
        named = std::ranges::find_if(servings, [&unit](const CServing& serving) {
            const auto same = LeadingUnit(serving.words);
            return same && same->measure == unit->measure && same->size == unit->size;
        });
    }
    return named == servings.end() ? -1 : static_cast<int>(named - servings.begin());
}

}  // namespace

QStringList FoldedWords(const QString& text) {
    const CFoldedWords folded(text);
    QStringList words;
    for (int index = 0; index < folded.Count(); ++index) {
        words.append(folded.WordAt(index).toString());
    }
    return words;
}

bool HasServing(const CFoodItem& food, const QStringList& words) {
    return ServingNamed(ServingsOf(food), words) >= 0;
}

QString Measure(const CQuickReading& reading, CChosenFood& food) {
    if (reading.amount <= kLeastAmount || reading.amount > kLargestTyped) {
        return u"The amount is too small or too large."_s;
    }
    const std::vector<CServing> servings = ServingsOf(food.item);
    const bool isWeighed = food.kind == EItemKind::Food && food.item.IsWeighed();
    const auto unit = LeadingUnit(reading.unit);
    if (unit && unit->measure == EMeasure::Weight) {
        const double grams = reading.amount * unit->size;
        if (!isWeighed) {
            return Quoted(food) + u" is kept per serving, so its weight is not known."_s;
        }
        TakeTotals(food, RoundedNumber(grams) + u" gm"_s, 1, {1, grams});
        return {};
    }
    const auto multipleOf = [isWeighed](const CServing& serving, double amount) {
        return CMultiple{amount, isWeighed ? serving.weightGrams : 0};
    };
    // "3 cookies" may mean the serving "1 cookie".
    const QStringList what = FoldedWords(reading.what);
    const int counted = reading.hasAmount && reading.unit.isEmpty()
                            ? ServingNamed(servings, what.last(std::min<qsizetype>(1, what.size())))
                            : -1;
    const int named =
        !reading.unit.isEmpty() ? ServingNamed(servings, reading.unit) : std::max(0, counted);
    if (named >= 0 && named < std::ssize(servings)) {
        const CServing& serving = servings[named];
        const bool isNamed = !reading.unit.isEmpty() || counted >= 0;
        const double amount = isNamed ? reading.amount / serving.count : reading.amount;
        TakeTotals(food, serving.name, amount, multipleOf(serving, amount));
        return {};
    }
    if (!unit) {
        return servings.empty()
                   ? Quoted(food) + u" has no servings."_s
                   : Quoted(food) + u" has no serving '%1'."_s.arg(reading.unit.join(u' '));
    }
    for (const CServing& serving : servings) {
        const auto volume = LeadingUnit(serving.words);
        if (volume && volume->measure == EMeasure::Volume) {
            const double amount = reading.amount * unit->size / (serving.count * volume->size);
            TakeTotals(food, RoundedNumber(reading.amount) + u' ' + reading.unit.join(u' '), 1,
                       multipleOf(serving, amount));
            return {};
        }
    }
    return Quoted(food) + u" has no serving that names a volume."_s;
}
