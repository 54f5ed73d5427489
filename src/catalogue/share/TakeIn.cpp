#include "catalogue/share/TakeIn.h"

#include "app/ListCommands.h"
#include "catalogue/items/CatalogueChoices.h"
#include "catalogue/items/CatalogueKinds.h"
#include "catalogue/share/ShareReader.h"
#include "catalogue/share/ShareTexts.h"
#include "catalogue/share/SharedRecord.h"
#include "catalogue/share/TakeInPlan.h"
#include "store/Step.h"

#include <QFileInfo>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
class CTakeInRun {
  public:
    CTakeInRun(CDatabase& database, EDuplicatePolicy policy, QString path)
        : m_database(database), m_policy(policy), m_path(std::move(path)), m_plan(database) {}
    bool Run();

  private:
    bool Check();
    bool MayStore(CStep& step);
    bool Store();
    bool StoreItem(const CSharedItem& item);
    bool WriteItem(const CSharedItem& item, int position, qint32 categoryId);
    bool StoreComponent(const CSharedComponent& component);
    /// Identifier of the menu or recipe at a position, or of a new one.
    qint32 ComposedId(ECatalogueKind kind, int position);
    /// Identifier of a category of the file, created when it is missing; -1 on failure.
    qint32 CategoryFor(int category);
    void KeepIdentifier(ECatalogueKind kind, int position);
    void Refuse(const QString& text);
    bool ShowProgress();
    [[nodiscard]] QString Summary() const;

    CDatabase& m_database;
    EDuplicatePolicy m_policy;
    QString m_path;
    CShareReader m_reader;
    CTakeInPlan m_plan;
    std::unique_ptr<CProgress> m_progress;
    CKindCounts m_stored{};             ///< items added or replaced
    CKindCounts m_existing{};           ///< items that were replaced or skipped
    std::vector<qint32> m_identifiers;  ///< by which components refer to the items of the file
    ECatalogueKind m_ownerKind = ECatalogueKind::Foods;
    qint32 m_ownerId = 0;  ///< of the menu or recipe stored last; 0: its components are skipped
};

bool CTakeInRun::Run() {
    CStep step(m_database.GetStore(), StepName("take-in"_L1, QFileInfo(m_path).fileName()));
    return Check() && MayStore(step) && Store();
}

/// Reads the whole file once. False after a message.
bool CTakeInRun::Check() {
    EPlatformError error = m_database.IsVolume(m_path) ? kErrorBadFormat : m_reader.Open(m_path);
    m_progress = CreateProgress(u"Velmora: Take in"_s);
    m_progress->SetStatus(u"Taking in items..."_s);
    m_progress->SetRange(0, 2 * m_reader.Contents().items, 1);  // checked, then stored
    m_progress->Show();
    if (error == kErrorSuccess) {
        error = m_reader.ReadItems({[this](const CSharedItem& item) {
                                        m_plan.Note(item);
                                        return ShowProgress();
                                    },
                                    [](const CSharedComponent&) { return true; }});
    }
    if (error != kErrorSuccess) {
        Refuse(TakeInRefusalText(error, m_path));
        return false;
    }
    m_plan.Match(m_reader.Categories());
    return true;
}

/// False after a message or a No.
bool CTakeInRun::MayStore(CStep& step) {
    const qint64 room = m_policy == EDuplicatePolicy::Overwrite ? m_plan.RoomForExisting() : 0;
    return m_database.Categories().MayAdd(m_plan.CountNewCategories()) &&
           m_database.MayChangeMuch(step, room);
}

bool CTakeInRun::Store() {
    CRecordGroup group(m_database.GetStore());
    const EPlatformError error =
        group.IsOpen()
            ? m_reader.ReadItems(
                  {[this](const CSharedItem& item) { return StoreItem(item); },
                   [this](const CSharedComponent& part) { return StoreComponent(part); }})
            : kErrorOperationAborted;
    if (error == kErrorSuccess && group.Commit()) {
        m_progress.reset();
        ShowMessage(Summary(), EMessageIcon::Result);
        return true;
    }
    group.Undo();
    Refuse(FormatText("Cannot take in the file '%s'. Nothing was changed."_L1, {m_path}));
    return false;
}

bool CTakeInRun::StoreItem(const CSharedItem& item) {
    CItemDatabaseBase& items = m_database.Items(item.kind);
    const ObjectId existing =
        m_policy == EDuplicatePolicy::DoNotCheck ? 0 : m_plan.ExistingOf(item.number);
    int position = existing == 0 ? kNoPosition : items.PositionOf(existing);
    m_ownerId = 0;
    if (!ShowProgress() || (existing != 0 && position < 0)) {
        return false;
    }
    const auto kind = static_cast<std::size_t>(item.kind);
    m_existing.at(kind) += existing == 0 ? 0 : 1;
    if (existing == 0 || m_policy == EDuplicatePolicy::Overwrite) {
        const qint32 categoryId = CategoryFor(item.category);
        if (categoryId < 0 || !WriteItem(item, position, categoryId)) {
            return false;
        }
        if (position < 0) {
            // A new record comes after the others of its category.
            const CPositionRange range =
                items.RangeBetween(categoryId, categoryId).value_or(CPositionRange{});
            position = range.first + range.count - 1;
        }
        ++m_stored.at(kind);
    }
    KeepIdentifier(item.kind, position);
    return true;
}

bool CTakeInRun::WriteItem(const CSharedItem& item, int position, qint32 categoryId) {
    if (HasComponents(item.kind)) {
        m_ownerKind = item.kind;
        m_ownerId = ComposedId(item.kind, position);
        if (position >= 0 && !m_database.Composed().DeleteComponents(item.kind, m_ownerId)) {
            return false;
        }
    }
    PropertyList properties = item.record;
    PlaceItem(item.kind, properties, categoryId, m_ownerId);
    CCatalogueItem record(item.kind);
    return record.SetProperties(std::move(properties)) &&
           m_database.Items(item.kind).Write(position, record);
}

bool CTakeInRun::StoreComponent(const CSharedComponent& component) {
    if (m_ownerId == 0) {
        return true;
    }
    PropertyList properties = component.record;
    const qint32 itemId =
        component.item == 0 ? 0 : m_identifiers[static_cast<std::size_t>(component.item) - 1];
    PlaceComponent(properties, m_ownerId, itemId);
    CComposedItem record(m_ownerKind);
    return record.SetProperties(std::move(properties)) &&
           m_database.Items(m_ownerKind).Write(kNoPosition, record);
}

qint32 CTakeInRun::ComposedId(ECatalogueKind kind, int position) {
    CComposedItem item(kind);
    const bool isThere = position >= 0 && m_database.Items(kind).ReadQuietly(position, item) &&
                         item.GetItemId() >= kFirstComposedId;  // not so in a damaged record
    return isThere ? item.GetItemId() : m_database.Composed().AllocateItemId(kind);
}

qint32 CTakeInRun::CategoryFor(int category) {
    if (m_plan.CategoryOf(category) < 0) {
        CCategory created = m_reader.Categories()[static_cast<std::size_t>(category)];
        if (m_database.Categories().AddOrUpdate(kNoPosition, created)) {
            m_plan.SetCategory(category, created.GetId());
        }
    }
    return m_plan.CategoryOf(category);
}

void CTakeInRun::KeepIdentifier(ECatalogueKind kind, int position) {
    const std::optional<EItemKind> itemKind = KindOf(kind).itemKind;
    m_identifiers.push_back(itemKind ? ComponentItemId(m_database, *itemKind, position) : 0);
}

void CTakeInRun::Refuse(const QString& text) {
    const bool isCancelled = m_progress->IsCancelled();
    m_progress.reset();
    m_database.GetStore().ShowFailure(isCancelled ? u"Taking in cancelled. Nothing was changed."_s
                                                  : text);
}

/// False when the user has cancelled.
bool CTakeInRun::ShowProgress() {
    m_progress->Step();
    m_progress->Pump();
    return !m_progress->IsCancelled();
}

QString CTakeInRun::Summary() const {
    const QString existing = CountsText(m_existing);
    QString text = u"Took in %1."_s.arg(CountsText(m_stored));
    if (m_existing != CKindCounts{}) {
        text += m_policy == EDuplicatePolicy::Skip
                    ? u" Skipped %1 that existed already."_s.arg(existing)
                    : u" Replaced %1 that existed already."_s.arg(existing);
    }
    return text;
}
}  // namespace

bool TakeInFile(CDatabase& database, EDuplicatePolicy policy, const QString& path) {
    return CTakeInRun(database, policy, path).Run();
}
