// The values of options, read from their texts. Every reader gives nothing for a text that the
// option does not take.
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <QTime>
#include <bitset>
#include <optional>

#include "cli/Options.h"
#include "store/records/NutrientTable.h"

using NutrientSet = std::bitset<kNutrientCount>;

struct CNutrientTarget {
    int nutrient = 0;
    double value = 0;
};

std::optional<QDate> ReadDate(const QString& text);
std::optional<QTime> ReadTime(const QString& text);
std::optional<double> ReadNumber(const COption& option, const QString& text);
std::optional<int> ReadWhole(const COption& option, const QString& text);
/// Place among the words, of a Choice or a Code.
std::optional<int> ReadChoice(const COption& option, const QString& text);
/// A set of bits: 1 for the first word, 2 for the second.
std::optional<int> ReadChoices(const COption& option, const QString& text);
std::optional<NutrientSet> ReadNutrients(const QString& text);
std::optional<CNutrientTarget> ReadTarget(const COption& option, const QString& text);

bool IsReadable(const COption& option, const QString& text);
/// What a readable text is, "a number from 0 to 100".
QString NeededValue(const COption& option);
/// The words of a Choice, a Code or Choices.
QStringList ChoicesOf(const COption& option);
/// "0 to 100"; empty for an option without limits.
QString LimitsOf(const COption& option);
