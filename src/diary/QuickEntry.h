// Reads a meal from one line: "2 eggs, 150 g lentils, 1/2 cup oatmeal".
#pragma once

#include <functional>

#include "app/VelmoraDoc.h"
#include "diary/QuickMeasure.h"

/// A part of a quick line between commas.
struct CQuickItem {
    qsizetype first = 0;  ///< its place in the line
    QString text = {};    ///< without blanks around it
    CQuickReading reading = {};
    /// Candidates, the best first.
    std::vector<CSearchMatch> matches = {};
    int taken = -1;         ///< index of the match that `food` was made of; -1 when there is none
    CChosenFood food = {};  ///< with its totals
    QString refusal = {};   ///< why it is not understood; empty when it is
};

/// Reads quick lines. The document outlives it, and a profile is active.
///
/// An item is an amount, a unit, and words that are searched for in foods, menus and recipes; both
/// amount and unit may be missing. Weights give an entry of one serving "150 gm". Other units are
/// the beginning of the name of a serving of the item, or a volume, which is taken from a serving
/// that names one; matches that have what the unit needs come first. Without a unit the first
/// serving is meant.
class CQuickEntry {
  public:
    explicit CQuickEntry(CVelmoraDoc& doc) : m_doc(doc) {}

    /// The items of a line with the best match of each taken; empty ones are left out. A comma
    /// between two digits is a decimal sign where the locale has it so. An item whose text was in
    /// the line read before is not searched again, and keeps the match that was taken.
    const std::vector<CQuickItem>& Read(const QString& line);
    /// Those of the line read last.
    [[nodiscard]] const std::vector<CQuickItem>& Items() const { return m_items; }
    /// Index of the item at a place of the line, or directly before it; -1 when there is none.
    [[nodiscard]] int ItemAt(qsizetype place) const;
    /// Takes another match of an item.
    void Take(int item, int match);
    /// Searches every item again when it is read next: the catalogue may have changed.
    void Forget() { m_items.clear(); }

  private:
    CQuickItem ReadItem(const QString& text);
    CQuickReading ReadingOf(const QString& text, CSearchMatches& matches);
    void TakeMatch(CQuickItem& item, int match);
    bool PreferFitting(CSearchMatches& matches, const std::function<bool(CChosenFood&)>& fits);
    CSearchMatches Find(const QString& what, int limit);
    bool Load(const CSearchMatch& match, CChosenFood& food);

    CVelmoraDoc& m_doc;
    std::vector<CQuickItem> m_items;
};

/// Adds the foods of the items that are understood as one unit of work; stops at the first failure
/// with "Cannot add entry.". Returns how many were added.
int AddQuickItems(CVelmoraDoc& doc, QDate day, QTime time, int meal,
                  const std::vector<CQuickItem>& items);
/// What remains of a line when AddQuickItems has added that many of its items.
QString QuickLineWithout(const std::vector<CQuickItem>& items, int added);
