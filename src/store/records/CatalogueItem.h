// What the items of all four catalogue kinds have in common, so that commands on them are written
// once.
#pragma once

#include "store/records/Category.h"

/// What a diet entry or the component of a menu or recipe was made of, as stored.
enum class EItemKind : qint32 { Food = 0, Menu = 1, Recipe = 2 };

/// Where the records of a kind keep it.
struct CCatalogueLayout {
    const CRecordLayout& layout;
    int name;        ///< property number
    int type;        ///< property number
    bool namesType;  ///< whether name and type together tell items apart, or the name alone
};
const CCatalogueLayout& CatalogueLayoutOf(ECatalogueKind kind);

/// Menus and recipes have components, which stand under them in the same database.
constexpr bool HasComponents(ECatalogueKind kind) {
    return kind == ECatalogueKind::Menus || kind == ECatalogueKind::Recipes;
}

/// Whether a record is no item but a component or the settings of a view: their parents are past
/// every category identifier, so they stand behind all items.
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
