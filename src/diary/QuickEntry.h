// Reads a meal from one line: "2 eggs, 150 g lentils, 1/2 cup oatmeal".
#pragma once

#include "app/VelmoraDoc.h"
#include "catalogue/items/ChosenFood.h"

/// A part of a quick line between commas.
struct CQuickItem {
    qsizetype first = 0;  ///< its place in the line, without blanks around it
    qsizetype length = 0;
    /// Candidates, the best first.
    std::vector<CSearchMatch> matches = {};
    int taken = -1;         ///< index of the match that `food` was made of; -1 when there is none
    CChosenFood food = {};  ///< with its totals
    QString refusal = {};   ///< why it is not understood; empty when it is
};

/// Reads quick lines. The document outlives it, and a profile is active.
///
/// An item is an amount, a unit, and words that are searched in foods, menus and recipes; both
/// amount and unit may be missing. Weights give an entry of one serving "150 gm". Other units are
/// the beginning of the name of a serving of the item, or a volume, which is taken from a serving
/// that names one. Without a unit the first serving is meant.
class CQuickEntry {
  public:
    /// `meal` is the one that is added to.
    CQuickEntry(CVelmoraDoc& doc, int meal) : m_doc(doc), m_meal(meal) {}

    /// The items of a line with the best match of each taken; empty ones are left out. A comma
    /// between two digits is a decimal sign where the locale has it so.
    std::vector<CQuickItem> Read(const QString& line);
    /// Takes another match of an item of that line.
    void Take(const QString& line, CQuickItem& item, int match);

  private:
    /// How an item can be read: an amount, the words of its unit, and what is searched.
    struct CReading {
        double amount = 1;
        bool hasAmount = false;
        QStringList unit;
        QString what;
    };
    struct CServing {
        QString name;
        double weightGrams;
        double count;       ///< the number its name begins with
        QStringList words;  ///< the folded words after it
    };

    CQuickItem ReadItem(const QString& line, qsizetype first, qsizetype length);
    CReading ReadingOf(const QString& text, CSearchMatches& matches);
    CSearchMatches Find(const QString& what);
    bool Load(const CSearchMatch& match, CChosenFood& food);
    static std::vector<CServing> ServingsOf(const CFoodItem& food);
    static int ServingNamed(const std::vector<CServing>& servings, const QStringList& words);
    QString Measure(const CReading& reading, CChosenFood& food);

    CVelmoraDoc& m_doc;
    int m_meal;
};

/// Adds the items' foods as one unit of work; stops at the first failure with "Cannot add entry.".
/// Returns how many were added.
int AddQuickItems(CVelmoraDoc& doc, QDate day, QTime time, int meal,
                  const std::vector<CQuickItem>& items);
