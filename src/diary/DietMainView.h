// The diet diary: the entries of a day, and the day's totals against the targets.
#pragma once

#include "diary/DiaryView.h"
#include "diary/DietDay.h"

class CEntryList;
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

  private:
    void CreateActions();
    void CreateMeals();
    void CreateLists();

    /// Reads and shows the day again; `select` is the place to select, -1 for none.
    void Reload(int select = -1);
    void ShowDay();
    void ShowTotals();

    void Add();
    void Edit();
    void Delete();
    void Move();
    void Duplicate();
    void ChooseBackgroundColor();
    [[nodiscard]] ListedEntries<CDietEntry> SelectedEntries() const;

    CDietDay m_day;
    QTabBar* m_meals = nullptr;
    CEntryList* m_entries = nullptr;
    CTotalsList* m_totals = nullptr;
};
