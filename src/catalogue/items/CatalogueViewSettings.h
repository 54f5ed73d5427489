// Settings of the windows of foods and of exercises.
#pragma once

#include "store/Database.h"

/// Stored in the view-settings record of the kind's database.
struct CCatalogueViewSettings {
    bool namesInTree = true;           ///< "Show food names in category tree"
    int splitterPerMille = 400;        ///< the tree's share of the window
    bool confirmServingChange = true;  ///< foods only: "Show when change serving method"
    bool starterOffered = false;       ///< foods only: starter foods were offered and declined

    static CCatalogueViewSettings Load(CDatabase& database, ECatalogueKind kind);
    bool Save(CDatabase& database, ECatalogueKind kind) const;
};
