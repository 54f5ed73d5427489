// The fields of a profile on the command line: as options of "profile create" and "profile set",
// and as the rows of "profile show", whose values the options take.
#pragma once

#include <span>

#include "app/ProfileSettings.h"
#include "cli/Arguments.h"

std::span<const COption> CreateProfileOptions();
std::span<const COption> SetProfileOptions();

/// What is wrong with fields that are readable one by one; empty when nothing is.
QString CheckProfileFields(const CArguments& arguments);

/// Takes over the fields that are given, and what follows from them as in the dialogs: the goal
/// date from the rate or the rate from the goal date, a daily energy still to be computed (0) from
/// a changed plan, the custom diet from a changed target that a diet decides.
void TakeProfileFields(const CArguments& arguments, CProfileSettings& settings);

/// The fields in rows, and what follows from them.
void PrintProfile(const CProfileSettings& settings);
