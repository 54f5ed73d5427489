// Taking in: the items of a share file, which a stranger may have made, added to the catalogue.
#pragma once

#include <QString>

#include "catalogue/exchange/CsvExchange.h"

/// Checks the whole file, then stores all of it or nothing, as one step of the history, and shows a
/// summary. A refused file changes nothing and shows why.
///
/// An item exists already when the catalogue had one of its category, name and type (menus and
/// recipes: category and name) before; where there are several, the first in the file stands for
/// the first in the catalogue, and so on. With Skip it stays as it is, with Overwrite it becomes
/// the file's, components included. Components refer to what is then in the catalogue. Categories
/// that are missing are created with their pictures; those that exist stay as they are.
///
/// False when the file was refused, when the user cancelled and when it could not be stored.
bool TakeInFile(CDatabase& database, EDuplicatePolicy policy, const QString& path);
