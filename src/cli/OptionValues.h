// Reading the values of options from their texts. Each reader returns nothing for an invalid text.
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
/// Index of the choice, for a Choice or a Code.
std::optional<int> ReadChoice(const COption& option, const QString& text);
/// A bit set: 1 for the first choice, 2 for the second, and so on.
std::optional<int> ReadChoices(const COption& option, const QString& text);
std::optional<NutrientSet> ReadNutrients(const QString& text);
std::optional<CNutrientTarget> ReadTarget(const COption& option, const QString& text);

bool IsReadable(const COption& option, const QString& text);
/// Description of a valid text, "a number from 0 to 100".
QString NeededValue(const COption& option);
/// The choices of a Choice, a Code or Choices.
QStringList ChoicesOf(const COption& option);
/// "0 to 100"; empty for an option without limits.
QString LimitsOf(const COption& option);
