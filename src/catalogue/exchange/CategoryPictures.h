// The pictures that an import finds for a new category beside the exchange file.
#pragma once

#include "store/records/Category.h"

/// Reads "<name>_L.bmp" and "<name>_S.bmp" in `folder`, which ends in a separator or is empty, into
/// the category. A picture stays empty when its file cannot be read, is not a bitmap or is larger
/// than 4 MB, or when the category's name leads out of the folder.
void ReadCategoryPictures(const QString& folder, CCategory& category);
