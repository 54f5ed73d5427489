// The weight diary: all weights of the profile over their graph.
#pragma once

#include <array>
#include <optional>

#include "diary/DiaryView.h"
#include "diary/WeightList.h"

class CWeightEntryList;
class CWeightGraph;
class QSplitter;

class CWeightMainView : public CDiaryView {
    Q_OBJECT
  public:
    CWeightMainView(CVelmoraDoc& doc, QWidget* parent);

    std::vector<QAction*> ToolButtons() override;
    void StoreLayout() override;
    void DataChanged() override;

  protected:
    void DayChanged() override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    enum ECommand { kAdd, kEdit, kDelete, kCommandCount };
    struct CGraphColor {
        const char* text;
        const char* prompt;
        std::optional<quint32> CWeightTabSettings::*setting;
        QColor (CWeightGraph::*current)() const;
    };
    static const CGraphColor kGraphColors[4];

    void CreateLists();
    void CreateActions();
    void CreateGraphActions();

    void Reload();
    void ReloadAndSelect(int row);
    void ShowIcons();
    void ShowSplit();

    void Add();
    void Edit();
    void Delete();
    void ShowBmi();
    void ShowGoalLine(bool isShown);
    void ChooseColor(const CGraphColor& color);

    CWeightList m_weights;
    std::array<QAction*, kCommandCount> m_commands{};
    std::vector<QAction*> m_graphActions;
    QAction* m_goalLine = nullptr;
    QSplitter* m_splitter = nullptr;
    CWeightEntryList* m_entries = nullptr;
    CWeightGraph* m_graph = nullptr;
};
