// How the windows of foods and of exercises behave.
#pragma once

#include "store/Database.h"

/// Kept in the view-settings record of the kind's database.
struct CCatalogueViewSettings {
    bool namesInTree = true;           ///< "Show food names in category tree"
    int splitterPerMille = 400;        ///< the tree's share of the window
    bool confirmServingChange = true;  ///< foods alone: "Show when change serving method"
    bool starterOffered = false;       ///< foods alone: starter foods were offered and not wanted

    static CCatalogueViewSettings Load(CDatabase& database, ECatalogueKind kind);
    bool Save(CDatabase& database, ECatalogueKind kind) const;
};
