// The weight diary: all weights of the profile above their graph.
#pragma once

#include <optional>

#include "diary/DiaryView.h"
#include "diary/weight/WeightList.h"

class CWeightEntryList;
class CWeightGraph;

class CWeightMainView final : public CDiaryView {
    Q_OBJECT
  public:
    CWeightMainView(CVelmoraDoc& doc, QWidget* parent);

    void DataChanged() override;

  protected:
    void DayChanged() override;

  private:
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
    void ShowRows();
    void ReloadAndSelect(int place);

    void Add();
    void Edit();
    void Delete();
    void ShowBmi();
    void ShowGoalLine(bool isShown);
    void ChooseColor(const CGraphColor& color);

    CWeightList m_weights;
    QAction* m_goalLine = nullptr;
    CWeightEntryList* m_entries = nullptr;
    CWeightGraph* m_graph = nullptr;
};
