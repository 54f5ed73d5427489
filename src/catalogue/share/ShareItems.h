// Sharing: items of the catalogue, with everything they are made of, written to a file for another
// Velmora.
#pragma once

#include <QString>
#include <vector>

#include "platform/Messages.h"
#include "store/Database.h"

/// Items of one kind, by their positions.
struct CShareRequest {
    ECatalogueKind kind = ECatalogueKind::Foods;
    std::vector<int> positions;
};

/// Writes the items to the file `path`, replacing an old one, with a message on what was shared.
/// The components of menus and recipes come along, and in turn the foods and recipes that these
/// were made of, as far as the catalogue still has them: the message says how many components come
/// without. Records that no volume should hold are left out and counted. False, after a message,
/// when there are any, when there is nothing to share or too much, when the user cancelled, and
/// when the file could not be written, which leaves an old one as it was.
bool ShareItems(CDatabase& database, const CShareRequest& request, const QString& path);

/// The file dialog of sharing and taking in, titled `title`, which proposes `initialName`.
CFileChoice ShareFileChoice(const QString& title, const QString& initialName);
/// The file name that is proposed for the items: that of a single item, or of the kind.
QString ProposedShareName(CDatabase& database, const CShareRequest& request);
