// The file that hands items of the catalogue from one Velmora to another.
//
// An SQLite file of its own kind. The rows of each table are numbered from 1 without gaps:
//
//   contents     one row: how many rows the other tables have, and a checksum of them
//   categories   the record of a category
//   items        the record of a food, menu, recipe or exercise; `category` is the number of its
//                category, whose kind is the item's
//   components   the record of a component; `owner` is the number of its menu or recipe, `item`
//                that of the item it was made of, 0 when that is not known
//
// Invariants:
// 1. Records have the stored form of a volume, so numbers and texts are exact. The identifiers in
//    them, which mean nothing elsewhere, are 0.
// 2. An item comes after all items that it is made of: `item` is less than `owner`. So nothing
//    contains itself.
// 3. Components come in the order of their owners and, for each, in their own.
// 4. No two categories of a kind have the same name.
// 5. The file is what SQLite writes into an empty one, row by row: its tables are on the first
//    page, no page is free.
#pragma once

#include <array>

#include "store/CatalogueLists.h"
#include "store/engine/Checksum.h"
#include "store/engine/VolumeHeader.h"
#include "store/records/CatalogueItem.h"

inline constexpr CFileKind kShareFileKind = {0x564C5348, 1};  ///< "VLSH"

/// All of a volume, and for each kind one for items without a category.
inline constexpr int kMostSharedCategories = kMaximumCategories + 4;
inline constexpr int kMostSharedItems = 100'000;
inline constexpr int kMostSharedComponents = 1'000'000;
/// A file is held in memory. 100,000 foods with texts of usual length take about 70 MB.
inline constexpr qint64 kMostShareBytes = 256LL << 20U;

/// In the order of the file, as SQLite keeps them.
inline constexpr std::array<const char*, 4> kShareTables = {
    "CREATE TABLE contents(categories INTEGER,items INTEGER,components INTEGER,checksum INTEGER)",
    "CREATE TABLE categories(id INTEGER PRIMARY KEY,body BLOB)",
    "CREATE TABLE items(id INTEGER PRIMARY KEY,category INTEGER,body BLOB)",
    "CREATE TABLE components(id INTEGER PRIMARY KEY,owner INTEGER,item INTEGER,body BLOB)",
};

/// A checksum of rows: of the numbers and then the body of each.
class CRowsChecksum {
  public:
    void Add(std::initializer_list<qint64> numbers, QByteArrayView body) {
        for (const qint64 number : numbers) {
            m_value = ChecksumWith(m_value, static_cast<quint64>(number));
        }
        m_value = ChecksumOf(body, m_value);
    }
    [[nodiscard]] quint64 Value() const { return m_value; }

  private:
    quint64 m_value = 0;
};

/// What the table of contents says. The checksum is that of the categories, continued by that of
/// the items, each followed by its components.
struct CShareContents {
    qint64 categories = 0;
    qint64 items = 0;
    qint64 components = 0;
    quint64 checksum = 0;
    bool operator==(const CShareContents& other) const = default;
};

/// Whether a file may have so many rows.
constexpr bool IsWithinLimits(const CShareContents& contents) {
    return contents.categories <= kMostSharedCategories && contents.items <= kMostSharedItems &&
           contents.components <= kMostSharedComponents;
}
