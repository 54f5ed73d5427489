// What is in a volume: shown before it replaces another one.
#pragma once

#include <QDate>
#include <QString>
#include <optional>
#include <vector>

#include "store/engine/StorageEngine.h"

struct CProfileSummary {
    QString name;
    int dietEntries = 0;
    int weights = 0;
    int exercises = 0;
    QDate first = {};  ///< day of the first entry of any diary; invalid when there is none
    QDate last = {};
};

struct CVolumeSummary {
    std::vector<CProfileSummary> profiles;
    int foods = 0;
    int menus = 0;  ///< without their components, here and below
    int recipes = 0;
    int exercises = 0;
};

EPlatformError Summarize(CStorageEngine& engine, CVolumeSummary& summary);
/// A line for each profile and one for the catalogue.
QString SummaryText(const CVolumeSummary& summary);
