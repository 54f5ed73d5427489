#include "store/backup/VolumeCheck.h"

#include <QSet>
#include <array>

#include "platform/Messages.h"
#include "store/backup/DatabaseCheck.h"
#include "store/backup/ReferenceCheck.h"
#include "store/engine/HistoryTables.h"
#include "store/engine/VolumeIdentity.h"
#include "store/engine/WatchedWork.h"
#include "store/records/DatabaseLayouts.h"

using namespace Qt::StringLiterals;

namespace {
class CVolumeCheck {
  public:
    CVolumeCheck(CSqliteFile& file, CFindings& findings, CWatchedWork& work)
        : m_file(file), m_findings(findings), m_work(work) {}

    void Run();

  private:
    bool CheckTrees();
    void CheckPages();
    void CheckTables();
    void CheckIdentity();
    void CheckDatabases();
    void CheckName(const CDatabaseInfo& database);
    void CheckBlockOwners();
    bool CheckRecords();
    void CheckSettings(const std::set<QString>& withSettings);
    void CheckValues();
    void CheckHistory();
    [[nodiscard]] bool HasProfile(const QString& name) const;
    [[nodiscard]] bool HasDatabase(const QString& name, quint32 type) const;
    qint64 CountOf(const char* sql);

    CSqliteFile& m_file;
    CFindings& m_findings;
    CWatchedWork& m_work;
    std::vector<CDatabaseInfo> m_databases;
};

// Once it is cancelled, nothing can be read any more and no finding counts.
void CVolumeCheck::Run() {
    if (!CheckTrees()) {
        return;
    }
    CheckPages();
    CheckTables();
    if (ReadDatabases(m_file, m_databases) != kErrorSuccess) {
        m_findings.AddFault(u"The list of databases cannot be read."_s);
    }
    CheckIdentity();
    CheckDatabases();
    if (CheckRecords()) {
        CheckBlockOwners();
        CheckValues();
        CheckHistory();
    }
}

/// False when reading the tables might never end.
bool CVolumeCheck::CheckTrees() {
    std::vector<QString> endless;
    if (m_file.CheckTrees(endless) != kErrorSuccess) {
        return true;  // reported with the pages
    }
    for (const QString& name : endless) {
        m_findings.AddDamage(FormatText("not all pages of '%s' can be read"_L1, {name}));
    }
    return endless.empty();
}

void CVolumeCheck::CheckPages() {
    CStatement check;
    if (check.Prepare(m_file, "PRAGMA integrity_check") != kErrorSuccess) {
        m_findings.AddDamage(u"its tables cannot be read"_s);
        return;
    }
    check.Start({});
    while (check.Next()) {
        for (const QString& line : check.GetText(0).split(u'\n', Qt::SkipEmptyParts)) {
            if (line != u"ok"_s && line != u"*** in database main ***"_s) {
                m_findings.AddDamage(line);
            }
        }
    }
    if (check.Finish() != kErrorSuccess) {
        m_findings.AddDamage(u"not all of its pages can be read"_s);
    }
}

void CVolumeCheck::CheckTables() {
    constexpr std::array kPlain = {"databases"_L1, "records"_L1, "blocks"_L1, "identity"_L1,
                                   "named_values"_L1};
    // Damaged tables of these are left behind under their number; those with the largest are used.
    constexpr std::array kNumbered = {"usage_"_L1, "history_steps_"_L1, "history_changes_"_L1};
    std::vector<QString> names;
    (void)m_file.ListTables({}, names);  // a damaged schema has been reported with the pages
    for (const QString& name : names) {
        const bool isNumbered = std::ranges::any_of(
            kNumbered, [&name](QLatin1StringView start) { return name.startsWith(start); });
        if (!isNumbered && std::ranges::find(kPlain, name) == kPlain.end()) {
            m_findings.AddNote(FormatText("The table '%s' is of another program."_L1, {name}));
        }
    }
    for (const QLatin1StringView start : kNumbered) {
        const auto former = std::ranges::count_if(
            names, [start](const QString& name) { return name.startsWith(start); });
        if (former > 1) {
            m_findings.AddNote(FormatText("Former tables '%s...' that are no longer used: %ld."_L1,
                                          {QString(start), qint64(former) - 1}));
        }
    }
    for (const QLatin1StringView needed : {kPlain[0], kPlain[1], kPlain[2]}) {
        if (std::ranges::find(names, needed) == names.end()) {
            m_findings.AddFault(FormatText("The table '%s' is missing."_L1, {QString(needed)}));
        }
    }
}

// A volume that only an older program has written has none.
void CVolumeCheck::CheckIdentity() {
    std::vector<QString> tables;
    CStatement read;
    if (m_file.ListTables(u"identity", tables) != kErrorSuccess || tables.empty() ||
        read.Prepare(m_file, "SELECT body FROM identity WHERE id=1") != kErrorSuccess) {
        return;
    }
    read.Start({});
    const bool isThere = read.Next() && CVolumeIdentity::FindIn(read.GetBlob(0));
    if (read.Finish() == kErrorSuccess && !isThere) {
        m_findings.AddFault(u"The identity of the data file is damaged."_s);
    }
}

void CVolumeCheck::CheckDatabases() {
    QSet<QString> names;
    for (const CDatabaseInfo& database : m_databases) {
        CheckName(database);
        if (names.contains(database.name.toCaseFolded())) {
            m_findings.AddFault(
                FormatText("%s: two databases have this name."_L1, {database.name}));
        }
        names.insert(database.name.toCaseFolded());
        const QString profile = ProfileOfDiary(database.name, database.type);
        if (!profile.isEmpty() && !HasProfile(profile)) {
            m_findings.AddFault(
                FormatText("%s: there is no profile '%s'."_L1, {database.name, profile}));
        }
        if (database.type != kProfileType) {
            continue;
        }
        for (const CProfileDatabase& row : kProfileDatabases) {
            const QString name = database.name + QLatin1StringView(row.suffix);
            if (!HasDatabase(name, row.layout.databaseType)) {
                m_findings.AddFault(
                    FormatText("%s: the database '%s' is missing."_L1, {database.name, name}));
            }
        }
    }
    for (const CRecordLayout* layout : kCatalogueDatabases) {
        const QString name = QString::fromLatin1(layout->databaseName);
        if (!m_databases.empty() && !HasDatabase(name, layout->databaseType)) {
            m_findings.AddFault(FormatText("The database '%s' is missing."_L1, {name}));
        }
    }
}

void CVolumeCheck::CheckName(const CDatabaseInfo& database) {
    if (database.id <= 0 || database.name.isEmpty() ||
        database.name.size() > kMaximumDatabaseName) {
        m_findings.AddFault(
            FormatText("The database '%s' has no possible name or number."_L1, {database.name}));
    }
    const CRecordLayout* layout = LayoutOfDatabase(database.name, database.type);
    if (layout == nullptr) {
        m_findings.AddFault(FormatText("%s: a database of an unknown kind."_L1, {database.name}));
    } else if (layout->SortPropertyId() != database.sortPropertyId) {
        m_findings.AddFault(FormatText(
            "%s: the records are in another order than they should be."_L1, {database.name}));
    }
}

bool CVolumeCheck::CheckRecords() {
    const qint64 total = CountOf("SELECT sum(count) FROM blocks");
    qint64 done = 0;
    const auto pulse = [&] { return m_work.Update(++done, total); };
    CDatabaseCheck check(m_file, m_findings);
    CReferenceCheck references;
    std::set<QString> withSettings;
    const int faultsBefore = m_findings.CountFaults();
    for (const CDatabaseInfo& database : m_databases) {
        const CRecordLayout* layout = LayoutOfDatabase(database.name, database.type);
        const auto visit = [&](ObjectId record, const PropertyList& properties) {
            if (layout != nullptr) {
                references.Add(database, *layout, record, properties);
                withSettings.insert(database.name);
            }
        };
        if (!check.Check(database, layout, visit, pulse)) {
            return false;
        }
    }
    check.CheckLists();
    references.Report(m_findings, m_findings.CountFaults() == faultsBefore);
    if (m_findings.CountFaults() == faultsBefore) {
        CheckSettings(withSettings);
    }
    return true;
}

// A program that is ended while it creates a profile may leave one without settings.
void CVolumeCheck::CheckSettings(const std::set<QString>& withSettings) {
    for (const CDatabaseInfo& database : m_databases) {
        if (database.type == kProfileType && !withSettings.contains(database.name)) {
            m_findings.AddNote(FormatText("%s: the profile has no settings."_L1, {database.name}));
        }
    }
}

void CVolumeCheck::CheckBlockOwners() {
    const qint64 blocks =
        CountOf("SELECT count(*) FROM blocks WHERE database NOT IN (SELECT id FROM databases)");
    if (blocks > 0) {
        m_findings.AddFault(
            FormatText("Lists of records that belong to no database: %ld."_L1, {blocks}));
    }
}

// An older program does not know the values of a profile that it deletes.
void CVolumeCheck::CheckValues() {
    std::vector<QString> tables;
    if (m_file.ListTables(u"named_values", tables) != kErrorSuccess || tables.empty()) {
        return;
    }
    const qint64 values = CountOf(
        "SELECT count(*) FROM named_values AS kept WHERE owner<>0 AND NOT EXISTS("
        "SELECT 1 FROM databases JOIN named_values AS named ON named.owner=databases.id AND"
        " named.name='' AND named.value=databases.name WHERE databases.id=kept.owner)");
    if (values > 0) {
        m_findings.AddNote(FormatText("Small values of profiles that are gone: %ld."_L1, {values}));
    }
}

void CVolumeCheck::CheckHistory() {
    CHistoryTables tables(m_file);
    std::vector<CHistoryStep> steps;
    if (tables.Find() != kErrorSuccess || !tables.Exist()) {
        return;
    }
    bool isSound = tables.ReadSteps(steps) == kErrorSuccess;
    for (const CHistoryStep& step : steps) {
        CHistoryChange change;
        for (qint64 n = 0; isSound && !step.isDropped && n < step.changes; ++n) {
            isSound = tables.ReadChange(step, n, change) == kErrorSuccess;
        }
    }
    if (!isSound) {
        m_findings.AddFault(u"The history of changes is damaged: some cannot be undone."_s);
    }
    tables.Release();
}

bool CVolumeCheck::HasProfile(const QString& name) const {
    return HasDatabase(name, kProfileType);
}

bool CVolumeCheck::HasDatabase(const QString& name, quint32 type) const {
    return std::ranges::any_of(m_databases, [&](const CDatabaseInfo& database) {
        return database.type == type && database.name.compare(name, Qt::CaseInsensitive) == 0;
    });
}

/// 0 when it cannot be read.
qint64 CVolumeCheck::CountOf(const char* sql) {
    CStatement count;
    if (count.Prepare(m_file, sql) != kErrorSuccess) {
        return 0;
    }
    count.Start({});
    const qint64 number = count.Next() ? count.GetInteger(0) : 0;
    return count.Finish() == kErrorSuccess ? number : 0;
}
}  // namespace

EPlatformError CheckVolume(CSqliteFile& volume, CFindings& findings, const CopyProgress& progress) {
    CWatchedWork work(volume, progress);
    CVolumeCheck(volume, findings, work).Run();
    return work.IsCancelled() ? kErrorOperationAborted : kErrorSuccess;
}

EPlatformError ReadDatabases(CSqliteFile& volume, std::vector<CDatabaseInfo>& databases) {
    databases.clear();
    CStatement read;
    if (const EPlatformError error =
            read.Prepare(volume, "SELECT id, name, type, sort FROM databases ORDER BY id");
        error != kErrorSuccess) {
        return error;
    }
    read.Start({});
    while (read.Next()) {
        databases.push_back({read.GetInteger(0), read.GetText(1),
                             static_cast<quint32>(read.GetInteger(2)),
                             static_cast<quint32>(read.GetInteger(3))});
    }
    return read.Finish();
}
