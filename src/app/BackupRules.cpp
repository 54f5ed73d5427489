#include "app/BackupRules.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

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
    const auto update = [&progress](qint64 done, qint64 total) {
        return progress.Update(done, total);
    };
    return CheckVolume(volume, findings, update) == kErrorSuccess;
}

/// In the words of a start of the program.
void ShowRefusedVolume(EPlatformError error, const QString& path) {
    ShowFailedMount(error);
    ShowCannotOpen(RefusalText(error, path));
}

/// Of an attempt to open a volume. What keeps it from being opened may be no damage at all: another
/// program, a newer version, a file that may only be read, a full disk.
bool IsSoundOrDamaged(EPlatformError error) {
    return error == kErrorSuccess || IsTableDamage(error);
}

/// Why the file cannot be restored.
QString RefusedFileText(EPlatformError error, const QString& file) {
    switch (error) {
        case kErrorFileNotFound:
            return FormatText("There is no file '%s'."_L1, {file});
        case kErrorOperationAborted:
            return u"Nothing was restored: it was cancelled."_s;
        case kErrorAlreadyExists:
            return FormatText(
                "The file '%s' was not finished. Under this name it cannot be restored: rename "
                "it first."_L1,
                {file});
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

/// Of the present volume, if it is sound. False when it was cancelled.
bool BackUpPresent(CVolumeReplacement& replacement, const QDateTime& now) {
    if (!replacement.Present().IsOpen()) {
        return true;
    }
    QString failure;
    CVolumeBackups backups(replacement.Present(), replacement.GetPath());
    backups.Start([&failure](const QString& text) { failure = text; }, [now] { return now; });
    const bool mayGoOn = backups.MakeIfDue(EBackupOccasion::LargeChange);
    if (mayGoOn && !failure.isEmpty()) {
        ShowMessage(failure, EMessageIcon::Warning);
    }
    return mayGoOn;
}

/// As a start of the program does.
void ShowKeptJournal(CVolumeReplacement& replacement) {
    if (const QString kept = replacement.Present().GetKeptJournal(); !kept.isEmpty()) {
        ShowMessage(KeptJournalText(kept, replacement.GetPath()), EMessageIcon::Warning);
    }
}

QString ConfirmationText(const CVolumeReplacement& replacement) {
    return replacement.IsConfirmed() ? QString()
                                     : u" The disk reports an error: after a loss of power your "
                                       "former data may be back."_s;
}

QString RepairedText(const CRepairSummary& summary, const CFindings& left,
                     const CVolumeReplacement& replacement) {
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
    if (left.HasFaults()) {
        text += FormatText("Faults that remain: %d.\n"_L1, {left.CountFaults()});
    }
    return text +
           FormatText(
               "The data was repaired. The history of changes and the counts of use begin "
               "again. The damaged file is kept as '%s'."_L1,
               {replacement.GetKeptPath()}) +
           ConfirmationText(replacement);
}

/// What is written is checked before it counts: `left` gets what is still wrong.
EPlatformError WriteRepaired(CVolumeReplacement& replacement, CRepairSummary& summary,
                             CFindings& left) {
    CLateProgress progress(u"Velmora: Check data"_s, u"Repairing the data..."_s);
    const auto update = [&progress](qint64 done, qint64 total) {
        return progress.Update(done, total);
    };
    EPlatformError error = CRepair(replacement).Run(summary, update);
    CSqliteFile repaired;
    if (error == kErrorSuccess) {
        error = repaired.Open(replacement.GetNewPath());
    }
    if (error == kErrorSuccess) {
        error = CheckVolume(repaired, left, update);
    }
    return error == kErrorSuccess && left.IsFileDamaged() ? kErrorInputOutput : error;
}

/// Records that can be read are taken over with what is wrong in them.
bool AreAllLeft(const CFindings& found, const CFindings& left) {
    QSet<QString> texts;
    for (const CFinding& finding : left.List()) {
        texts.insert(finding.text);
    }
    return std::ranges::all_of(found.List(), [&texts](const CFinding& finding) {
        return finding.kind == EFinding::Note || texts.contains(finding.text);
    });
}

void ShowNotRepaired(EPlatformError error, const QString& volumePath) {
    if (error == kErrorOperationAborted) {
        ShowMessage(u"Nothing was repaired: it was cancelled."_s, EMessageIcon::Stop);
    } else {
        ShowMessage({.text = u"Nothing was repaired."_s,
                     .icon = EMessageIcon::Stop,
                     .detail = RefusalText(error, volumePath)});
    }
}

/// `found` is what is wrong in the present volume, if it could be opened.
bool ReplaceByRepaired(CVolumeReplacement& replacement, const CFindings& found) {
    CRepairSummary summary;
    CFindings left;
    EPlatformError error = WriteRepaired(replacement, summary, left);
    if (error == kErrorSuccess && replacement.Present().IsOpen() && AreAllLeft(found, left)) {
        ShowMessage(
            u"Nothing was repaired: the faults are within records, and a repair keeps every "
            "record that can be read."_s,
            EMessageIcon::Stop);
        return false;
    }
    if (error == kErrorSuccess) {
        error = replacement.Commit();
    }
    if (error != kErrorSuccess) {
        ShowNotRepaired(error, replacement.GetPath());
        return false;
    }
    ShowMessage(RepairedText(summary, left, replacement), EMessageIcon::Result);
    return true;
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
    if (!IsSoundOrDamaged(error)) {
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
    EPlatformError error = replacement.Begin();
    ShowKeptJournal(replacement);
    if (error == kErrorSuccess && !IsSoundOrDamaged(replacement.GetPresentError())) {
        error = replacement.GetPresentError();
    }
    if (error != kErrorSuccess) {
        ShowRefusedVolume(error, volumePath);
        return false;
    }
    CFindings found;
    const bool isOpen = replacement.Present().IsOpen();
    if (isOpen && !CheckShowingProgress(replacement.Present(), found)) {
        ShowNotRepaired(kErrorOperationAborted, volumePath);
        return false;
    }
    if (isOpen && !found.HasFaults()) {
        ShowMessage(u"The data is sound. Nothing was repaired."_s, EMessageIcon::Result);
        return true;
    }
    return ReplaceByRepaired(replacement, found);
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
    CVolumeReplacement& replacement = restore.Replacement();
    ShowKeptJournal(replacement);
    if (error != kErrorSuccess && !restore.IsOfFile()) {
        ShowRefusedVolume(error, volumePath);
        return false;
    }
    if (error != kErrorSuccess) {
        ShowMessage(RefusedFileText(error, file), EMessageIcon::Stop);
        return false;
    }
    if (!AskYesNo(QuestionText(restore, file), EAnswer::No)) {
        return false;
    }
    if (!BackUpPresent(replacement, now)) {
        ShowMessage(RefusedFileText(kErrorOperationAborted, file), EMessageIcon::Stop);
        return false;
    }
    if (error = restore.Commit(); error != kErrorSuccess) {
        ShowMessage(FormatText("Nothing was restored (error# %d)."_L1, {error}),
                    EMessageIcon::Stop);
        return false;
    }
    QString text = FormatText("The data of '%s' was restored."_L1, {file});
    if (replacement.HasPresent()) {
        text += FormatText(" Your former data is kept as '%s'."_L1, {replacement.GetKeptPath()});
    }
    ShowMessage(text + ConfirmationText(replacement), EMessageIcon::Result);
    return true;
}
