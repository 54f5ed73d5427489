// The texts of values in a report. Numbers have a point in every locale, since a comma ends a
// field; dates have the format of the user's locale.
#pragma once

#include <QDate>
#include <QString>

#include "app/Preferences.h"
#include "store/records/DiaryEntries.h"

class CReportFormat {
  public:
    /// The preferences outlive it.
    CReportFormat(const CPreferences& preferences, double startWeightKg);

    /// With the profile's decimals; a value within 0.0001 of zero is written as zero.
    [[nodiscard]] QString Number(double value) const;
    static QString Date(QDate date);
    /// "Apple raw", since a comma ends a field; the name alone when the type is empty. A control
    /// character becomes a blank, since a line break would end the line.
    static QString NameAndTypeInOneField(const QString& name, const QString& type);
    /// "1.0xcup", with blanks in the same way.
    [[nodiscard]] QString Serving(const CDietEntry& entry) const;
    /// Appends a comma and the number, energy in the profile's unit.
    void AppendNutrient(QByteArray& line, int index, double value) const;

    /// "01:05"; hours take as many digits as they need.
    static QString Time(double minutes);
    /// A whole number, rounded in kJ and truncated in kcal; empty unless above 0.
    [[nodiscard]] QString EntryEnergy(double kcal) const;
    /// A sum in the energy unit, with the profile's decimals.
    [[nodiscard]] QString TotalEnergy(double kcal) const;
    /// "Ex. time,Energy burned (kcal),".
    [[nodiscard]] QString ExerciseHeader() const;

    /// Weight, weight change, measurements and body fat. Stones and pounds are two fields, their
    /// change is in pounds.
    [[nodiscard]] QString WeightFields(const CWeightEntry& entry) const;
    /// "Weight (kg),Weight change (kg),Chest (cm),...,Body fat(%)": one title for stones and
    /// pounds together.
    [[nodiscard]] QString WeightHeader() const;

  private:
    [[nodiscard]] bool HasStones() const;
    [[nodiscard]] QString NumberOrEmpty(double value) const;

    const CPreferences& m_preferences;
    double m_startWeightKg;
};
