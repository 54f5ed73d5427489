// The texts of a download as the catalogue stores them.
#pragma once

#include <QString>
#include <optional>
#include <string_view>

/// The text of a field, without blanks at its ends. A double quote, usually an inch mark, becomes
/// two apostrophes and a control character a blank, as exchange files need it.
QString TableText(std::string_view field);

struct CFoodTexts {
    QString name;
    QString type;
};
/// Cuts a description at its first comma from `from` on: "Butter, salted". Without one the type is
/// "plain".
CFoodTexts SplitDescription(const QString& description, qsizetype from = 0);
/// The same with the brand, which may have commas, in front of the name, unless the description
/// begins with it.
CFoodTexts SplitBranded(const QString& brand, const QString& description);
/// `mark` at the end of the type, which is cut so that the whole mark is stored.
QString MarkedType(const QString& type, const QString& mark);

/// The fields of food_portion.csv that describe a portion; `unit` is empty when undetermined.
struct CPortionFields {
    QString amount;
    QString unit;
    QString description;
    QString modifier;
};
/// "1 cup, sifted", as long as the name of a serving may be. Empty when only the amount is given.
QString PortionText(const CPortionFields& portion);
