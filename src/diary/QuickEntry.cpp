#include "diary/QuickEntry.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "app/ListCommands.h"
#include "catalogue/items/CatalogueChoices.h"
#include "catalogue/items/CatalogueKinds.h"
#include "diary/DietRules.h"
#include "diary/QuickAmount.h"
#include "store/Step.h"

using namespace Qt::StringLiterals;

namespace {

/// Matches of an item that are kept, and those among which one with the unit is looked for.
constexpr int kMatches = 8;
constexpr int kMatchesTried = 100;
constexpr int kMostServingWords = 3;

constexpr unsigned kEaten = KindBit(ECatalogueKind::Foods) | KindBit(ECatalogueKind::Menus) |
                            KindBit(ECatalogueKind::Recipes);

/// Words used only for servings. They are left out of the search when no item has such a serving.
constexpr const char* kServingWords[] = {"serving", "portion", "slice",  "piece", "can",
                                         "bottle",  "bowl",    "glass",  "scoop", "packet",
                                         "package", "handful", "medium", "large", "small"};

bool IsServingWord(const QString& word) {
    return std::ranges::any_of(kServingWords, [stem = StemOf(word)](const char* name) {
        return stem == StemOf(QString::fromLatin1(name));
    });
}

/// The words of a text as written.
QStringList Split(const QString& text) {
    return text.split(u' ', Qt::SkipEmptyParts);
}

bool IsDecimalComma(const QString& line, qsizetype at) {
    return QLocale().decimalPoint() == ","_L1 && at > 0 && at + 1 < line.size() &&
           line[at - 1].isDigit() && line[at + 1].isDigit();
}

QString UnknownText(const CQuickReading& reading) {
    return u"Nothing in the catalogue is called '%1'."_s.arg(reading.what);
}

/// How many of the words, split at blanks, are the name of a unit at their beginning; 0 when they
/// do not begin with one.
int WordsOfUnit(const QStringList& words) {
    for (const int count : {1, 2}) {
        const QStringList folded = FoldedWords(words.mid(0, count).join(u' '));
        const auto unit = LeadingUnit(folded);
        if (unit && unit->words == folded.size()) {
            return std::min(count, static_cast<int>(words.size()));
        }
    }
    return 0;
}

}  // namespace

const std::vector<CQuickItem>& CQuickEntry::Read(const QString& line) {
    std::vector<CQuickItem> before = std::exchange(m_items, {});
    qsizetype first = 0;
    for (qsizetype at = 0; at <= line.size(); ++at) {
        const bool isEnd = at == line.size() || (line[at] == u',' && !IsDecimalComma(line, at));
        if (!isEnd) {
            continue;
        }
        while (first < at && line[first].isSpace()) {
            ++first;
        }
        if (const QString text = line.sliced(first, at - first).trimmed(); !text.isEmpty()) {
            const auto known = std::ranges::find(before, text, &CQuickItem::text);
            if (known == before.end()) {
                m_items.push_back(ReadItem(text));
            } else {
                m_items.push_back(std::move(*known));
                before.erase(known);
            }
            m_items.back().first = first;
        }
        first = at + 1;
    }
    return m_items;
}

int CQuickEntry::ItemAt(qsizetype place) const {
    const auto found = std::ranges::find_if(m_items, [place](const CQuickItem& item) {
        return item.first <= place && place <= item.first + item.text.size();
    });
    return found == m_items.end() ? -1 : static_cast<int>(found - m_items.begin());
}

void CQuickEntry::Take(int item, int match) {
    TakeMatch(m_items[static_cast<std::size_t>(item)], match);
}

CQuickItem CQuickEntry::ReadItem(const QString& text) {
    CQuickItem item{.text = text};
    CSearchMatches matches;
    item.reading = ReadingOf(text, matches);
    if (!item.reading.what.isEmpty()) {  // otherwise they are habits, which were not asked for
        item.matches = std::move(matches.best);
    }
    // A number that nothing has is an amount in the wrong place: "2 eggs 3 toasts".
    const bool hasNumber =
        std::ranges::any_of(item.reading.what, [](QChar c) { return c.isDigit(); });
    if (matches.found == EFound::Most && hasNumber) {
        item.refusal = UnknownText(item.reading);
    } else {
        TakeMatch(item, 0);
    }
    return item;
}

void CQuickEntry::TakeMatch(CQuickItem& item, int match) {
    item.taken = -1;
    if (item.reading.what.isEmpty()) {
        item.refusal = u"What was eaten is missing."_s;
        return;
    }
    if (match >= std::ssize(item.matches)) {
        item.refusal = UnknownText(item.reading);
        return;
    }
    if (!Load(item.matches[match], item.food)) {
        item.refusal = u"Cannot load food."_s;
        return;
    }
    item.taken = match;
    item.refusal = Measure(item.reading, item.food);
}

/// The reading that fits the catalogue best, with what is found for it.
CQuickReading CQuickEntry::ReadingOf(const QString& text, CSearchMatches& matches) {
    CQuickReading reading;
    QString rest = text;
    if (const auto amount = LeadingAmount(rest)) {
        reading.amount = amount->value;
        reading.hasAmount = true;
        rest = rest.sliced(amount->length).trimmed();
    } else if (rest.startsWith("a "_L1, Qt::CaseInsensitive) ||
               rest.startsWith("an "_L1, Qt::CaseInsensitive)) {
        reading.hasAmount = true;
        rest = rest.sliced(rest.indexOf(u' ')).trimmed();
    }
    const QStringList words = Split(rest);
    const auto split = [&words](qsizetype count) {
        QStringList after = words.sliced(count);
        if (!after.isEmpty() && after.front().compare("of"_L1, Qt::CaseInsensitive) == 0) {
            after.removeFirst();
        }
        return after.join(u' ');
    };
    const CSearchMatches whole = Find(rest, kMatches);
    const int unitWords = WordsOfUnit(words);
    if (unitWords > 0 && (reading.hasAmount || whole.found != EFound::All)) {
        reading.unit = FoldedWords(words.first(unitWords).join(u' '));
        reading.what = split(unitWords);
        matches = Find(reading.what, kMatchesTried);
        PreferFitting(matches,
                      [&reading](CChosenFood& food) { return Measure(reading, food).isEmpty(); });
        return reading;
    }
    if (reading.hasAmount || whole.found != EFound::All) {
        for (qsizetype count = 1; count < words.size() && count <= kMostServingWords; ++count) {
            const QString what = split(count);
            const QStringList unit = FoldedWords(words.first(count).join(u' '));
            CSearchMatches found = Find(what, kMatchesTried);
            if (found.found != EFound::All && found.found != EFound::Near) {
                continue;
            }
            if (PreferFitting(found, [&unit](const CChosenFood& food) {
                    return HasServing(food.item, unit);
                })) {
                reading.unit = unit;
                reading.what = what;
                matches = std::move(found);
                return reading;
            }
        }
    }
    reading.what = rest;
    matches = whole;
    if (words.size() > 1 && whole.found != EFound::All &&
        IsServingWord(FoldedWords(words.front()).join(QString()))) {
        reading.unit = FoldedWords(words.front());
        reading.what = split(1);
        matches = Find(reading.what, kMatches);
    }
    return reading;
}

/// Keeps the best matches, those that `fits` accepts before the others; whether there are any.
bool CQuickEntry::PreferFitting(CSearchMatches& matches,
                                const std::function<bool(CChosenFood&)>& fits) {
    const auto others = std::stable_partition(matches.best.begin(), matches.best.end(),
                                              [&](const CSearchMatch& match) {
                                                  CChosenFood food;
                                                  return Load(match, food) && fits(food);
                                              });
    const bool isAnyFitting = others != matches.best.begin();
    matches.best.resize(std::min<std::size_t>(matches.best.size(), kMatches));
    return isAnyFitting;
}

CSearchMatches CQuickEntry::Find(const QString& what, int limit) {
    CDatabase& database = m_doc.Database();
    return database.Search().Find(
        {.text = what, .kinds = kEaten, .profile = database.Profiles().GetId(), .limit = limit});
}

bool CQuickEntry::Load(const CSearchMatch& match, CChosenFood& food) {
    CDatabase& database = m_doc.Database();
    const int position = database.Items(match.kind).PositionOf(match.record);
    food.kind = KindOf(match.kind).itemKind.value_or(EItemKind::Food);
    food.cataloguePosition = position;
    return ReadAsFood(database, match.kind, position, food.item, true);
}

int AddQuickItems(CVelmoraDoc& doc, QDate day, QTime time, int meal,
                  const std::vector<CQuickItem>& items) {
    std::vector<CDietEntry> entries;
    for (const CQuickItem& item : items) {
        if (item.refusal.isEmpty()) {
            CDietEntry& entry = entries.emplace_back();
            entry.SetMoment(ToFileTime(day, time));
            entry.SetMeal(meal);
            TakeChosenFood(doc.Database(), item.food, entry);
        }
    }
    if (entries.empty()) {
        return 0;
    }
    std::vector<int> indexes(entries.size());
    std::iota(indexes.begin(), indexes.end(), 0);
    const auto add = [&](int index) {
        return doc.Database().Diet().Write(kNoPosition, entries[static_cast<std::size_t>(index)]);
    };
    const QString name = StepName(kAdditionStep, static_cast<int>(entries.size()),
                                  entries.front().GetName(), "entries"_L1);
    CStep step(doc.Database().GetStore(), name);
    step.SetStatusText(entries.size() == 1 ? AddedText(doc, day, entries.front())
                                           : DoneText(name, PlaceText(doc, day, meal)));
    return ActOnEach(doc.Database().GetStore(), indexes, add, kCannotAddEntry);
}

QString QuickLineWithout(const std::vector<CQuickItem>& items, int added) {
    QStringList rest;
    for (const CQuickItem& item : items) {
        if (!item.refusal.isEmpty() || added-- <= 0) {
            rest.append(item.text);
        }
    }
    return rest.join(u", "_s);
}
