#pragma once
// Every command of the program is a row of one table: what it does, when it can act, when it shows as checked. Menus,
// keys and callers from outside all go through RunCommand.

#include "base/Text.h"

#include <memory>
#include <optional>
#include <span>

namespace nib {

class mvDocument;
class Program;

struct CommandContext {
    Program& program;
    std::shared_ptr<mvDocument> document; ///< the active one; may be null
    /// The check mark of the tool that was clicked, as it is after the click; without one a check mark is turned over.
    std::optional<bool> checked = {};
};

struct CommandState {
    bool enabled = false;
    bool checked = false;
};

struct CommandRow {
    const char16_t* key;
    void (*run)(CommandContext&);
    bool (*enabled)(const CommandContext&);
    bool (*checked)(const CommandContext&) = nullptr; ///< null: shows no check mark
    bool typing = false;                              ///< goes on in the text while this is waited for
};

// All commands with a key of their own.
std::span<const CommandRow> MainCommands();
std::span<const CommandRow> StorageCommands();
std::span<const CommandRow> WindowCommands();

/// Runs the command `key` (case matters); false when there is none, it is disabled, or it failed. Failures are logged
/// and reported to the user. Also takes entries of the window list and of the recent files, and tools that automation
/// clients added.
bool RunCommand(TextView key, CommandContext& context);
/// Looked up afresh each time; an unknown key is disabled.
CommandState StateOfCommand(TextView key, const CommandContext& context);
bool IsCommand(TextView key);
/// A command, or the key of an entry in a list of the program: no client's command may take it over.
bool IsReservedKey(TextView key);

/// Enabled and checked states of all tools of menus and tool bar, afresh.
void UpdateToolBar(const CommandContext& context);

} // namespace nib
