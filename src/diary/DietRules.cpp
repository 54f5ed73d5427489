#include "diary/DietRules.h"

#include "app/DateText.h"
#include "diary/DiaryCommands.h"
#include "platform/Messages.h"
#include "platform/NumberText.h"
#include "store/Step.h"

using namespace Qt::StringLiterals;

namespace {

constexpr CEntryCommand kDelete = {
    {"Please select entry to delete.", nullptr},
    {"Are you sure you want to delete entry '%s'?", "Are you sure you want to delete %d entries?"},
    "Cannot delete entry.",
    kDeleteStep,
    "an entry"_L1,
    "entries"_L1};
constexpr CEntryCommand kMove = {
    {"Please select entry to move.", nullptr},
    {"Are you sure you want to move entry '%s'?", "Are you sure you want to move %d entries?"},
    "Cannot move entry.",
    kMoveStep,
    "an entry"_L1,
    "entries"_L1};
constexpr CEntryCommand kDuplicate = {
    {"Please select entry to duplicate.", "Please select only one entry to duplicate."},
    {"Are you sure you want to duplicate entry '%s'?", nullptr},
    "Cannot duplicate entry.",
    kDuplicateStep,
    "an entry"_L1,
    "entries"_L1};

}  // namespace

QString PlaceText(const CVelmoraDoc& doc, QDate day, std::optional<qint32> meal) {
    const QString name = meal && *meal >= 0 && *meal < kMealCount ? MealName(*meal) : QString();
    if (day == doc.dayShown) {
        return name.isEmpty() ? QString() : u"to "_s + name;
    }
    return u"to "_s + (name.isEmpty() ? QString() : name + u" of "_s) + ShownDate(day);
}

QString AddedText(const CVelmoraDoc& doc, QDate day, const CDietEntry& entry) {
    const QString amount = TypedAmount(RoundedNumber(entry.GetAmount())).value_or(QString());
    // Of "Beverages" in the category "Beverages" the type says what it is.
    const bool isNamed = entry.GetName() != entry.GetCategory() || entry.GetType().isEmpty();
    const QString name = isNamed ? entry.GetName() : entry.GetType();
    const QString food = amount == u"1"_s ? name : amount + u" x "_s + name;
    return DoneText(StepName(kAdditionStep, food), PlaceText(doc, day, entry.GetMeal()));
}

void TakeChosenFood(CDatabase& database, const CChosenFood& food, CDietEntry& entry) {
    entry.SetKind(food.kind);
    const qint32 category = food.item.GetCategoryId();
    if (category >= 0) {
        entry.SetCategory(database.Categories().NameOf(CatalogueOf(food.kind), category));
    }
    entry.SetName(food.item.GetName());
    entry.SetType(food.item.GetType());
    entry.SetNutrientValues(food.item.GetNutrientValues());
    entry.SetServingName(food.item.GetServingName(0));
    entry.SetAmount(food.item.GetServingWeight(0));
}

bool MayAddToMeal(int meal) {
    if (meal >= 0 && meal < kMealCount) {
        return true;
    }
    ShowMessage(u"Please select a meal. It is not possible to add a food to all meals."_s,
                EMessageIcon::Information);
    return false;
}

bool AddDietEntry(CVelmoraDoc& doc, QDate day, qint32 meal, const CChosenFood& food) {
    CDietEntry entry;
    entry.SetMoment(ToFileTime(day, food.time));
    entry.SetMeal(meal);
    TakeChosenFood(doc.Database(), food, entry);
    CStep step(doc.Database().GetStore(), StepName(kAdditionStep, entry.GetName()));
    step.SetStatusText(AddedText(doc, day, entry));
    const bool added = doc.Database().Diet().Write(-1, entry);
    if (!added) {
        ShowMessage(kCannotAddEntry, EMessageIcon::Information);
    }
    return added;
}

bool MayEdit(int selected) {
    return CheckSelection({"Please select entry to edit.", "Please select only one entry to edit."},
                          selected);
}

bool EditDietEntry(CVelmoraDoc& doc, const CListed<CDietEntry>& before, const CChosenFood& food) {
    CDietEntry edited = before.entry;
    edited.SetMoment(ToFileTime(DateOf(edited.GetMoment()), food.time));
    TakeChosenFood(doc.Database(), food, edited);
    const CStep step(doc.Database().GetStore(), StepName(kEditStep, edited.GetName()));
    const bool isWritten =
        ReplaceEntry(doc.Database().Diet(), before.record, edited) == EReplaced::Yes;
    if (!isWritten) {
        ShowMessage(kCannotAddEntry, EMessageIcon::Information);
    }
    return isWritten;
}

int DeleteDietEntries(CVelmoraDoc& doc, const ListedEntries<CDietEntry>& selected) {
    return DeleteEntries(doc.Database().Diet(), selected, kDelete, EAfterFailure::Stop);
}

bool MayMove(const ListedEntries<CDietEntry>& selected) {
    return MayRun(kMove, selected);
}

int MoveDietEntries(CVelmoraDoc& doc, const ListedEntries<CDietEntry>& selected,
                    const CDietPlace& place) {
    const auto move = [&place](CDietEntry& entry) {
        entry.SetMoment(place.moment);
        entry.SetMeal(place.meal);
    };
    return ChangeEntries<CDietEntry>(doc.Database().Diet(), selected, move, kMove,
                                     PlaceText(doc, DateOf(place.moment), place.meal));
}

bool DuplicateDietEntry(CVelmoraDoc& doc, const ListedEntries<CDietEntry>& selected) {
    if (!MayRun(kDuplicate, selected)) {
        return false;
    }
    const CStep step(doc.Database().GetStore(), StepNameOf(kDuplicate, selected));
    const bool isAdded = doc.Database().Diet().Write(kNoPosition, selected.front().entry);
    if (!isAdded) {
        ShowMessage(QString::fromLatin1(kDuplicate.failure), EMessageIcon::Information);
    }
    return isAdded;
}
