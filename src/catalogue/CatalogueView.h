// The view that all kinds of the catalogue share: categories with their item names in a tree, the
// items of the selection in a list, and the commands on both. A kind adds its texts and its item
// dialog.
#pragma once

#include <array>
#include <functional>
#include <vector>

#include "app/VelmoraDoc.h"
#include "catalogue/CatalogueRules.h"
#include "controls/MainView.h"

class CCategoryTreeModel;
class CReportList;
class QPushButton;
class QSplitter;
class QStackedWidget;
class QTreeView;

/// Lists are read anew after every change; selection, scroll position and focus outlive that.
class CCatalogueView : public CMainView {
    Q_OBJECT
  public:
    CCatalogueView(CVelmoraDoc& doc, const CCatalogueTexts& texts, QWidget* parent);
    ~CCatalogueView() override;

    std::vector<CCommandMenu> CommandBar() override;
    std::vector<QAction*> ToolButtons() override;
    void StoreLayout() override {}
    void DataChanged() override;

  protected:
    enum class EEdited { Cancelled, Stored, Failed };
    /// Opens the item dialog and stores what comes out of it. Position -1 is a new item.
    virtual EEdited EditItem(int position, qint32 categoryId) = 0;
    /// Adds a column behind name and type, wide enough for `widest`. Its cells are asked for when
    /// the list is filled.
    void AddColumn(const QString& title, const QString& widest,
                   std::function<QString(const CCategoryListEntry&)> text);
    /// The items selected in the list.
    [[nodiscard]] CCatalogueRules::Entries Selected() const;
    /// What the kind adds to the Tools menu.
    virtual std::vector<QAction*> Tools() { return {}; }

    CVelmoraDoc& Doc() { return m_doc; }
    CDatabase& Database() { return m_doc.Database(); }
    void SetNamesInTree(bool namesInTree) { m_namesInTree = namesInTree; }
    /// The tree's share of the view, kept in the document.
    [[nodiscard]] int GetSplitterPerMille() { return State().splitterPerMille; }
    void SetSplitterPerMille(int perMille);
    /// Reads the lists anew and selects the item stored at `position`.
    void ShowStored(int position);
    /// A button of the page that stands in for an empty catalogue.
    QPushButton* AddEmptyPageButton(const QString& text);
    /// Runs an exchange, then shows what it brought and selects what was selected before.
    void RunImport(const std::function<void()>& run);

    void resizeEvent(QResizeEvent* event) override;

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

    void MakeActions();
    void MakeTree();
    void MakeList();
    QWidget* MakeEmptyPage();
    QString Text(const char* text) const { return QString::fromLatin1(text); }
    CItemDatabaseBase& Items() { return Database().Items(m_texts.kind); }

    void Reload();
    void FillTree();
    void FillList();
    void ShowEntries();
    void SelectInTree(qint32 categoryId, const QString& name);
    /// Selects an item with its category; a negative position selects nothing.
    void SelectItem(int position);
    bool ReadEntry(int position, CCategoryListEntry& entry);
    void ShowMenu(QWidget* widget, const QPoint& at, const std::vector<ECommand>& commands);

    void Import();
    void Export();
    void CloseView();
    void NewCategory();
    void RenameCategory();
    void DeleteCategory();
    void RenameItems();
    void EditLabel();
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
    CCatalogueState& State() { return m_doc.CatalogueState(m_texts.kind); }

    CVelmoraDoc& m_doc;
    const CCatalogueTexts& m_texts;
    CCatalogueRules m_rules;
    std::array<QAction*, kCommandCount> m_actions{};  ///< null where the kind has none
    std::vector<QAction*> m_windows;
    QStackedWidget* m_pages;
    QSplitter* m_splitter;
    QTreeView* m_tree;
    CCategoryTreeModel* m_model;
    CReportList* m_list;
    QWidget* m_emptyPage;
    std::vector<CCategoryListEntry> m_entries;
    std::function<QString(const CCategoryListEntry&)> m_addedText;  ///< of the column added, if any
    QStringList m_addedCells;                                       ///< by row
    int m_addedWidth = 0;
    bool m_namesInTree;
};
