// The food edit dialog, for a new or an existing food.
#pragma once

#include "app/VelmoraDoc.h"
#include "catalogue/items/FoodRules.h"
#include "controls/Dialog.h"

class CFoodEditDialog : public CDialog {
    Q_OBJECT
  public:
    /// `position` -1 for a new food.
    CFoodEditDialog(CVelmoraDoc& doc, const CFoodItem& food, int position, QWidget* parent);
    ~CFoodEditDialog() override;
    /// The food as confirmed.
    [[nodiscard]] const CFoodItem& GetItem() const { return m_food; }

  protected:
    bool Confirm() override;

  private:
    struct CFields;

    void AddNames();
    void AddServings();
    void AddNutrients();
    void FillServings();
    void EmptyServings();
    [[nodiscard]] bool HasServings() const;
    void ChangeMode(EServingMode mode);
    void EndServingEdit(int row, int column, const QString& text);
    void EndNutrientEdit(int row, const QString& text);
    [[nodiscard]] CFoodItem ReadFields() const;
    void ReadServings(CFoodItem& food) const;

    CVelmoraDoc& m_doc;
    CFoodItem m_food;
    int m_position;
    EServingMode m_mode;
    std::unique_ptr<CFields> m_fields;
};
