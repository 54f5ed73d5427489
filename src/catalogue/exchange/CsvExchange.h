// Import and export of the catalogue as comma-separated text: one frame for all kinds.
#pragma once

#include <QString>
#include <vector>

#include "platform/Messages.h"
#include "store/Database.h"

/// What an import does with an item that is there already. The codes are those of the dialog.
enum class EExisting { Overwrite = 0, Skip = 1, DoNotCheck = 2 };

/// What an export takes. The codes are those of the dialog.
enum class EExportChoice { All = 0, CurrentCategory = 1, Selected = 2 };

/// What is exported: for CurrentCategory the category, for Selected the positions in list order.
struct CExportRequest {
    EExportChoice choice = EExportChoice::All;
    qint32 categoryId = -1;
    std::vector<int> positions;
};

/// Runs one import: asks for the file, reads it, reports. All messages are shown on the way; false
/// when nothing was read or the run stopped early. Records stored before a stop stay stored.
bool ImportCatalogue(CDatabase& database, ECatalogueKind kind, EExisting existing);
/// The same from a file already chosen.
bool ImportCatalogueFile(CDatabase& database, ECatalogueKind kind, EExisting existing,
                         const QString& path);

/// Runs one export: counts, asks for the file, writes, reports, with the summary what damage has
/// left out. False when that is anything, nothing was written or the file did not come out whole.
bool ExportCatalogue(CDatabase& database, ECatalogueKind kind, const CExportRequest& request);
/// The same to a file already chosen.
bool ExportCatalogueFile(CDatabase& database, ECatalogueKind kind, const CExportRequest& request,
                         const QString& path);

/// What the file dialogs of an exchange offer, titled `title`.
CFileChoice CsvFileChoice(const QString& title);
