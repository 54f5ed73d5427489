// The amounts of a quick line: numbers as a person writes them, weights and volumes.
#pragma once

#include <QLocale>
#include <QStringView>
#include <optional>

struct CLeadingAmount {
    double value;
    qsizetype length;  ///< of the number, in UTF-16 units
};
/// The number at the beginning of a text: 2, 1.5 (or with the locale's sign), 1/2, 1 1/2, ½, 1½. A
/// sign is read too, and 1/0 is infinite: what no amount can be is for the caller to refuse.
/// After a number without a fraction, only a unit may follow without a blank ("150g"). Nothing when
/// there is none, or when it belongs to a word ("2% milk", "7-grain", "7up").
std::optional<CLeadingAmount> LeadingAmount(QStringView text, const QLocale& locale = QLocale());

enum class EMeasure { Weight, Volume };
struct CMeasureUnit {
    EMeasure measure;
    double size;  ///< grams or millilitres
    int words;    ///< of its name: two for "fl oz"
};
/// The unit that these folded words begin with; nothing when they do not.
std::optional<CMeasureUnit> LeadingUnit(const QStringList& words);
