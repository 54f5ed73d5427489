// The table of commands of velmora-cli.
#pragma once

#include <span>

#include "app/VelmoraDoc.h"
#include "cli/Arguments.h"

/// Exit statuses.
enum EExitStatus : int { kExitDone = 0, kExitRefused = 1, kExitUsage = 2 };

/// What a command works with; the catalogue is open. The arguments hold what its table row allows.
struct CCommandContext {
    CVelmoraDoc& doc;
    CArguments& arguments;
    ECatalogueKind kind = ECatalogueKind::Foods;  ///< of a catalogue command
};

// The order is that of the columns of the tables.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
struct CCommand {
    const char* group;  ///< "foods"
    const char* name;   ///< "import"; may be left out where it is the group's only one
    int wordCount;      ///< words besides the options
    std::span<const COptionDescription> options;
    const char* usage;  ///< the rest of its usage line
    /// Reads its arguments first. Returns false when it was refused or failed, after the message
    /// that says why; an argument that cannot be read makes the whole call a usage error.
    bool (*run)(CCommandContext& context);
    ECatalogueKind kind = ECatalogueKind::Foods;  ///< of a catalogue command
};

/// One table a folder of rules.
std::span<const CCommand> ProfileCommands();
std::span<const CCommand> CatalogueCommands();
std::span<const CCommand> CategoryCommands();
std::span<const CCommand> DietCommands();
std::span<const CCommand> WeightCommands();
std::span<const CCommand> ReportCommands();
std::span<const CCommand> ExerciseCommands();

/// What a command that destroys asks for. Without the option its questions are answered with No;
/// those of commands that do not have it are answered with Yes.
inline constexpr COptionDescription kYesOption = {"--yes", false, false};
