// Walking over the items of one category, or of all.
#pragma once

#include <functional>

#include "store/Database.h"

/// Passes all items of a category to `take` in stored order, without a limit; without a category
/// those of all, also of categories that do not exist. Damaged records are skipped without a
/// message; a missing text is empty. Returns what was skipped.
CLeftOut ForEachItemOf(
    CDatabase& database, ECatalogueKind kind, std::optional<qint32> categoryId,
    const std::function<void(int position, const QString& name, const QString& type)>& take);
