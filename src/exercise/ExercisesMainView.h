// The exercise diary: the exercises of a day, and the graph of the week that ends with it.
#pragma once

#include "diary/DiaryView.h"
#include "exercise/ExerciseRules.h"

class CExercisesGraph;
class CReportList;
class QLabel;

class CExercisesMainView final : public CDiaryView {
    Q_OBJECT
  public:
    CExercisesMainView(CVelmoraDoc& doc, QWidget* parent);

    void DataChanged() override;

  protected:
    void DayChanged() override { Reload(); }
    [[nodiscard]] int ListHeight(int perMille, int viewHeight) const override {
        return ExerciseListHeight(perMille, viewHeight);
    }

  private:
    void CreateList();
    void CreateGraph();
    void CreateActions();
    void CreateGraphActions();

    void BuildColumns();
    /// Reads and shows the day again; `select` is the place to select, -1 for none.
    void Reload(int select = -1);
    void ShowRows();
    void ShowGraph();

    void Add();
    void Edit();
    void Delete();
    void ChooseColor(const QString& prompt, quint32 CExerciseTabSettings::*setting);

    ListedEntries<CExerciseEntry> m_exercises;  ///< of the day shown, one per row
    CReportList* m_list = nullptr;
    QWidget* m_pane = nullptr;
    QLabel* m_headline = nullptr;
    CExercisesGraph* m_graph = nullptr;
};
