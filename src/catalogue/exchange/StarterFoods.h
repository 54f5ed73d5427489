// The small file of everyday foods that ships with the program.
#pragma once

#include <QString>

class CDatabase;

/// Empty when it is not installed.
QString StarterFoodsPath();

/// Adds them to the catalogue; a message shows the result.
void ImportStarterFoods(CDatabase& database);
/// Asks whether an empty catalogue should start with them; a No is kept, so that the question comes
/// once. True when an import has run, whatever came of it.
bool OfferStarterFoods(CDatabase& database);
