// Everything that the dialogs "Menu" and "Recipe" decide: components, values, what is refused, what
// is stored.
#pragma once

#include <vector>

#include "app/VelmoraDoc.h"
#include "catalogue/items/ChosenFood.h"

/// What the user types, as typed.
struct CComposedFields {
    qint32 categoryId = -1;  ///< -1: none selected
    QString name;
    QString servings;      ///< recipes alone
    QString instructions;  ///< recipes alone; lines end in CR LF
};

/// Components are stored at once, under an identifier that a new menu or recipe has from the start;
/// the menu or recipe itself when it is confirmed. Components of a new one that never was confirmed
/// go with the form. The document outlives the form.
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

    /// One row a displayed nutrient.
    [[nodiscard]] int RowCount() const { return static_cast<int>(m_nutrients.size()); }
    /// Name with its unit.
    [[nodiscard]] QString RowTitle(int row) const;
    [[nodiscard]] QString RowText(int row) const;
    /// The leading number counts; 0 when there is none, also for an empty text. A number beyond
    /// kLargestTyped changes nothing. A row that is left alone keeps its stored value to the last
    /// bit.
    void SetRowText(int row, const QString& typed);

    /// In stored order.
    [[nodiscard]] const std::vector<CComposedItem>& Components() const { return m_components; }
    /// "2.00xcup".
    [[nodiscard]] QString ServingText(int component) const;
    /// False after a message when none or several are selected.
    static bool MayEditComponent(int selected);
    /// Adds the food or recipe that was chosen, or replaces the component by it. False after a
    /// message.
    bool AddComponent(const CChosenFood& chosen);
    bool ReplaceComponent(int component, const CChosenFood& chosen);
    /// Asks and deletes; `selected` ascending. Returns whether anything is gone.
    bool DeleteComponents(const std::vector<int>& selected);
    /// Makes the sums of all components the values.
    void Recalculate();

    /// Stores the menu or recipe; false after the message that says why the dialog stays open.
    bool Confirm();
    /// Where it stands after Confirm.
    [[nodiscard]] int GetStoredPosition() const { return m_position; }

  private:
    void LoadComponents();
    /// Takes over what was chosen; false after a message when that would put a recipe into itself.
    bool TakeChosen(const CChosenFood& chosen, CComposedItem& component);
    [[nodiscard]] CItemDatabaseBase& Items() const { return m_doc.Database().Items(m_kind); }

    CVelmoraDoc& m_doc;
    ECatalogueKind m_kind;
    int m_position;
    bool m_isLoaded = true;
    CComposedItem m_item;  ///< as stored, with the values as they are shown
    CComposedFields m_fields;
    std::vector<int> m_nutrients;
    std::vector<CComposedItem> m_components;
};
