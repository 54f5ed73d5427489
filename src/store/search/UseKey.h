// What identifies an item in counts of use: kind, category, name and type, as diary entries store
// them.
#pragma once

#include <QStringView>

#include "store/records/Category.h"

/// Equal for items that a diary entry cannot tell apart. Different ones practically never have the
/// same key. Valid in this process only.
using ItemUseKey = quint64;

ItemUseKey UseKeyOf(ECatalogueKind kind, QStringView category, QStringView name, QStringView type);

// The two halves of a key, so that a category can be renamed without its items.
ItemUseKey CategoryUseKey(ECatalogueKind kind, QStringView category);
ItemUseKey NameUseKey(QStringView name, QStringView type);
ItemUseKey JoinUseKeys(ItemUseKey category, ItemUseKey name);
