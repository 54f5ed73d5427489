#include "catalogue/CsvLayout.h"

#include "catalogue/FoodsCsv.h"

std::unique_ptr<CCsvLayout> MakeCsvLayout(CDatabase& database, ECatalogueKind kind,
                                          const QString& folder) {
    switch (kind) {
        case ECatalogueKind::Foods:
            return std::make_unique<CFoodsCsv>(database, folder);
        default:
            return nullptr;
    }
}
