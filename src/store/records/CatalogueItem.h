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
    bool namesType;         ///< whether name and type together tell items apart, or the name alone
    bool hasComponents;     ///< which stand under their item in the same database
    const char* findValue;  ///< the profile's value with the texts of the last find
    /// Where the kind has a list of distinct names: what the messages of reading it begin with.
    const char* namesPrefix = "";
    /// Where the kind has view settings: that they cannot be saved.
    const char* settingsFailure = "";
};
const CCatalogueLayout& CatalogueLayoutOf(ECatalogueKind kind);
inline bool HasComponents(ECatalogueKind kind) {
    return CatalogueLayoutOf(kind).hasComponents;
}

/// Whether a record is no item but a component or the settings of a view: their parents are past
/// every category identifier, so they come after all items.
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
