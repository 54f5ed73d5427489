#include "catalogue/exchange/CsvLayout.h"

#include "catalogue/exchange/ComposedCsv.h"
#include "catalogue/exchange/ExlibCsv.h"
#include "catalogue/exchange/FoodsCsv.h"

using namespace Qt::StringLiterals;

CCsvVerdict WrongFieldCount(int count) {
    if (count <= 2) {
        return {};
    }
    return {ECsvLine::Error, "Invalid number of fields (%d) in line %d. Skipped.", count};
}

std::optional<CCsvVerdict> VerdictOnNumber(const std::optional<QStringView>& number) {
    if (!number || number->isEmpty() || number->contains("NDB_No"_L1)) {
        return CCsvVerdict{};
    }
    if (number->contains("<End>"_L1)) {
        return CCsvVerdict{ECsvLine::End};
    }
    return std::nullopt;
}

std::unique_ptr<CCsvLayout> MakeCsvLayout(CDatabase& database, ECatalogueKind kind,
                                          const QString& folder) {
    switch (kind) {
        case ECatalogueKind::Foods:
            return std::make_unique<CFoodsCsv>(database, folder);
        case ECatalogueKind::Menus:
        case ECatalogueKind::Recipes:
            return std::make_unique<CComposedCsv>(database, kind, folder);
        case ECatalogueKind::Exercises:
            return std::make_unique<CExlibCsv>(database, folder);
    }
    return nullptr;
}
