#include "catalogue/pick/FindItems.h"

#include <algorithm>
#include <limits>

namespace {
/// Both sides in upper case, which also matches characters like "ß" that have no single upper-case
/// form.
bool Contains(const PropertyValue& value, const QString& upperText) {
    return upperText.isEmpty() || TextOf(value).toUpper().contains(upperText);
}

int FindFrom(CDatabase& database, ECatalogueKind kind, CFindState& state, int first) {
    const int position = FindNextItem(database, kind, state.name, state.types, first);
    if (position >= 0) {
        state.found = database.Items(kind).RecordAt(position);
        state.next = position + 1;
    }
    return position;
}
}  // namespace

int FindNextItem(CDatabase& database, ECatalogueKind kind, const QString& name,
                 const QStringList& types, int first, CLeftOut* leftOut) {
    const CCatalogueLayout& numbers = CatalogueLayoutOf(kind);
    const QString upperName = name.toUpper();
    QStringList upperTypes;
    for (const QString& type : types) {
        upperTypes.append(type.toUpper());
    }
    int found = -1;
    const CLeftOut passedOver = database.Items(kind).ReadList(
        {.low = std::numeric_limits<qint64>::min(),
         .high = CViewSettings::kMarker - 1,  // the largest key of an item
         .wrongCount = EWrongCount::IsDamage,
         .most = numbers.type + 1,
         .from = first},
        [&](int position, PropertyList& properties) {
            const bool isMatch = Contains(properties[numbers.name], upperName) &&
                                 std::ranges::all_of(upperTypes, [&](const QString& upperType) {
                                     return Contains(properties[numbers.type], upperType);
                                 });
            found = isMatch ? position : found;
            return isMatch ? ETake::Last : ETake::Taken;
        });
    if (leftOut != nullptr) {
        leftOut->damaged += passedOver.damaged;
        leftOut->isUnknown = leftOut->isUnknown || passedOver.isUnknown;
    }
    return found;
}

int FindFirst(CDatabase& database, ECatalogueKind kind, CFindState& state) {
    state.found = 0;
    state.next = 0;
    return FindFrom(database, kind, state, 0);
}

int FindNext(CDatabase& database, ECatalogueKind kind, CFindState& state) {
    CItemDatabaseBase& items = database.Items(kind);
    const bool hasNotMoved = state.found != 0 && items.RecordAt(state.next - 1) == state.found;
    const int last = hasNotMoved ? state.next - 1 : items.PositionOf(state.found);
    return FindFrom(database, kind, state, last >= 0 ? last + 1 : state.next);
}

void NoteDeleted(CFindState& state, int count) {
    state.next = std::max(0, state.next - count);
}
