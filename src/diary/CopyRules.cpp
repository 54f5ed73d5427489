#include "diary/CopyRules.h"

#include <algorithm>
#include <numeric>
#include <tuple>

#include "app/DateText.h"
#include "app/ListCommands.h"
#include "app/UnitTexts.h"
#include "diary/DiaryCommands.h"
#include "diary/DietRules.h"
#include "store/Step.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kDaysSearched = 60;
constexpr std::size_t kOthersOffered = 3;
constexpr int kDaysPerWeek = 7;

/// What makes two meals the same, whatever the time and the order.
using MealContent = std::vector<std::tuple<EItemKind, QString, QString, QString, QString, double>>;

MealContent ContentOf(const std::vector<CDietEntry>& entries) {
    MealContent content;
    for (const CDietEntry& entry : entries) {
        content.emplace_back(entry.GetKind(), entry.GetCategory(), entry.GetName(), entry.GetType(),
                             entry.GetServingName(), entry.GetAmount());
    }
    std::ranges::sort(content);
    return content;
}

/// A weekday's name for the last seven days.
QString DayText(QDate day, QDate today) {
    return day.daysTo(today) <= kDaysPerWeek ? QLocale().standaloneDayName(day.dayOfWeek())
                                             : ShownDate(day);
}

QString TitleOf(CVelmoraDoc& doc, const std::vector<CDietEntry>& entries, QDate day, QDate today) {
    double energyKcal = 0;
    for (const CDietEntry& entry : entries) {
        energyKcal += entry.GetNutrientValue(kEnergyIndex);
    }
    const EEnergyUnit unit = doc.Preferences().energyUnit;
    return u"%1 of %2: %3, %4 %5"_s.arg(
        MealName(entries.front().GetMeal()), DayText(day, today),
        entries.size() == 1 ? u"1 item"_s : u"%1 items"_s.arg(entries.size()),
        QString::number(WholeEnergy(energyKcal, unit)), UnitName(unit, EUnitForm::Abbreviated));
}

}  // namespace

bool MayCopy(int selected) {
    return CheckSelection({"Please select entry to copy."}, selected);
}

int CutDietEntries(CVelmoraDoc& doc, const ListedEntries<CDietEntry>& selected) {
    if (selected.empty()) {
        return 0;
    }
    const CStep step(doc.Database().GetStore(),
                     StepName(kCutStep, static_cast<int>(selected.size()),
                              selected.front().entry.GetName(), "entries"_L1));
    return DeleteRecords(doc.Database().Diet(), RecordsOf(selected), "Cannot delete entry.",
                         EAfterFailure::Stop);
}

std::vector<CDietEntry> EntriesToCopy(const ListedEntries<CDietEntry>& listed) {
    std::vector<CDietEntry> entries;
    entries.reserve(listed.size());
    for (const CListed<CDietEntry>& each : listed) {
        entries.push_back(each.entry);
    }
    return entries;
}

CMealEntries EntriesOfMeal(CVelmoraDoc& doc, QDate day, std::optional<qint32> meal) {
    const CDayEntries read = ReadDay(doc.Database().Diet(), day, kNoCapacity);
    CMealEntries found{EntriesToCopy(read.Entries()), read.LeftOut()};
    std::erase_if(found.entries,
                  [meal](const CDietEntry& entry) { return meal && entry.GetMeal() != *meal; });
    return found;
}

int CopyEntries(CVelmoraDoc& doc, const std::vector<CDietEntry>& entries,
                const std::vector<CCopyPlace>& places) {
    std::vector<int> copies(entries.size() * places.size());
    std::iota(copies.begin(), copies.end(), 0);
    const auto add = [&](int index) {
        const CCopyPlace& place = places[static_cast<std::size_t>(index) / entries.size()];
        CDietEntry copy = entries[static_cast<std::size_t>(index) % entries.size()];
        copy.SetMoment(ToFileTime(place.day, place.time.value_or(TimeOf(copy.GetMoment()))));
        copy.SetMeal(place.meal.value_or(copy.GetMeal()));
        return doc.Database().Diet().Write(kNoPosition, copy);
    };
    if (copies.empty()) {
        return 0;
    }
    const QString name = StepName(kCopyStep, static_cast<int>(copies.size()),
                                  entries.front().GetName(), "entries"_L1);
    CStep step(doc.Database().GetStore(), name);
    step.SetStatusText(DoneText(name, places.size() == 1
                                          ? PlaceText(doc, places.front().day, places.front().meal)
                                          : u"to %1 days"_s.arg(places.size())));
    return ActOnEach(doc.Database().GetStore(), copies, add, kCannotAddEntry);
}

std::vector<QDate> DaysToRepeat(QDate first, QDate last, int weekdays) {
    std::vector<QDate> days;
    for (QDate day = first.addDays(1); day <= last; day = day.addDays(1)) {
        if ((weekdays >> (day.dayOfWeek() - 1) & 1) != 0) {
            days.push_back(day);
        }
    }
    return days;
}

int DaysBeyondList(CVelmoraDoc& doc, const std::vector<QDate>& days, int added) {
    return static_cast<int>(std::ranges::count_if(days, [&](QDate day) {
        return ReadDay(doc.Database().Diet(), day, kNoCapacity).Count() + added > kDietListCapacity;
    }));
}

std::vector<CMealOffer> MealOffers(CVelmoraDoc& doc, QDate day, qint32 meal) {
    std::vector<CMealOffer> offers;
    std::vector<MealContent> offered;
    std::size_t most = kOthersOffered;
    for (int ago = 1; ago <= kDaysSearched && offers.size() < most; ++ago) {
        const QDate before = day.addDays(-ago);
        std::vector<CDietEntry> entries = EntriesOfMeal(doc, before, meal).entries;
        MealContent content = ContentOf(entries);
        if (entries.empty() || std::ranges::find(offered, content) != offered.end()) {
            continue;
        }
        most += ago == 1 ? 1 : 0;
        offered.push_back(std::move(content));
        offers.push_back({TitleOf(doc, entries, before, day), std::move(entries)});
    }
    return offers;
}
