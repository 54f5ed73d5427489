// Finds out what the databases of a damaged volume were called.
#pragma once

#include <vector>

#include "store/backup/Salvage.h"

/// Gives each database, whose layout is known, the type, order and name that the program expects
/// of it. What was one database and fell into two becomes one again; a diary goes to the profile
/// that was created just before it. The names are then all different. Of `salvage`, the records of
/// profiles are read, which have the user's name.
void NameDatabases(std::vector<CSalvagedDatabase>& databases, const CSalvage& salvage);
