#pragma once
// What the arguments of a start ask for.

#include "base/Text.h"

#include <functional>
#include <span>
#include <vector>

namespace nib {

struct CommandLineAction {
    enum class Kind { Provider, Server, Database, Folder, OpenItem, ReadOnly, OpenFile };
    Kind kind;
    Text value;

    friend bool operator==(const CommandLineAction&, const CommandLineAction&) = default;
};

struct CommandLine {
    Text text; ///< for reading alone
    std::vector<CommandLineAction> actions;
    std::vector<Text> unknown; ///< words that look like switches and are none
};

/// A word that begins with "/" or "-" and is no switch is a file where one is there, or where it holds a further "/".
/// `exists` answers whether there is one.
CommandLine ParseArguments(std::span<const Text> arguments, const std::function<bool(TextView)>& exists);

/// Answers --help and --version on the terminal, before any window system is needed; true when there was such a
/// request.
bool AnswersOnTerminal(std::span<const Text> arguments);

} // namespace nib
