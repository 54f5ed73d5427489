// Walking over the items of one category.
#pragma once

#include <functional>

#include "store/Database.h"

/// Passes all items of a category to `take` in stored order, without a limit. Damaged records are
/// skipped without a message; a missing text is empty. Returns what was skipped.
CLeftOut ForEachItemOf(
    CDatabase& database, ECatalogueKind kind, qint32 categoryId,
    const std::function<void(int position, const QString& name, const QString& type)>& take);
