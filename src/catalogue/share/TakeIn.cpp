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
    bool KeepIdentifier(ECatalogueKind kind, int position, qint32 categoryId);
    void Refuse(const QString& text);
    bool GoesOn();
    [[nodiscard]] QString NotTakenInText() const;
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
    m_progress = CreateProgress(u"Velmora: Take in"_s);
    m_progress->SetStatus(u"Taking in items..."_s);
    m_progress->Show();
    m_progress->Pump();  // opening may take seconds
    EPlatformError error = m_database.IsVolume(m_path) ? kErrorBadFormat : m_reader.Open(m_path);
    if (error == kErrorSuccess) {
        m_progress->SetRange(0, 2 * m_reader.Contents().items, 1);  // checked, then stored
        error = m_reader.ReadItems({[this](const CSharedItem& item) {
                                        m_plan.Note(item);
                                        m_progress->Step();
                                        return GoesOn();
                                    },
                                    [this](const CSharedComponent&) { return GoesOn(); }});
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
    m_progress->Hide();
    if (!m_database.Categories().MayAdd(m_plan.CountNewCategories())) {
        Refuse(NotTakenInText());
        return false;
    }
    const qint64 room = m_policy == EDuplicatePolicy::Overwrite ? m_plan.RoomForExisting() : 0;
    if (!m_database.MayChangeMuch(step, room)) {
        return false;
    }
    m_progress->Show();
    return true;
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
    Refuse(NotTakenInText());
    return false;
}

bool CTakeInRun::StoreItem(const CSharedItem& item) {
    CItemDatabaseBase& items = m_database.Items(item.kind);
    const ObjectId existing =
        m_policy == EDuplicatePolicy::DoNotCheck ? 0 : m_plan.ExistingOf(item.number);
    int position = existing == 0 ? kNoPosition : items.PositionOf(existing);
    m_ownerId = 0;
    m_progress->Step();
    if (!GoesOn() || (existing != 0 && position < 0)) {
        return false;
    }
    const auto kind = static_cast<std::size_t>(item.kind);
    m_existing.at(kind) += existing == 0 ? 0 : 1;
    qint32 categoryId = 0;
    if (existing == 0 || m_policy == EDuplicatePolicy::Overwrite) {
        categoryId = CategoryFor(item.category);
        if (categoryId < 0 || !WriteItem(item, position, categoryId)) {
            return false;
        }
        ++m_stored.at(kind);
    }
    return KeepIdentifier(item.kind, position, categoryId);
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
    if (!GoesOn()) {
        return false;
    }
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

// AddOrUpdate does not report a failed write, but that fails the whole unit.
qint32 CTakeInRun::CategoryFor(int category) {
    if (m_plan.CategoryOf(category) < 0) {
        CCategory created = m_reader.Categories()[static_cast<std::size_t>(category)];
        if (m_database.Categories().AddOrUpdate(kNoPosition, created)) {
            m_plan.SetCategory(category, created.GetId());
        }
    }
    return m_plan.CategoryOf(category);
}

/// Of an item at `position`, or of the one just added to the category when that is -1. False when
/// the new one cannot be found.
bool CTakeInRun::KeepIdentifier(ECatalogueKind kind, int position, qint32 categoryId) {
    const std::optional<EItemKind> itemKind = KindOf(kind).itemKind;
    if (!itemKind || m_ownerId != 0) {
        m_identifiers.push_back(m_ownerId);
        return true;
    }
    if (position < 0) {
        // A new record comes after the others of its category.
        const auto range = m_database.Items(kind).RangeBetween(categoryId, categoryId);
        position = range ? range->first + range->count - 1 : kNoPosition;
    }
    m_identifiers.push_back(ComponentItemId(m_database, *itemKind, position));
    return position >= 0;
}

void CTakeInRun::Refuse(const QString& text) {
    const bool isCancelled = m_progress->IsCancelled();
    m_progress.reset();
    m_database.GetStore().ShowFailure(isCancelled ? u"Taking in cancelled. Nothing was changed."_s
                                                  : text);
}

/// False when the user has cancelled.
bool CTakeInRun::GoesOn() {
    m_progress->Pump();
    return !m_progress->IsCancelled();
}

QString CTakeInRun::NotTakenInText() const {
    return FormatText("Cannot take in the file '%s'. Nothing was changed."_L1, {m_path});
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
