// A man of thirty who weighs 80 kg, and his plans.
#pragma once

#include "app/UserProfile.h"

inline const QDate kStart(2024, 1, 1);

/// Thirty years and their leap days are 10957 days: 10957 / 365 = 30.02.
inline CUserInformation ThirtyYearOldMan() {
    return {QStringLiteral("Adam"), true, {1994, 1, 1}, 180, 0};
}

/// In ten weeks, with the diet of the pyramid.
inline CTargets FromEightyTo(double goalKg, double rateKg = 0) {
    return {.startDate = kStart,
            .startWeightKg = 80,
            .goalDate = kStart.addDays(70),
            .goalWeightKg = goalKg,
            .rateKgPerWeek = rateKg,
            .dietType = 3};
}
