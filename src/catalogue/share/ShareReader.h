// Reads a share file that anybody may have made, and checks every row of it.
#pragma once

#include <functional>
#include <vector>

#include "catalogue/share/ShareFormat.h"
#include "catalogue/share/ShareImage.h"

/// A food, menu, recipe or exercise. The identifiers in its record mean nothing.
struct CSharedItem {
    int number = 0;    ///< in the file, from 1 on
    int category = 0;  ///< index among the categories
    ECatalogueKind kind = ECatalogueKind::Foods;
    PropertyList record;
};

/// A component of the menu or recipe passed on last.
struct CSharedComponent {
    int item = 0;  ///< number of the item it was made of; 0 when that is not known
    PropertyList record;
};

/// What is done with the rows of a file; false ends the reading.
struct CShareTaker {
    std::function<bool(const CSharedItem&)> item;
    std::function<bool(const CSharedComponent&)> component;
};

/// Every value passed on may be stored in a volume, see SharedRecord.h, and every number names an
/// item passed on before.
class CShareReader {
  public:
    /// Reads the file into memory, and its categories. kErrorFileNotFound and kErrorAccessDenied
    /// when it cannot be read, kErrorInvalidParameter when it exceeds a limit of ShareFormat.h,
    /// otherwise as CShareImage::Open.
    EPlatformError Open(const QString& path);
    /// Within the limits once Open has succeeded.
    [[nodiscard]] const CShareContents& Contents() const { return m_stored; }
    [[nodiscard]] const std::vector<CCategory>& Categories() const { return m_categories; }

    /// Passes on each item and then its components. kErrorOperationAborted when `take` has ended
    /// it. Only success means that the whole file is sound. May be repeated.
    EPlatformError ReadItems(const CShareTaker& take);

  private:
    EPlatformError ReadContents();
    EPlatformError ReadCategories();
    // False when the row is not sound.
    bool ReadItem(CShareStatement& row);
    bool ReadComponent(CShareStatement& row);

    CShareImage m_image;
    CShareContents m_stored;  ///< as the file says
    CShareContents m_read;
    CRowsChecksum m_categoriesChecksum;
    CRowsChecksum m_itemsChecksum;
    std::vector<CCategory> m_categories;
    std::vector<ECatalogueKind> m_kinds;  ///< of the items read
    CSharedItem m_item;
    CSharedComponent m_component;
};
