// The pictures that an import finds for a new category beside the exchange file.
#pragma once

#include "store/records/Category.h"

/// Reads "<name>_L.bmp" and "<name>_S.bmp" of `folder`, which ends in a separator or is empty, into
/// the category. What cannot be read, is no bitmap or is larger than a picture may be stays
/// absent, and so does every picture of a name that leads out of the folder.
void ReadCategoryPictures(const QString& folder, CCategory& category);
