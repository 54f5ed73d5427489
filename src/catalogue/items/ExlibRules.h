// The rules of the exercise library, without windows: texts of ratings, and checks of the edit
// dialog's fields.
#pragma once

#include <optional>

#include "app/Preferences.h"
#include "store/Database.h"

/// "kcal/min" or "kJ/min".
QString ExlibRateUnit(EEnergyUnit unit);
/// The rate with its unit, or the MET without one; empty for an exercise without either.
QString ExlibEnergyText(const CExerciseItem& item, const CPreferences& preferences);

/// The fields of the edit dialog.
struct CExlibFields {
    qint32 categoryId = -1;  ///< -1: none selected
    QString name;
    QString type;
    QString energy;  ///< MET, or energy per minute in the energy unit
    bool isMet = false;
};
CExlibFields ExlibFieldsOf(const CExerciseItem& item, const CPreferences& preferences);

/// Copies the fields to `item`, from which they were filled; an unchanged energy text keeps its
/// stored value. Returns the message about the first invalid field; `item` may then be partly
/// changed. `position` is that of the item being edited, -1 for a new one.
std::optional<QString> TakeExlibFields(CDatabase& database, const CPreferences& preferences,
                                       const CExlibFields& fields, int position,
                                       CExerciseItem& item);
