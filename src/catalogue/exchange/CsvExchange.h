// Import and export of the catalogue as comma-separated text, for all kinds.
#pragma once

#include <QString>
#include <vector>

#include "platform/Messages.h"
#include "store/Database.h"

/// What an import does with an item that exists already. The codes are those of the dialog.
enum class EDuplicatePolicy { Overwrite = 0, Skip = 1, DoNotCheck = 2 };

/// What an export contains. The codes are those of the dialog.
enum class EExportChoice { All = 0, CurrentCategory = 1, Selected = 2 };

/// `categoryId` is for CurrentCategory, `positions` (in list order) for Selected.
struct CExportRequest {
    EExportChoice choice = EExportChoice::All;
    qint32 categoryId = -1;
    std::vector<int> positions;
};

/// Runs one import: asks for the file, reads it and shows all messages and the summary. False when
/// nothing was read or the import stopped early; records stored before a stop stay stored.
bool ImportCatalogue(CDatabase& database, ECatalogueKind kind, EDuplicatePolicy policy);
/// The same from the file `path`.
bool ImportCatalogueFile(CDatabase& database, ECatalogueKind kind, EDuplicatePolicy policy,
                         const QString& path);

/// What an import did with its items. A replaced one counts as imported, too.
struct CImportCounts {
    int imported = 0;
    int replaced = 0;
    int skipped = 0;
};
/// "Imported 3 foods. Replaced 1 existing foods."
QString ImportSummary(ECatalogueKind kind, EDuplicatePolicy policy, const CImportCounts& counts);
/// About the HistoryRoom of the items, with their components, that an import of at most `most`
/// items may replace, assuming that each of them exists already. Those that it adds take no room.
qint64 RoomForReplaced(CDatabase& database, ECatalogueKind kind, EDuplicatePolicy policy,
                       qint64 most);

/// Runs one export: counts the items, asks for the file, writes it and shows the summary with the
/// number of damaged items left out. False when there are any, when there is nothing to export or
/// the export was cancelled, and when the file could not be written.
bool ExportCatalogue(CDatabase& database, ECatalogueKind kind, const CExportRequest& request);
/// The same to the file `path`.
bool ExportCatalogueFile(CDatabase& database, ECatalogueKind kind, const CExportRequest& request,
                         const QString& path);

/// The file dialog of an exchange, titled `title`.
CFileChoice CsvFileChoice(const QString& title);
