#pragma once
// What commands want of the program's other rooms. Any port may be missing: its commands are then disabled.

#include "base/Text.h"

namespace nib {

class mvDocument;
class ResultsWindow;

/// The frame's child windows.
class ChildWindows {
public:
    virtual ~ChildWindows() = default;
    /// 0 cascade, 1 tile horizontally, 2 tile vertically.
    virtual void Arrange(int32_t mode) = 0;
};

class SearchForms {
public:
    virtual ~SearchForms() = default;
    virtual void Find() = 0;
    virtual void FindNext() = 0;
    virtual void Replace() = 0;
};

class Dialogs {
public:
    virtual ~Dialogs() = default;
    virtual void Properties(mvDocument& document) = 0;
    /// Pages are numbered from 1.
    virtual void Settings(int32_t page) = 0;
    virtual void About() = 0;
    /// False when the help could not be opened.
    virtual bool HelpTopics() = 0;
    /// Opens with `target`, which takes what was gone to; false when cancelled.
    virtual bool Goto(Text& target) = 0;
};

/// Operations on the selected lines, each one step of undo.
class BlockEdits {
public:
    virtual ~BlockEdits() = default;
    virtual void IndentBlock(mvDocument& document, bool indent) = 0;
    virtual void CommentBlock(mvDocument& document, bool comment) = 0;
    virtual void ToggleCase(mvDocument& document) = 0;
    /// The whole text.
    virtual void Format(mvDocument& document) = 0;
};

class Compiler {
public:
    virtual ~Compiler() = default;
    /// The document has a host server, is no local file, and the server says that it can. Asked often: must be cheap.
    virtual bool CanCompile(const mvDocument& document) const = 0;
    virtual void Compile(mvDocument& document) = 0;
};

class History {
public:
    virtual ~History() = default;
    virtual bool CanBack() const = 0;
    virtual bool CanForward() const = 0;
    virtual void Back(mvDocument& document) = 0;
    virtual void Forward(mvDocument& document) = 0;
};

class DocumentPrinter {
public:
    virtual ~DocumentPrinter() = default;
    virtual void PrintText(mvDocument& document) = 0;
};

/// Commands that automation clients added.
class ExtendedCommands {
public:
    virtual ~ExtendedCommands() = default;
    /// The command's name behind the tool key; empty when there is none.
    virtual Text Look(TextView key) const = 0;
    /// Tells the client that the user picked it.
    virtual void Raise(mvDocument& document, TextView name) = 0;
};

/// None owned; each outlives the commands.
struct CommandPorts {
    ChildWindows* windows = nullptr;
    SearchForms* search = nullptr;
    ResultsWindow* results = nullptr;
    Dialogs* dialogs = nullptr;
    BlockEdits* edits = nullptr;
    Compiler* compiler = nullptr;
    History* history = nullptr;
    DocumentPrinter* printer = nullptr;
    ExtendedCommands* extended = nullptr;
};

} // namespace nib
