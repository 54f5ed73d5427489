// The one record that holds a profile's user information, preferences and targets.
#pragma once

#include <QDate>

#include "store/records/ItemRecord.h"

/// 159 properties. What the 16-bit settings mean is defined in app/ProfileSettings.h.
class CProfileRecord : public CItemRecord {
  public:
    static constexpr qint32 kMarker = 0x40000;
    static constexpr qint32 kVersion = 1;
    static constexpr int kPreferenceCount = 4;
    static constexpr int kSettingCount = 80;

    /// Sets marker and version; everything else is 0 or empty.
    CProfileRecord();

    /// Takes over the values of `after` that differ from `before`, and leaves the rest as it is.
    void TakeChanges(const CProfileRecord& before, const CProfileRecord& after);

    [[nodiscard]] qint32 GetLastTabCommand() const;
    void SetLastTabCommand(qint32 command);
    /// 0 weight unit, 1 height unit, 2 energy unit, 3 decimal places.
    [[nodiscard]] qint16 GetPreference(int index) const;
    void SetPreference(int index, qint16 value);
    [[nodiscard]] QString GetUserName() const;
    void SetUserName(const QString& name);
    [[nodiscard]] bool IsMale() const;
    void SetMale(bool male);
    [[nodiscard]] QDate GetBirthDate() const;
    void SetBirthDate(QDate date);
    [[nodiscard]] double GetHeightCm() const;
    void SetHeightCm(double heightCm);
    [[nodiscard]] qint16 GetActivityLevel() const;
    void SetActivityLevel(qint16 level);
    [[nodiscard]] qint16 GetSetting(int index) const;
    void SetSetting(int index, qint16 value);
    [[nodiscard]] QDate GetStartDate() const;
    void SetStartDate(QDate date);
    [[nodiscard]] double GetStartWeightKg() const;
    void SetStartWeightKg(double weightKg);
    [[nodiscard]] QDate GetGoalDate() const;
    void SetGoalDate(QDate date);
    [[nodiscard]] double GetGoalWeightKg() const;
    void SetGoalWeightKg(double weightKg);
    [[nodiscard]] double GetRateKgPerWeek() const;
    void SetRateKgPerWeek(double rate);
    [[nodiscard]] double GetDailyEnergyKcal() const;
    void SetDailyEnergyKcal(double energyKcal);
    [[nodiscard]] qint16 GetDietType() const;
    void SetDietType(qint16 dietType);
    /// One daily target per nutrient index, in the nutrient's unit.
    [[nodiscard]] double GetTarget(int nutrient) const;
    void SetTarget(int nutrient, double value);

  private:
    [[nodiscard]] QDate GetDate(int number) const;
    void SetDate(int number, QDate date);
};
