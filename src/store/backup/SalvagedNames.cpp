#include "store/backup/SalvagedNames.h"

#include <algorithm>

#include "store/records/DatabaseLayouts.h"
#include "store/records/ProfileRecord.h"

using namespace Qt::StringLiterals;

namespace {
class CNaming {
  public:
    CNaming(std::vector<CSalvagedDatabase>& databases, const CSalvage& salvage)
        : m_databases(databases), m_salvage(salvage) {}
    void Run();

  private:
    void NameCatalogue(const CRecordLayout& layout);
    void NameProfile(CSalvagedDatabase& profile) const;
    void NameDiary(CSalvagedDatabase& diary, std::size_t number);
    [[nodiscard]] CSalvagedDatabase* OnlyOtherDiary(const CSalvagedDatabase& diary) const;
    [[nodiscard]] QString NameInDiaries(const CSalvagedDatabase& profile) const;
    [[nodiscard]] QString NameInRecords(const CSalvagedDatabase& profile) const;
    [[nodiscard]] CSalvagedDatabase* Find(const QString& name) const;
    [[nodiscard]] bool IsProfile(const QString& name) const;
    [[nodiscard]] CSalvagedDatabase* Find(ObjectId id, const CRecordLayout& layout) const;

    std::vector<CSalvagedDatabase>& m_databases;
    const CSalvage& m_salvage;
};

QString OwnerOf(const CSalvagedDatabase& diary) {
    return ProfileOfDiary(diary.info.name, diary.info.type);
}

/// Whether a profile can have the name.
bool IsPossible(const QString& name) {
    return !name.isEmpty() && std::ranges::all_of(kProfileDatabases, [&name](const auto& row) {
        return name.size() + QLatin1StringView(row.suffix).size() <= kMaximumDatabaseName;
    });
}

/// Any number may be in a damaged file.
ObjectId IdBeside(ObjectId id, int distance) {
    return static_cast<ObjectId>(static_cast<quint64>(id) + static_cast<quint64>(distance));
}

void Merge(CSalvagedDatabase& from, CSalvagedDatabase& to) {
    to.entries.insert(to.entries.end(), from.entries.begin(), from.entries.end());
    std::ranges::stable_sort(to.entries, {}, &CIndexEntry::key);
    to.listed += from.listed;
    from = {};
}

void CNaming::Run() {
    for (CSalvagedDatabase& database : m_databases) {
        database.info.type = database.layout->databaseType;
        database.info.sortPropertyId = database.layout->SortPropertyId();
    }
    for (const CRecordLayout* layout : kCatalogueDatabases) {
        NameCatalogue(*layout);
    }
    // Profiles first.
    for (std::size_t number = 0; number < kProfileDatabases.size(); ++number) {
        for (CSalvagedDatabase& database : m_databases) {
            if (database.layout != &kProfileDatabases[number].layout) {
                continue;
            }
            if (number == 0) {
                NameProfile(database);
            } else {
                NameDiary(database, number);
            }
        }
    }
    std::erase_if(m_databases,
                  [](const CSalvagedDatabase& database) { return database.layout == nullptr; });
}

void CNaming::NameCatalogue(const CRecordLayout& layout) {
    const QString name = QString::fromLatin1(layout.databaseName);
    CSalvagedDatabase* kept = nullptr;
    for (CSalvagedDatabase& database : m_databases) {
        if (database.layout == &layout && (kept == nullptr || database.info.name == name)) {
            kept = &database;
        }
    }
    if (kept == nullptr) {
        return;
    }
    for (CSalvagedDatabase& database : m_databases) {
        if (database.layout == &layout && &database != kept) {
            Merge(database, *kept);
        }
    }
    kept->info.name = name;
}

// A name that none of its diaries has was damaged when they agree on another one.
void CNaming::NameProfile(CSalvagedDatabase& profile) const {
    const bool isKnown = std::ranges::any_of(m_databases, [&profile](const auto& diary) {
        return OwnerOf(diary).compare(profile.info.name, Qt::CaseInsensitive) == 0;
    });
    if (profile.info.name.isEmpty() || !isKnown) {
        if (const QString name = NameInDiaries(profile); !name.isEmpty()) {
            profile.info.name = name;
        }
    }
    if (profile.info.name.isEmpty()) {
        profile.info.name = NameInRecords(profile);
    }
    if (profile.info.name.isEmpty()) {
        profile.info.name = u"Profile %1"_s.arg(profile.info.id);
    }
}

// A profile's four databases are created one after the other.
QString CNaming::NameInDiaries(const CSalvagedDatabase& profile) const {
    for (std::size_t number = 1; number < kProfileDatabases.size(); ++number) {
        const CSalvagedDatabase* diary = Find(IdBeside(profile.info.id, static_cast<int>(number)),
                                              kProfileDatabases[number].layout);
        QString name = diary == nullptr ? QString() : OwnerOf(*diary);
        if (!name.isEmpty() && Find(name) == nullptr) {
            return name;
        }
    }
    return {};
}

QString CNaming::NameInRecords(const CSalvagedDatabase& profile) const {
    CProfileRecord record;
    PropertyList properties;
    for (const CIndexEntry& entry : profile.entries) {
        if (m_salvage.ReadRecord(entry.record, kProfileLayout, properties) &&
            record.SetProperties(std::move(properties)) && IsPossible(record.GetUserName()) &&
            Find(record.GetUserName()) == nullptr) {
            return record.GetUserName();
        }
    }
    return {};
}

// Repair adds a profile where a diary has none.
void CNaming::NameDiary(CSalvagedDatabase& diary, std::size_t number) {
    const QLatin1StringView suffix(kProfileDatabases[number].suffix);
    if (IsProfile(OwnerOf(diary))) {
        return;
    }
    const CSalvagedDatabase* profile =
        Find(IdBeside(diary.info.id, -static_cast<int>(number)), kProfileLayout);
    if (profile != nullptr && Find(profile->info.name + suffix) == nullptr) {
        diary.info.name = profile->info.name + suffix;
    } else if (CSalvagedDatabase* other = OnlyOtherDiary(diary);
               diary.info.name.isEmpty() && other != nullptr) {
        Merge(diary, *other);
    } else if (OwnerOf(diary).isEmpty()) {
        diary.info.name = u"Profile %1"_s.arg(diary.info.id) + suffix;
    }
}

/// The only one of its kind, or the only one with a gap; null when there is a choice.
CSalvagedDatabase* CNaming::OnlyOtherDiary(const CSalvagedDatabase& diary) const {
    std::vector<CSalvagedDatabase*> others;
    for (CSalvagedDatabase& other : m_databases) {
        if (other.layout == diary.layout && !other.info.name.isEmpty()) {
            others.push_back(&other);
        }
    }
    if (others.size() > 1) {
        std::erase_if(others, [](const CSalvagedDatabase* other) { return !other->HasGap(); });
    }
    return others.size() == 1 ? others.front() : nullptr;
}

bool CNaming::IsProfile(const QString& name) const {
    const CSalvagedDatabase* found = name.isEmpty() ? nullptr : Find(name);
    return found != nullptr && found->layout == &kProfileLayout;
}

CSalvagedDatabase* CNaming::Find(const QString& name) const {
    const auto found = std::ranges::find_if(m_databases, [&name](const auto& database) {
        return database.info.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == m_databases.end() ? nullptr : &*found;
}

CSalvagedDatabase* CNaming::Find(ObjectId id, const CRecordLayout& layout) const {
    const auto found = std::ranges::find_if(m_databases, [&](const auto& database) {
        return database.info.id == id && database.layout == &layout;
    });
    return found == m_databases.end() ? nullptr : &*found;
}
}  // namespace

void NameDatabases(std::vector<CSalvagedDatabase>& databases, const CSalvage& salvage) {
    CNaming(databases, salvage).Run();
}
