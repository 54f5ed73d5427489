// The lists of the catalogue as values.
#pragma once

#include <QString>
#include <limits>
#include <vector>

#include "store/LeftOut.h"

// Capacities of the windows' lists; scripts and files have no limit.
inline constexpr int kCatalogueListCapacity = 1024;
inline constexpr int kDietListCapacity = 128;
inline constexpr int kNoCapacity = std::numeric_limits<int>::max();

struct CCategoryListEntry {
    int position;
    qint32 categoryId;
    QString name;
    QString type;
};
/// Items of one category.
struct CCategoryList {
    std::vector<CCategoryListEntry> entries;
    CLeftOut leftOut;
};

struct CUniqueName {
    qint32 categoryId;
    QString name;
};
struct CUniqueNames {
    std::vector<CUniqueName> names;
    CLeftOut leftOut;  ///< counts records, not names
};

struct CCategoryEntry {
    int position;
    qint32 id;
    QString name;
};
struct CCategoryEntries {
    std::vector<CCategoryEntry> entries;
    CLeftOut leftOut;
};
