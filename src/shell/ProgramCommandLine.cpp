// What the command line asks for; part of Program.

#include "shell/Program.h"

namespace nib {

namespace {

/// The part of a place that a switch names; null for what is no such switch.
Text Location::*PartOf(CommandLineAction::Kind kind)
{
    using Kind = CommandLineAction::Kind;
    switch (kind) {
    case Kind::Provider: return &Location::Provider;
    case Kind::Server: return &Location::ServerName;
    case Kind::Database: return &Location::Database;
    case Kind::Folder: return &Location::Folder;
    default: return nullptr;
    }
}

bool IsProvider(TextView type)
{
    return type == kHostProvider || type == kFileProvider;
}

Text UnknownType(const Text& item, const Text& type)
{
    return u"Unable to open item " + item + u" because \"" + type +
           u"\" is no type of connection. The types are mvdb and file.";
}

} // namespace

void Program::ParseCmdLine(const CommandLine& line)
{
    log_.Write(u"parse begin", trace::kCommandLine);
    log_.Write([&] { return u"command = " + line.text; }, trace::kCommandLine);
    Safely(u"modMain.ParseCmdLine", [&] {
        OpenFromCommandLine(line);
        log_.Write(u"parse end", trace::kCommandLine);
    });
}

void Program::OpenFromCommandLine(const CommandLine& line)
{
    using Kind = CommandLineAction::Kind;
    bool readOnly = false;
    bool hostGiven = false;
    std::optional<Error> failure; // of the host's configuration; told once the rest is open
    Location given = place_.host; // what was opened meanwhile changes none of it
    for (const CommandLineAction& action : line.actions) {
        if (Text Location::*part = PartOf(action.kind)) {
            given.*part = part == &Location::Provider ? ToLower(action.value) : action.value;
            if (IsProvider(given.Provider)) place_.GoTo(given);
        }
        switch (action.kind) {
        case Kind::Server: hostGiven = true; break;
        case Kind::ReadOnly: readOnly = true; break;
        case Kind::OpenItem:
            if (!IsProvider(given.Provider)) {
                ShowMessage(UnknownType(action.value, given.Provider), message_box::kWarning);
                break;
            }
            if (!failure) failure = FailureOf([&] { LoadHostConfiguration(); });
            if (failure) break;
            OpenPath(ComposeHostPath({given.Provider, given.ServerName, given.Database, given.Folder, action.value}),
                     readOnly);
            ports_.mainWindow.ProcessMessages();
            break;
        case Kind::OpenFile:
            OpenPath(ports_.connection.ComposeFilePath(action.value), readOnly);
            ports_.mainWindow.ProcessMessages();
            break;
        default: break;
        }
    }
    if (auto first = openDocuments_.Item(1)) first->Activate();
    TellUnknown(line);
    if (failure) throw *failure;
    if (hostGiven && IsProvider(given.Provider)) LearnAccount(given);
}

/// Also for those who did not start the program in a terminal.
void Program::TellUnknown(const CommandLine& line)
{
    Text words;
    for (const Text& word : line.unknown) words += u" " + word;
    if (!words.empty()) ports_.mainWindow.SetStatusText(1, u"Unknown on the command line:" + words);
}

void Program::LearnAccount(const Location& given)
{
    Text path = ports_.connection.ComposeHostPath({given.Provider, given.ServerName, {}, {}, {}});
    auto item = ports_.connection.OpenServerForPath(path, true, false);
    mvSession* session = item->Session();
    Text name = OrDefault([&] { return session ? session->AccountName() : Text(); }, Text());
    for (Location* place : {&place_.host, &place_.now})
        if (place->Database.empty() && place->Provider != kFileProvider) place->Database = name;
    LoadHostConfiguration();
}

} // namespace nib
