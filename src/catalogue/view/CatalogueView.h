// The view of a catalogue kind: the two panes and the commands on them. A kind adds its item
// dialog.
#pragma once

#include <array>
#include <functional>
#include <vector>

#include "app/VelmoraDoc.h"
#include "catalogue/view/CatalogueBrowser.h"
#include "controls/MainView.h"

class QPushButton;
class QStackedWidget;
class CUndoActions;

class CCatalogueView : public CMainView {
    Q_OBJECT
  public:
    CCatalogueView(CVelmoraDoc& doc, ECatalogueKind kind, QWidget* parent);
    ~CCatalogueView() override;

    std::vector<CCommandMenu> CommandBar() override;
    std::vector<QAction*> ToolButtons() override;
    void RefreshMenus() override;
    void DataChanged() override;

  protected:
    enum class EEdited { Cancelled, Stored, Failed };
    /// Opens the item dialog and stores the result. Position -1 is a new item.
    virtual EEdited EditItem(int position, qint32 categoryId) = 0;
    CCatalogueBrowser& Browser() { return *m_browser; }
    /// The kind's own entries at the end of the File menu.
    virtual std::vector<QAction*> FileTail() { return {}; }
    /// The kind's own entries of the Tools menu.
    virtual std::vector<QAction*> Tools() { return {}; }

    CVelmoraDoc& Doc() { return m_doc; }
    CDatabase& Database() { return m_doc.Database(); }
    [[nodiscard]] int GetSplitterPerMille() { return State().splitterPerMille; }
    /// Reads the panes again and selects the item stored at `position`.
    void ShowStored(int position);
    /// Adds a button to the page that is shown for an empty catalogue.
    QPushButton* AddEmptyPageButton(const QString& text);
    /// Runs a command, then reads the panes again and restores the selection.
    void RunThenReload(const std::function<void()>& run);

  private:
    enum ECommand {
        kImport,
        kExport,
        kClose,
        kNewCategory,
        kRenameCategory,
        kDeleteCategory,
        kRenameItems,
        kNewItem,
        kEditItem,
        kDeleteItems,
        kMoveItems,
        kDuplicateItem,
        kFind,
        kFindNext,
        kShare,
        kTakeIn,
        kCommandCount
    };

    struct CCommand;

    void MakeActions();
    QAction* MakeAction(const CCommand& command);
    /// Limits some shortcuts to their pane: elsewhere, and while a label is edited, their keys have
    /// other meanings.
    void LeaveKeysToPanes();
    void MakeWindowActions();
    void MakeUndo();
    void ConnectBrowser();
    QWidget* MakeEmptyPage();
    QString Text(const char* text) const { return QString::fromLatin1(text); }

    void ShowMenu(QWidget* widget, const QPoint& at, const std::vector<ECommand>& commands);

    void Import();
    void Export();
    void Share();
    void TakeIn();
    void CloseView();
    void NewCategory();
    void RenameCategory();
    void DeleteCategory();
    void RenameItems();
    void EndLabelEdit(qint32 categoryId, const QString& name, const QString& typed);
    void NewItem();
    void EditSelected();
    void DeleteSelected();
    void MoveSelected();
    void DuplicateSelected();
    void Find();
    void FindAgain();
    void ShowFound(int position);
    /// Gives F2 to the rename command that applies to the tree's current row.
    void PlaceRenameKey();
    CCatalogueState& State() { return m_doc.CatalogueState(m_kind.code); }

    CVelmoraDoc& m_doc;
    const CCatalogueKind& m_kind;
    CCatalogueRules m_rules;
    std::array<QAction*, kCommandCount> m_actions{};  ///< null for commands the kind does not have
    std::vector<QAction*> m_windows;
    CUndoActions* m_undo = nullptr;
    QStackedWidget* m_pages;
    CCatalogueBrowser* m_browser;
    QWidget* m_emptyPage = nullptr;
};
