#include "persistence/recovery/modAutoRecover.h"

#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"
#include "persistence/store/TextFile.h"
#include "platform/posix/FileName.h"
#include "platform/posix/KeptCopies.h"

#include <algorithm>
#include <cerrno>

namespace nib {

namespace {

constexpr size_t kSessionDigits = 8;
constexpr size_t kNumberDigits = 3;
constexpr TextView kFolder = u"/Orlin/Nib/AutoRecover";
constexpr std::chrono::milliseconds kBetweenLooks{200};
/// Most saves are over by then, and no copy is needed.
constexpr std::chrono::milliseconds kWhileSaved{2000};
constexpr TextView kJournalFolder = u"/Orlin/Nib/Journal";

Text PadLeft(Text digits, size_t width)
{
    if (digits.size() < width) digits.insert(0, width - digits.size(), u'0');
    return digits;
}

int32_t DigitOf(char16_t c)
{
    if (c >= u'0' && c <= u'9') return c - u'0';
    const auto letter = static_cast<char16_t>(c & ~0x20);
    return letter >= u'A' && letter <= u'F' ? letter - u'A' + 10 : -1;
}

bool IsFolderName(TextView path)
{
    return IsFolder(ToFileName(path));
}

bool Exists(TextView path)
{
    return StampOf(ToFileName(path)).Exists();
}

/// Of the files that are not hidden, in order; none when the folder cannot be listed.
std::vector<Text> NamesIn(TextView folder, TextView prefix = {})
{
    std::vector<FolderEntry> entries;
    std::vector<Text> names;
    if (ListFolder(ToFileName(folder), entries) != 0) return names;
    std::sort(entries.begin(), entries.end(), [](auto& a, auto& b) { return a.name < b.name; });
    for (const FolderEntry& entry : entries) {
        const Text name = FromFileName(entry.name);
        if (!entry.isFolder && !name.starts_with(u'.') && name.starts_with(prefix)) names.push_back(name);
    }
    return names;
}

} // namespace

Text SessionDigits(uint32_t session)
{
    return PadLeft(Hex(static_cast<int32_t>(session)), kSessionDigits);
}

Text AutoSaveName(uint32_t session, int32_t number)
{
    return SessionDigits(session) + u"." + PadLeft(Decimal(number), kNumberDigits);
}

std::optional<uint32_t> SessionOfName(TextView name)
{
    uint64_t number = 0;
    for (char16_t c : name.substr(0, name.find(u'.'))) {
        const int32_t digit = DigitOf(c);
        if (digit < 0) break;
        number = number * 16 + static_cast<uint64_t>(digit);
        if (number > UINT32_MAX) return std::nullopt;
    }
    return static_cast<uint32_t>(number);
}

// Folder and session

bool modAutoRecover::FindAutoRecoverFolder(bool create)
{
    if (ports_.localData.empty()) return false;
    if (create) MakeFolders(ToFileName(Folder()));
    if (!IsFolderName(Folder()) || !EnsureSession()) return false;
    AutoRecoverFolder_ = Folder();
    return true;
}

Text modAutoRecover::Folder() const
{
    return ports_.localData + Text(kFolder);
}

std::string modAutoRecover::JournalFolder() const
{
    return ToFileName(ports_.localData + Text(kJournalFolder));
}

/// A number under which files lie already would make them this session's.
bool modAutoRecover::EnsureSession()
{
    if (session_ != 0) return true;
    std::vector<uint32_t> used;
    for (const Text& folder : {Folder(), FromFileName(JournalFolder())})
        for (const Text& name : NamesIn(folder))
            if (std::optional<uint32_t> session = SessionOfName(name)) used.push_back(*session);
    session_ =
        ports_.token.Take([&](uint32_t number) { return std::find(used.begin(), used.end(), number) != used.end(); });
    return session_ != 0;
}

// The pass

bool modAutoRecover::AutoSaveDocuments()
{
    if (!AutoRecover()) return false;
    const bool found = !AutoRecoverFolder_.empty() && IsFolderName(AutoRecoverFolder_);
    if (!found && !FindAutoRecoverFolder(true)) {
        if (!ports_.localData.empty()) Tell(Folder() + u" cannot be made.");
        return false;
    }
    Settle();
    int32_t count = 0;
    Text fault;
    for (const auto& document : ports_.documents.openDocuments.All()) {
        if (!document->AutoSaveFlag()) continue;
        if (auto failure = FailureOf([&] { SaveDocument(*document); }))
            fault = failure->description;
        else
            ++count;
    }
    if (!settling_ || !fault.empty()) Tell(fault); // else once it is known
    return count > 0;
}

void modAutoRecover::Tell(TextView copyFault)
{
    copyFault_ = copyFault;
    if (ports_.fault) ports_.fault(copyFault_.empty() ? journalFault_ : copyFault_);
}

void modAutoRecover::SaveDocument(mvDocument& document)
{
    if (document.AutoRecoverFile().empty()) document.SetAutoRecoverFile(NameFor(document));
    if (IsCopied(document)) return;
    ForgetCopy(document);
    SourceDocument& source = document.View()->txtText().Document();
    auto watch = std::make_unique<CopyWatch>();
    watch->document = document.weak_from_this();
    watch->path = PathOf(document.AutoRecoverFile());
    watch->itemId = document.ItemID();
    watch->order = Writer().Write(watch->path, watch->itemId, source.Snapshot(),
                                  document.IsBeingSaved() ? kWhileSaved : std::chrono::milliseconds());
    source.AddListener(watch.get());
    copies_[document.DocumentID()] = std::move(watch);
    if (journals_) journals_->CopyMade(document);
    if (!settling_) settling_ = ports_.timers.Every(kBetweenLooks, [this] { Settle(); });
}

CopyWriter& modAutoRecover::Writer()
{
    return writer_ ? *writer_ : writer_.emplace(ports_.saver);
}

void modAutoRecover::Settle()
{
    if (!writer_) return;
    bool any = false;
    Text fault;
    for (const CopyWriter::Outcome& outcome : writer_->TakeOutcomes()) {
        const auto found = std::find_if(copies_.begin(), copies_.end(),
                                        [&](const auto& copy) { return copy.second->order == outcome.number; });
        if (found == copies_.end()) continue;
        any = true;
        found->second->stamp = outcome.stamp; // a file that is not there is no copy
        if (!outcome.fault.empty()) fault = outcome.fault;
    }
    const bool waits =
        std::any_of(copies_.begin(), copies_.end(), [](const auto& copy) { return !copy.second->stamp; });
    if (!waits) settling_.reset();
    if (any) Tell(fault);
}

bool modAutoRecover::IsCopied(mvDocument& document)
{
    const auto found = copies_.find(document.DocumentID());
    if (found == copies_.end()) return false;
    const CopyWatch& watch = *found->second;
    if (watch.changed || watch.itemId != document.ItemID() || watch.path != PathOf(document.AutoRecoverFile()))
        return false;
    return !watch.stamp || (watch.stamp->Exists() && *watch.stamp == StampOf(ToFileName(watch.path)));
}

void modAutoRecover::ForgetCopy(mvDocument& document)
{
    const auto found = copies_.find(document.DocumentID());
    if (found == copies_.end()) return;
    if (document.View()) document.View()->txtText().Document().RemoveListener(found->second.get());
    copies_.erase(found);
}

modAutoRecover::~modAutoRecover()
{
    while (!copies_.empty()) {
        // Its text is gone with its window.
        if (const auto document = copies_.begin()->second->document.lock())
            ForgetCopy(*document);
        else
            copies_.erase(copies_.begin());
    }
}

Text modAutoRecover::NameFor(const mvDocument& document)
{
    Text name;
    // A number is not given twice: the copy that had it may be gone, as its document was saved.
    int32_t number = lastNumber_ < kLastAutoSaveNumber ? lastNumber_ + 1 : 1;
    for (; number <= kLastAutoSaveNumber; ++number) {
        name = AutoSaveName(session_, number);
        if (!IsTaken(document, name)) break;
    }
    lastNumber_ = std::min(number, kLastAutoSaveNumber);
    return name;
}

/// By another document, too, whose copy could not be written yet: the two would overwrite each other's later.
bool modAutoRecover::IsTaken(const mvDocument& document, TextView name)
{
    if (Exists(PathOf(name))) return true;
    const auto all = ports_.documents.openDocuments.All();
    return std::any_of(all.begin(), all.end(),
                       [&](const auto& other) { return other.get() != &document && other->AutoRecoverFile() == name; });
}

void modAutoRecover::RemoveCopy(mvDocument& document)
{
    if (!document.AutoRecoverFile().empty() && !AutoRecoverFolder_.empty())
        Writer().Remove(PathOf(document.AutoRecoverFile()));
}

// Journals

Journals* modAutoRecover::JournalsOf()
{
    if (ports_.localData.empty() || !EnsureSession()) return nullptr;
    if (!journals_)
        journals_.emplace(ports_.timers, JournalFolder(), ToUtf8(SessionDigits(session_)), [this](TextView fault) {
            journalFault_ = fault;
            Tell(copyFault_);
        });
    return &*journals_;
}

void modAutoRecover::DocumentChanged(mvDocument& document)
{
    if (!document.IsDirty()) {
        RemoveCopy(document);
        ForgetCopy(document);
    }
    if (!AutoRecover() || (!journals_ && !document.IsDirty())) return;
    if (Journals* journals = JournalsOf()) journals->DocumentChanged(document);
}

void modAutoRecover::FollowSetting()
{
    if (!AutoRecover()) {
        if (journals_) journals_->RemoveAll();
        journals_.reset();
    } else if (!journals_) {
        for (const auto& document : ports_.documents.openDocuments.All())
            if (document->IsDirty()) DocumentChanged(*document);
    }
}

void modAutoRecover::Flush()
{
    if (journals_) journals_->Flush();
    if (writer_) writer_->Flush();
    Settle();
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
    if (guardHeld_) {
        Flush();
        return journals_.reset();
    }
    settling_.reset();
    if (writer_) writer_->Cancel();
    DeleteAutoSaveFiles(false);
    if (journals_) journals_->RemoveAll();
    if (session_ == 0) return;
    for (const Text& name : NamesIn(FromFileName(JournalFolder()), SessionDigits(session_) + u".")) KillJournal(name);
}

void modAutoRecover::DeleteAutoSaveFiles(bool all)
{
    if (!FindAutoRecoverFolder(false)) return;
    for (const Text& name : NamesIn(AutoRecoverFolder_, all ? Text() : SessionDigits(session_) + u"."))
        KillFile(PathOf(name), true);
}

// What earlier sessions left

bool modAutoRecover::IsOrphan(TextView name)
{
    const std::optional<uint32_t> session = SessionOfName(name);
    return !session || !ports_.token.IsAlive(*session);
}

void modAutoRecover::CheckAutoRecover()
{
    ClearLeftovers();
    const bool others = !OrphanJournals().empty() || !UnsettledCopies(ports_.saver.BackupFolder()).empty();
    if (!FindAutoRecoverFolder(others)) return;
    DynamicArray names;
    names.Parse({}, u"\r\n");
    for (const Text& name : NamesIn(AutoRecoverFolder_))
        if (IsOrphan(name)) names.Append(name);
    if ((others || names.Count() > 0) && ports_.showDialog) ports_.showDialog(AutoRecoverFolder_, names);
}

void modAutoRecover::KillJournal(TextView name)
{
    KillFile(FromFileName(JournalFolder()).append(u"/").append(name), true);
}

/// What was not complete yet when its session ended.
void modAutoRecover::ClearLeftovers()
{
    nib::ClearLeftovers(ports_.saver.BackupFolder());
    for (const Text& name : NamesIn(FromFileName(JournalFolder())))
        if (name.ends_with(u'~') && IsOrphan(name)) KillJournal(name);
}

std::vector<std::string> modAutoRecover::OrphanJournals()
{
    std::vector<std::string> names;
    if (ports_.localData.empty()) return names;
    for (const Text& name : NamesIn(FromFileName(JournalFolder())))
        if (!name.ends_with(u'~') && IsOrphan(name)) names.push_back(ToFileName(name));
    return names;
}

Text modAutoRecover::AdoptAutoSaveFile(TextView name)
{
    if (writer_) writer_->Flush(); // a copy that comes later would have the name that is free now
    for (int32_t number = 1; number <= kLastAutoSaveNumber; ++number) {
        const Text adopted = AutoSaveName(session_, number);
        if (Exists(PathOf(adopted))) continue;
        const int error = RenameNew(ToFileName(PathOf(name)), ToFileName(PathOf(adopted)));
        return error == 0 || error == ENOENT ? adopted : Text();
    }
    return {};
}

std::string modAutoRecover::AdoptJournal(const std::string& name)
{
    const std::string folder = JournalFolder() + "/";
    // By its old name, which no document of this session has.
    const std::string adopted = ToUtf8(SessionDigits(session_)) + "." + name;
    const int error = RenameNew(folder + name, folder + adopted);
    return error == 0 || error == ENOENT ? adopted : std::string();
}

void modAutoRecover::HandOver(const AdoptedFiles& files, mvDocument& document)
{
    if (!files.copy.empty()) document.SetAutoRecoverFile(files.copy);
    DocumentChanged(document);
    if (!document.IsDirty()) {
        if (!files.journal.empty()) KillJournal(FromFileName(files.journal));
    } else if (journals_) {
        journals_->CopyMade(document);
        if (!files.journal.empty()) journals_->Supersede(document, files.journal);
    }
}

} // namespace nib
