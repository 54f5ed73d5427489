#include "app/BackupRules.h"

#include <QDir>
#include <QFileInfo>

#include "platform/LateProgress.h"
#include "platform/Messages.h"
#include "store/VolumeTexts.h"
#include "store/backup/Repair.h"
#include "store/backup/Restore.h"
#include "store/backup/VolumeCheck.h"
#include "store/engine/StorageState.h"

using namespace Qt::StringLiterals;

namespace {
bool CheckShowingProgress(CSqliteFile& volume, CFindings& findings) {
    CLateProgress progress(u"Velmora: Check data"_s, u"Checking the data..."_s);
    return CheckVolume(volume, findings, [&progress](qint64 done, qint64 total) {
               return progress.Update(done, total);
           }) == kErrorSuccess;
}

/// As a start of the program tells it.
void ShowRefusedVolume(EPlatformError error, const QString& path) {
    ShowFailedMount(error);
    ShowCannotOpen(RefusalText(error, path));
}

/// Why the file cannot be restored.
QString RefusedFileText(EPlatformError error, const QString& file) {
    switch (error) {
        case kErrorFileNotFound:
            return FormatText("There is no file '%s'."_L1, {file});
        case kErrorOperationAborted:
            return u"Nothing was restored: it was cancelled."_s;
        default:
            return RefusalText(error, file);
    }
}

QString QuestionText(CRestore& restore, const QString& file) {
    QString text = FormatText("'%s' holds:\n%s\n"_L1, {file, SummaryText(restore.GetSummary())});
    if (restore.CountFaults() > 0) {
        text += FormatText("Faults found in its data: %d.\n"_L1, {restore.CountFaults()});
    }
    return text + u"Do you want to replace your present data with it?"_s;
}

/// Of the present volume, if it is sound.
void BackUpPresent(CVolumeReplacement& replacement, const QString& volumePath,
                   const QDateTime& now) {
    if (replacement.Present().IsOpen()) {
        CVolumeBackups backups(replacement.Present(), volumePath);
        backups.Start([](const QString& text) { ShowMessage(text, EMessageIcon::Warning); },
                      [now] { return now; });
        backups.MakeIfDue(EBackupOccasion::LargeChange);
    }
}
QString RepairedText(const CRepairSummary& summary, const QString& kept) {
    QString text;
    for (const CRepairedDatabase& database : summary.databases) {
        text += FormatText("%s: %d kept, %ld lost.\n"_L1,
                           {database.name, database.kept, database.lost});
    }
    if (summary.homeless > 0) {
        text += FormatText("Records whose database is not known: %d.\n"_L1, {summary.homeless});
    }
    if (summary.categories > 0) {
        text += FormatText("Lost categories, whose items are now in 'Recovered' ones: %d.\n"_L1,
                           {summary.categories});
    }
    return text + FormatText("The data was repaired. The damaged file is kept as '%s'."_L1, {kept});
}

/// False when the present volume is sound, or cannot be checked.
bool NeedsRepair(CVolumeReplacement& replacement) {
    CFindings findings;
    return !replacement.Present().IsOpen() ||
           (CheckShowingProgress(replacement.Present(), findings) && findings.HasFaults());
}

/// What is written is read again before it counts.
EPlatformError WriteRepaired(CVolumeReplacement& replacement, CRepairSummary& summary) {
    CLateProgress progress(u"Velmora: Check data"_s, u"Repairing the data..."_s);
    EPlatformError error = CRepair(replacement).Run(summary, [&](qint64 done, qint64 total) {
        return progress.Update(done, total);
    });
    CSqliteFile repaired;
    if (error == kErrorSuccess) {
        error = repaired.Open(replacement.GetNewPath());
    }
    return error == kErrorSuccess ? repaired.CheckIntegrity() : error;
}
}  // namespace

QString ProposedBackupName(const QString& volumePath, QDate today) {
    return FormatText("%s-backup-%s.db"_L1,
                      {QFileInfo(volumePath).completeBaseName(), today.toString(Qt::ISODate)});
}

bool SaveBackup(CDatabase& database, const QString& path) {
    if (database.IsVolume(path)) {
        ShowMessage(u"Cannot create file."_s);
        return false;
    }
    CVolumeLock lock;  // of another volume, which another program may have open
    if (lock.TakeToRead(QFile::encodeName(path)) == kErrorSharingViolation) {
        ShowMessage(RefusalText(kErrorSharingViolation, path), EMessageIcon::Stop);
        return false;
    }
    const EPlatformError error = database.Backups().SaveAs(path);
    if (error != kErrorSuccess) {
        ShowMessage(BackupFailureText(error, path), EMessageIcon::Stop);
        return false;
    }
    ShowMessage(FormatText("A backup was saved as '%s' and checked."_L1, {path}),
                EMessageIcon::Result);
    return true;
}

bool SetBackupFolder(CDatabase& database, const QString& folder) {
    const bool isUsable =
        folder.isEmpty() || (CVolumeBackups::IsUsable(folder) && QDir().mkpath(folder));
    if (!isUsable) {
        ShowMessage(FormatText("The folder '%s' cannot be written."_L1, {folder}));
        return false;
    }
    const QString usual = database.Backups().GetUsualFolder();
    const bool isUsual =
        folder.isEmpty() || QDir(folder) == QDir(usual) || QDir(folder) == QFileInfo(usual).dir();
    const QString stored = isUsual ? u""_s : folder;  // a null text could not be stored
    if (!database.GetStore().WriteValue(0, kBackupFolderValue, stored)) {
        ShowMessage(u"The folder could not be stored."_s, EMessageIcon::Stop);
        return false;
    }
    return true;
}

bool CheckData(CDatabase& database, CFindings& findings) {
    return CheckShowingProgress(database.GetStore().EngineState().file, findings);
}

bool CheckFile(const QString& volumePath, CFindings& findings) {
    CSqliteFile volume;
    const EPlatformError error = volume.Open(volumePath);
    if (error == kErrorSharingViolation) {
        ShowRefusedVolume(error, volumePath);
        return false;
    }
    if (const QString kept = volume.GetKeptJournal(); !kept.isEmpty()) {
        findings.AddNote(KeptJournalText(kept, volumePath));
    }
    if (error != kErrorSuccess) {
        findings.AddFault(RefusalText(error, volumePath));
        return true;
    }
    return CheckShowingProgress(volume, findings);
}

QString FindingLine(const CFinding& finding) {
    return finding.kind == EFinding::Note ? u"Note: "_s + finding.text : finding.text;
}

QString FindingsText(const CFindings& findings) {
    const int faults = findings.CountFaults();
    if (faults > 0) {
        return faults == 1 ? u"The check found 1 fault."_s
                           : FormatText("The check found %d faults."_L1, {faults});
    }
    return u"The data is sound."_s;
}

bool RepairData(const QString& volumePath, const QDateTime& now) {
    CVolumeReplacement replacement(volumePath, now);
    if (const EPlatformError error = replacement.Begin(); error != kErrorSuccess) {
        ShowRefusedVolume(error, volumePath);
        return false;
    }
    if (!NeedsRepair(replacement)) {
        ShowMessage(u"The data is sound. Nothing was repaired."_s, EMessageIcon::Result);
        return true;
    }
    CRepairSummary summary;
    EPlatformError error = WriteRepaired(replacement, summary);
    if (error == kErrorSuccess) {
        error = replacement.Commit();
    }
    if (error != kErrorSuccess) {
        ShowMessage({.text = u"Nothing was repaired."_s,
                     .icon = EMessageIcon::Stop,
                     .detail = RefusalText(error, volumePath)});
        return false;
    }
    ShowMessage(RepairedText(summary, replacement.GetKeptPath()), EMessageIcon::Result);
    return true;
}

bool RestoreBackup(const QString& file, const QString& volumePath, const QDateTime& now) {
    const auto present = StampOf(QFile::encodeName(volumePath));
    const auto backup = StampOf(QFile::encodeName(file));
    if (present && backup && present->IsSameFile(*backup)) {
        ShowMessage(FormatText("'%s' is your present data itself."_L1, {file}), EMessageIcon::Stop);
        return false;
    }
    CRestore restore(file, volumePath, now);
    EPlatformError error = kErrorSuccess;
    {
        CLateProgress progress(u"Velmora: Restore"_s, u"Checking the backup..."_s);
        error = restore.Begin(
            [&progress](qint64 done, qint64 total) { return progress.Update(done, total); });
    }
    if (error != kErrorSuccess && !restore.IsOfFile()) {
        ShowRefusedVolume(error, volumePath);
        return false;
    }
    if (error != kErrorSuccess) {
        ShowMessage(RefusedFileText(error, file), EMessageIcon::Stop);
        return false;
    }
    CVolumeReplacement& replacement = restore.Replacement();
    if (!AskYesNo(QuestionText(restore, file), EAnswer::No)) {
        return false;
    }
    BackUpPresent(replacement, volumePath, now);
    if (error = restore.Commit(); error != kErrorSuccess) {
        ShowMessage(FormatText("Nothing was restored (error# %d)."_L1, {error}),
                    EMessageIcon::Stop);
        return false;
    }
    QString text = FormatText("The data of '%s' was restored."_L1, {file});
    if (replacement.HasPresent()) {
        text += FormatText(" Your former data is kept as '%s'."_L1, {replacement.GetKeptPath()});
    }
    ShowMessage(text, EMessageIcon::Result);
    return true;
}
