#pragma once
// All that a program wants from outside, but for its windows.

#include "fakes/FakeConnection.h"
#include "fakes/FakeDesktop.h"
#include "fakes/FakeMessageBoxes.h"
#include "fakes/FakeWindows.h"
#include "fakes/MemorySettings.h"
#include "fakes/RecordingTrace.h"
#include "shell/Program.h"

namespace nib::test {

struct Surroundings {
    /// Without a folder a program makes no recovery copies. `session`: the sessions of the folder.
    explicit Surroundings(const std::string& folder = {}, FakeSessionToken* session = nullptr)
        : data(folder.empty() ? Text() : FromUtf8(folder + "/data")), copies(folder + "/backups", 0600),
          token(session ? *session : ownToken)
    {
    }

    Text data;
    Journal journal;
    FakeConnection connection;
    FakeMessageBoxes boxes;
    FakeDialogs dialogs{journal};
    HeardEvents events{journal};
    MemoryClipboard clipboard;
    FakeFonts fonts;
    FakeClock clock;
    MemorySettings store;
    FileSaver copies;
    FakeSessionToken ownToken;
    FakeSessionToken& token;
    RecordingTrace trace;

    ProgramPorts Around(MainWindow& window, ViewFactory views)
    {
        return {connection, boxes, window, dialogs, views, events, fonts, clipboard,
                clock,      store, copies, token,   data,  &trace, clock};
    }
};

} // namespace nib::test
