#include "store/backup/Repair.h"

#include <QSet>
#include <algorithm>
#include <set>

#include "store/backup/Salvage.h"
#include "store/engine/NamedValues.h"
#include "store/engine/RecordCodec.h"
#include "store/engine/RecordWrites.h"
#include "store/records/ComposedItem.h"
#include "store/records/DatabaseLayouts.h"

using namespace Qt::StringLiterals;

namespace {
/// Writes one salvaged volume into a new file.
class CNewVolume {
  public:
    CNewVolume(CSalvage& salvage, CRepairSummary& summary)
        : m_salvage(salvage), m_summary(summary) {}

    EPlatformError Write(const QString& path, const CopyProgress& progress);

  private:
    EPlatformError WriteDatabases(const CopyProgress& progress);
    EPlatformError AddDatabase(const CDatabaseInfo& info);
    EPlatformError AddMissing();
    EPlatformError WriteRecords(const CSalvagedDatabase& database, const CopyProgress& progress);
    EPlatformError WriteRecord(CSalvagedDatabase const& database, ObjectId record,
                               const PropertyList& properties);
    void NoteCategory(const CRecordLayout& layout, const PropertyList& properties);
    EPlatformError AddLostCategories();
    EPlatformError AddLostNames();
    EPlatformError AddRecord(const CRecordLayout& layout, const PropertyList& properties);
    EPlatformError WriteValues();
    [[nodiscard]] bool IsOwner(ObjectId id) const;

    CSalvage& m_salvage;
    CRepairSummary& m_summary;
    CStorageEngine m_engine;
    std::set<std::pair<qint16, qint32>> m_categories;  ///< that there are: kind and identifier
    std::set<std::pair<qint16, qint32>> m_needed;      ///< that items are in
    QSet<qint32> m_names;                              ///< the nutrients that have one
    qint64 m_done = 0;
    qint64 m_total = 0;
};

EPlatformError CNewVolume::Write(const QString& path, const CopyProgress& progress) {
    EPlatformError error = m_engine.Mount(path);
    if (error == kErrorSuccess) {
        error = m_engine.BeginGroup();
    }
    if (error == kErrorSuccess) {
        error = WriteDatabases(progress);
        if (error != kErrorSuccess) {
            (void)m_engine.UndoGroup();  // the file is not used
        }
        const EPlatformError ended = m_engine.EndGroup();
        error = error == kErrorSuccess ? ended : error;
    }
    const EPlatformError closed = m_engine.Unmount();
    return error == kErrorSuccess ? closed : error;
}

EPlatformError CNewVolume::WriteDatabases(const CopyProgress& progress) {
    EPlatformError error = kErrorSuccess;
    for (const CSalvagedDatabase& database : m_salvage.Databases()) {
        m_total += std::ssize(database.entries);
        if (error == kErrorSuccess) {
            error = AddDatabase(database.info);
        }
    }
    if (error == kErrorSuccess) {
        error = AddMissing();
    }
    for (const CSalvagedDatabase& database : m_salvage.Databases()) {
        if (error == kErrorSuccess) {
            error = WriteRecords(database, progress);
        }
    }
    for (const auto write :
         {&CNewVolume::AddLostCategories, &CNewVolume::AddLostNames, &CNewVolume::WriteValues}) {
        if (error == kErrorSuccess) {
            error = (this->*write)();
        }
    }
    return error;
}

EPlatformError CNewVolume::AddDatabase(const CDatabaseInfo& info) {
    CStorageState& state = m_engine.State();
    return state.Write([&] {
        return state.addDatabase.Run(
            {info.id, info.name, qint64{info.type}, qint64{info.sortPropertyId}});
    });
}

// Empty ones leave no trace when the list of databases is lost.
EPlatformError CNewVolume::AddMissing() {
    EPlatformError error = kErrorSuccess;
    const auto create = [&](const QString& name, const CRecordLayout& layout) {
        CDatabaseInfo info;
        if (error == kErrorSuccess) {
            error =
                m_engine.CreateDatabase(name, layout.databaseType, layout.SortPropertyId(), info);
        }
        error = error == kErrorAlreadyExists ? kErrorSuccess : error;
    };
    for (const CRecordLayout* layout : kCatalogueDatabases) {
        create(QString::fromLatin1(layout->databaseName), *layout);
    }
    for (const CSalvagedDatabase& database : m_salvage.Databases()) {
        const QString profile = database.layout == &kProfileLayout
                                    ? database.info.name
                                    : ProfileOfDiary(database.info.name, database.info.type);
        for (const CProfileDatabase& row : kProfileDatabases) {
            if (!profile.isEmpty()) {
                create(profile + QLatin1StringView(row.suffix), row.layout);
            }
        }
    }
    return error;
}

EPlatformError CNewVolume::WriteRecords(const CSalvagedDatabase& database,
                                        const CopyProgress& progress) {
    CRepairedDatabase repaired{.name = database.info.name};
    PropertyList properties;
    for (const CIndexEntry& entry : database.entries) {
        if (progress && !progress(++m_done, m_total)) {
            return kErrorOperationAborted;
        }
        if (!m_salvage.ReadRecord(entry.record, *database.layout, properties)) {
            continue;
        }
        if (const EPlatformError error = WriteRecord(database, entry.record, properties);
            error != kErrorSuccess) {
            return error;
        }
        ++repaired.kept;
    }
    const qint64 listed = std::max<qint64>(database.listed, std::ssize(database.entries));
    repaired.lost = listed - repaired.kept;
    m_summary.databases.push_back(repaired);
    return kErrorSuccess;
}

EPlatformError CNewVolume::WriteRecord(const CSalvagedDatabase& database, ObjectId record,
                                       const PropertyList& properties) {
    NoteCategory(*database.layout, properties);
    CStorageState& state = m_engine.State();
    CStorageState::COpenDatabase* opened = nullptr;
    EPlatformError error = state.Open(database.info.id, opened);
    if (error != kErrorSuccess) {
        return error;
    }
    return state.Write([&] {
        EncodeRecord(properties, state.body);
        ObjectId id = record;
        return CRecordWrites(state, database.info.id, *opened)
            .Add(id, state.body, {KeyOf(properties).value_or(0)});
    });
}

void CNewVolume::NoteCategory(const CRecordLayout& layout, const PropertyList& properties) {
    if (&layout == &kCategoryLayout) {
        m_categories.insert({std::get<qint16>(properties[0]), std::get<qint32>(properties[1])});
    } else if (&layout == &kNutrientNameLayout) {
        m_names.insert(std::get<qint32>(properties[0]));
    }
    for (const ECatalogueKind kind : {ECatalogueKind::Foods, ECatalogueKind::Menus,
                                      ECatalogueKind::Recipes, ECatalogueKind::Exercises}) {
        if (&CatalogueLayoutOf(kind).layout == &layout && !IsPastLastItem(properties)) {
            m_needed.insert({static_cast<qint16>(kind), std::get<qint32>(properties[0])});
        }
    }
}

// Without their category, items would not be shown.
EPlatformError CNewVolume::AddLostCategories() {
    for (const auto& [kind, id] : m_needed) {
        if (m_categories.contains({kind, id})) {
            continue;
        }
        CCategory category;
        category.SetKind(static_cast<ECatalogueKind>(kind));
        category.SetId(id);
        category.SetName(u"Recovered %1"_s.arg(id));
        if (const EPlatformError error = AddRecord(kCategoryLayout, category.GetProperties());
            error != kErrorSuccess) {
            return error;
        }
        ++m_summary.categories;
    }
    return kErrorSuccess;
}

EPlatformError CNewVolume::AddLostNames() {
    for (qint32 i = 0; i < kNutrientCount; ++i) {
        const CNutrientName name(i, QLatin1StringView(NutrientNamesOf(i).displayName));
        if (m_names.contains(i)) {
            continue;
        }
        if (const EPlatformError error = AddRecord(kNutrientNameLayout, name.GetProperties());
            error != kErrorSuccess) {
            return error;
        }
    }
    return kErrorSuccess;
}

EPlatformError CNewVolume::AddRecord(const CRecordLayout& layout, const PropertyList& properties) {
    CDatabaseInfo info;
    ObjectId record = 0;
    const EPlatformError error =
        m_engine.FindDatabase(QString::fromLatin1(layout.databaseName), info);
    return error == kErrorSuccess ? m_engine.AddRecord(info.id, properties, record) : error;
}

// The value with the empty name, which says whose the others are, is written with them.
EPlatformError CNewVolume::WriteValues() {
    EPlatformError error = kErrorSuccess;
    for (const CSalvagedValue& value : m_salvage.Values()) {
        if (error == kErrorSuccess && !value.name.isEmpty() &&
            (value.owner == 0 || IsOwner(value.owner))) {
            error = CNamedValues(m_engine.State()).Write(value.owner, value.name, value.value);
        }
    }
    return error;
}

// Values under the name of another profile were another profile's.
bool CNewVolume::IsOwner(ObjectId id) const {
    return std::ranges::any_of(m_salvage.Databases(), [&](const auto& database) {
        return database.info.id == id &&
               std::ranges::any_of(m_salvage.Values(), [&](const CSalvagedValue& value) {
                   return value.owner == id && value.name.isEmpty() &&
                          value.value == database.info.name;
               });
    });
}
}  // namespace

EPlatformError CRepair::Run(CRepairSummary& summary, const CopyProgress& progress) {
    CSalvage salvage;
    EPlatformError error = salvage.Read(m_replacement.GetPath(), progress);
    if (error == kErrorSuccess) {
        error = m_replacement.CreateNew();
    }
    if (error != kErrorSuccess) {
        return error;
    }
    summary = {};
    summary.homeless = salvage.CountHomeless();
    return CNewVolume(salvage, summary).Write(m_replacement.GetNewPath(), progress);
}
