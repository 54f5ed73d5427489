// Finds the files that come with the program: the starter foods and the help page.
#pragma once

#include <QString>

/// Absolute path of the shipped file of that name, empty when there is none. Looks beside the
/// program, in the source tree it was built in, in the data folder of the prefix it is installed
/// under, and in those of the system.
QString ShippedFile(const QString& name);
