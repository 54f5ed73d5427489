// Everything that belongs to one profile and is kept in its record: user information, targets,
// preferences, the state of the tabs.
#pragma once

#include <array>
#include <optional>

#include "app/Preferences.h"
#include "app/UserProfile.h"
#include "store/records/ProfileRecord.h"

/// Commands that switch the diary tabs; the last one used is kept with the profile.
enum ETabCommand : int {
    kDietTabCommand = 65008,
    kWeightTabCommand = 65009,
    kExercisesTabCommand = 65010,
    kMonthTabCommand = 65011,
};

/// Colours are RGB values with red in the low byte.
constexpr quint32 Rgb(quint32 red, quint32 green, quint32 blue) {
    return red | green << 8 | blue << 16;
}

struct CDietTabSettings {
    static constexpr int kColumnCount = 2 + kNutrientCount;  ///< name, serving, one per nutrient
    int splitterPerMille = 500;
    /// Without a value until the user chooses one: the palette's base colour is used.
    std::optional<quint32> backgroundColor;
    /// Logical pixels; 0 until the user drags a column. Nutrient columns by nutrient index.
    std::array<int, kColumnCount> columnWidths{};
    bool operator==(const CDietTabSettings&) const = default;
};

struct CWeightTabSettings {
    /// Date, weight, weight change, seven measurements, body fat.
    static constexpr int kColumnCount = 11;
    int splitterPerMille = 500;  ///< the list's share of the tab
    bool showGoalLine = true;
    /// Without a value until the user chooses one: colours of the palette are used.
    std::optional<quint32> textColor;
    std::optional<quint32> weightLineColor;
    std::optional<quint32> goalLineColor;
    std::optional<quint32> backgroundColor;
    /// Logical pixels; 0 until the user drags a column.
    std::array<int, kColumnCount> columnWidths{};
    bool operator==(const CWeightTabSettings&) const = default;
};

struct CExerciseTabSettings {
    static constexpr int kColumnCount = 3;  ///< exercise, time, energy burned
    int splitterPerMille = 500;             ///< the list's share of the tab
    quint32 textColor = Rgb(0, 0, 0);
    quint32 backgroundColor = Rgb(255, 255, 0);
    quint32 lineColor = Rgb(255, 0, 0);
    quint32 barColor = Rgb(0, 255, 0);
    std::array<int, kColumnCount> columnWidths = {75, 75, 75};  ///< logical pixels
    bool operator==(const CExerciseTabSettings&) const = default;
};

struct CProfileSettings {
    CUserInformation user;
    CTargets targets;
    CPreferences preferences;
    int lastTabCommand = kDietTabCommand;
    CDietTabSettings dietTab;
    CWeightTabSettings weightTab;
    CExerciseTabSettings exerciseTab;
    bool operator==(const CProfileSettings&) const = default;

    /// The defaults: a plan from today, no name, units of the locale.
    static CProfileSettings ForNewProfile(QDate today);
    /// Values out of range become the defaults.
    static CProfileSettings FromRecord(const CProfileRecord& record);
    /// Values too large for the record are limited, never wrapped.
    void ToRecord(CProfileRecord& record) const;
    /// Writes what differs from `before` into the record that `before` was read from: unchanged
    /// values keep what the record holds, even where a default replaced it.
    void ChangesToRecord(const CProfileSettings& before, CProfileRecord& record) const;
};
