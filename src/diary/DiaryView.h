// The base of the diaries' tabs: menus, the day shown, a list with its commands over a second pane,
// colours.
#pragma once

#include <QKeySequence>
#include <functional>
#include <optional>

#include "app/UndoRules.h"
#include "app/VelmoraDoc.h"
#include "controls/MainView.h"

class CDateField;
class CListPane;
class CReportList;
class CUndoActions;
class QSplitter;

/// The document outlives the view; its dayShown is valid once a view exists. A derived view creates
/// its list, and its pane in Splitter(), then calls SetCommands and LayOutTab.
class CDiaryView : public CMainView {
    Q_OBJECT
  public:
    std::vector<CCommandMenu> CommandBar() override { return m_menus; }
    /// The commands to add and to delete.
    std::vector<QAction*> ToolButtons() override;
    void RefreshMenus() override;

  protected:
    /// `splitterPerMille` is the list's share of the tab, kept in the document.
    CDiaryView(CVelmoraDoc& doc, int& splitterPerMille, QWidget* parent);

    CVelmoraDoc& Doc() { return m_doc; }
    [[nodiscard]] const CVelmoraDoc& Doc() const { return m_doc; }
    QSplitter* Splitter() { return m_splitter; }

    /// Asks the frame to run a command (EFrameCommand).
    QAction* CreateFrameAction(const QString& text, int command);

    /// Where a command's keys work; kInList for keys that fields use themselves.
    enum EReach { kAnywhere, kInList };
    struct CListCommand {
        const char* text;
        const char* toolTip;
        QList<QKeySequence> keys;
        EReach reach;
        std::function<void()> run;
    };
    static inline const QList<QKeySequence> kAddKeys = {Qt::Key_Insert, Qt::CTRL | Qt::Key_N};
    /// Puts the list above the tab's pane. The first three `commands` add, edit and delete. All of
    /// them are in the list's menu and in "Edit"; activating a row edits it. `more` follow
    /// after undo and redo. `own` is the tab's own entry of "Tools".
    void SetCommands(CReportList* list, const std::vector<CListCommand>& commands, QAction* own,
                     const std::vector<CListCommand>& more = {});
    /// Lays out the day, `between`, and the list above its pane; the list gets the focus.
    void LayOutTab(const std::vector<QWidget*>& between = {});

    /// Called when the document's dayShown has changed.
    virtual void DayChanged() {}
    /// Called when the palette has changed: applies the view's own colours again.
    virtual void ShowColors() {}
    /// Sets the line under the list; an empty text hides it.
    void ShowNote(const QString& text);
    /// Height of the list in a view of `viewHeight`, both in logical pixels.
    [[nodiscard]] virtual int ListHeight(int perMille, int viewHeight) const;
    void ShowSplit();

    /// `position` in the coordinates of `widget`; a null action is a separator.
    static void ShowMenu(const std::vector<QAction*>& actions, QWidget* widget,
                         const QPoint& position);
    /// The colour chosen in "Select color"; nothing when it is cancelled.
    std::optional<quint32> AskColor(const QString& prompt, const QColor& current);

    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    enum ECommand { kAdd, kEdit, kDelete };

    void CreateUndo();
    void Revert(EUndo direction);
    /// The commands on entries, a separator, and undo.
    std::vector<QAction*> EditCommands();
    QWidget* CreateDayBar();
    QAction* CreateListAction(const CListCommand& command);
    void SetMenus(QAction* own);
    void SetDay(QDate day);

    CVelmoraDoc& m_doc;
    int& m_splitterPerMille;
    std::vector<CCommandMenu> m_menus;
    std::vector<QAction*> m_commands;
    std::vector<QAction*> m_more;
    CUndoActions* m_undo = nullptr;
    QWidget* m_dayBar = nullptr;
    CDateField* m_date = nullptr;
    QSplitter* m_splitter = nullptr;
    CListPane* m_listPane = nullptr;
    CReportList* m_list = nullptr;
};
