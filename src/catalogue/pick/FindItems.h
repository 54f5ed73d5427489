// Finding catalogue items by name and type.
#pragma once

#include "app/VelmoraDoc.h"

/// First position from `first` on, in stored order, whose name contains `name` and whose type
/// contains all of `types`, compared in upper case; an empty text matches everything. -1 when there
/// is none; the search does not wrap around. Records that cannot be read are added to `leftOut`, if
/// given.
int FindNextItem(CDatabase& database, ECatalogueKind kind, const QString& name,
                 const QStringList& types, int first, CLeftOut* leftOut = nullptr);

/// FindFirst searches from the first item on, FindNext after the last match, wherever that is now.
/// Both store the match in `state` and return its position; -1 when there is none.
int FindFirst(CDatabase& database, ECatalogueKind kind, CFindState& state);
int FindNext(CDatabase& database, ECatalogueKind kind, CFindState& state);
/// Call after `count` items before state.next were deleted.
void NoteDeleted(CFindState& state, int count);
