#pragma once
// Every command of the program is a row here: what it does, when it can act, when it shows as checked. Menus, keys and
// callers from outside all go through RunCommand.

#include "base/Text.h"

#include <functional>
#include <memory>

namespace nib {

class mvDocument;
class Program;

/// What commands need of the frame's child windows.
class ChildWindows {
public:
    virtual ~ChildWindows() = default;
    /// 0 cascade, 1 tile horizontally, 2 tile vertically.
    virtual void Arrange(int32_t mode) = 0;
    virtual void ToggleMaximized() = 0;
    virtual bool ActiveMaximized() const = 0;
};

struct CommandContext {
    Program& program;
    ChildWindows& windows;
    std::shared_ptr<mvDocument> document; ///< the active one; may be null
};

struct CommandState {
    bool enabled = false;
    bool checked = false;
};

/// Runs the command `key` (case matters); false when there is none. Failures are logged and reported to the user.
bool RunCommand(TextView key, CommandContext& context);
/// Looked up afresh each time; an unknown key is disabled.
CommandState StateOfCommand(TextView key, const CommandContext& context);
bool IsCommand(TextView key);
bool IsCheckable(TextView key);

} // namespace nib
