// A window of the catalogue over a real volume, and what a user sees and does there.
#pragma once

#include <QAction>
#include <QTreeView>

#include "catalogue/view/CatalogueView.h"
#include "controls/ReportList.h"
#include "support/CatalogueTest.h"
#include "support/Clicks.h"

using namespace Qt::StringLiterals;

class CCatalogueViewTest : public CCatalogueTest {
  protected:
    template <typename View>
    void Open() {
        m_view = std::make_unique<View>(*m_doc, nullptr);
        m_tree = Find<QTreeView>(*m_view, "categories");
        m_list = Find<CReportList>(*m_view, "items");
        m_view->resize(600, 400);
        Show(*m_view);
    }
    void Close() {
        m_view.reset();
        DropVolume();
    }
    void Trigger(const char* command) { Find<QAction>(*m_view, command)->trigger(); }

    /// A category, or one of the names in it.
    QModelIndex Node(int category, int name = -1) {
        const QModelIndex node = m_tree->model()->index(category, 0);
        m_tree->expand(node);
        return name < 0 ? node : m_tree->model()->index(name, 0, node);
    }
    QString CurrentNode() const { return m_tree->currentIndex().data().toString(); }
    /// "Milk, whole".
    QString Row(int row) const {
        QStringList cells;
        for (int column = 0; column < m_list->model()->columnCount(); ++column) {
            cells.append(m_list->model()->index(row, column).data().toString());
        }
        return cells.join(u", "_s);
    }
    /// A row between two '|'.
    QString Listed() const {
        QStringList rows;
        for (int row = 0; row < m_list->RowCount(); ++row) {
            rows.append(Row(row));
        }
        return rows.join(u'|');
    }
    /// Empty when not exactly one row is selected.
    QString Selected() const {
        const std::vector<int> rows = m_list->SelectedRows();
        return rows.size() == 1 ? Row(rows.front()) : QString();
    }

    std::unique_ptr<CCatalogueView> m_view;
    QTreeView* m_tree = nullptr;
    CReportList* m_list = nullptr;
};
