// The commands of the catalogue view.
#include "catalogue/CatalogueView.h"
#include "catalogue/CategoryTreeModel.h"
#include "catalogue/FindDialog.h"
#include "catalogue/FindItems.h"
#include "catalogue/OptionsDialogs.h"
#include "controls/InputPanel.h"
#include "controls/ReportList.h"

#include <QTreeView>
#include <algorithm>

using namespace Qt::StringLiterals;

void CCatalogueView::Import() {
    const std::optional<EExisting> existing =
        AskImportOptions(m_texts.kind, EExisting::Overwrite, this);
    if (existing) {
        RunImport([&] { (void)ImportCatalogue(Database(), m_texts.kind, *existing); });
    }
}

void CCatalogueView::RunImport(const std::function<void()>& run) {
    const QModelIndex current = m_tree->currentIndex();
    const QString category = Database().CategoryNameOf(m_texts.kind, m_model->CategoryOf(current));
    const QString name = m_model->NameOf(current);
    const std::vector<int> rows = m_list->SelectedRows();
    std::optional<CCategoryListEntry> item;
    if (!rows.empty()) {
        item = m_entries[static_cast<size_t>(rows.front())];
    }
    run();
    FillTree();
    SelectInTree(Database().CategoryIdOf(m_texts.kind, category), name);
    if (item) {
        SelectItem(Database().FindItem(m_texts.kind, item->categoryId, item->name, item->type));
    }
}

void CCatalogueView::Export() {
    const std::optional<EExportChoice> choice =
        AskExportOptions(m_texts.kind, EExportChoice::All, this);
    if (!choice) {
        return;
    }
    CExportRequest request{*choice, m_model->CategoryOf(m_tree->currentIndex()), {}};
    for (const int row : m_list->SelectedRows()) {
        request.positions.push_back(m_entries[static_cast<size_t>(row)].position);
    }
    (void)ExportCatalogue(Database(), m_texts.kind, request);
}

void CCatalogueView::NewCategory() {
    const QString name = Text(m_texts.newCategoryName);
    if (Database().FindCategory(m_texts.kind, name) >= 0) {
        ShowMessage(FormatText("Category '%s' already exists."_L1, {name}));
        return;
    }
    CCategory category;
    category.SetKind(m_texts.kind);
    category.SetName(name);
    if (!Database().AddOrUpdateCategory(-1, category)) {
        ShowMessage(u"Cannot create new category"_s);
        return;
    }
    FillTree();
    // The store does not tell whether the record was written.
    if (!m_model->IndexOf(category.GetId(), QString()).isValid()) {
        ShowMessage(u"Cannot create new category"_s);
        return;
    }
    SelectInTree(category.GetId(), QString());
    RaiseInputPanel();
    m_tree->setFocus();
    m_tree->edit(m_tree->currentIndex());
}

void CCatalogueView::RenameCategory() {
    const QModelIndex current = m_tree->currentIndex();
    if (CCategoryTreeModel::IsCategory(current)) {
        RaiseInputPanel();
        m_tree->setFocus();
        m_tree->edit(current);
    } else if (m_model->rowCount({}) == 0) {
        ShowMessage(u"There is no category selected."_s);
    } else {
        ShowMessage(u"Please select category to rename."_s);
    }
}

void CCatalogueView::EndLabelEdit(qint32 categoryId, const QString& typed) {
    const QString name = typed.trimmed();
    const int position = Database().FindCategory(m_texts.kind, categoryId);
    CCategory category;
    if (name.isEmpty()) {
        ShowMessage(u"Please enter category name."_s);
        return;
    }
    if (position < 0 || !Database().Categories().Read(position, category)) {
        return;
    }
    const QString oldName = category.GetName();
    category.SetName(name);  // cut to what the record holds, which is what must be unique
    if (category.GetName() == oldName) {
        return;
    }
    if (Database().FindCategory(m_texts.kind, category.GetName()) >= 0) {
        ShowMessage(FormatText("Category '%s' already exists."_L1, {category.GetName()}));
        return;
    }
    // A write that failed shows in the tree, which keeps the old name.
    (void)Database().AddOrUpdateCategory(position, category);
    Reload();
}

void CCatalogueView::NewItem() {
    if (m_model->rowCount({}) == 0) {
        ShowMessage(Text(m_texts.noCategoryForItem));
        return;
    }
    const qint32 categoryId = m_model->CategoryOf(m_tree->currentIndex());
    if (categoryId < 0) {
        ShowMessage(u"Please select category."_s);
        return;
    }
    if (EditItem(-1, categoryId) == EEdited::Failed) {
        ShowMessage(Text(m_texts.cannotAdd));
    }
}

void CCatalogueView::EditSelected() {
    const std::vector<int> rows = m_list->SelectedRows();
    if (!CheckSelection(m_texts.edit, static_cast<int>(rows.size()))) {
        return;
    }
    const CCategoryListEntry& entry = m_entries[static_cast<size_t>(rows.front())];
    if (EditItem(entry.position, entry.categoryId) == EEdited::Failed) {
        ShowMessage(Text(m_texts.cannotUpdate));
    }
}

void CCatalogueView::DeleteSelected() {
    const std::vector<int> rows = m_list->SelectedRows();
    const auto count = static_cast<int>(rows.size());
    if (!CheckSelection(m_texts.remove, count)) {
        return;
    }
    const CCategoryListEntry& first = m_entries[static_cast<size_t>(rows.front())];
    if (!ConfirmFor(m_texts.confirmDelete, count, {first.name, first.type})) {
        return;
    }
    std::vector<int> positions;
    for (const int row : rows) {
        positions.push_back(m_entries[static_cast<size_t>(row)].position);
    }
    // From the last on: a deletion moves everything behind it.
    std::sort(positions.rbegin(), positions.rend());
    CFindState find = FindState();
    ActOnEach(
        positions,
        [&](int position) {
            if (!Items().Delete(position)) {
                return false;
            }
            // "Find next" goes on behind the same item.
            find.next -= position < find.next ? 1 : 0;
            return true;
        },
        Text(m_texts.cannotDelete));
    Reload();
}

void CCatalogueView::Find() {
    CFindState state = FindState();
    CFindDialog dialog(Text(m_texts.findPrompt), state.name, state.type, this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    state.name = dialog.GetName();
    state.type = dialog.GetType();
    FindFrom(0);
}

void CCatalogueView::FindNext() {
    const CFindState state = FindState();
    if (state.name.isEmpty() && state.type.isEmpty()) {
        Find();
    } else {
        FindFrom(state.next);
    }
}

void CCatalogueView::FindFrom(int first) {
    CFindState state = FindState();
    const int position = FindNextItem(Database(), m_texts.kind, state.name, state.type, first);
    if (position < 0) {
        ShowMessage(Text(m_texts.notFound));
        return;
    }
    state.next = position + 1;
    CCategoryListEntry entry{};
    if (!ReadEntry(position, entry)) {
        ShowMessage(Text(m_texts.cannotLoad));
        return;
    }
    SelectItem(position);
    m_list->setFocus();
}
