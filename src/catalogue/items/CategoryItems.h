// Walking over the items of one category.
#pragma once

#include <functional>

#include "store/Database.h"

/// Hands the items of a category to `take` in stored order: also those that a full list leaves out.
/// A record that is no item of the kind is passed over without a message; a text that is missing is
/// empty. Returns what was passed over.
CLeftOut ForEachItemOf(
    CDatabase& database, ECatalogueKind kind, qint32 categoryId,
    const std::function<void(int position, const QString& name, const QString& type)>& take);
