#include "report/ReportFormat.h"

#include "app/DateText.h"
#include "app/ItemTexts.h"
#include "app/UnitTexts.h"
#include "diary/weight/WeightForm.h"
#include "exercise/ExerciseRules.h"
#include "platform/ControlCharacters.h"
#include "platform/Messages.h"
#include "platform/NumberText.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace {
constexpr double kZeroReach = 0.0001;

bool IsZero(double value) {
    return std::abs(value) <= kZeroReach;
}

bool IsDirectionMark(QChar c) {
    return c == QChar(0x200E) || c == QChar(0x200F) || c == QChar(0x061C);
}

double Written(double value) {
    return IsZero(value) ? 0 : value;
}
}  // namespace

CReportFormat::CReportFormat(const CPreferences& preferences, double startWeightKg)
    : m_preferences(preferences), m_startWeightKg(startWeightKg) {}

QString CReportFormat::Number(double value) const {
    return FixedNumber(Written(value), m_preferences.decimals);
}

QString CReportFormat::NumberOrEmpty(double value) const {
    return IsZero(value) ? QString() : Number(value);
}

QString CReportFormat::Date(QDate date) {
    // Digits of other scripts and direction marks would not survive the code page.
    QString text = WithAsciiDigits(ShownDate(date));
    return text.removeIf(IsDirectionMark);
}

QString CReportFormat::NameAndTypeInOneField(const QString& name, const QString& type) {
    return WithoutControls(type.isEmpty() ? name : name + u' ' + type);
}

QString CReportFormat::Serving(const CDietEntry& entry) const {
    return WithoutControls(ServingText(Number(entry.GetAmount()), entry.GetServingName()));
}

void CReportFormat::AppendNutrient(QByteArray& line, int index, double value) const {
    const double shown =
        index == kEnergyIndex ? EnergyShown(value, m_preferences.energyUnit) : value;
    AppendFixed(line.append(','), Written(shown), m_preferences.decimals);
}

QString CReportFormat::Time(double minutes) {
    return ExerciseTimeText(minutes);
}

QString CReportFormat::EntryEnergy(double kcal) const {
    return ExerciseEnergyText(kcal, m_preferences.energyUnit);
}

QString CReportFormat::TotalEnergy(double kcal) const {
    return Number(EnergyShown(kcal, m_preferences.energyUnit));
}

QString CReportFormat::ExerciseHeader() const {
    return FormatText("Ex. time,Energy burned (%s),"_L1,
                      {UnitName(m_preferences.energyUnit, EUnitForm::Abbreviated)});
}

QString CReportFormat::WeightFields(const CWeightEntry& entry) const {
    const EWeightUnit unit = m_preferences.weightUnit;
    const auto number = [this](double value) { return Number(value); };
    QString fields = WeightText(entry.GetWeightKg(), unit, number) + u',' +
                     WeightChangeText(entry.GetWeightKg() - m_startWeightKg, unit, number);
    for (int slot = 0; slot < kTapeCount; ++slot) {
        fields += u',' + NumberOrEmpty(TapeShown(entry.GetMeasurement(slot), m_preferences));
    }
    return fields + u',' + NumberOrEmpty(entry.GetMeasurement(kBodyFatSlot));
}

QString CReportFormat::WeightHeader() const {
    const QString weightUnit =
        UnitName(HasStones() ? EWeightUnit::StonesAndPounds : m_preferences.weightUnit,
                 EUnitForm::Abbreviated);
    const QString lengthUnit = UnitName(m_preferences.heightUnit, EUnitForm::Abbreviated);
    QString header = FormatText("Weight (%s),Weight change (%s),"_L1, {weightUnit, weightUnit});
    for (int slot = 0; slot < kTapeCount; ++slot) {
        header += MeasurementName(slot) + u'(' + lengthUnit + "),"_L1;
    }
    return header + MeasurementName(kBodyFatSlot);
}

bool CReportFormat::HasStones() const {
    return m_preferences.weightUnit == EWeightUnit::Stones ||
           m_preferences.weightUnit == EWeightUnit::StonesAndPounds;
}
