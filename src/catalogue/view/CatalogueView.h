// The view that all kinds of the catalogue share: the panes with what there is, and the commands on
// it. A kind adds its item dialog.
#pragma once

#include <array>
#include <functional>
#include <vector>

#include "app/VelmoraDoc.h"
#include "catalogue/view/CatalogueBrowser.h"
#include "controls/MainView.h"

class QPushButton;
class QStackedWidget;

class CCatalogueView : public CMainView {
    Q_OBJECT
  public:
    CCatalogueView(CVelmoraDoc& doc, ECatalogueKind kind, QWidget* parent);
    ~CCatalogueView() override;

    std::vector<CCommandMenu> CommandBar() override;
    std::vector<QAction*> ToolButtons() override;
    void DataChanged() override;

  protected:
    enum class EEdited { Cancelled, Stored, Failed };
    /// Opens the item dialog and stores what comes out of it. Position -1 is a new item.
    virtual EEdited EditItem(int position, qint32 categoryId) = 0;
    CCatalogueBrowser& Browser() { return *m_browser; }
    /// What the kind adds to the Tools menu.
    virtual std::vector<QAction*> Tools() { return {}; }

    CVelmoraDoc& Doc() { return m_doc; }
    CDatabase& Database() { return m_doc.Database(); }
    [[nodiscard]] int GetSplitterPerMille() { return State().splitterPerMille; }
    /// Reads the lists anew and selects the item stored at `position`.
    void ShowStored(int position);
    /// A button of the page that stands in for an empty catalogue.
    QPushButton* AddEmptyPageButton(const QString& text);
    /// Runs an exchange, then shows what it brought and selects what was selected before.
    void RunImport(const std::function<void()>& run);

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
        kCommandCount
    };

    struct CCommand;

    void MakeActions();
    QAction* MakeAction(const CCommand& command);
    /// Some keys mean something else while a label is edited and outside their own pane.
    void LeaveKeysToPanes();
    void MakeWindowActions();
    void ConnectBrowser();
    QWidget* MakeEmptyPage();
    QString Text(const char* text) const { return QString::fromLatin1(text); }

    void ShowMenu(QWidget* widget, const QPoint& at, const std::vector<ECommand>& commands);

    void Import();
    void Export();
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
    /// F2 belongs to the command that fits the tree's current item.
    void PlaceRenameKey();
    CCatalogueState& State() { return m_doc.CatalogueState(m_kind.code); }

    CVelmoraDoc& m_doc;
    const CCatalogueKind& m_kind;
    CCatalogueRules m_rules;
    std::array<QAction*, kCommandCount> m_actions{};  ///< null where the kind has none
    std::vector<QAction*> m_windows;
    QStackedWidget* m_pages;
    CCatalogueBrowser* m_browser;
    QWidget* m_emptyPage = nullptr;
};
