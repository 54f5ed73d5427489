// The rules of the "Weight edit" dialog, without its window: texts in the profile's units go in and
// out.
#pragma once

#include <array>
#include <optional>

#include "app/UnitTexts.h"
#include "app/VelmoraDoc.h"

/// Chest, waist, hips, bicep, forearm, thigh, calf: the first slots of an entry, in cm.
inline constexpr int kTapeCount = 7;
inline constexpr int kWaistSlot = 1;
inline constexpr int kBodyFatSlot = 7;
/// `slot` 0 to 7: "Chest " to "Calf ", with their blank, and "Body fat(%)".
QString MeasurementName(int slot);

/// Measurements are in inches for every length unit but centimetres.
bool ShowsInches(const CPreferences& preferences);
/// "cm" or "in".
QString TapeUnitName(const CPreferences& preferences);
/// `cm` in that unit.
double TapeShown(double cm, const CPreferences& preferences);

inline constexpr double kLowestEntryKg = 1;
inline constexpr double kHighestEntryKg = 1000;
/// The limits themselves are allowed, also when they were typed in pounds.
bool IsEntryWeightAllowed(double weightKg);

/// Body fat in percent of the weight from waist and weight by the YMCA equation, 0 to 100.
/// `waistCm` in cm, `weightKg` above 0.
double BodyFatPercent(bool isMale, double waistCm, double weightKg);

/// The texts of the dialog's fields.
struct CWeightFields {
    QDate date;
    QTime time;
    CUnitTexts weight;
    std::array<QString, kTapeCount> tape;
    QString bodyFat;
    bool operator==(const CWeightFields&) const = default;
};

/// A field whose text was not changed keeps its stored value, so rounding for display loses
/// nothing. A typed text without a number counts as 0.
class CWeightForm {
  public:
    CWeightForm(CWeightEntry entry, const CPreferences& preferences, bool isMale);

    [[nodiscard]] const CPreferences& GetPreferences() const { return m_preferences; }
    [[nodiscard]] const CWeightEntry& GetEntry() const { return m_entry; }
    [[nodiscard]] CWeightFields GetFields() const;

    /// Text for the body fat field from waist and weight as typed. Nothing, after "Please enter
    /// correct weight." or "Please enter correct waist.", when one of them is invalid.
    [[nodiscard]] std::optional<QString> CalculateBodyFat(const CWeightFields& fields) const;
    /// Reads the fields into the entry, or shows "Please enter correct weight." and returns false.
    bool Confirm(const CWeightFields& fields);

  private:
    [[nodiscard]] CWeightEntry Read(const CWeightFields& fields) const;

    CWeightEntry m_entry;
    CPreferences m_preferences;
    bool m_isMale;
};
