// Walking over the items of one category.
#pragma once

#include <functional>

#include "store/Database.h"

/// Hands the items of a category to `take` in stored order: also those that a full list leaves out.
/// Records that are no item of the kind are passed over; a text that is missing is empty.
void ForEachItemOf(
    CDatabase& database, ECatalogueKind kind, qint32 categoryId,
    const std::function<void(int position, const QString& name, const QString& type)>& take);
