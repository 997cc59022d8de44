#include "shell/StartPage.h"

#include "shell/Commands.h"
#include "shell/Program.h"
#include "shell/menus/MenuTable.h"

#include <algorithm>

namespace nib {

namespace {

using Kind = StartRow::Kind;

constexpr int32_t kMostRecent = 10;
constexpr size_t kMostAccounts = 8;
constexpr TextView kSample = u"DEMO";
constexpr TextView kSampleFile = u"BP";
constexpr TextView kNone = u"*";

struct Step {
    TextView caption;
    TextView commands[2]; ///< whose keys stand beside it
    TextView page;
};

constexpr Step kSteps[] = {
    {u"Open a program, change it, save it", {u"Open", u"Save"}, u"files.html"},
    {u"See what is wrong while you type, then compile", {u"NextProblem", u"Compile"}, u"programs.html"},
    {u"Find a name in all programs of an account", {u"FindInAccount"}, u"search.html"},
    {u"The first hour: a guide", {}, u"guide.html"},
};

Text KeyOf(TextView command)
{
    for (const MenuToolRow& row : kMainMenu)
        if (row.key == command) return row.shortcut;
    return {};
}

/// For the eye; empty parts are left out.
Text Joined(const std::vector<Text>& parts, TextView between)
{
    Text joined;
    for (const Text& part : parts) {
        if (!part.empty() && !joined.empty()) joined += between;
        joined += part;
    }
    return joined;
}

StartRow RecentRow(const Text& entry)
{
    const auto read = [&] {
        const ItemPlace place = ParsePath(entry);
        if (place.provider == kFileProvider) {
            const size_t name = place.itemId.rfind(u'/') + 1;
            return StartRow{Kind::Recent, place.itemId.substr(name),
                            place.itemId.substr(0, std::max<size_t>(name, 2) - 1), entry};
        }
        const Text account = place.database == kNone ? Text() : place.database;
        const Text host = place.serverName == kNone ? Text() : place.serverName;
        return StartRow{Kind::Recent, Joined({place.folder, place.itemId}, u" "), Joined({account, host}, u" on "),
                        entry};
    };
    return OrDefault(read, StartRow{Kind::Recent, entry, {}, entry});
}

Text PathBelow(const KnownHost& host, TextView account, TextView file = {})
{
    ItemPlace place = ParsePath(host.path);
    place.database = account;
    place.folder = file;
    return ComposeHostPath(place);
}

} // namespace

StartRows StartPage::Rows() const
{
    StartRows rows;
    rows.begin.push_back({Kind::Command, u"Open an item or a file", KeyOf(u"Open"), u"Open"});
    rows.begin.push_back({Kind::Command, u"New document", KeyOf(u"New"), u"New"});
    std::vector<Text> last;
    for (const DocumentState& state : program_.Session().Last()) last.push_back(PlaceName(state.path));
    if (!last.empty()) rows.begin.push_back({Kind::LastSession, u"Open the last session", Joined(last, u", "), {}});

    for (const KnownHost& host : program_.Connection().Hosts()) {
        rows.places.push_back({Kind::Place, host.name, {}, host.path});
        for (size_t i = 0; i < host.accounts.size(); ++i) {
            const Text& account = host.accounts[i];
            if (i < kMostAccounts) rows.places.push_back({Kind::Place, account, host.name, PathBelow(host, account)});
            if (account == kSample)
                rows.begin.push_back(
                    {Kind::Sample, u"Open DEMO", u"the sample account", PathBelow(host, kSample, kSampleFile)});
        }
    }
    const clsRecentList& recent = program_.RecentFiles();
    for (int32_t i = 1; i <= std::min(recent.ListCount(), kMostRecent); ++i)
        rows.recent.push_back(RecentRow(recent.ListItem(i)));
    for (const Step& step : kSteps) {
        const Text keys = Joined({KeyOf(step.commands[0]), KeyOf(step.commands[1])}, u", ");
        rows.steps.push_back({Kind::Help, Text(step.caption), keys, Text(step.page)});
    }
    return rows;
}

void StartPage::Run(const StartRow& row)
{
    switch (row.kind) {
    case Kind::Command: {
        CommandContext context{program_, nullptr};
        RunCommand(row.target, context);
        break;
    }
    case Kind::Sample:
    case Kind::Place: program_.Files().FileOpenFrom(row.target); break;
    case Kind::LastSession: program_.Safely(u"StartPage.OpenLastSession", [&] { OpenLastSession(); }); break;
    case Kind::Recent: OpenRecent(row.target); break;
    case Kind::Help: program_.Forms().ShowHelp(row.target); break;
    }
}

void StartPage::OpenRecent(TextView entry)
{
    const clsRecentList& recent = program_.RecentFiles();
    for (int32_t i = 1; i <= recent.ListCount(); ++i)
        if (recent.ListItem(i) == entry) return program_.Files().FileOpenRecent(i);
}

void StartPage::OpenLastSession()
{
    WaitCursor wait(program_.Window());
    const std::vector<Text> failed = program_.Session().OpenLast();
    program_.Session().ActivateRestored();
    if (!failed.empty()) program_.Window().SetStatusText(1, u"Not opened again: " + Joined(failed, u", "));
}

} // namespace nib
