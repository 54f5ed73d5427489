// What a search field shows: the best matches with their texts.
#pragma once

#include "app/VelmoraDoc.h"
#include "catalogue/items/FoundItem.h"

struct CSearchItems {
    std::vector<CFoundItem> items = {};
    QString note = {};       ///< about rows that are left out or do not match fully
    QString hint = {};       ///< why there are none
    bool isPending = false;  ///< the index is being built: search again
};

/// As many as a person looks through.
inline constexpr int kSearchRows = 50;

/// What a list shows while the index is being built.
inline constexpr QLatin1StringView kSearching{"Searching..."};
/// A sentence about matches that do not match fully; empty for others.
QString FoundText(EFound found);

/// The best kSearchRows matches of a query, whose profile and limit are set here: the active
/// profile's habits count. Where the index of a large catalogue is not built yet, a step of it is,
/// and the result is pending.
CSearchItems SearchItems(CVelmoraDoc& doc, CSearchQuery query);

/// "Name and type", "Category" and the energy's unit: narrow lists have no room for more columns.
QStringList SearchTitles(const CVelmoraDoc& doc);
/// "Apple, raw"; the name alone when the type is empty.
QString FoundName(const QString& name, const QString& type);
/// Energy is of the first serving, or of a minute; "3.5 MET" for exercises that are rated so.
QString SearchCell(const CVelmoraDoc& doc, const CFoundItem& item, int column);
