// The tables of commands of velmora-cli.
#pragma once

#include <span>

#include "app/VelmoraDoc.h"
#include "cli/Arguments.h"

/// Exit statuses.
enum EExitStatus : int { kExitDone = 0, kExitRefused = 1, kExitUsage = 2 };

/// What a command works with; the catalogue is open. The arguments hold what its table row allows.
struct CCommandContext {
    CVelmoraDoc& doc;
    const CArguments& arguments;
    ECatalogueKind kind = ECatalogueKind::Foods;  ///< of a catalogue command
};

/// What a command does with the volume. One that only reads never creates it.
enum class EAccess { Reads, Writes };

// The order is that of the columns of the tables.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
struct CCommand {
    const char* group;  ///< "foods"
    const char* name;   ///< "import"; may be left out where it is the group's only one
    const char* words;  ///< what the words besides the options are, "OLD NEW"
    std::span<const COption> options;
    EAccess access;
    const char* help;  ///< what it does, in a line
    /// Returns false when it was refused or failed, after the message that says why.
    bool (*run)(CCommandContext& context);
    /// What is wrong with arguments that are readable one by one; empty when nothing is.
    QString (*check)(const CArguments& arguments) = nullptr;
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

/// All of them, in the order of help.
const std::vector<CCommand>& AllCommands();

/// What the words of a command line name.
struct CNamedCommand {
    QString group;                      ///< empty when no word names one
    const CCommand* command = nullptr;  ///< null when no word names one of the group
    QStringList words;                  ///< the rest of the line
    QString error;                      ///< the word that names nothing; empty when all is well

    /// Of the command, or all options of the group.
    [[nodiscard]] std::vector<COption> Options() const;
};

/// Options may stand before, between and after the words that name a command. "help" before them
/// is read as "--help".
CNamedCommand FindCommand(QStringList words);
