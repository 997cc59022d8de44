#include "persistence/recovery/modAutoRecover.h"

#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"
#include "persistence/recovery/AutoSaveCopy.h"
#include "persistence/recovery/AutoSaveName.h"
#include "persistence/store/clsScanDirectory.h"
#include "persistence/store/modFileExist.h"
#include "persistence/store/modFileReadWrite.h"

#include <algorithm>

namespace nib {

namespace {

constexpr TextView kFolders[] = {u"/Orlin", u"/Nib", u"/AutoRecover"};
constexpr TextView kAllFiles = u"*.*";

std::vector<Text> NamesIn(FileTransfer& files, TextView folder, TextView pattern)
{
    std::vector<Text> names;
    clsScanDirectory scan(files);
    for (Text name = scan.Dir(Text(folder) + u"/" + Text(pattern)); !name.empty(); name = scan.Dir({}))
        names.push_back(name);
    return names;
}

} // namespace

// Folder and session

bool modAutoRecover::EnsureFolder(const Text& path, bool create)
{
    if (IsFolder(ports_.states, path)) return true;
    if (!create) return false;
    MakeFolder(ports_.files, path, true);
    return IsFolder(ports_.states, path);
}

bool modAutoRecover::FindAutoRecoverFolder(bool create)
{
    const Text& data = ports_.localData;
    if (data.empty()) return false;
    if (create) {
        for (size_t slash = data.find(u'/', 1); slash != Text::npos; slash = data.find(u'/', slash + 1))
            EnsureFolder(data.substr(0, slash), true);
    }
    if (!EnsureFolder(data, create)) return false;
    Text folder = data;
    for (TextView part : kFolders) {
        folder += part;
        if (!EnsureFolder(folder, create)) return false;
    }
    if (!EnsureSession(folder)) return false;
    AutoRecoverFolder_ = folder;
    return true;
}

/// A number under which files lie already would make them this session's.
bool modAutoRecover::EnsureSession(const Text& folder)
{
    if (session_ != 0) return true;
    std::vector<uint32_t> used;
    for (const Text& name : NamesIn(ports_.files, folder, kAllFiles))
        if (std::optional<uint32_t> session = SessionOfName(name)) used.push_back(*session);
    session_ =
        ports_.token.Take([&](uint32_t number) { return std::find(used.begin(), used.end(), number) != used.end(); });
    return session_ != 0;
}

// The pass

bool modAutoRecover::AutoSaveDocuments()
{
    if (!AutoRecover()) return false;
    const bool found = !AutoRecoverFolder_.empty() && IsFolder(ports_.states, AutoRecoverFolder_);
    if (!found && !FindAutoRecoverFolder(true)) return false;
    int32_t count = 0;
    for (const auto& document : ports_.documents.openDocuments.All()) {
        if (document->AutoSaveFlag() && OrDefault([&] { return SaveDocument(*document); }, false)) ++count;
    }
    return count > 0;
}

bool modAutoRecover::SaveDocument(mvDocument& document)
{
    if (document.AutoRecoverFile().empty()) document.SetAutoRecoverFile(NameFor(document));
    // Not by the document's own getter, which would bring a hidden window up.
    const Text text = NormalizeLineEnds(document.View()->txtText().GetText());
    return WriteAutoSaveCopy(ports_.files, PathOf(document.AutoRecoverFile()), document.ItemID(), text);
}

Text modAutoRecover::NameFor(const mvDocument& document)
{
    Text name;
    for (int32_t number = 1; number <= kLastAutoSaveNumber; ++number) {
        name = AutoSaveName(session_, number);
        if (!IsTaken(document, name)) break;
    }
    return name;
}

/// By another document, too, whose copy could not be written yet: the two would overwrite each other's later.
bool modAutoRecover::IsTaken(const mvDocument& document, TextView name)
{
    if (PathExists(ports_.states, PathOf(name))) return true;
    const auto all = ports_.documents.openDocuments.All();
    return std::any_of(all.begin(), all.end(),
                       [&](const auto& other) { return other.get() != &document && other->AutoRecoverFile() == name; });
}

// Guard and end

int32_t modAutoRecover::HoldAutoSaveGuard()
{
    if (!AutoRecover() || !AutoSaveDocuments()) return 0;
    guardHeld_ = true;
    return ++guardGeneration_;
}

void modAutoRecover::ReleaseAutoSaveGuard(int32_t generation)
{
    if (AutoRecover() && generation == guardGeneration_) guardHeld_ = false;
}

void modAutoRecover::EndAutoSaveSession()
{
    if (!guardHeld_) DeleteAutoSaveFiles(false);
}

void modAutoRecover::DeleteAutoSaveFiles(bool all)
{
    if (!FindAutoRecoverFolder(false)) return;
    const Text pattern = all ? Text(kAllFiles) : SessionDigits(session_) + u".*";
    for (const Text& name : NamesIn(ports_.files, AutoRecoverFolder_, pattern))
        KillFile(ports_.files, PathOf(name), true);
}

// What earlier sessions left

bool modAutoRecover::IsOrphan(TextView name)
{
    const std::optional<uint32_t> session = SessionOfName(name);
    return !session || !ports_.token.IsAlive(*session);
}

void modAutoRecover::CheckAutoRecover()
{
    if (!FindAutoRecoverFolder(false)) return;
    DynamicArray names;
    names.Parse({}, u"\r\n");
    for (const Text& name : NamesIn(ports_.files, AutoRecoverFolder_, kAllFiles))
        if (IsOrphan(name)) names.Append(name);
    if (names.Count() > 0 && ports_.showDialog) ports_.showDialog(AutoRecoverFolder_, names);
}

void modAutoRecover::AdoptAutoSaveFile(TextView name)
{
    for (int32_t number = 1; number <= kLastAutoSaveNumber; ++number) {
        const Text path = PathOf(AutoSaveName(session_, number));
        if (PathExists(ports_.states, path)) continue;
        ports_.files.RenameFile(PathOf(name), path);
        return;
    }
}

} // namespace nib
