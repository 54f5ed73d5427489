// What the exercise library decides without its windows: how a rating reads, and what becomes of
// the fields of the edit dialog.
#pragma once

#include <optional>

#include "app/Preferences.h"
#include "store/Database.h"

/// "kcal/min" or "kJ/min".
QString ExlibRateUnit(EEnergyUnit unit);
/// The rate with its unit, or the MET alone, or nothing.
QString ExlibEnergyText(const CExerciseItem& item, const CPreferences& preferences);

/// An exercise as the edit dialog holds it.
struct CExlibFields {
    qint32 categoryId = -1;  ///< -1 for none selected
    QString name;
    QString type;
    QString energy;  ///< MET, or energy a minute in the energy unit
    bool isMet = false;
};
CExlibFields ExlibFieldsOf(const CExerciseItem& item, const CPreferences& preferences);

/// Takes the fields over into `item`, which holds what they were filled from: an energy that still
/// reads as it was filled keeps its stored value. The first reason against it comes back as its
/// message; `item` may be half changed then. `position` is that of the item being edited, -1 for
/// a new one.
std::optional<QString> TakeExlibFields(CDatabase& database, const CPreferences& preferences,
                                       const CExlibFields& fields, int position,
                                       CExerciseItem& item);
