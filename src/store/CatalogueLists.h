// Lists that the database object fills for the views.
#pragma once

#include <QString>
#include <vector>

inline constexpr int kCatalogueListCapacity = 1024;
inline constexpr int kDietListCapacity = 128;
inline constexpr int kMaximumCategories = 256;  ///< over all kinds together

struct CCategoryListEntry {
    int position;
    qint32 categoryId;
    QString name;
    QString type;
};

struct CUniqueName {
    qint32 categoryId;
    QString name;
};

struct CCategoryEntry {
    int position;
    qint32 id;
    QString name;
};
