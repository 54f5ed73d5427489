#include "store/Database.h"

#include "platform/Messages.h"
#include "store/VolumeTexts.h"

#include <QFileInfo>
#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
// The four databases of a profile: what follows its name, and their types.
struct CProfileDatabase {
    const char* suffix;
    const CRecordLayout& layout;
};
constexpr CProfileDatabase kProfileDatabases[] = {
    {"", kProfileLayout},
    {"_Diet", kDietLayout},
    {"_Weight", kWeightLayout},
    {"_Exercises", kExercisesLayout},
};

enum class EOwnership { None, OfProfile, Foreign };

// Whether a database is one of a profile's four, or stands in the way of one.
EOwnership OwnershipOf(const CDatabaseInfo& database, const QString& profile) {
    for (const CProfileDatabase& row : kProfileDatabases) {
        const QString name = profile + QLatin1StringView(row.suffix);
        if (database.name.compare(name, Qt::CaseInsensitive) == 0) {
            return database.type == row.layout.databaseType ? EOwnership::OfProfile
                                                            : EOwnership::Foreign;
        }
    }
    return EOwnership::None;
}

// Position of the profile record, and whether it is of our version.
struct CFoundRecord {
    int position = kNoPosition;
    bool isOurs = false;
};

/// The file that is written when `path` is, whether it exists or not.
QString TargetOf(const QString& path) {
    constexpr int kMostLinks = 40;
    QFileInfo file(path);
    for (int links = 0; links < kMostLinks && file.isSymLink(); ++links) {
        file.setFile(file.symLinkTarget());
    }
    return QFileInfo(file.absolutePath()).canonicalFilePath() + u'/' + file.fileName();
}

CFoundRecord FindProfileRecord(CItemDatabaseBase& profile) {
    CFoundRecord found;
    profile.ForEachFrom(0, [&found](int position, PropertyList& properties) {
        const auto* marker = std::get_if<qint32>(properties.data());
        if (properties.empty() || marker == nullptr || *marker != CProfileRecord::kMarker) {
            return true;
        }
        const auto* version = properties.size() > 1 ? std::get_if<qint32>(&properties[1]) : nullptr;
        found = {position, version != nullptr && *version == CProfileRecord::kVersion};
        return false;
    });
    return found;
}
}  // namespace

CDatabase::CDatabase(QString volumePath)
    : m_volumePath(std::move(volumePath)),
      m_nutrientNames(m_store, kNutrientNameLayout),
      m_foods(m_store, kFoodLayout),
      m_menus(m_store, kMenuLayout),
      m_recipes(m_store, kRecipeLayout),
      m_exlib(m_store, kExerciseLibLayout),
      m_categories(m_store, kCategoryLayout),
      m_profile(m_store, kProfileLayout),
      m_diet(m_store, kDietLayout),
      m_weight(m_store, kWeightLayout),
      m_exercises(m_store, kExercisesLayout) {}

CDatabase::~CDatabase() {
    CloseCatalogue();
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
        BringNutrientNamesToDefault();
    }
    for (CItemDatabaseBase* database : std::initializer_list<CItemDatabaseBase*>{
             &m_foods, &m_menus, &m_recipes, &m_exlib, &m_categories}) {
        isOpen = isOpen && database->Open(false);
    }
    // What was created before a failure goes with the volume's group: a refused file stays as it
    // is.
    if (!isOpen || !group.Commit()) {
        m_refusal = m_store.GetLastError();
        m_store.DiscardVolume();
        CloseCatalogue();
        return false;
    }
    RemoveOrphanComponents(ECatalogueKind::Menus);
    RemoveOrphanComponents(ECatalogueKind::Recipes);
    return true;
}

void CDatabase::CloseCatalogue() {
    CloseProfile();
    m_lastItemIds.fill(0);
    for (CItemDatabaseBase* database : std::initializer_list<CItemDatabaseBase*>{
             &m_exlib, &m_recipes, &m_menus, &m_nutrientNames, &m_categories, &m_foods}) {
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
    return target == volume || target == volume + u"-journal"_s;
}

CItemDatabaseBase& CDatabase::Items(ECatalogueKind kind) {
    const std::array<CItemDatabaseBase*, 4> items = {&m_foods, &m_menus, &m_recipes, &m_exlib};
    return *items.at(static_cast<std::size_t>(kind));
}

QStringList CDatabase::ReadNutrientNames() {
    QStringList names;
    for (int i = 0; i < kNutrientCount; ++i) {
        names.append(QLatin1StringView(NutrientNamesOf(i).displayName));
    }
    m_nutrientNames.ForEachFrom(0, [&names](int, PropertyList& properties) {
        CNutrientName name;
        if (name.SetProperties(std::move(properties)) && name.GetIndex() >= 0 &&
            name.GetIndex() < kNutrientCount) {
            names[name.GetIndex()] = name.GetName();
        }
        return true;
    });
    return names;
}

bool CDatabase::SaveNutrientName(int position, qint32 index, const QString& name) {
    const bool exists = position < 0 || position < m_nutrientNames.Count();
    if (!exists) {
        ShowMessage(u"Cannot save nutrient name."_s);
        return true;
    }
    // Success whatever becomes of the write: a name is no reason to stop.
    m_nutrientNames.Write(position, CNutrientName(index, name));
    return true;
}

QString CDatabase::EnergyName(const QString& unitAbbreviation) {
    const QLatin1StringView energy(NutrientNamesOf(kEnergyIndex).displayName);
    return energy + u'(' + unitAbbreviation + u')';
}

void CDatabase::RenameEnergy(const QString& unitAbbreviation) {
    const QString name = EnergyName(unitAbbreviation);
    CNutrientName stored;
    if (!m_nutrientNames.ReadQuietly(kEnergyIndex, stored) || stored.GetName() != name) {
        SaveNutrientName(kEnergyIndex, kEnergyIndex, name);
    }
}

void CDatabase::BringNutrientNamesToDefault() {
    const int count = m_nutrientNames.Count();
    if (count == kNutrientCount) {
        return;
    }
    const CRecordGroup group(m_store);
    for (int i = 0; i < count; ++i) {
        if (!m_nutrientNames.Delete(0)) {
            return;
        }
    }
    for (int i = 0; i < kNutrientCount; ++i) {
        const QLatin1StringView name(NutrientNamesOf(i).displayName);
        m_nutrientNames.Write(kNoPosition, CNutrientName(i, name));
    }
}

int CDatabase::GetNumberOfUserProfiles() {
    return static_cast<int>(FillProfileNames().size());
}

QStringList CDatabase::FillProfileNames() {
    QStringList names;
    std::vector<CDatabaseInfo> databases;
    if (!m_store.EnumerateDatabases(kProfileType, databases)) {
        const int error = m_store.GetLastError();
        const bool isMemory = error == kErrorOutOfMemory || error == kErrorNotEnoughMemory;
        m_store.ShowFailure(isMemory ? u"GetNumberOfUserProfiles:: Out of memory."_s
                                     : u"GetNumberOfUserProfiles:: Unknown error."_s);
        return names;
    }
    for (const CDatabaseInfo& database : databases) {
        names.append(database.name);
    }
    return names;
}

bool CDatabase::IsProfileNameTaken(const QString& name) {
    std::vector<CDatabaseInfo> databases;
    if (!m_store.EnumerateDatabases(0, databases)) {
        return true;  // better than writing into somebody's profile
    }
    return std::ranges::any_of(databases, [&name](const CDatabaseInfo& database) {
        return OwnershipOf(database, name) != EOwnership::None;
    });
}

bool CDatabase::OpenProfile(const QString& name, bool mayCreate) {
    CloseProfile();
    // A profile called like a catalogue database or another profile's diary would write into it.
    std::vector<CDatabaseInfo> databases;
    if (!m_store.EnumerateDatabases(0, databases)) {
        return false;
    }
    for (const CDatabaseInfo& database : databases) {
        if (OwnershipOf(database, name) == EOwnership::Foreign) {
            if (mayCreate) {
                ShowMessage(FormatText("ERROR: CeOpenDatabaseEx failed (%ld)"_L1,
                                       {static_cast<int>(kErrorAlreadyExists)}),
                            EMessageIcon::Stop);
            }
            return false;
        }
    }
    const QString longest = name + QLatin1StringView(kProfileDatabases[3].suffix);
    if (mayCreate && longest.size() > kMaximumDatabaseName) {
        ShowMessage(FormatText("ERROR: CeOpenDatabaseEx failed (%ld)"_L1,
                               {static_cast<int>(kErrorInvalidName)}),
                    EMessageIcon::Stop);
        return false;
    }
    const std::array<CItemDatabaseBase*, 4> parts = {&m_profile, &m_diet, &m_weight, &m_exercises};
    // One group, so that a profile is never half made when the power goes.
    CRecordGroup group(m_store);
    bool isOpen = true;
    for (std::size_t i = 0; isOpen && i < parts.size(); ++i) {
        isOpen =
            parts.at(i)->Open(!mayCreate, name + QLatin1StringView(kProfileDatabases[i].suffix));
    }
    const bool isNew = std::ranges::none_of(databases, [this](const CDatabaseInfo& database) {
        return database.id == m_profile.GetId();
    });
    if (isOpen && isNew) {
        isOpen = m_store.DropValues(m_profile.GetId());
    }
    isOpen = group.Commit() && isOpen;
    if (!isOpen) {
        CloseProfile();
    }
    return isOpen;
}

void CDatabase::CloseProfile() {
    for (CItemDatabaseBase* database :
         std::initializer_list<CItemDatabaseBase*>{&m_profile, &m_diet, &m_weight, &m_exercises}) {
        database->Close();
    }
}

bool CDatabase::DeleteProfile(const QString& name) {
    std::vector<CDatabaseInfo> databases;
    bool isDeleted = m_store.EnumerateDatabases(0, databases);
    CRecordGroup group(m_store);
    for (const CDatabaseInfo& database : databases) {
        if (OwnershipOf(database, name) == EOwnership::OfProfile) {
            isDeleted = m_store.DropValues(database.id) &&
                        m_store.DeleteDatabase(database.name, database.type) && isDeleted;
        }
    }
    isDeleted = group.Commit() && isDeleted;
    if (!isDeleted) {
        m_store.ShowFailure(u"Cannot delete database."_s);
    }
    return isDeleted;
}

EProfileRecord CDatabase::LoadProfileRecord(CProfileRecord& record) {
    const CFoundRecord found = FindProfileRecord(m_profile);
    if (found.isOurs && m_profile.Read(found.position, record)) {
        return EProfileRecord::Loaded;
    }
    return m_profile.Count() > 0 ? EProfileRecord::Unreadable : EProfileRecord::Missing;
}

bool CDatabase::SaveProfileRecord(const CProfileRecord& record) {
    return m_profile.Write(FindProfileRecord(m_profile).position, record);
}

std::optional<QString> CDatabase::ReadProfileValue(const QString& name) {
    return m_profile.IsOpen() ? m_store.ReadValue(m_profile.GetId(), name) : std::nullopt;
}

bool CDatabase::SaveProfileValue(const QString& name, const QString& value) {
    return m_profile.IsOpen() && m_store.WriteValue(m_profile.GetId(), name, value);
}
