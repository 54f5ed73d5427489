// The fields of a profile on the command line: the options of "profile create" and "profile set",
// and the rows of "profile show", whose values these options accept.
#pragma once

#include <span>

#include "app/ProfileSettings.h"
#include "cli/Arguments.h"

std::span<const COption> CreateProfileOptions();
std::span<const COption> SetProfileOptions();

/// The error in a combination of fields that are valid one by one; empty when there is none.
QString CheckProfileFields(const CArguments& arguments);

/// Copies the given fields to `settings`, with the same consequences as in the dialogs: a rate sets
/// the goal date, a goal date the rate; a changed plan sets the daily energy to 0, which means
/// still to be calculated; a changed target that follows from the diet type selects the custom
/// diet.
void TakeProfileFields(const CArguments& arguments, CProfileSettings& settings);

/// Prints the fields and the values calculated from them, one per row.
void PrintProfile(const CProfileSettings& settings);
