// The line of the diet tab that adds what is typed: "2 eggs, 150 g lentils".
#pragma once

#include "catalogue/items/FoundItem.h"
#include "controls/OverlayField.h"
#include "diary/QuickEntry.h"

/// While a line is typed, shows how each of its items is understood and the matches of the item at
/// the cursor. Up, Down and a click choose a match. Return adds what is understood, at the
/// document's day and meal and at the current time; the rest stays in the line, where it is
/// underlined. Escape first closes the list, then clears and leaves the field. The document keeps
/// the line when the view is left.
class CQuickField : public COverlayField {
    Q_OBJECT
  public:
    CQuickField(CVelmoraDoc& doc, QWidget* over, QWidget* parent);

    /// Shows the field only while it has the focus or a text: for windows with little room.
    void SetOnDemand(bool isOnDemand);
    /// Shows the field and gives it the focus.
    void Call();
    /// Call before the field is shown, and after a change of the catalogue, the preferences or the
    /// profile.
    void Forget();

  signals:
    /// `count` entries were added with this time.
    void Added(int count, QTime time);
    /// The user has left the field with Escape.
    void Left();

  protected:
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    void Fill() override;
    void RowChosen(int row) override;
    void Pick(int row) override;
    void TakeReturn() override { Add(); }
    [[nodiscard]] int LayOutParts(int room) override;

  private:
    void Read();
    void ShowItems();
    void ShowMatches();
    void UnderlineRefused();
    void ShowOrHide();
    void Add();
    void Escape();
    [[nodiscard]] QString CellText(const CQuickItem& item, int column) const;

    CVelmoraDoc& m_doc;
    CQuickEntry m_entry;
    std::vector<CFoundItem> m_matches;  ///< of the item at the cursor
    int m_current = -1;                 ///< that item
    CReportList* m_items;
    bool m_isOnDemand = false;
    bool m_isComposing = false;  ///< an input method has text that is not in the line yet
};
