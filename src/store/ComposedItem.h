// Menus and recipes, and the components they are made of: one record type for each kind, told
// apart by its item type.
#pragma once

#include "store/ItemRecord.h"

/// Kind of a composed record or of the item a component stands for.
enum class EItemType : qint32 { Food = 0, Menu = 1, Recipe = 2 };

/// What menus and recipes share. The parent is a category identifier for a menu or recipe itself
/// and the owner's item identifier for a component.
class CComposedItem : public CNutrientItem {
  public:
    [[nodiscard]] qint32 GetParentId() const;
    void SetParentId(qint32 id);
    [[nodiscard]] EItemType GetItemType() const;
    void SetItemType(EItemType type);
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
    /// As CItemRecord::Clear, then one serving.
    void Clear();

  protected:
    explicit CComposedItem(const CRecordLayout& layout);
};

class CMenuItem : public CComposedItem {
  public:
    CMenuItem();
};

class CRecipeItem : public CComposedItem {
  public:
    CRecipeItem();
    [[nodiscard]] QString GetInstructions() const;
    void SetInstructions(const QString& text);
};
