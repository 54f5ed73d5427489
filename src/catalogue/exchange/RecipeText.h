// A recipe as a plain text file, for reading or printing elsewhere.
#pragma once

#include "catalogue/items/ComposedForm.h"

/// Asks for the file and writes the current content of the form. False when no file was chosen or
/// after "Cannot create file.".
bool SaveRecipeText(const CComposedForm& recipe);
/// The same to the file `path`.
bool SaveRecipeTextFile(const CComposedForm& recipe, const QString& path);
