// The rules of the dialogs "Menu" and "Recipe", without windows: components, values, checks,
// writes.
#pragma once

#include <vector>

#include "app/VelmoraDoc.h"
#include "catalogue/items/ChosenFood.h"
#include "store/Step.h"

/// What the user types, as typed.
struct CComposedFields {
    qint32 categoryId = -1;  ///< -1: none selected
    QString name;
    QString servings;      ///< recipes only
    QString instructions;  ///< recipes only; lines end in CR LF
};

/// Components are stored at once, the menu or recipe itself when it is confirmed; a new one gets
/// its identifier at the start. The components of a new one that is not confirmed are deleted with
/// the form, or when the catalogue is next opened. Everything that is stored while the form lives
/// is one step of the history, of which a new one that is not confirmed leaves nothing. The
/// document and its database outlive the form.
class CComposedForm {
  public:
    /// `position` of a menu or recipe, or -1 for a new one in the category.
    CComposedForm(CVelmoraDoc& doc, ECatalogueKind kind, int position, qint32 categoryId);
    ~CComposedForm();
    CComposedForm(const CComposedForm&) = delete;
    CComposedForm& operator=(const CComposedForm&) = delete;

    /// False when there is no such menu or recipe to edit.
    [[nodiscard]] bool IsLoaded() const { return m_isLoaded; }
    [[nodiscard]] ECatalogueKind GetKind() const { return m_kind; }
    [[nodiscard]] CVelmoraDoc& Doc() const { return m_doc; }
    CComposedFields& Fields() { return m_fields; }
    [[nodiscard]] const CComposedFields& Fields() const { return m_fields; }
    [[nodiscard]] QString CategoryText() const;

    /// One row per displayed nutrient.
    [[nodiscard]] int RowCount() const { return static_cast<int>(m_nutrients.size()); }
    /// Name with its unit.
    [[nodiscard]] QString RowTitle(int row) const;
    [[nodiscard]] QString RowText(int row) const;
    /// Sets the value to the leading number of the text, 0 when there is none. A number beyond
    /// kLargestTyped changes nothing, and a row whose text is unchanged keeps its exact value.
    void SetRowText(int row, const QString& typed);

    /// In stored order.
    [[nodiscard]] const std::vector<CComposedItem>& Components() const { return m_components; }
    /// "2.00xcup".
    [[nodiscard]] QString ServingText(int component) const;
    /// False after a message when none or several are selected.
    static bool MayEditComponent(int selected);
    /// Adds the chosen food or recipe as a component, or replaces a component by it. False when it
    /// cannot be stored or a recipe would contain itself.
    bool AddComponent(const CChosenFood& chosen);
    bool ReplaceComponent(int component, const CChosenFood& chosen);
    /// Asks and deletes; `selected` ascending. Returns whether anything was deleted.
    bool DeleteComponents(const std::vector<int>& selected);
    /// Sets the values to the sums over all components.
    void Recalculate();
    /// Whether all values are 0 although those of its components are not.
    [[nodiscard]] bool LacksValues() const;

    /// Stores the menu or recipe; false after a message when it is not valid or cannot be stored.
    bool Confirm();
    /// Its position after Confirm.
    [[nodiscard]] int GetStoredPosition() const { return m_position; }

  private:
    void LoadComponents();
    /// Copies `chosen` to `component`; false after a message when a recipe would contain itself.
    bool TakeChosen(const CChosenFood& chosen, CComposedItem& component);
    [[nodiscard]] CItemDatabaseBase& Items() const { return m_doc.Database().Items(m_kind); }

    CVelmoraDoc& m_doc;
    CStep m_step;
    ECatalogueKind m_kind;
    int m_position;
    bool m_isLoaded = true;
    CComposedItem m_item;  ///< as stored, but with the current values
    CComposedFields m_fields;
    std::vector<int> m_nutrients;
    std::vector<CComposedItem> m_components;
};
