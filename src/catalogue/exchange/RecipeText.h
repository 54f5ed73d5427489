// A recipe as a plain text file, for reading or printing elsewhere.
#pragma once

#include "catalogue/items/ComposedForm.h"

/// Asks for the file and writes what the form holds at this moment. False when no file was chosen
/// or after "Cannot create file.".
bool SaveRecipeText(const CComposedForm& recipe);
/// The same to a file already chosen.
bool SaveRecipeTextFile(const CComposedForm& recipe, const QString& path);
