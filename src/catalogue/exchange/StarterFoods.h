// The small file of everyday foods that ships with the program.
#pragma once

#include <QString>

class CDatabase;

/// Looked for beside the program, beside its folder and where packages install it; empty when it
/// is nowhere.
QString StarterFoodsPath();

/// Adds them to the catalogue; a message shows the result.
void ImportStarterFoods(CDatabase& database);
/// Asks whether an empty catalogue should start with them; a No is kept, so that the question comes
/// once. True when an import has run, whatever came of it.
bool OfferStarterFoods(CDatabase& database);
