#include "store/records/DatabaseLayouts.h"

const CRecordLayout* LayoutOfDatabase(const QString& name, quint32 type) {
    for (const CProfileDatabase& row : kProfileDatabases) {
        if (row.layout.databaseType == type) {
            return &row.layout;
        }
    }
    for (const CRecordLayout* layout : kCatalogueDatabases) {
        if (type == kCatalogueType && name == QLatin1StringView(layout->databaseName)) {
            return layout;
        }
    }
    return nullptr;
}

QString ProfileOfDiary(const QString& name, quint32 type) {
    for (const CProfileDatabase& row : kProfileDatabases) {
        const QLatin1StringView suffix(row.suffix);
        if (row.layout.databaseType == type && !suffix.isEmpty() &&
            name.endsWith(suffix, Qt::CaseInsensitive)) {
            return name.chopped(suffix.size());
        }
    }
    return {};
}
