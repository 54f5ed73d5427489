// The tables of commands of velmora-cli.
#pragma once

#include <span>

#include "app/VelmoraDoc.h"
#include "cli/Arguments.h"

/// Exit statuses.
enum EExitStatus : int { kExitDone = 0, kExitRefused = 1, kExitUsage = 2 };

/// What a command works with; the catalogue is open, the arguments have been checked.
struct CCommandContext {
    CVelmoraDoc& doc;
    const CArguments& arguments;
    QString volume;                               ///< its path
    ECatalogueKind kind = ECatalogueKind::Foods;  ///< of a catalogue command
};

/// What a command does with the volume.
enum class EAccess {
    Reads,   ///< never creates it
    Writes,  ///< the catalogue, or the open profile
    File,    ///< as a file: the catalogue is not open, and the document must not be used
};

// The order is that of the columns of the tables.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
struct CCommand {
    const char* group;  ///< "foods"
    /// "import"; optional on the line if it is the group's only command, and empty if the words of
    /// that may be anything.
    const char* name;
    const char* words;  ///< names of the words that are not options, "OLD NEW"
    std::span<const COption> options;
    EAccess access;
    const char* help;  ///< what it does, in one line
    /// Returns false, after a message, when it was refused or failed.
    bool (*run)(CCommandContext& context);
    /// The error in a combination of arguments that are valid one by one; empty when there is none.
    QString (*check)(const CArguments& arguments) = nullptr;
    ECatalogueKind kind = ECatalogueKind::Foods;  ///< of a catalogue command
};

/// One table per group of rules.
std::span<const CCommand> ProfileCommands();
std::span<const CCommand> CatalogueCommands();
std::span<const CCommand> CategoryCommands();
std::span<const CCommand> ShareCommands();
std::span<const CCommand> DietCommands();
std::span<const CCommand> WeightCommands();
std::span<const CCommand> ReportCommands();
std::span<const CCommand> ExerciseCommands();
std::span<const CCommand> SearchCommands();
std::span<const CCommand> UndoCommands();
std::span<const CCommand> BackupCommands();

/// All of them, in the order of help.
const std::vector<CCommand>& AllCommands();

/// The command that a command line names.
struct CNamedCommand {
    QString group;                      ///< empty when none is named
    const CCommand* command = nullptr;  ///< null when none of the group is named
    QStringList words;                  ///< the other words of the line
    QString error;                      ///< about an unknown command; empty when there is none

    /// The options of the command, or of all commands of the group.
    [[nodiscard]] std::vector<COption> Options() const;
};

/// Options may come before, between and after the words that name a command. "help" as the first
/// word is read as "--help".
CNamedCommand FindCommand(QStringList words);
