// The commands of the catalogue view.
#include "catalogue/pick/FindDialog.h"
#include "catalogue/pick/FindItems.h"
#include "catalogue/share/ShareItems.h"
#include "catalogue/share/TakeIn.h"
#include "catalogue/view/CatalogueView.h"
#include "catalogue/view/CategoryPickDialog.h"
#include "catalogue/view/OptionsDialogs.h"
#include "controls/ReportList.h"

#include <QFileInfo>
#include <algorithm>

using namespace Qt::StringLiterals;

void CCatalogueView::Import() {
    const std::optional<EDuplicatePolicy> policy =
        AskImportOptions(m_kind.code, EDuplicatePolicy::Overwrite, this);
    if (policy) {
        RunThenReload([&] { (void)ImportCatalogue(Database(), m_kind.code, *policy); });
    }
}

void CCatalogueView::RunThenReload(const std::function<void()>& run) {
    const qint32 categoryId = m_browser->CategoryId();
    const QString category = Database().Categories().NameOf(m_kind.code, categoryId);
    const QString name = m_browser->ItemName();
    const CCatalogueRules::Entries selected = m_browser->Selected();
    run();
    const bool isSameThere = Database().Categories().Find(m_kind.code, categoryId) >= 0;
    m_browser->Reload(
        isSameThere ? categoryId : Database().Categories().IdOf(m_kind.code, category), name);
    if (!selected.empty()) {
        const CCategoryListEntry& item = selected.front();
        m_browser->SelectItem(
            Database().Catalogue().FindItem(m_kind.code, item.categoryId, item.name, item.type));
    }
}

void CCatalogueView::Export() {
    const std::optional<EExportChoice> choice =
        AskExportOptions(m_kind.code, EExportChoice::All, this);
    if (!choice) {
        return;
    }
    CExportRequest request{*choice, m_browser->CategoryId(), {}};
    CCatalogueRules::Entries entries = m_browser->Selected();
    if (m_kind.exchange.exportsListedRows && *choice == EExportChoice::CurrentCategory) {
        request.choice = EExportChoice::Selected;
        entries = m_browser->Listed();
    }
    for (const CCategoryListEntry& entry : entries) {
        request.positions.push_back(entry.position);
    }
    (void)ExportCatalogue(Database(), m_kind.code, request);
}

void CCatalogueView::Share() {
    CShareRequest request{m_kind.code, {}};
    for (const CCategoryListEntry& entry : m_browser->Selected()) {
        request.positions.push_back(entry.position);
    }
    if (request.positions.empty()) {
        ShowMessage(FormatText("Please select %s to share."_L1, {Text(m_kind.words.one)}),
                    EMessageIcon::Information);
        return;
    }
    const QString path =
        ChooseFileToSave(ShareFileChoice(FormatText("Share %s"_L1, {Text(m_kind.words.many)}),
                                         ProposedShareName(Database(), request)));
    if (!path.isEmpty()) {
        m_doc.shareFile = QFileInfo(path).fileName();
        (void)ShareItems(Database(), request, path);  // has reported the result
    }
}

void CCatalogueView::TakeIn() {
    const std::optional<EDuplicatePolicy> policy = AskTakeInOptions(this);
    if (!policy) {
        return;
    }
    const QString path = ChooseFileToOpen(ShareFileChoice(u"Take in"_s, m_doc.shareFile));
    if (!path.isEmpty()) {
        m_doc.shareFile = QFileInfo(path).fileName();
        RunThenReload([&] { (void)TakeInFile(Database(), *policy, path); });
    }
}

void CCatalogueView::NewCategory() {
    const qint32 categoryId = m_rules.AddCategory(Text(m_kind.category.newName));
    if (categoryId < 0) {
        return;
    }
    m_browser->Reload(categoryId);
    m_browser->EditLabel();
}

void CCatalogueView::RenameCategory() {
    if (m_browser->CategoryRow() >= 0) {
        m_browser->EditLabel();
    } else if (!m_browser->HasCategories()) {
        ShowMessage(kNoCategorySelected);
    } else {
        ShowMessage(u"Please select category to rename."_s);
    }
}

void CCatalogueView::RenameItems() {
    if (!m_browser->ItemName().isEmpty()) {
        m_browser->EditLabel();
    } else if (!m_browser->HasCategories()) {
        ShowMessage(Text(m_kind.rename.noNames));
    } else {
        ShowMessage(Text(m_kind.rename.noNameSelected));
    }
}

void CCatalogueView::EndLabelEdit(qint32 categoryId, const QString& name, const QString& typed) {
    QString renamed;
    if (name.isEmpty()) {
        (void)m_rules.RenameCategory(categoryId, typed);
    } else {
        renamed = m_rules.RenameItems(categoryId, name, typed);
    }
    // Also after a failure, since some items may have been renamed.
    m_browser->Reload(categoryId, renamed.isEmpty() ? name : renamed);
}

void CCatalogueView::DeleteCategory() {
    const int row = m_browser->CategoryRow();
    const qint32 categoryId = row < 0 ? -1 : m_browser->CategoryId();
    const CPositionRange range =
        Database().Items(m_kind.code).RangeOf(categoryId).value_or(CPositionRange{});
    if (m_rules.DeleteCategory(categoryId)) {
        CFindState& find = m_doc.FindState(m_kind.code);
        NoteDeleted(find, std::clamp(find.next - range.first, 0, range.count));
    }
    // Selects the category that took its place, or the last. Also after a failure, since the
    // category may have lost its items.
    if (row >= 0) {
        m_browser->ReloadAt(row);
    }
}

void CCatalogueView::NewItem() {
    const qint32 categoryId = m_browser->CategoryId();
    if (m_rules.MayAddItem(categoryId) && EditItem(-1, categoryId) == EEdited::Failed) {
        ShowMessage(Text(m_kind.item.cannotAdd));
    }
}

void CCatalogueView::EditSelected() {
    const CCatalogueRules::Entries selected = m_browser->Selected();
    if (m_rules.MayEdit(selected) &&
        EditItem(selected.front().position, selected.front().categoryId) == EEdited::Failed) {
        ShowMessage(Text(m_kind.item.cannotUpdate));
    }
}

void CCatalogueView::DeleteSelected() {
    const CCatalogueRules::Entries selected = m_browser->Selected();
    const int focused = std::max(0, m_browser->List()->CurrentPlace());
    const int deleted = m_rules.Delete(selected);
    if (deleted == 0) {
        return;
    }
    // "Find next" continues at the same place when the last match was deleted.
    CFindState& find = m_doc.FindState(m_kind.code);
    if (deleted == static_cast<int>(selected.size())) {
        const auto before = std::ranges::count_if(
            selected, [&](const auto& entry) { return entry.position < find.next; });
        NoteDeleted(find, static_cast<int>(before));
    }
    m_browser->Reload();
    m_browser->List()->SelectPlace(focused);
}

void CCatalogueView::MoveSelected() {
    const CCatalogueRules::Entries selected = m_browser->Selected();
    const std::vector<CCategoryEntry> targets = m_rules.MoveTargets(selected);
    if (targets.empty()) {
        return;
    }
    CCategoryPickDialog dialog(Text(m_kind.item.movePickerTitle), targets, this);
    if (dialog.exec() == QDialog::Accepted && m_rules.Move(selected, dialog.GetCategory()) > 0) {
        m_browser->Reload();
    }
}

void CCatalogueView::DuplicateSelected() {
    const int position = m_rules.Duplicate(m_browser->Selected());
    if (position >= 0) {
        ShowStored(position);
    }
}

void CCatalogueView::Find() {
    const auto fields =
        m_kind.Layout().namesType ? CFindDialog::EFields::NameAndType : CFindDialog::EFields::Name;
    CFindState& state = m_doc.FindState(m_kind.code);
    CFindDialog dialog(Text(m_kind.item.findPrompt), state, fields, this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    // Texts that cannot be stored are kept until the program ends.
    (void)m_doc.KeepFindTexts(m_kind.code, dialog.GetName(), dialog.GetTypes());
    ShowFound(FindFirst(Database(), m_kind.code, state));
}

void CCatalogueView::FindAgain() {
    CFindState& state = m_doc.FindState(m_kind.code);
    if (!state.HasTexts()) {
        Find();
    } else {
        ShowFound(FindNext(Database(), m_kind.code, state));
    }
}

void CCatalogueView::ShowFound(int position) {
    if (position < 0) {
        ShowMessage(Text(m_kind.item.notFound));
        return;
    }
    CCategoryListEntry entry{};
    if (!m_browser->ReadEntry(position, entry)) {
        ShowMessage(Text(m_kind.item.cannotLoad));
        return;
    }
    m_browser->SelectItem(position);
    m_browser->List()->setFocus();
}
