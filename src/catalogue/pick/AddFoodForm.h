// The rules of the "Add Food" dialog, without its window: what can be picked, what a choice clears,
// how serving and amount give the values, and the result.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "catalogue/items/ChosenFood.h"
#include "catalogue/pick/PickForm.h"

/// Kinds that can be chosen, as bits.
enum EAllowedKinds : int { kAllowFood = 1, kAllowMenu = 2, kAllowRecipe = 4, kAllowAll = 7 };

/// What the dialog starts with.
struct CAddFoodRequest {
    bool isNew = false;
    int allowedKinds = kAllowAll;
    CChosenFood food;
    /// The item's values are already totals for the amount.
    bool valuesAreTotals = false;
    /// The result becomes a catalogue item, which must not exist yet.
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

/// Texts go in and out as the user sees them. Values are kept exactly: a text that the user did not
/// change never rounds its value. Values that are not displayed follow the same rules.
class CAddFoodForm : public CPickForm {
  public:
    CAddFoodForm(CVelmoraDoc& doc, const CAddFoodRequest& request);

    /// In the order of their tabs; only Food when none is allowed.
    [[nodiscard]] std::vector<EItemKind> Kinds() const;
    [[nodiscard]] EItemKind GetKind() const { return m_food.kind; }
    /// Clears category and item when the kind changes. A single category is chosen at once.
    void SetKind(EItemKind kind);

    /// A category clears name and type, a name the type.
    EPicker Pick(EPicker picker, const QString& row) override;
    [[nodiscard]] bool MayFind() const { return GetKind() == EItemKind::Food; }

    /// Names in the serving list: those of the item; for an entry its own, and then what
    /// OfferServings found.
    [[nodiscard]] QStringList Servings() const;
    /// Call before the serving list of an entry is opened: adds the servings that its item has in
    /// the catalogue, if it is still there. Nothing is shown when that cannot be read.
    void OfferServings();
    [[nodiscard]] QString ServingText() const { return m_servingText; }
    /// `index` into Servings(). A serving of the catalogue's item, chosen for an entry, loads that
    /// item, one serving of it.
    void SelectServing(int index);
    /// A text that is not in the list selects none.
    void SetServingText(const QString& text);

    [[nodiscard]] QString AmountText() const { return m_amountText; }
    /// 0.001 or less, or a text without a number, becomes 1.
    void SetAmountText(const QString& text);
    /// The same while the amount is being typed: false, and nothing is changed, for a text that
    /// would become 1.
    bool FollowAmount(const QString& text);
    /// True for a new entry or component, false when one is edited.
    [[nodiscard]] bool IsNew() const { return m_isNew; }

    [[nodiscard]] bool HasTime() const { return m_hasTime; }

    /// One row per displayed nutrient.
    [[nodiscard]] int RowCount() const { return static_cast<int>(m_nutrients.size()); }
    /// Name with its unit.
    [[nodiscard]] QString RowTitle(int row);
    [[nodiscard]] QString RowText(int row) const;
    /// A typed value replaces the calculated one.
    void SetRowText(int row, const QString& text);

    /// Builds the result; false after a message when the name or serving is missing, or the item
    /// must not exist and does.
    bool Confirm();
    /// Valid after Confirm.
    [[nodiscard]] const CChosenFood& GetResult() const { return m_result; }

  private:
    struct CServing {
        QString name;
        double weightGrams;
        bool isOffered = false;  ///< of the catalogue's item, not of the entry
    };
    struct CTyped {
        QString text;
        double value;  ///< in the stored unit
    };

    [[nodiscard]] ECatalogueKind Catalogue() const override { return CatalogueOf(m_food.kind); }
    [[nodiscard]] qint32 CategoryId() const override { return m_food.item.GetCategoryId(); }
    [[nodiscard]] CSearchQuery SearchQuery() const override;
    bool TakeFound(ECatalogueKind kind, int position) override;
    bool Load(int position) override;
    void ClearItem(const QString& name);
    void TakeOneServing();
    void TakeItem(const CFoodItem& item);
    void ChooseSingleCategory();
    bool PickType(const QString& type);
    void Recompute(double amount);
    [[nodiscard]] double Computed(int nutrient) const;
    [[nodiscard]] double Value(int nutrient) const;
    bool CheckDuplicate(const QString& name, const QString& type);

    bool m_isNew;
    int m_allowedKinds;
    bool m_refuseDuplicates;
    bool m_hasTime;
    bool m_mayOffer = false;  ///< the item is an entry's whose catalogue item was not read yet
    /// The item of the catalogue or the entry, with the current amount.
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
