// The view that all kinds of the catalogue share: categories with their item names in a tree, the
// items of the selection in a list, and the commands on both. A kind adds its texts and its item
// dialog.
#pragma once

#include <array>
#include <functional>
#include <vector>

#include "app/VelmoraDoc.h"
#include "catalogue/CatalogueTexts.h"
#include "controls/MainView.h"

class CCategoryTreeModel;
class CReportList;
class QPushButton;
class QSplitter;
class QStackedWidget;
class QTreeView;

/// What the document keeps of the last find.
struct CFindState {
    QString& name;
    QString& type;
    int& next;  ///< position where find next goes on
};

/// Lists are read anew after every change; selection, scroll position and focus outlive that.
class CCatalogueView : public CMainView {
    Q_OBJECT
  public:
    CCatalogueView(CVelmoraDoc& doc, const CCatalogueTexts& texts, QWidget* parent);
    ~CCatalogueView() override;

    std::vector<CCommandMenu> CommandBar() override;
    std::vector<QAction*> ToolButtons() override;
    void DataChanged() override;

  protected:
    enum class EEdited { Cancelled, Stored, Failed };
    /// Opens the item dialog and stores what comes out of it. Position -1 is a new item.
    virtual EEdited EditItem(int position, qint32 categoryId) = 0;
    virtual void OpenPreferences() = 0;
    virtual CFindState FindState() = 0;

    CVelmoraDoc& Doc() { return m_doc; }
    CDatabase& Database() { return m_doc.Database(); }
    void SetNamesInTree(bool namesInTree) { m_namesInTree = namesInTree; }
    /// The tree's share of the view.
    [[nodiscard]] int GetSplitterPerMille() const { return m_splitterPerMille; }
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
        kNewItem,
        kEditItem,
        kDeleteItems,
        kFind,
        kFindNext,
        kPreferences,
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
    std::vector<CCategoryListEntry> ItemsOfName(qint32 categoryId, const QString& name);
    void FillList();
    void SelectInTree(qint32 categoryId, const QString& name);
    /// Selects an item with its category; a negative position selects nothing.
    void SelectItem(int position);
    bool ReadEntry(int position, CCategoryListEntry& entry);
    void ShowMenu(QWidget* widget, const QPoint& at, const std::vector<ECommand>& commands);

    void Import();
    void Export();
    void NewCategory();
    void RenameCategory();
    void EndLabelEdit(qint32 categoryId, const QString& typed);
    void NewItem();
    void EditSelected();
    void DeleteSelected();
    void Find();
    void FindNext();
    void FindFrom(int first);

    CVelmoraDoc& m_doc;
    const CCatalogueTexts& m_texts;
    std::array<QAction*, kCommandCount> m_actions{};
    QStackedWidget* m_pages;
    QSplitter* m_splitter;
    QTreeView* m_tree;
    CCategoryTreeModel* m_model;
    CReportList* m_list;
    QWidget* m_emptyPage;
    std::vector<CCategoryListEntry> m_entries;
    bool m_namesInTree = true;
    int m_splitterPerMille = 400;
};
