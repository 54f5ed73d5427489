// The commands of the catalogue view.
#include "catalogue/CatalogueView.h"
#include "catalogue/CategoryPickDialog.h"
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
    CCatalogueRules::Entries entries = Selected();
    // The current category of exercises is what the list shows of it.
    if (m_texts.kind == ECatalogueKind::Exercises && *choice == EExportChoice::CurrentCategory) {
        request.choice = EExportChoice::Selected;
        entries = m_entries;
    }
    for (const CCategoryListEntry& entry : entries) {
        request.positions.push_back(entry.position);
    }
    (void)ExportCatalogue(Database(), m_texts.kind, request);
}

void CCatalogueView::NewCategory() {
    const qint32 categoryId = m_rules.AddCategory(Text(m_texts.newCategoryName));
    if (categoryId < 0) {
        return;
    }
    FillTree();
    SelectInTree(categoryId, QString());
    EditLabel();
}

void CCatalogueView::RenameCategory() {
    if (CCategoryTreeModel::IsCategory(m_tree->currentIndex())) {
        EditLabel();
    } else if (m_model->rowCount({}) == 0) {
        ShowMessage(u"There is no category selected."_s);
    } else {
        ShowMessage(u"Please select category to rename."_s);
    }
}

void CCatalogueView::RenameItems() {
    if (!m_model->NameOf(m_tree->currentIndex()).isEmpty()) {
        EditLabel();
    } else if (m_model->rowCount({}) == 0) {
        ShowMessage(Text(m_texts.noNames));
    } else {
        ShowMessage(Text(m_texts.noNameSelected));
    }
}

void CCatalogueView::EditLabel() {
    RaiseInputPanel();
    m_tree->setFocus();
    m_tree->edit(m_tree->currentIndex());
}

void CCatalogueView::EndLabelEdit(qint32 categoryId, const QString& name, const QString& typed) {
    QString renamed;
    if (name.isEmpty()) {
        (void)m_rules.RenameCategory(categoryId, typed);
    } else {
        renamed = m_rules.RenameItems(categoryId, name, typed);
    }
    // Also after a failure, which may have come half way.
    FillTree();
    SelectInTree(categoryId, renamed.isEmpty() ? name : renamed);
}

void CCatalogueView::DeleteCategory() {
    const QModelIndex current = m_tree->currentIndex();
    const qint32 categoryId =
        CCategoryTreeModel::IsCategory(current) ? m_model->CategoryOf(current) : -1;
    const CPositionRange range = Items().RangeOf(categoryId).value_or(CPositionRange{});
    const int row = current.row();
    if (m_rules.DeleteCategory(categoryId)) {
        CFindState& find = State().find;
        NoteDeleted(find, std::clamp(find.next - range.first, 0, range.count));
    }
    // The one that takes its place, or the last. A category may have lost its items and stayed.
    FillTree();
    const QSignalBlocker quiet(m_tree->selectionModel());
    m_tree->setCurrentIndex(m_model->index(std::min(row, m_model->rowCount({}) - 1), 0, {}));
    FillList();
    PlaceRenameKey();
}

void CCatalogueView::NewItem() {
    const qint32 categoryId = m_model->CategoryOf(m_tree->currentIndex());
    if (m_rules.MayAddItem(categoryId) && EditItem(-1, categoryId) == EEdited::Failed) {
        ShowMessage(Text(m_texts.cannotAdd));
    }
}

CCatalogueRules::Entries CCatalogueView::Selected() const {
    CCatalogueRules::Entries selected;
    for (const int row : m_list->SelectedRows()) {
        selected.push_back(m_entries[static_cast<size_t>(row)]);
    }
    return selected;
}

void CCatalogueView::EditSelected() {
    const CCatalogueRules::Entries selected = Selected();
    if (m_rules.MayEdit(selected) &&
        EditItem(selected.front().position, selected.front().categoryId) == EEdited::Failed) {
        ShowMessage(Text(m_texts.cannotUpdate));
    }
}

void CCatalogueView::DeleteSelected() {
    const CCatalogueRules::Entries selected = Selected();
    const int focused = std::max(0, m_list->currentIndex().row());
    const int deleted = m_rules.Delete(selected);
    if (deleted == 0) {
        return;
    }
    // "Find next" goes on behind the same item, also when it is among those that went.
    CFindState& find = State().find;
    if (deleted == static_cast<int>(selected.size())) {
        const auto inFront = std::ranges::count_if(
            selected, [&](const auto& entry) { return entry.position < find.next; });
        NoteDeleted(find, static_cast<int>(inFront));
    }
    Reload();
    m_list->SelectRow(focused);
}

void CCatalogueView::MoveSelected() {
    const CCatalogueRules::Entries selected = Selected();
    const std::vector<CCategoryEntry> targets = m_rules.MoveTargets(selected);
    if (targets.empty()) {
        return;
    }
    CCategoryPickDialog dialog(Text(m_texts.movePickerTitle), targets, this);
    if (dialog.exec() == QDialog::Accepted && m_rules.Move(selected, dialog.GetCategory()) > 0) {
        Reload();
    }
}

void CCatalogueView::DuplicateSelected() {
    const int position = m_rules.Duplicate(Selected());
    if (position >= 0) {
        ShowStored(position);
    }
}

void CCatalogueView::Find() {
    const auto fields = CatalogueLayoutOf(m_texts.kind).namesType
                            ? CFindDialog::EFields::NameAndType
                            : CFindDialog::EFields::Name;
    CFindState& state = State().find;
    CFindDialog dialog(Text(m_texts.findPrompt), state, fields, this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    state.name = dialog.GetName();
    state.types = dialog.GetTypes();
    ShowFound(FindFirst(Database(), m_texts.kind, state));
}

void CCatalogueView::FindAgain() {
    CFindState& state = State().find;
    if (!state.HasTexts()) {
        Find();
    } else {
        ShowFound(FindNext(Database(), m_texts.kind, state));
    }
}

void CCatalogueView::ShowFound(int position) {
    if (position < 0) {
        ShowMessage(Text(m_texts.notFound));
        return;
    }
    CCategoryListEntry entry{};
    if (!ReadEntry(position, entry)) {
        ShowMessage(Text(m_texts.cannotLoad));
        return;
    }
    SelectItem(position);
    m_list->setFocus();
}
