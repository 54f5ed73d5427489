#include "app/ProfileSettings.h"

#include <QLocale>
#include <algorithm>
#include <limits>

namespace {
// The slots of each setting among the record's 80 16-bit settings. Stored profiles depend on them:
// a new setting takes free slots, an existing one never moves.
struct CSlots {
    int first;
    int count;
};
constexpr CSlots kDisplayedNutrients = {0, 4};   // one bit per nutrient index, lowest first
constexpr CSlots kDietSplitter = {4, 1};         // per mille
constexpr CSlots kDietBackground = {5, 2};       // 0xGGRR, then 0x01BB; 0 in both when unset
constexpr CSlots kDietTextWidths = {7, 2};       // name, serving: logical pixels
constexpr CSlots kDietNutrientWidths = {9, 27};  // two per slot, lower byte first, in kWidthStep
constexpr CSlots kWeightSplitter = {36, 1};
constexpr CSlots kWeightGoalLine = {37, 1};  // 1 hidden
constexpr CSlots kWeightWidths = {38, 11};   // logical pixels
constexpr CSlots kWeightColors = {49, 8};    // text, weight line, goal line, background
constexpr CSlots kExerciseSplitter = {57, 1};
constexpr CSlots kExerciseWidths = {58, 3};
constexpr CSlots kExerciseColors = {61, 8};  // text, background, line, bar
constexpr CSlots kTabsAreStored = {69, 1};   // 1 once the weight and exercise tabs were written
constexpr CSlots kFree = {70, 10};
static_assert(kFree.first + kFree.count == CProfileRecord::kSettingCount);
static_assert(kDisplayedNutrients.count * 16 >= kNutrientCount);
static_assert(kDietNutrientWidths.count * 2 == kNutrientCount);

constexpr int kWidthStep = 4;  // logical pixels
constexpr int kLargestStoredWidth = std::numeric_limits<qint16>::max();
constexpr quint32 kColorIsSet = 0x100;
constexpr int kLargestSplitter = 1000;

quint32 SlotBits(const CProfileRecord& record, int slot) {
    return static_cast<quint16>(record.GetSetting(slot));
}

void SetSlotBits(CProfileRecord& record, int slot, quint32 bits) {
    record.SetSetting(slot, static_cast<qint16>(static_cast<quint16>(bits)));
}

/// `value` when it is one of the codes 0 to `last`, else `fallback`.
template <typename T>
T CodeOr(T fallback, int value, T last) {
    return value >= 0 && value <= static_cast<int>(last) ? static_cast<T>(value) : fallback;
}

QDate ValidOr(QDate fallback, QDate value) {
    return value.isValid() ? value : fallback;
}

void UseLocaleUnits(CPreferences& preferences) {
    switch (QLocale().measurementSystem()) {
        case QLocale::ImperialUSSystem:
            preferences.weightUnit = EWeightUnit::Pounds;
            preferences.heightUnit = EHeightUnit::Feet;
            break;
        case QLocale::ImperialUKSystem:
            preferences.weightUnit = EWeightUnit::Stones;
            preferences.heightUnit = EHeightUnit::Feet;
            break;
        case QLocale::MetricSystem:
            break;
    }
}

void ReadUser(const CProfileRecord& record, CUserInformation& user) {
    user.name = record.GetUserName();
    user.isMale = record.IsMale();
    user.birthDate = ValidOr(user.birthDate, record.GetBirthDate());
    const double height = record.GetHeightCm();
    user.heightCm = height > 0 ? height : user.heightCm;
    user.activityLevel = CodeOr(user.activityLevel, record.GetActivityLevel(),
                                static_cast<int>(kActivityLevels.size()) - 1);
}

void ReadTargets(const CProfileRecord& record, CTargets& targets) {
    const auto weightOr = [](double fallback, double weight) {
        return IsWeightAllowed(weight) ? weight : fallback;
    };
    targets.startDate = ValidOr(targets.startDate, record.GetStartDate());
    targets.startWeightKg = weightOr(targets.startWeightKg, record.GetStartWeightKg());
    targets.goalDate = ValidOr(targets.goalDate, record.GetGoalDate());
    targets.goalWeightKg = weightOr(targets.goalWeightKg, record.GetGoalWeightKg());
    targets.rateKgPerWeek = std::max(0.0, record.GetRateKgPerWeek());
    targets.dailyEnergyKcal = record.GetDailyEnergyKcal();
    targets.dietType = CodeOr(targets.dietType, record.GetDietType(), kCustomDiet);
    for (int index = 0; index < kNutrientCount; ++index) {
        targets.nutrients.at(index) = record.GetTarget(index);
    }
}

void ReadPreferences(const CProfileRecord& record, CPreferences& preferences) {
    preferences.weightUnit =
        CodeOr(preferences.weightUnit, record.GetPreference(0), EWeightUnit::StonesAndPounds);
    preferences.heightUnit =
        CodeOr(preferences.heightUnit, record.GetPreference(1), EHeightUnit::Feet);
    preferences.energyUnit =
        CodeOr(preferences.energyUnit, record.GetPreference(2), EEnergyUnit::KJ);
    preferences.decimals = CodeOr(preferences.decimals, record.GetPreference(3), kMaximumDecimals);
    for (int index = 0; index < kNutrientCount; ++index) {
        const quint32 bits = SlotBits(record, kDisplayedNutrients.first + index / 16);
        preferences.displayed.set(index, (bits >> index % 16 & 1U) != 0);
    }
}

// Two slots: 0xGGRR, then 0x01BB; 0 in both when unset.
std::optional<quint32> ReadColor(const CProfileRecord& record, int slot) {
    const quint32 redAndGreen = SlotBits(record, slot);
    const quint32 blueAndFlag = SlotBits(record, slot + 1);
    if ((blueAndFlag & kColorIsSet) == 0) {
        return std::nullopt;
    }
    return redAndGreen | (blueAndFlag & 0xFFU) << 16;
}

void WriteColor(std::optional<quint32> color, CProfileRecord& record, int slot) {
    const quint32 rgb = color.value_or(0);
    SetSlotBits(record, slot, rgb & 0xFFFFU);
    SetSlotBits(record, slot + 1, (rgb >> 16 & 0xFFU) | (color ? kColorIsSet : 0));
}

int ReadWidth(const CProfileRecord& record, int slot) {
    return std::max<int>(0, record.GetSetting(slot));
}

void WriteWidth(int width, CProfileRecord& record, int slot) {
    record.SetSetting(slot, static_cast<qint16>(std::clamp(width, 0, kLargestStoredWidth)));
}

void ReadDietTab(const CProfileRecord& record, CDietTabSettings& tab) {
    tab.splitterPerMille =
        CodeOr(tab.splitterPerMille, record.GetSetting(kDietSplitter.first), kLargestSplitter);
    tab.backgroundColor = ReadColor(record, kDietBackground.first);
    for (int column = 0; column < kDietTextWidths.count; ++column) {
        tab.columnWidths.at(column) = ReadWidth(record, kDietTextWidths.first + column);
    }
    for (int index = 0; index < kNutrientCount; ++index) {
        const quint32 bits = SlotBits(record, kDietNutrientWidths.first + index / 2);
        tab.columnWidths.at(kDietTextWidths.count + index) =
            static_cast<int>(bits >> index % 2 * 8 & 0xFFU) * kWidthStep;
    }
}

void ReadWeightTab(const CProfileRecord& record, CWeightTabSettings& tab) {
    tab.splitterPerMille =
        CodeOr(tab.splitterPerMille, record.GetSetting(kWeightSplitter.first), kLargestSplitter);
    tab.showGoalLine = record.GetSetting(kWeightGoalLine.first) == 0;
    for (int column = 0; column < kWeightWidths.count; ++column) {
        tab.columnWidths.at(column) = ReadWidth(record, kWeightWidths.first + column);
    }
    int slot = kWeightColors.first;
    for (std::optional<quint32>* color :
         {&tab.textColor, &tab.weightLineColor, &tab.goalLineColor, &tab.backgroundColor}) {
        *color = ReadColor(record, slot);
        slot += 2;
    }
}

void WriteWeightTab(const CWeightTabSettings& tab, CProfileRecord& record) {
    record.SetSetting(kWeightSplitter.first,
                      static_cast<qint16>(std::clamp(tab.splitterPerMille, 0, kLargestSplitter)));
    record.SetSetting(kWeightGoalLine.first, tab.showGoalLine ? 0 : 1);
    for (int column = 0; column < kWeightWidths.count; ++column) {
        WriteWidth(tab.columnWidths.at(column), record, kWeightWidths.first + column);
    }
    int slot = kWeightColors.first;
    for (const std::optional<quint32>& color :
         {tab.textColor, tab.weightLineColor, tab.goalLineColor, tab.backgroundColor}) {
        WriteColor(color, record, slot);
        slot += 2;
    }
}

void ReadExerciseTab(const CProfileRecord& record, CExerciseTabSettings& tab) {
    tab.splitterPerMille =
        CodeOr(tab.splitterPerMille, record.GetSetting(kExerciseSplitter.first), kLargestSplitter);
    for (int column = 0; column < kExerciseWidths.count; ++column) {
        tab.columnWidths.at(column) = ReadWidth(record, kExerciseWidths.first + column);
    }
    int slot = kExerciseColors.first;
    for (quint32* color : {&tab.textColor, &tab.backgroundColor, &tab.lineColor, &tab.barColor}) {
        *color = ReadColor(record, slot).value_or(*color);
        slot += 2;
    }
}

void WriteExerciseTab(const CExerciseTabSettings& tab, CProfileRecord& record) {
    record.SetSetting(kExerciseSplitter.first,
                      static_cast<qint16>(std::clamp(tab.splitterPerMille, 0, kLargestSplitter)));
    for (int column = 0; column < kExerciseWidths.count; ++column) {
        WriteWidth(tab.columnWidths.at(column), record, kExerciseWidths.first + column);
    }
    int slot = kExerciseColors.first;
    for (const quint32 color : {tab.textColor, tab.backgroundColor, tab.lineColor, tab.barColor}) {
        WriteColor(color, record, slot);
        slot += 2;
    }
}

void WriteUser(const CUserInformation& user, CProfileRecord& record) {
    record.SetUserName(user.name);
    record.SetMale(user.isMale);
    record.SetBirthDate(user.birthDate);
    record.SetHeightCm(user.heightCm);
    record.SetActivityLevel(static_cast<qint16>(user.activityLevel));
}

void WriteTargets(const CTargets& targets, CProfileRecord& record) {
    record.SetStartDate(targets.startDate);
    record.SetStartWeightKg(targets.startWeightKg);
    record.SetGoalDate(targets.goalDate);
    record.SetGoalWeightKg(targets.goalWeightKg);
    record.SetRateKgPerWeek(targets.rateKgPerWeek);
    record.SetDailyEnergyKcal(targets.dailyEnergyKcal);
    record.SetDietType(static_cast<qint16>(targets.dietType));
    for (int index = 0; index < kNutrientCount; ++index) {
        record.SetTarget(index, targets.nutrients.at(index));
    }
}

void WritePreferences(const CPreferences& preferences, CProfileRecord& record) {
    record.SetPreference(0, static_cast<qint16>(preferences.weightUnit));
    record.SetPreference(1, static_cast<qint16>(preferences.heightUnit));
    record.SetPreference(2, static_cast<qint16>(preferences.energyUnit));
    record.SetPreference(3, static_cast<qint16>(preferences.decimals));
    const quint64 displayed = preferences.displayed.to_ullong();
    for (int i = 0; i < kDisplayedNutrients.count; ++i) {
        SetSlotBits(record, kDisplayedNutrients.first + i, displayed >> i * 16 & 0xFFFFU);
    }
}

void WriteDietTab(const CDietTabSettings& tab, CProfileRecord& record) {
    record.SetSetting(kDietSplitter.first,
                      static_cast<qint16>(std::clamp(tab.splitterPerMille, 0, kLargestSplitter)));
    WriteColor(tab.backgroundColor, record, kDietBackground.first);
    for (int column = 0; column < kDietTextWidths.count; ++column) {
        WriteWidth(tab.columnWidths.at(column), record, kDietTextWidths.first + column);
    }
    for (int index = 0; index < kNutrientCount; index += 2) {
        quint32 bits = 0;
        for (int i = 0; i < 2; ++i) {
            const int width = tab.columnWidths.at(kDietTextWidths.count + index + i);
            const int steps = std::clamp(width, 0, 0xFF * kWidthStep) + kWidthStep - 1;
            bits |= static_cast<quint32>(steps / kWidthStep) << i * 8;
        }
        SetSlotBits(record, kDietNutrientWidths.first + index / 2, bits);
    }
}
}  // namespace

CProfileSettings CProfileSettings::ForNewProfile(QDate today) {
    constexpr int kAge = 30;
    constexpr int kPlannedWeeks = 12;
    constexpr double kHeightCm = 170;
    constexpr double kWeightKg = 70;
    constexpr int kPyramidDiet = 3;

    CProfileSettings settings;
    settings.user.birthDate = today.addYears(-kAge);
    settings.user.heightCm = kHeightCm;
    settings.targets.startDate = today;
    settings.targets.goalDate = today.addDays(qint64{kPlannedWeeks} * 7);
    settings.targets.startWeightKg = kWeightKg;
    settings.targets.goalWeightKg = kWeightKg;
    settings.targets.dietType = kPyramidDiet;
    UseLocaleUnits(settings.preferences);
    return settings;
}

CProfileSettings CProfileSettings::FromRecord(const CProfileRecord& record) {
    CProfileSettings settings = ForNewProfile(QDate::currentDate());
    settings.lastTabCommand = record.GetLastTabCommand();
    ReadUser(record, settings.user);
    ReadTargets(record, settings.targets);
    ReadPreferences(record, settings.preferences);
    ReadDietTab(record, settings.dietTab);
    // Profiles of older versions do not have these settings and get the defaults.
    if (record.GetSetting(kTabsAreStored.first) != 0) {
        ReadWeightTab(record, settings.weightTab);
        ReadExerciseTab(record, settings.exerciseTab);
    }
    return settings;
}

void CProfileSettings::ToRecord(CProfileRecord& record) const {
    record.SetLastTabCommand(lastTabCommand);
    WriteUser(user, record);
    WriteTargets(targets, record);
    WritePreferences(preferences, record);
    WriteDietTab(dietTab, record);
    WriteWeightTab(weightTab, record);
    WriteExerciseTab(exerciseTab, record);
    record.SetSetting(kTabsAreStored.first, 1);
}

void CProfileSettings::ChangesToRecord(const CProfileSettings& before,
                                       CProfileRecord& record) const {
    CProfileRecord was;
    CProfileRecord is;
    before.ToRecord(was);
    ToRecord(is);
    if (was == is) {
        return;
    }
    record.TakeChanges(was, is);
    // This flag makes all settings of these tabs valid, so all of them must be written.
    if (record.GetSetting(kTabsAreStored.first) == 0) {
        WriteWeightTab(weightTab, record);
        WriteExerciseTab(exerciseTab, record);
        record.SetSetting(kTabsAreStored.first, 1);
    }
}
