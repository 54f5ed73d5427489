// Finding catalogue items by name and type.
#pragma once

#include "store/Database.h"

/// First position from `first` on, in stored order, whose name holds `name` and whose type holds
/// `type`, both compared in upper case; an empty text matches everything. -1 when there is none:
/// the search does not start over.
int FindNextItem(CDatabase& database, ECatalogueKind kind, const QString& name, const QString& type,
                 int first);
