// What the tabs of the diary have in common: menus, the day shown, a list with its commands over a
// second pane, colours.
#pragma once

#include <QKeySequence>
#include <functional>
#include <optional>

#include "app/VelmoraDoc.h"
#include "controls/MainView.h"

class CListPane;
class CReportList;
class QDateEdit;
class QSplitter;

/// The document outlives the view. Its day shown is valid once a view is made. A derived view makes
/// its list, and its pane in Splitter(), then calls SetCommands and LayOutTab.
class CDiaryView : public CMainView {
    Q_OBJECT
  public:
    std::vector<CCommandMenu> CommandBar() override { return m_menus; }
    /// Adding and deleting.
    std::vector<QAction*> ToolButtons() override;

  protected:
    /// `splitterPerMille` is the list's share of the tab, kept in the document.
    CDiaryView(CVelmoraDoc& doc, int& splitterPerMille, QWidget* parent);

    CVelmoraDoc& Doc() { return m_doc; }
    [[nodiscard]] const CVelmoraDoc& Doc() const { return m_doc; }
    QSplitter* Splitter() { return m_splitter; }

    /// Asks the frame to run a command (EFrameCommand).
    QAction* CreateFrameAction(const QString& text, int command);

    /// Keys that fields have a use for work in the list alone.
    enum EReach { kAnywhere, kInList };
    struct CListCommand {
        const char* text;
        const char* toolTip;
        QList<QKeySequence> keys;
        EReach reach;
        std::function<void()> run;
    };
    static inline const QList<QKeySequence> kAddKeys = {Qt::Key_Insert, Qt::CTRL | Qt::Key_N};
    /// Puts the list over the tab's pane. The commands on it: adding, editing and deleting first.
    /// They stand in its menu and in Edit; activating a row edits it. `own` is the tab's own entry
    /// of Tools.
    void SetCommands(CReportList* list, const std::vector<CListCommand>& commands, QAction* own);
    /// The day, what stands `between` (if anything), the list over its pane; the list gets the
    /// focus.
    void LayOutTab(QWidget* between = nullptr);

    /// The document's day shown is another one.
    virtual void DayChanged() {}
    /// The palette has changed: what is drawn in colours of the view's own stands out from it.
    virtual void ShowColors() {}
    /// A line under the list; an empty text hides it.
    void ShowNote(const QString& text);
    /// Height in pixels of the list in a view of that height.
    [[nodiscard]] virtual int ListHeight(int perMille, int viewHeight) const;
    void ShowSplit();

    /// `position` in the coordinates of `widget`.
    static void ShowMenu(const std::vector<QAction*>& actions, QWidget* widget,
                         const QPoint& position);
    /// "Select color" with the prompt; nothing when it is cancelled.
    std::optional<quint32> AskColor(const QString& prompt, const QColor& current);

    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    enum ECommand { kAdd, kEdit, kDelete };

    QWidget* CreateDayBar();
    QAction* CreateListAction(const CListCommand& command);
    void SetMenus(QAction* own);
    void SetDay(QDate day);

    CVelmoraDoc& m_doc;
    int& m_splitterPerMille;
    std::vector<CCommandMenu> m_menus;
    std::vector<QAction*> m_commands;
    QWidget* m_dayBar = nullptr;
    QDateEdit* m_date = nullptr;
    QSplitter* m_splitter = nullptr;
    CListPane* m_listPane = nullptr;
    CReportList* m_list = nullptr;
};
