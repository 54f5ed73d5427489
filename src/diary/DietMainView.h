// The diet diary: the entries of a day, and the day's totals against the targets.
#pragma once

#include <array>

#include "diary/DiaryView.h"
#include "diary/DietDay.h"
#include "diary/DietRules.h"

class CEntryList;
class CTotalsList;
class QSplitter;
class QTabBar;

class CDietMainView : public CDiaryView {
    Q_OBJECT
  public:
    CDietMainView(CVelmoraDoc& doc, QWidget* parent);

    std::vector<QAction*> ToolButtons() override;
    void StoreLayout() override;
    void DataChanged() override;

  protected:
    void DayChanged() override { Reload(); }
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    enum ECommand { kAdd, kEdit, kDelete, kMove, kDuplicate, kCommandCount };

    void CreateActions();
    QWidget* CreateMeals();
    void CreateLists();

    /// Loads the day anew; `select` is the row to select, -1 for none.
    void Reload(int select = -1);
    void ShowDay();
    void ShowTotals();
    void ShowColors();
    void ShowSplit();

    void Add();
    void Edit();
    void Delete();
    void Move();
    void Duplicate();
    void ChooseBackgroundColor();
    [[nodiscard]] std::vector<CDietEntry> SelectedEntries() const;

    CDietDay m_day;
    std::array<QAction*, kCommandCount> m_commands{};
    QAction* m_nutrients = nullptr;
    QAction* m_background = nullptr;
    QTabBar* m_meals = nullptr;
    QSplitter* m_splitter = nullptr;
    CEntryList* m_entries = nullptr;
    CTotalsList* m_totals = nullptr;
};
