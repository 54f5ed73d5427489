#include "store/Profiles.h"

#include <algorithm>
#include <array>

#include "platform/Messages.h"
#include "store/records/DatabaseLayouts.h"

using namespace Qt::StringLiterals;

namespace {
enum class EOwnership { None, OfProfile, Foreign };

// Whether a database is one of a profile's four, or has a name that one of them needs.
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

QString DietDatabaseName(const QString& profile) {
    return profile + QLatin1StringView(kProfileDatabases[1].suffix);
}

CProfiles::CProfiles(CRecordStore& store)
    : m_store(store),
      m_profile(store, kProfileLayout),
      m_diet(store, kDietLayout),
      m_weight(store, kWeightLayout),
      m_exercises(store, kExercisesLayout) {}

int CProfiles::GetNumberOfUserProfiles() {
    return static_cast<int>(ReadNames().size());
}

QStringList CProfiles::ReadNames() {
    QStringList names;
    std::vector<CDatabaseInfo> databases;
    if (!m_store.EnumerateDatabases(kProfileType, databases)) {
        const EPlatformError error = m_store.GetLastError();
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

QString CProfiles::NameOf(ObjectId profile) {
    std::vector<CDatabaseInfo> databases;
    (void)m_store.EnumerateDatabases(kProfileType, databases);  // none are read after a failure
    const auto found = std::ranges::find(databases, profile, &CDatabaseInfo::id);
    return found == databases.end() ? QString() : found->name;
}

bool CProfiles::IsNameTaken(const QString& name) {
    std::vector<CDatabaseInfo> databases;
    if (!m_store.EnumerateDatabases(0, databases)) {
        return true;  // rather than write into an existing profile
    }
    return std::ranges::any_of(databases, [&name](const CDatabaseInfo& database) {
        return OwnershipOf(database, name) != EOwnership::None;
    });
}

bool CProfiles::Open(const QString& name, bool mayCreate) {
    Close();
    // A profile named like a catalogue database or another profile's diary would write into it.
    std::vector<CDatabaseInfo> databases;
    if (!m_store.EnumerateDatabases(0, databases)) {
        return false;
    }
    for (const CDatabaseInfo& database : databases) {
        if (OwnershipOf(database, name) == EOwnership::Foreign) {
            if (mayCreate) {
                ShowMessage(
                    FormatText("ERROR: CeOpenDatabaseEx failed (%ld)"_L1, {kErrorAlreadyExists}),
                    EMessageIcon::Stop);
            }
            return false;
        }
    }
    const QString longest = name + QLatin1StringView(kProfileDatabases[3].suffix);
    if (mayCreate && longest.size() > kMaximumDatabaseName) {
        ShowMessage(FormatText("ERROR: CeOpenDatabaseEx failed (%ld)"_L1, {kErrorInvalidName}),
                    EMessageIcon::Stop);
        return false;
    }
    const std::array<CItemDatabaseBase*, 4> parts = {&m_profile, &m_diet, &m_weight, &m_exercises};
    // One group, so that a loss of power never leaves half a profile.
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
        isOpen = m_store.DeleteValues(m_profile.GetId());
    }
    isOpen = group.Commit() && isOpen;
    if (!isOpen) {
        Close();
        return false;
    }
    for (CItemDatabaseBase* diary : Diaries()) {
        m_store.History().Watch(diary->GetId(), GetId());
    }
    return true;
}

std::array<CItemDatabaseBase*, 3> CProfiles::Diaries() {
    return {&m_diet, &m_weight, &m_exercises};
}

void CProfiles::Close() {
    for (const CItemDatabaseBase* diary : Diaries()) {
        m_store.History().Unwatch(diary->GetId());
    }
    for (CItemDatabaseBase* database :
         std::initializer_list<CItemDatabaseBase*>{&m_profile, &m_diet, &m_weight, &m_exercises}) {
        database->Close();
    }
}

bool CProfiles::Delete(const QString& name) {
    std::vector<CDatabaseInfo> databases;
    bool isDeleted = m_store.EnumerateDatabases(0, databases);
    CRecordGroup group(m_store);
    for (const CDatabaseInfo& database : databases) {
        if (OwnershipOf(database, name) == EOwnership::OfProfile) {
            isDeleted = m_store.DeleteValues(database.id) &&
                        m_store.DeleteDatabase(database.name, database.type) && isDeleted;
        }
    }
    isDeleted = group.Commit() && isDeleted;
    (void)m_store.History().Tidy();  // A failure leaves it to the next steps.
    if (!isDeleted) {
        m_store.ShowFailure(u"Cannot delete database."_s);
    }
    return isDeleted;
}

EProfileRecord CProfiles::LoadRecord(CProfileRecord& record) {
    const CFoundRecord found = FindProfileRecord(m_profile);
    if (found.isOurs && m_profile.Read(found.position, record)) {
        return EProfileRecord::Loaded;
    }
    return m_profile.Count() > 0 ? EProfileRecord::Unreadable : EProfileRecord::Missing;
}

bool CProfiles::SaveRecord(const CProfileRecord& record) {
    return m_profile.Write(FindProfileRecord(m_profile).position, record);
}

std::optional<QString> CProfiles::ReadValue(const QString& name) {
    return m_profile.IsOpen() ? m_store.ReadValue(m_profile.GetId(), name) : std::nullopt;
}

bool CProfiles::SaveValue(const QString& name, const QString& value) {
    return m_profile.IsOpen() && m_store.WriteValue(m_profile.GetId(), name, value);
}
