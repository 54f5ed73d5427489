// velmora-cli backup, backups, restore and verify
#include "app/BackupRules.h"
#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "cli/TableOutput.h"
#include "platform/Messages.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace {
bool Backup(CCommandContext& context) {
    return SaveBackup(context.doc.Database(), context.arguments.Word(0));
}

bool ListBackups(CCommandContext& context) {
    PrintRow({u"date"_s, u"time"_s, u"bytes"_s, u"file"_s});
    for (const CBackupFile& backup : context.doc.Database().Backups().List()) {
        PrintRow({backup.made.date().toString(Qt::ISODate),
                  backup.made.time().toString(Qt::ISODate), QString::number(backup.size),
                  backup.path});
    }
    return true;
}

constexpr COption kUsualOption = {.name = "--usual",
                                  .kind = EValue::None,
                                  .value = "",
                                  .help = "use the folder beside the data",
                                  .rival = "--set"};
constexpr COption kFolderOptions[] = {
    {.name = "--set", .kind = EValue::Text, .value = "DIR", .help = "use this folder from now on"},
    kUsualOption,
};

QString CheckFolder(const CArguments& arguments) {
    return arguments.Has("--set") && arguments.Text("--set").isEmpty()
               ? u"--set needs the name of a folder"_s
               : QString();
}

bool Folder(CCommandContext& context) {
    CDatabase& database = context.doc.Database();
    const bool isUsual = context.arguments.Has(kUsualOption.name);
    if (isUsual || context.arguments.Has("--set")) {
        const QString folder =
            isUsual ? QString() : QDir(context.arguments.Text("--set")).absolutePath();
        if (!SetBackupFolder(database, folder)) {
            return false;
        }
    }
    PrintLine(stdout, database.Backups().GetFolder());
    return true;
}

constexpr COption kRestoreOptions[] = {{"--yes", EValue::None, "", "restore without asking"}};

bool Restore(CCommandContext& context) {
    return RestoreBackup(context.arguments.Word(0), context.volume, QDateTime::currentDateTime());
}

constexpr COption kVerifyOptions[] = {
    {"--repair", EValue::None, "", "take what can be read into a new data file"}};

bool Verify(CCommandContext& context) {
    CFindings findings;
    if (!CheckHasData(context.volume) || !CheckFile(context.volume, findings)) {
        return false;
    }
    for (const CFinding& finding : findings.List()) {
        PrintMessage(stdout, FindingLine(finding));
    }
    PrintLine(stdout, FindingsText(findings));
    return context.arguments.Has("--repair")
               ? RepairData(context.volume, QDateTime::currentDateTime())
               : !findings.HasFaults();
}

constexpr std::span<const COption> kNoOptions;

constexpr CCommand kCommands[] = {
    {"backup", "", "FILE", kNoOptions, EAccess::Reads, "save a checked copy of all data", Backup},
    {"backups", "list", "", kNoOptions, EAccess::Reads, "list the backups made automatically",
     ListBackups},
    {"backups", "folder", "", kFolderOptions, EAccess::Reads, "show or set the folder they are in",
     Folder, CheckFolder},
    {"restore", "", "FILE", kRestoreOptions, EAccess::File,
     "replace all data with that of a backup", Restore},
    {"verify", "run", "", kVerifyOptions, EAccess::File,
     "check all data; status 1 when there are faults", Verify},
};
}  // namespace

std::span<const CCommand> BackupCommands() {
    return kCommands;
}
