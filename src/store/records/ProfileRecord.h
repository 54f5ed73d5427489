// The one record that holds a profile's user information, preferences and targets.
#pragma once

#include <QDate>

#include "store/records/ItemRecord.h"

/// 159 properties. The meaning of the sixteen-bit settings is app/'s.
class CProfileRecord : public CItemRecord {
  public:
    static constexpr qint32 kMarker = 0x40000;
    static constexpr qint32 kVersion = 1;
    static constexpr int kPreferenceCount = 4;
    static constexpr int kSettingCount = 80;

    /// Marker and version stand; everything else is cleared.
    CProfileRecord();

    /// Takes over what differs between two other records, and leaves the rest as it is.
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
    /// One daily target a nutrient index, in the nutrient's unit.
    [[nodiscard]] double GetTarget(int nutrient) const;
    void SetTarget(int nutrient, double value);

  private:
    [[nodiscard]] QDate GetDate(int number) const;
    void SetDate(int number, QDate date);
};
