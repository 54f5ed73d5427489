// How much an item of a quick line is: its serving, amount and values.
#pragma once

#include <QStringList>

#include "catalogue/items/ChosenFood.h"

/// How an item is read: an amount, the words of its unit, and what is searched for.
struct CQuickReading {
    double amount = 1;
    bool hasAmount = false;
    QStringList unit = {};
    QString what = {};
};

/// The folded words of a text.
QStringList FoldedWords(const QString& text);

/// Whether the name of a serving of the food begins with these folded words, after its number.
bool HasServing(const CFoodItem& food, const QStringList& words);

/// Sets serving, amount and totals of an item of the catalogue; returns why that is not possible,
/// and nothing when it is.
QString Measure(const CQuickReading& reading, CChosenFood& food);
