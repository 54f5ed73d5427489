// The two panes of a catalogue view: a tree of categories and item names, and a list of the items
// of the selected category or name, which a field over it narrows.
#pragma once

#include <QSplitter>
#include <functional>
#include <optional>
#include <vector>

#include "app/VelmoraDoc.h"
#include "catalogue/items/CatalogueRules.h"

class CCategoryTreeModel;
class CListPane;
class CReportList;
class QLineEdit;
class QTimer;
class QTreeView;

/// Both panes are read again after every change; expanded categories and the tree's scroll position
/// are kept. The field shows the best matches of its words in the order of the list. Document and
/// rules outlive the browser.
class CCatalogueBrowser : public QSplitter {
    Q_OBJECT
  public:
    CCatalogueBrowser(CVelmoraDoc& doc, CCatalogueRules& rules, ECatalogueKind kind);

    /// A column after name and type. `cell` is called when the list is filled.
    struct CAddedCell {
        QString text;
        double sortKey;
    };
    struct CAddedColumn {
        QString title;
        QString widest;  ///< a text that must fit into it
        std::function<CAddedCell(const CCategoryListEntry&)> cell;
    };
    void AddColumn(CAddedColumn column);
    /// Takes effect at the next reload.
    void SetNamesInTree(bool namesInTree) { m_namesInTree = namesInTree; }
    /// The tree's share of the width or height, kept in the document.
    void SetSplitterPerMille(int perMille);

    /// Reads both panes again and keeps the selection.
    void Reload();
    /// Reads both panes again and selects a category, or an item name in it; the category if there
    /// is no such name, the first category if there is no such category.
    void Reload(qint32 categoryId, const QString& name = QString());
    /// Reads both panes again and selects the category in that row, or the last one.
    void ReloadAt(int categoryRow);
    /// Selects an item with its category; a negative position selects nothing.
    void SelectItem(int position);
    /// The item stored at a position; false when it cannot be read.
    bool ReadEntry(int position, CCategoryListEntry& entry);
    /// Opens the tree's current label for editing.
    void EditLabel();

    [[nodiscard]] bool HasCategories() const;
    /// Category of the tree's current row or of its parent; -1 for none.
    [[nodiscard]] qint32 CategoryId() const;
    /// Empty when the tree's current row is not an item name.
    [[nodiscard]] QString ItemName() const;
    /// The tree's current row if it is a category; -1 otherwise.
    [[nodiscard]] int CategoryRow() const;
    [[nodiscard]] const CCatalogueRules::Entries& Listed() const { return m_entries; }
    /// The items selected in the list.
    [[nodiscard]] CCatalogueRules::Entries Selected() const;

    [[nodiscard]] QTreeView* Tree() const { return m_tree; }
    [[nodiscard]] CReportList* List() const { return m_list; }

  signals:
    void TreeRead();
    void TreeSelectionChanged();
    /// The user has edited a label: that of the category if `name` is empty, else that item name.
    /// The tree still shows the old one.
    void LabelTyped(qint32 categoryId, const QString& name, const QString& typed);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void MakeTree();
    void MakeList();
    void MakeFilter();
    void SetColumns();
    void FillTree();
    /// Reads the items of the tree's current row.
    void FillList();
    /// Shows them, or those of them that the words in the field find.
    void Narrow();
    [[nodiscard]] CCategoryList Found(const CSearchMatches& matches);
    void ShowEntries();
    void ShowNote();
    void SelectInTree(const QModelIndex& index);
    [[nodiscard]] bool IsShown(const CCategoryListEntry& entry) const;
    int& SplitterPerMille();

    CVelmoraDoc& m_doc;
    CCatalogueRules& m_rules;
    const CCatalogueKind& m_kind;
    QTreeView* m_tree;
    CCategoryTreeModel* m_model;
    CReportList* m_list;
    CListPane* m_listPane;
    QLineEdit* m_filter;
    CCategoryList m_all;                 ///< of the tree's current row, as long as a list can be
    CCatalogueRules::Entries m_entries;  ///< by row of the list
    CLeftOut m_leftOut;
    EFound m_found = EFound::All;  ///< how the rows match the words in the field
    QTimer* m_pending;
    std::optional<CAddedColumn> m_added;
    std::vector<CAddedCell> m_addedCells;  ///< by row
    bool m_namesInTree;
};
