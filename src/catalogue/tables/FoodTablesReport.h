// What an import of food tables left out or changed.
#pragma once

#include <QStringList>

struct CFoodTablesCounts {
    // Rows of food.csv that were left out.
    int noFoods = 0;
    int otherTypes = 0;
    int listedTwice = 0;
    int nameless = 0;
    int withoutEnergy = 0;
    QStringList firstWithoutEnergy;  ///< names of some of them, cut like those of foods
    int withoutPlace = 0;            ///< no category for them can be added
    // Foods that are not quite as the tables say.
    int marked = 0;  ///< with their number in the type, since another one has the same name
    int withoutRoom = 0;
    int withoutCategory = 0;
    int unusablePortions = 0;
    int tooManyPortions = 0;
    int unknownUnits = 0;
    QStringList firstUnknownUnits;  ///< see CNutrientNumbers

    void AddWithoutEnergy(const QString& food);
};

/// One line for each of the counts that is not 0.
QString FoodTablesReport(const CFoodTablesCounts& counts);
