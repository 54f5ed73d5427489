// The frame's commands on the data file as a whole.
#pragma once

#include "app/VelmoraDoc.h"

class CFindings;
class QWidget;

/// "Back up...": asks where to, and saves a backup there.
void RunBackUp(CVelmoraDoc& doc);
/// "Backup folder...": asks where the program is to make its own backups from now on.
void RunBackupFolder(CVelmoraDoc& doc);
/// Asks for the backup to restore; an empty path when cancelled.
QString ChooseBackup(CVelmoraDoc& doc);
/// Shows what a check of the volume found. True when it is to be repaired.
bool ShowFindings(const CFindings& findings, QWidget* parent);
