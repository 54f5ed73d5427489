// Backing up, checking and restoring the data file, without windows.
#pragma once

#include "store/Database.h"
#include "store/backup/Findings.h"

/// "VelmoraDb-backup-2026-05-31.db"
QString ProposedBackupName(const QString& volumePath, QDate today);

/// Saves a checked copy of the open volume. Shows where, or why not.
bool SaveBackup(CDatabase& database, const QString& path);

/// Where the program's own backups go from now on. An empty path is the usual folder; so is the one
/// that the volume is in, where backups would lie among other files. False after a message when the
/// folder cannot be used or stored.
bool SetBackupFolder(CDatabase& database, const QString& folder);

/// What is wrong in the open volume. False when it was cancelled. Nothing else may read the volume
/// meanwhile, not even a view that is painted.
bool CheckData(CDatabase& database, CFindings& findings);
/// The same for a volume that is not open. One that cannot be opened because it is damaged is a
/// finding; false after a message when there is another reason, such as another program that uses
/// it, or a newer version that wrote it.
bool CheckFile(const QString& volumePath, CFindings& findings);
/// "Note: ..." for what the program itself may leave.
QString FindingLine(const CFinding& finding);
/// "The data is sound.", or how many findings there are.
QString FindingsText(const CFindings& findings);

/// Takes over what can be read of a damaged volume, which is not open, into a new one in its place;
/// the damaged one is kept aside. Shows how much was kept and lost. A sound volume is left alone,
/// and one of which every fault would be taken over. False after a message when nothing was
/// repaired.
bool RepairData(const QString& volumePath, const QDateTime& now);

/// Shows what is in `file` and asks; then puts it in the place of the volume, which is not open and
/// is kept aside. Shows the result. False when nothing was changed.
bool RestoreBackup(const QString& file, const QString& volumePath, const QDateTime& now);
