// The diet diary: the entries of a day, and the day's totals against the targets.
#pragma once

#include "catalogue/items/ChosenFood.h"
#include "diary/CopyRules.h"
#include "diary/DiaryView.h"
#include "diary/DietDay.h"

class CDialog;
class CEntryList;
class CQuickField;
class CTotalsList;
class QTabBar;

class CDietMainView final : public CDiaryView {
    Q_OBJECT
  public:
    CDietMainView(CVelmoraDoc& doc, QWidget* parent);

    void DataChanged() override;

  protected:
    void DayChanged() override { Reload(); }
    void ShowColors() override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void CreateActions();
    void CreateMeals();
    void CreateQuickField();
    void CreateLists();

    /// Reads and shows the day again; `select` is the place to select, -1 for none.
    void Reload(int select = -1);
    /// Reads and shows the day again, with the entries just added at these places selected.
    void ShowAdded(const std::vector<CDietPlace>& places);
    void ShowDay();
    void ShowTotals();

    void Add();
    void Edit();
    void Delete();
    void Move();
    void Duplicate();
    void AddCustom();
    /// Shows a dialog and adds its result at the day and meal shown.
    void AddFrom(CDialog& dialog, const std::function<CChosenFood()>& result);
    void Copy();
    void Cut();
    void Paste();
    void CopyTo();
    void Repeat();
    void TakeOffer(int offer);
    /// Adds copies at the day shown and shows them.
    void AddCopies(const std::vector<CDietEntry>& entries);
    void ShowOffers();
    void ChooseBackgroundColor();
    [[nodiscard]] ListedEntries<CDietEntry> SelectedEntries() const;

    CDietDay m_day;
    std::vector<CMealOffer> m_offers;  ///< while the meal shown is empty
    QTabBar* m_meals = nullptr;
    CQuickField* m_quick = nullptr;
    CEntryList* m_entries = nullptr;
    CTotalsList* m_totals = nullptr;
};
