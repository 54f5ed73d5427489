// Menus and recipes, and the components they are made of: one record type for each kind, told
// apart by its item type.
#pragma once

#include "store/records/CatalogueItem.h"

/// Menus and recipes are numbered from here on, past every category identifier and the marker of
/// the view settings: both stand in property 0 of the same database.
inline constexpr qint32 kFirstComposedId = 0x400000;

/// What menus and recipes share. The parent is a category identifier for a menu or recipe itself
/// and the owner's item identifier for a component.
class CComposedItem : public CNutrientItem {
  public:
    /// A menu or a recipe, or a component of one.
    explicit CComposedItem(ECatalogueKind kind);
    [[nodiscard]] qint32 GetParentId() const;
    void SetParentId(qint32 id);
    [[nodiscard]] EItemKind GetItemKind() const;
    void SetItemKind(EItemKind type);
    [[nodiscard]] qint32 GetItemId() const;
    void SetItemId(qint32 id);
    [[nodiscard]] QString GetName() const;
    void SetName(const QString& name);
    [[nodiscard]] QString GetType() const;
    void SetType(const QString& type);
    [[nodiscard]] QString GetServingName() const;
    void SetServingName(const QString& name);
    /// Number of servings; a new item holds 1.0.
    [[nodiscard]] double GetServingX() const;
    void SetServingX(double servings);
    /// Recipes alone have them; menus give an empty text and keep none.
    [[nodiscard]] QString GetInstructions() const;
    void SetInstructions(const QString& text);
    /// As CItemRecord::Clear, then one serving.
    void Clear();
};

class CMenuItem : public CComposedItem {
  public:
    CMenuItem() : CComposedItem(ECatalogueKind::Menus) {}
};

class CRecipeItem : public CComposedItem {
  public:
    CRecipeItem() : CComposedItem(ECatalogueKind::Recipes) {}
};
