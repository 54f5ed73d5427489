#include "frame/BackupWindows.h"

#include "app/BackupRules.h"
#include "frame/FindingsDialog.h"
#include "platform/Messages.h"

using namespace Qt::StringLiterals;

namespace {
CFileChoice BackupFileChoice(const QString& title, const QString& initialName) {
    return {.title = title,
            .defaultExtension = u".db"_s,
            .filterName = u"Velmora data (*.db)"_s,
            .initialName = initialName};
}
}  // namespace

void RunBackUp(CVelmoraDoc& doc) {
    const QString path = ChooseFileToSave(BackupFileChoice(
        u"Back up"_s, ProposedBackupName(doc.GetVolumePath(), QDate::currentDate())));
    if (!path.isEmpty()) {
        (void)SaveBackup(doc.Database(), path);  // has shown its result
    }
}

void RunBackupFolder(CVelmoraDoc& doc) {
    CDatabase& database = doc.Database();
    const QString folder = ChooseFolder(u"Backup folder"_s, database.Backups().GetFolder());
    if (!folder.isEmpty() && SetBackupFolder(database, folder)) {
        ShowMessage(FormatText("From now on, backups are made in '%s'."_L1,
                               {database.Backups().GetFolder()}),
                    EMessageIcon::Result);
    }
}

QString ChooseBackup(CVelmoraDoc& doc) {
    const std::vector<CBackupFile> backups = doc.Database().Backups().List();
    return ChooseFileToOpen(
        BackupFileChoice(u"Restore"_s, backups.empty() ? QString() : backups.back().path));
}

bool ShowFindings(const CFindings& findings, QWidget* parent) {
    if (findings.List().empty()) {
        ShowMessage(FindingsText(findings), EMessageIcon::Result);
        return false;
    }
    return CFindingsDialog(findings, parent).exec() == QDialog::Accepted && findings.HasFaults();
}
