// Finds the files that come with the program: the starter foods and the help page.
#pragma once

#include <QString>

/// Their names; every installation has both.
inline constexpr auto kStarterFoodsName = QLatin1StringView("starter-foods.csv");
inline constexpr auto kHelpPageName = QLatin1StringView("Velmora.htm");

/// Absolute path of the shipped file of that name, empty when there is none. Looks beside the
/// program, in the source tree it was built in, in the data folder of the prefix it is installed
/// under, and in those of the system.
QString ShippedFile(const QString& name);

/// Whether the program in that folder was installed under a prefix: one of the shipped files is in
/// the prefix's data folder.
bool IsInstalledIn(const QString& programFolder);
