#include "store/Database.h"

#include <QFileInfo>
#include <initializer_list>
#include <utility>

#include "store/Step.h"
#include "store/VolumeTexts.h"
#include "store/engine/JournalCheck.h"
#include "store/engine/StorageState.h"

using namespace Qt::StringLiterals;

namespace {
/// The file that writing to `path` would change, with links resolved; it need not exist.
QString TargetOf(const QString& path) {
    constexpr int kMostLinks = 40;
    QFileInfo file(path);
    for (int links = 0; links < kMostLinks && file.isSymLink(); ++links) {
        file.setFile(file.symLinkTarget());
    }
    return QFileInfo(file.absolutePath()).canonicalFilePath() + u'/' + file.fileName();
}
}  // namespace

CDatabase::CDatabase(QString volumePath)
    : m_volumePath(std::move(volumePath)),
      m_nutrientNames(m_store),
      m_catalogue(m_store),
      m_categories(m_store),
      m_composed(m_catalogue.Menus(), m_catalogue.Recipes()),
      m_profiles(m_store),
      m_usage(m_store),
      m_search(m_store, m_catalogue, m_categories, m_usage),
      m_backups(m_store.EngineState().file,
                QFileInfo(m_volumePath).isSymLink() ? TargetOf(m_volumePath) : m_volumePath) {
    m_store.AddListener(&m_backups);
}

CDatabase::~CDatabase() {
    CloseCatalogue();
    m_store.RemoveListener(&m_backups);
}

void CDatabase::StartBackups() {
    m_backups.Start([this](const QString& text) { m_store.ShowWarning(text); });
}

bool CDatabase::MayChangeMuch(CStep& step, qint64 room) {
    const bool mayGoOn = step.MayGoOn(room);
    if (mayGoOn) {
        m_backups.MakeIfDue(EBackupOccasion::LargeChange);
    }
    return mayGoOn;
}

bool CDatabase::OpenCatalogue() {
    CloseCatalogue();
    if (!m_store.MountVolume(m_volumePath)) {
        m_refusal = m_store.GetLastError();
        return false;
    }
    // One group: a new volume is either whole or empty.
    CRecordGroup group(m_store);
    bool isOpen = m_nutrientNames.Open(false);
    if (isOpen) {
        m_nutrientNames.BringToDefault();
    }
    for (CItemDatabaseBase* database : std::initializer_list<CItemDatabaseBase*>{
             &Foods(), &Menus(), &Recipes(), &Exlib(), &m_categories}) {
        isOpen = isOpen && database->Open(false);
    }
    // After a failure the group is discarded with everything it created: a refused file stays as it
    // is.
    if (!isOpen || !group.Commit()) {
        m_refusal = m_store.GetLastError();
        m_store.DiscardVolume();
        CloseCatalogue();
        return false;
    }
    for (CItemDatabaseBase* database :
         std::initializer_list<CItemDatabaseBase*>{&Foods(), &Menus(), &Recipes(), &Exlib()}) {
        m_store.History().Watch(database->GetId(), kCatalogueScope, CViewSettings::kMarker);
    }
    m_store.History().Watch(m_categories.GetId(), kCatalogueScope);
    // What a killed dialog left is removed together with its step.
    CStep step(m_store, {});
    step.Cancel();
    m_composed.RemoveOrphans(ECatalogueKind::Menus);
    m_composed.RemoveOrphans(ECatalogueKind::Recipes);
    return true;
}

void CDatabase::CloseCatalogue() {
    m_profiles.Close();
    m_search.Forget();
    m_usage.Forget();
    m_composed.ForgetItemIds();
    for (CItemDatabaseBase* database : std::initializer_list<CItemDatabaseBase*>{
             &Exlib(), &Recipes(), &Menus(), &m_nutrientNames, &m_categories, &Foods()}) {
        m_store.History().Unwatch(database->GetId());
        database->Close();
    }
    m_store.UnmountVolume();
}

QString CDatabase::GetRefusal() const {
    return RefusalText(m_refusal, m_volumePath);
}

// The journal may not exist yet.
bool CDatabase::IsVolume(const QString& path) const {
    const QString target = TargetOf(path);
    const QString volume = TargetOf(m_volumePath);
    return target == volume || target == volume + kJournalSuffix;
}

CStoredViewSettings CDatabase::ViewSettings(ECatalogueKind kind) {
    return {Items(kind), QLatin1StringView(CatalogueLayoutOf(kind).settingsFailure)};
}

bool CDatabase::DeleteItem(ECatalogueKind kind, int position) {
    return HasComponents(kind) ? m_composed.Delete(kind, position) : Items(kind).Delete(position);
}

EReverted CDatabase::Revert(const CHistoryStep& step) {
    const EReverted reverted = m_store.Revert(step);
    m_composed.ForgetItemIds();  // a menu that is back may have one that was to be allocated next
    return reverted;
}
