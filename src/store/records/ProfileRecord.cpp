#include "store/records/ProfileRecord.h"

#include <utility>

namespace {
// Property numbers; a date is year, month and day.
enum : int {
    kMarkerNumber,
    kVersionNumber,
    kLastTab,
    kFirstPreference,
    kUserName = kFirstPreference + CProfileRecord::kPreferenceCount,
    kSex,
    kBirthDate,
    kHeight = kBirthDate + 3,
    kActivityLevel,
    kFirstSetting,
    kStartDate = kFirstSetting + CProfileRecord::kSettingCount,
    kStartWeight = kStartDate + 3,
    kGoalDate,
    kGoalWeight = kGoalDate + 3,
    kRate,
    kDailyEnergy,
    kTypeOfDiet,
    kFirstTarget,
};
}  // namespace

CProfileRecord::CProfileRecord() : CItemRecord(kProfileLayout) {
    Set(kMarkerNumber, kMarker);
    Set(kVersionNumber, kVersion);
}

void CProfileRecord::TakeChanges(const CProfileRecord& before, const CProfileRecord& after) {
    PropertyList properties = GetProperties();
    for (std::size_t i = 0; i < properties.size(); ++i) {
        if (after.GetProperties()[i] != before.GetProperties()[i]) {
            properties[i] = after.GetProperties()[i];
        }
    }
    SetProperties(std::move(properties));
}

qint32 CProfileRecord::GetLastTabCommand() const {
    return Get<qint32>(kLastTab);
}

void CProfileRecord::SetLastTabCommand(qint32 command) {
    Set(kLastTab, command);
}

qint16 CProfileRecord::GetPreference(int index) const {
    Q_ASSERT(index >= 0 && index < kPreferenceCount);
    return Get<qint16>(kFirstPreference + index);
}

void CProfileRecord::SetPreference(int index, qint16 value) {
    Q_ASSERT(index >= 0 && index < kPreferenceCount);
    Set(kFirstPreference + index, value);
}

QString CProfileRecord::GetUserName() const {
    return Get<QString>(kUserName);
}

void CProfileRecord::SetUserName(const QString& name) {
    SetText(kUserName, name);
}

bool CProfileRecord::IsMale() const {
    return Get<qint16>(kSex) != 0;
}

void CProfileRecord::SetMale(bool male) {
    Set(kSex, static_cast<qint16>(male ? 1 : 0));
}

QDate CProfileRecord::GetBirthDate() const {
    return GetDate(kBirthDate);
}

void CProfileRecord::SetBirthDate(QDate date) {
    SetDate(kBirthDate, date);
}

double CProfileRecord::GetHeightCm() const {
    return Get<double>(kHeight);
}

void CProfileRecord::SetHeightCm(double heightCm) {
    Set(kHeight, heightCm);
}

qint16 CProfileRecord::GetActivityLevel() const {
    return Get<qint16>(kActivityLevel);
}

void CProfileRecord::SetActivityLevel(qint16 level) {
    Set(kActivityLevel, level);
}

qint16 CProfileRecord::GetSetting(int index) const {
    Q_ASSERT(index >= 0 && index < kSettingCount);
    return Get<qint16>(kFirstSetting + index);
}

void CProfileRecord::SetSetting(int index, qint16 value) {
    Q_ASSERT(index >= 0 && index < kSettingCount);
    Set(kFirstSetting + index, value);
}

QDate CProfileRecord::GetStartDate() const {
    return GetDate(kStartDate);
}

void CProfileRecord::SetStartDate(QDate date) {
    SetDate(kStartDate, date);
}

double CProfileRecord::GetStartWeightKg() const {
    return Get<double>(kStartWeight);
}

void CProfileRecord::SetStartWeightKg(double weightKg) {
    Set(kStartWeight, weightKg);
}

QDate CProfileRecord::GetGoalDate() const {
    return GetDate(kGoalDate);
}

void CProfileRecord::SetGoalDate(QDate date) {
    SetDate(kGoalDate, date);
}

double CProfileRecord::GetGoalWeightKg() const {
    return Get<double>(kGoalWeight);
}

void CProfileRecord::SetGoalWeightKg(double weightKg) {
    Set(kGoalWeight, weightKg);
}

double CProfileRecord::GetRateKgPerWeek() const {
    return Get<double>(kRate);
}

void CProfileRecord::SetRateKgPerWeek(double rate) {
    Set(kRate, rate);
}

double CProfileRecord::GetDailyEnergyKcal() const {
    return Get<double>(kDailyEnergy);
}

void CProfileRecord::SetDailyEnergyKcal(double energyKcal) {
    Set(kDailyEnergy, energyKcal);
}

qint16 CProfileRecord::GetDietType() const {
    return Get<qint16>(kTypeOfDiet);
}

void CProfileRecord::SetDietType(qint16 dietType) {
    Set(kTypeOfDiet, dietType);
}

double CProfileRecord::GetTarget(int nutrient) const {
    Q_ASSERT(nutrient >= 0 && nutrient < kNutrientCount);
    return Get<double>(kFirstTarget + nutrient);
}

void CProfileRecord::SetTarget(int nutrient, double value) {
    Q_ASSERT(nutrient >= 0 && nutrient < kNutrientCount);
    Set(kFirstTarget + nutrient, value);
}

QDate CProfileRecord::GetDate(int number) const {
    return {Get<qint16>(number), Get<qint16>(number + 1), Get<qint16>(number + 2)};
}

// An invalid date is stored as three zeros.
void CProfileRecord::SetDate(int number, QDate date) {
    Set(number, static_cast<qint16>(date.isValid() ? date.year() : 0));
    Set(number + 1, static_cast<qint16>(date.isValid() ? date.month() : 0));
    Set(number + 2, static_cast<qint16>(date.isValid() ? date.day() : 0));
}
