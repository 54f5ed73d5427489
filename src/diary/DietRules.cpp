#include "diary/DietRules.h"

#include "app/ListCommands.h"
#include "platform/Messages.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto kCannotAdd = "Cannot add entry."_L1;

/// Position of the record that equals `entry`; -1 when there is none. Of several equal records
/// any one will do.
int PositionOf(CDatabase& database, const CDietEntry& entry) {
    auto& diet = database.Diet();
    const int first = diet.FirstPositionOf(entry.GetMoment());
    if (first < 0) {
        return -1;
    }
    int found = -1;
    diet.ForEachFrom(first, [&](int position, PropertyList& properties) {
        // Compared as it is listed, which may have mended what the record holds.
        CDietEntry stored;
        if (!stored.SetProperties(std::move(properties))) {
            return true;
        }
        if (stored == entry) {
            found = position;
        }
        return found < 0 && stored.GetMoment() == entry.GetMoment();
    });
    return found;
}

bool Rewrite(CVelmoraDoc& doc, const CDietEntry& before, const CDietEntry& after) {
    const int position = PositionOf(doc.Database(), before);
    return position >= 0 && doc.Database().Diet().Write(position, after);
}

std::vector<int> IndexesOf(const std::vector<CDietEntry>& entries) {
    std::vector<int> indexes(entries.size());
    for (int index = 0; index < static_cast<int>(entries.size()); ++index) {
        indexes[index] = index;
    }
    return indexes;
}

/// Asks about the selected entries, one by its name.
bool Confirm(const CConfirmTexts& texts, const std::vector<CDietEntry>& entries) {
    return ConfirmFor(texts, static_cast<int>(entries.size()), {entries.front().GetName()});
}

}  // namespace

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
    const bool added = doc.Database().Diet().Write(-1, entry);
    if (!added) {
        ShowMessage(kCannotAdd, EMessageIcon::Information);
    }
    return added;
}

bool MayEdit(int selected) {
    return CheckSelection({"Please select entry to edit.", "Please select only one entry to edit."},
                          selected);
}

bool EditDietEntry(CVelmoraDoc& doc, const CDietEntry& entry, const CChosenFood& food) {
    CDietEntry edited = entry;
    edited.SetMoment(ToFileTime(DateOf(entry.GetMoment()), food.time));
    TakeChosenFood(doc.Database(), food, edited);
    const bool written = Rewrite(doc, entry, edited);
    if (!written) {
        ShowMessage(kCannotAdd, EMessageIcon::Information);
    }
    return written;
}

int DeleteDietEntries(CVelmoraDoc& doc, const std::vector<CDietEntry>& entries) {
    if (!CheckSelection({"Please select entry to delete.", nullptr},
                        static_cast<int>(entries.size())) ||
        !Confirm({"Are you sure you want to delete entry '%s'?",
                  "Are you sure you want to delete %d entries?"},
                 entries)) {
        return 0;
    }
    const auto remove = [&](int index) {
        const int position = PositionOf(doc.Database(), entries[index]);
        return position >= 0 && doc.Database().Diet().Delete(position);
    };
    return ActOnEach(doc.Database().GetStore(), IndexesOf(entries), remove,
                     u"Cannot delete entry."_s);
}

bool MayMove(const std::vector<CDietEntry>& entries) {
    return CheckSelection({"Please select entry to move.", nullptr},
                          static_cast<int>(entries.size())) &&
           Confirm({"Are you sure you want to move entry '%s'?",
                    "Are you sure you want to move %d entries?"},
                   entries);
}

int MoveDietEntries(CVelmoraDoc& doc, const std::vector<CDietEntry>& entries,
                    const CDietPlace& place) {
    const auto move = [&](int index) {
        CDietEntry moved = entries[index];
        moved.SetMoment(place.moment);
        moved.SetMeal(place.meal);
        return Rewrite(doc, entries[index], moved);
    };
    return ActOnEach(doc.Database().GetStore(), IndexesOf(entries), move, u"Cannot move entry."_s);
}

bool DuplicateDietEntry(CVelmoraDoc& doc, const std::vector<CDietEntry>& entries) {
    if (!CheckSelection(
            {"Please select entry to duplicate.", "Please select only one entry to duplicate."},
            static_cast<int>(entries.size())) ||
        !Confirm({"Are you sure you want to duplicate entry '%s'?", nullptr}, entries)) {
        return false;
    }
    const bool added = doc.Database().Diet().Write(-1, entries.front());
    if (!added) {
        ShowMessage(u"Cannot duplicate entry."_s, EMessageIcon::Information);
    }
    return added;
}
