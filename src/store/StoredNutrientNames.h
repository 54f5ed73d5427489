// The names of the nutrients as the user sees them, which can be changed.
#pragma once

#include <QStringList>

#include "store/ItemDatabase.h"
#include "store/records/Category.h"

class CStoredNutrientNames : public CItemDatabase<CNutrientName> {
  public:
    explicit CStoredNutrientNames(CRecordStore& store)
        : CItemDatabase(store, kNutrientNameLayout) {}

    /// All 54; the default stands in for one that cannot be read.
    QStringList ReadNames();
    /// Position -1 adds. A position that cannot be found shows "Cannot save nutrient name." and
    /// still counts as success.
    bool SaveName(int position, qint32 index, const QString& name);
    /// "Energy (kcal)" or "Energy (kJ)".
    static QString EnergyName(const QString& unitAbbreviation);
    /// Names nutrient 0 so.
    void RenameEnergy(const QString& unitAbbreviation);
    /// Writes the 54 default names unless there are exactly 54.
    void BringToDefault();
};
