#include "persistence/recovery/DocumentSession.h"

#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"
#include "persistence/store/Profile.h"
#include "platform/posix/FileName.h"

#include <algorithm>
#include <charconv>

#include <unistd.h>

namespace nib {

namespace {

constexpr std::chrono::seconds kBetweenLooks{5};
constexpr TextView kLastSession = u"last";
/// No start opens what is in a file whose name begins with a dot.
constexpr TextView kClosedSession = u".closed";
constexpr size_t kLargestFile = size_t{1} << 22;
constexpr std::string_view kSection = "[document]\n";

using Numbers = std::vector<int32_t>;

/// Numbers that are counted from 0 here and from 1 there.
std::string Shown(const Numbers& numbers)
{
    std::string text;
    for (int32_t number : numbers) text += (text.empty() ? "" : " ") + std::to_string(int64_t{number} + 1);
    return text;
}

Numbers ReadNumbers(TextView text)
{
    Numbers numbers;
    const std::string bytes = ToUtf8(text);
    const char* at = bytes.data();
    const char* end = at + bytes.size();
    while (at < end) {
        int32_t number = 0;
        const auto [next, error] = std::from_chars(at, end, number);
        if (error == std::errc() && number > 0) numbers.push_back(number - 1);
        at = std::max(next, at + 1);
    }
    return numbers;
}

int32_t NumberAt(const Numbers& numbers, size_t at)
{
    return at < numbers.size() ? numbers[at] : 0;
}

void Take(DocumentState& state, TextView key, TextView value)
{
    const Numbers numbers = ReadNumbers(value);
    if (key == u"path") state.path = value;
    if (key == u"readonly") state.readOnly = true;
    if (key == u"active") state.active = true;
    if (key == u"caret") state.caret = {NumberAt(numbers, 1), NumberAt(numbers, 0)};
    if (key == u"first") state.firstLine = NumberAt(numbers, 0);
    if (key == u"collapsed") state.collapsed = numbers;
    if (key == u"bookmarks") state.bookmarks = numbers;
    if (key == u"window") state.window = NumberAt(numbers, 0);
    if (key == u"placement") state.placement = value;
}

} // namespace

std::string WriteStates(const std::vector<DocumentState>& states)
{
    std::string out;
    for (const DocumentState& state : states) {
        out += kSection;
        const auto put = [&out](std::string_view key, const std::string& value) {
            if (!value.empty()) out.append(key).append("=").append(value).append("\n");
        };
        put("path", ToFileName(state.path));
        put("readonly", state.readOnly ? "yes" : "");
        put("active", state.active ? "yes" : "");
        put("caret", Shown({state.caret.line, state.caret.col}));
        put("first", Shown({state.firstLine}));
        put("collapsed", Shown(state.collapsed));
        put("bookmarks", Shown(state.bookmarks));
        put("window", Shown({state.window}));
        put("placement", ToUtf8(state.placement));
    }
    return out;
}

std::vector<DocumentState> ReadStates(std::string_view bytes)
{
    std::vector<DocumentState> states;
    const Text text = FromFileName(bytes);
    for (const Text& whole : Split(text, u'\n')) {
        const IniLine line(whole, u"#;", true);
        if (line.kind == IniLine::Kind::Section) states.emplace_back();
        if (line.kind == IniLine::Kind::Key && !states.empty()) Take(states.back(), line.name, line.value);
    }
    std::erase_if(states, [](const DocumentState& state) { return state.path.empty(); });
    return states;
}

DocumentState StateOf(mvDocument& document)
{
    SourceView& view = document.View()->txtText();
    DocumentState state;
    state.path = document.Path();
    state.readOnly = document.ReadOnly();
    state.active = document.View()->IsActive();
    state.caret = view.Caret();
    int32_t column = 0;
    view.GetFirstVisible(state.firstLine, column);
    state.collapsed = view.Document().CollapsedLines();
    state.bookmarks = view.Document().BookmarkedLines();
    state.window = document.View()->WindowState();
    state.placement = document.View()->Placement();
    return state;
}

void ApplyState(mvDocument& document, const DocumentState& state)
{
    clsDocView& window = document.EnsureView();
    SourceDocument& text = window.txtText().Document();
    for (int32_t line : state.bookmarks)
        if (line < text.LineCount() && !text.HasBookmark(line)) text.ToggleBookmark(line);
    // Inner blocks first: an outer one hides them.
    for (auto line = state.collapsed.rbegin(); line != state.collapsed.rend(); ++line)
        if (*line < text.LineCount()) text.CollapseBlock(*line);
    if (!state.placement.empty()) window.SetPlacement(state.placement);
    if (window.WindowState() != state.window) window.SetWindowState(state.window);
    window.txtText().SetCaret(text.Clamp(state.caret));
    window.txtText().SetFirstVisible(std::min(state.firstLine, text.LineCount() - 1), 0);
}

std::string DocumentSession::PathOf(TextView name) const
{
    return ports_.folder + "/" + ToFileName(name);
}

std::vector<DocumentState> DocumentSession::Present()
{
    std::vector<DocumentState> states;
    for (const auto& document : ports_.documents.openDocuments.All())
        if (document->View() && !document->Path().empty() && !document->NewItem()) states.push_back(StateOf(*document));
    // A later start may reach them.
    for (const DocumentState& state : unreached_) {
        const auto same = [&state](const DocumentState& open) { return open.path == state.path; };
        if (std::none_of(states.begin(), states.end(), same)) states.push_back(state);
    }
    return states;
}

void DocumentSession::Start()
{
    if (!ports_.folder.empty()) timer_ = ports_.timers.Every(kBetweenLooks, [this] { Save(); });
}

void DocumentSession::Save()
{
    if (ports_.folder.empty()) return;
    std::vector<DocumentState> states;
    if (FailureOf([&] { states = Present(); }) || states == written_) return;
    Write(ports_.name(), states);
    written_ = std::move(states);
}

/// A file that is lost costs the user less than a word about it.
void DocumentSession::Write(TextView name, const std::vector<DocumentState>& states)
{
    if (name.empty()) return;
    if (states.empty()) {
        unlink(PathOf(name).c_str());
        return;
    }
    IgnoringErrors([&] {
        if (MakeFolders(ports_.folder) == 0) ports_.saver.Save(PathOf(name), WriteStates(states));
    });
}

void DocumentSession::End(bool reopen)
{
    timer_.reset();
    if (ports_.folder.empty()) return;
    if (remembered_.empty()) IgnoringErrors([&] { Remember(); });
    Write(ports_.name(), {});
    Write(kLastSession, reopen ? remembered_ : std::vector<DocumentState>());
    if (!remembered_.empty()) Write(kClosedSession, remembered_);
}

std::vector<DocumentState> DocumentSession::Last() const
{
    if (ports_.folder.empty()) return {};
    const auto read = [&] { return ReadStates(ReadWholeFile(PathOf(kClosedSession), kLargestFile).Bytes()); };
    return OrDefault(read, std::vector<DocumentState>());
}

std::vector<Text> DocumentSession::OpenLast()
{
    std::set<Text> silent;
    return ReopenAll(Last(), silent);
}

std::vector<Text> DocumentSession::Restore(bool last)
{
    std::vector<Text> failed;
    std::set<Text> silent; // hosts
    if (ports_.folder.empty()) return failed;
    std::vector<FolderEntry> entries;
    ListFolder(ports_.folder, entries);
    std::sort(entries.begin(), entries.end(), [](auto& a, auto& b) { return a.name < b.name; });
    for (const FolderEntry& entry : entries) {
        const Text name = FromFileName(entry.name);
        const bool wanted = name == kLastSession ? last : !ports_.isAlive(name);
        if (entry.isFolder || name.starts_with(u'.') || !wanted) continue;
        const std::string path = PathOf(name);
        std::vector<DocumentState> states;
        IgnoringErrors([&] { states = ReadStates(ReadWholeFile(path, kLargestFile).Bytes()); });
        // Not again, should one of them be what the program cannot bear.
        if (name != kLastSession) unlink(path.c_str());
        for (Text& each : ReopenAll(states, silent)) failed.push_back(std::move(each));
    }
    return failed;
}

std::vector<Text> DocumentSession::ReopenAll(const std::vector<DocumentState>& states, std::set<Text>& silent)
{
    std::vector<Text> failed;
    for (const DocumentState& state : states)
        if (!Reopen(state, silent)) failed.push_back(PlaceName(state.path));
    return failed;
}

/// A host that cannot be reached, or that the user keeps the password from, is not tried for each of its items.
bool DocumentSession::Reopen(const DocumentState& state, std::set<Text>& silent)
{
    const Text host = OrDefault([&] { return ToLower(ParsePath(state.path).serverName); }, Text());
    bool restored = false;
    if (!silent.contains(host)) {
        const auto failure = FailureOf([&] { restored = OpenAgain(state); });
        if (failure && failure->number == error_number::kDeviceUnavailable) silent.insert(host);
    }
    if (silent.contains(host)) unreached_.push_back(state);
    return restored;
}

bool DocumentSession::OpenAgain(const DocumentState& state)
{
    DocumentServices& services = ports_.documents;
    auto item = services.connection.OpenServerForPath(state.path, true, false);
    std::shared_ptr<mvDocument> document = services.openDocuments.On(*item);
    if (!document) {
        const bool lock = !state.readOnly && services.settings.RecordLocking;
        if (!state.readOnly) item = services.connection.OpenServerForPath(state.path, false, lock);
        if (!lock) item->LockHolder(); // what else asks the host tells the user in a box when it fails
        if (!item->IsItem() || !item->Exists()) return false;
        document = NewDocumentObject(services);
        if (!document->ItemOpen(item, state.readOnly || item->ReadOnly())) {
            document->FileClose(false);
            return false;
        }
    }
    ApplyState(*document, state);
    if (state.active) front_ = document;
    return true;
}

void DocumentSession::ActivateRestored()
{
    if (const auto document = front_.lock()) IgnoringErrors([&] { document->EnsureView().Activate(); });
    front_.reset();
}

} // namespace nib
