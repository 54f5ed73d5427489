// The main frame's commands, which views also put into their menus.
#pragma once

#include "app/ProfileSettings.h"

enum EFrameCommand : int {
    kSwitchToDiet = kDietTabCommand,
    kSwitchToWeight = kWeightTabCommand,
    kSwitchToExercises = kExercisesTabCommand,
    kSwitchToFoods = 65022,
    kSwitchToMenus = 65023,
    kSwitchToRecipes = 65024,
    kSwitchToExlib = 65057,
    kCommandOpenProfile = 1,
    kCommandPreferences,
    kCommandUser,
    kCommandTargets,
    kCommandReport,
    kCommandPurge,
    kCommandAbout,
    kCommandHelp,
    kCommandExit,
    kCommandBackUp,
    kCommandBackupFolder,
    kCommandRestore,
    kCommandCheckData,
};
