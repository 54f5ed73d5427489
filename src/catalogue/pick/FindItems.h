// Finding catalogue items by name and type.
#pragma once

#include "app/VelmoraDoc.h"

/// First position from `first` on, in stored order, whose name holds `name` and whose type holds
/// all of `types`, compared in upper case; an empty text matches everything. -1 when there is none:
/// the search does not start over. What could not be read on the way is added to `leftOut`, if
/// given.
int FindNextItem(CDatabase& database, ECatalogueKind kind, const QString& name,
                 const QStringList& types, int first, CLeftOut* leftOut = nullptr);

/// Finds from the first item on, and after the last match wherever that is now. Both keep the
/// match in the state. -1 when there is none.
int FindFirst(CDatabase& database, ECatalogueKind kind, CFindState& state);
int FindNext(CDatabase& database, ECatalogueKind kind, CFindState& state);
/// To be called after `count` items in front of where "find next" goes on were deleted.
void NoteDeleted(CFindState& state, int count);
