// Everything that the "Add Food" dialog decides: what can be picked, what is cleared, how the
// values follow serving and amount, what is handed back.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "catalogue/items/ChosenFood.h"
#include "catalogue/pick/PickForm.h"

/// Kinds on offer, as bits.
enum EAllowedKinds : int { kAllowFood = 1, kAllowMenu = 2, kAllowRecipe = 4, kAllowAll = 7 };

/// What the dialog opens on.
struct CAddFoodRequest {
    int allowedKinds = kAllowAll;
    CChosenFood food;
    /// The item's values are totals for the amount already.
    bool valuesAreTotals = false;
    /// The result becomes a catalogue item, which must not be there yet.
    bool refuseDuplicates = false;

    /// Diary entries have a time, components of menus and recipes have none.
    bool hasTime = true;

    /// An empty food, one serving of it, at `time`.
    static CAddFoodRequest ForNewEntry(QTime time);
    static CAddFoodRequest ForEntry(CDatabase& database, const CDietEntry& entry);
    /// A food or recipe to become a component.
    static CAddFoodRequest ForNewComponent();
    static CAddFoodRequest ForComponent(CDatabase& database, const CComposedItem& component);
};

/// Texts go in and out as the user sees them. Values are kept exactly: a text that the user left
/// alone never costs a value its decimals. Values not displayed follow the same rules unseen.
class CAddFoodForm : public CPickForm {
  public:
    CAddFoodForm(CVelmoraDoc& doc, const CAddFoodRequest& request);

    /// In the order of their tabs; the food alone when none is allowed.
    [[nodiscard]] std::vector<EItemKind> Kinds() const;
    [[nodiscard]] EItemKind GetKind() const { return m_food.kind; }
    /// Clears category and item when the kind changes.
    void SetKind(EItemKind kind);

    /// Name and type follow the category, the type follows the name.
    EPicker Pick(EPicker picker, const QString& row) override;
    [[nodiscard]] bool MayFind() const { return GetKind() == EItemKind::Food; }

    /// Names in the Serving list.
    [[nodiscard]] QStringList Servings() const;
    [[nodiscard]] QString ServingText() const { return m_servingText; }
    /// `index` into Servings().
    void SelectServing(int index);
    /// A text that is no serving of the list leaves none selected.
    void SetServingText(const QString& text);

    [[nodiscard]] QString AmountText() const { return m_amountText; }
    /// 0.001 or less, or no number, becomes 1.
    void SetAmountText(const QString& text);

    [[nodiscard]] bool HasTime() const { return m_hasTime; }

    /// One row a displayed nutrient.
    [[nodiscard]] int RowCount() const { return static_cast<int>(m_nutrients.size()); }
    /// Name with its unit.
    [[nodiscard]] QString RowTitle(int row);
    [[nodiscard]] QString RowText(int row) const;
    /// A typed value is kept over the computed one.
    void SetRowText(int row, const QString& text);

    /// Builds the result; false after the message that says why the dialog stays open.
    bool Confirm();
    /// Valid after Confirm.
    [[nodiscard]] const CChosenFood& GetResult() const { return m_result; }

  private:
    struct CServing {
        QString name;
        double weightGrams;
    };
    struct CTyped {
        QString text;
        double value;  ///< in the stored unit
    };

    [[nodiscard]] ECatalogueKind Catalogue() const override { return CatalogueOf(m_food.kind); }
    [[nodiscard]] qint32 CategoryId() const override { return m_food.item.GetCategoryId(); }
    bool Load(int position) override;
    void ClearItem(const QString& name);
    void TakeItem(const CFoodItem& item);
    void Recompute(double amount);
    [[nodiscard]] double Computed(int nutrient) const;
    [[nodiscard]] double Value(int nutrient) const;
    bool CheckDuplicate(const QString& name, const QString& type);

    int m_allowedKinds;
    bool m_refuseDuplicates;
    bool m_hasTime;
    /// The item as the catalogue or the entry has it, with the amount shown.
    CChosenFood m_food;
    CChosenFood m_result;
    std::vector<int> m_nutrients;

    std::vector<CServing> m_servings;
    int m_selectedServing = -1;
    QString m_servingText;
    QString m_amountText;

    /// Whether the item's values are totals for m_totalsAmount servings.
    bool m_valuesAreTotals;
    double m_totalsAmount;
    std::array<std::optional<CTyped>, kNutrientCount> m_typed;
};
