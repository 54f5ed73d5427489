// What the items of all four catalogue kinds have in common, so that commands on them are written
// once.
#pragma once

#include "store/records/Category.h"

/// What a diet entry or the component of a menu or recipe was made of, as stored.
enum class EItemKind : qint32 { Food = 0, Menu = 1, Recipe = 2 };

/// How a kind is stored.
struct CCatalogueLayout {
    const CRecordLayout& layout;
    int name;               ///< property number
    int type;               ///< property number
    bool namesType;         ///< whether items are identified by name and type, or by name alone
    bool hasComponents;     ///< stored in the same database, with the item's identifier as parent
    const char* findValue;  ///< name of the profile's value that keeps the last find texts
    /// Prefix of the messages of reading the list of distinct names; empty where there is none.
    const char* namesPrefix = "";
    /// Message of view settings that cannot be saved; empty where there are none.
    const char* settingsFailure = "";
};
const CCatalogueLayout& CatalogueLayoutOf(ECatalogueKind kind);
inline bool HasComponents(ECatalogueKind kind) {
    return CatalogueLayoutOf(kind).hasComponents;
}

/// Whether a record is not an item but a component or the settings of a view: their property 0 is
/// larger than every category identifier, so they come after all items.
bool IsPastLastItem(const PropertyList& properties);

/// An item of any kind.
class CCatalogueItem : public CItemRecord {
  public:
    explicit CCatalogueItem(ECatalogueKind kind);
    [[nodiscard]] qint32 GetCategoryId() const;
    void SetCategoryId(qint32 id);
    [[nodiscard]] QString GetName() const;
    void SetName(const QString& name);
    [[nodiscard]] QString GetType() const;
    void SetType(const QString& type);

  private:
    const CCatalogueLayout& m_numbers;
};
