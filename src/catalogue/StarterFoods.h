// The small file of everyday foods that ships with the program.
#pragma once

#include <QString>

/// Looked for beside the program, beside its folder and where packages install it; empty when it
/// is nowhere.
QString StarterFoodsPath();
