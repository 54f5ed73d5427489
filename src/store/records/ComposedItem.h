// Menus and recipes, and the components they are made of: one record layout per kind for both; the
// item type distinguishes them.
#pragma once

#include "store/records/CatalogueItem.h"

/// Identifiers of menus and recipes start here, above every category identifier and the marker of
/// the view settings: all of these are property 0 of records in the same database.
inline constexpr qint32 kFirstComposedId = 0x400000;

/// Property numbers in both layouts, for code that reads records without this class.
inline constexpr int kComposedKindNumber = 1;
inline constexpr int kComposedIdNumber = 2;

/// A menu or recipe, or a component of one. The parent is a category identifier for a menu or
/// recipe itself and the owner's item identifier for a component.
class CComposedItem : public CNutrientItem {
  public:
    /// `kind` is Menus or Recipes.
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
    /// Number of servings; 1.0 in a new item.
    [[nodiscard]] double GetServingX() const;
    void SetServingX(double servings);
    /// Only recipes have them; for menus the text is empty and setting it has no effect.
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
