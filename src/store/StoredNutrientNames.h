// The names of the nutrients as the user sees them and can change them.
#pragma once

#include <QStringList>

#include "store/ItemDatabase.h"
#include "store/records/Category.h"

class CStoredNutrientNames : public CItemDatabase<CNutrientName> {
  public:
    explicit CStoredNutrientNames(CRecordStore& store)
        : CItemDatabase(store, kNutrientNameLayout) {}

    /// All 54, with the default for any that cannot be read.
    QStringList ReadNames();
    /// Position -1 adds. A position that cannot be found shows "Cannot save nutrient name." and
    /// still counts as success.
    bool SaveName(int position, qint32 index, const QString& name);
    /// "Energy (kcal)" or "Energy (kJ)".
    static QString EnergyName(const QString& unitAbbreviation);
    /// Stores EnergyName as the name of nutrient 0, unless it is stored already.
    void RenameEnergy(const QString& unitAbbreviation);
    /// Replaces all names by the 54 default ones unless there are exactly 54.
    void BringToDefault();
};
