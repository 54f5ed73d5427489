#include "catalogue/tables/FoodTablesReport.h"

#include "catalogue/exchange/CsvFields.h"

using namespace Qt::StringLiterals;

void CFoodTablesCounts::AddWithoutEnergy(const QString& food) {
    constexpr int kMostNamed = 3;
    ++withoutEnergy;
    if (firstWithoutEnergy.size() < kMostNamed) {
        firstWithoutEnergy.append(u'\'' + CutImportedText(food) + u'\'');
    }
}

QString FoodTablesReport(const CFoodTablesCounts& counts) {
    QStringList lines;
    const auto add = [&lines](const char* what, int count, const QStringList& some = {}) {
        if (count > 0) {
            const QString names = some.isEmpty() ? QString()
                                                 : u" ("_s + some.join(u", "_s) +
                                                       (some.size() < count ? u", ...)"_s : u")"_s);
            lines.append(QLatin1StringView(what) + u": "_s + QString::number(count) + names);
        }
    };
    add("Rows that are not foods", counts.noFoods);
    add("Foods of other types, left out", counts.otherTypes);
    add("Foods listed twice, the second one left out", counts.listedTwice);
    add("Foods without a name, left out", counts.nameless);
    add("Foods without energy, left out", counts.withoutEnergy, counts.firstWithoutEnergy);
    add("Foods left out, since no more categories can be added", counts.withoutPlace);
    add("Foods with the same category, name and type as another, FDC number added to the type",
        counts.marked);
    add("Foods in 'Other foods', since no more categories can be added", counts.withoutRoom);
    add("Foods in 'Other foods', since they have no category", counts.withoutCategory);
    add("Portions without a text or a weight in grams, left out", counts.unusablePortions);
    add("Portions after the ninth of a food, left out", counts.tooManyPortions);
    add("Nutrients in unknown units, left out", counts.unknownUnits, counts.firstUnknownUnits);
    return lines.join(u'\n');
}
