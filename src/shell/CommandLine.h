#pragma once
// The program's command line as text, and what it asks for.

#include "base/Text.h"

#include <vector>

namespace nib {

struct CommandLineAction {
    enum class Kind { Provider, Server, Database, Folder, OpenItem, ReadOnly, OpenFile };
    Kind kind;
    Text value;

    friend bool operator==(const CommandLineAction&, const CommandLineAction&) = default;
};

/// Fields are separated by single blanks; unknown switches are left out.
std::vector<CommandLineAction> ParseCommandLine(TextView line);

/// One line whose parsing gives the arguments back; an argument that holds blanks is quoted, a switch behind its "=".
Text RebuildCommandLine(const std::vector<Text>& arguments);

} // namespace nib
