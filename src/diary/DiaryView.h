// What the tabs of the diary have in common: menus, the day shown, commands on a list, colours.
#pragma once

#include <QKeySequence>
#include <optional>

#include "app/VelmoraDoc.h"
#include "controls/MainView.h"

class QDateEdit;

/// The document outlives the view. Its day shown is valid once a view is made.
class CDiaryView : public CMainView {
    Q_OBJECT
  public:
    std::vector<CCommandMenu> CommandBar() override { return m_menus; }

  protected:
    CDiaryView(CVelmoraDoc& doc, QWidget* parent);

    CVelmoraDoc& Doc() { return m_doc; }
    [[nodiscard]] const CVelmoraDoc& Doc() const { return m_doc; }

    /// Asks the frame to run a command (EFrameCommand).
    QAction* CreateFrameAction(const QString& text, int command);

    /// Keys that fields have a use for work in the list alone.
    enum EReach { kAnywhere, kInList };
    struct CListCommand {
        const char* text;
        const char* toolTip;
        QList<QKeySequence> keys;
        EReach reach;
    };
    static inline const QList<QKeySequence> kAddKeys = {Qt::Key_Insert, Qt::CTRL | Qt::Key_N};
    /// A command on the list, with its keys.
    QAction* CreateListAction(QWidget* list, const CListCommand& command);

    /// File, Edit and Tools. `own` is the tab's own entry of Tools.
    void SetDiaryMenus(std::vector<QAction*> edit, QAction* own);

    /// Date field with previous day, today and next day, bound to the document's day shown.
    QWidget* CreateDayBar();
    /// The document's day shown is another one.
    virtual void DayChanged() {}

    /// `position` in the coordinates of `list`. Null actions are separators.
    static void ShowListMenu(const std::vector<QAction*>& actions, QWidget* list,
                             const QPoint& position);
    /// "Select color" with the prompt; nothing when it is cancelled.
    std::optional<quint32> AskColor(const QString& prompt, const QColor& current);

  private:
    void SetDay(QDate day);

    CVelmoraDoc& m_doc;
    std::vector<CCommandMenu> m_menus;
    QDateEdit* m_date = nullptr;
};
