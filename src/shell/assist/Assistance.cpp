#include "shell/assist/Assistance.h"

#include "documents/mvDocument.h"
#include "language/Dialects.h"
#include "language/account/ProgramShape.h"

#include <algorithm>

namespace nib {

namespace {

using std::chrono::milliseconds;

/// A change in one program is seen in the others that much later.
constexpr milliseconds kOthersLater{400};
/// Nobody writes such a program; what is that long is data.
constexpr int32_t kMostLines = 300'000;

/// Enough to tell a program by; it may begin with a page of remarks.
constexpr int32_t kLinesLookedAt = 400;
constexpr size_t kUnitsLookedAt = 40'000;
/// More of them are of no use to anybody.
constexpr size_t kMostFindings = 5000;

Text BeginningOf(const SourceDocument& text)
{
    Text beginning;
    for (int32_t line = 0; line < std::min(text.LineCount(), kLinesLookedAt); ++line) {
        const UnitSpan units = text.LineUnits(line);
        if (beginning.size() + units.length > kUnitsLookedAt) break;
        units.AppendTo(beginning);
        beginning += u'\n';
    }
    return beginning;
}

/// Endings of files in other languages.
constexpr TextView kOtherEndings[] = {u"c",   u"cfg", u"conf", u"cpp", u"css", u"csv", u"h",    u"htm", u"html",
                                      u"ini", u"js",  u"json", u"log", u"md",  u"php", u"py",   u"rb",  u"rs",
                                      u"sh",  u"sql", u"ts",   u"tsv", u"txt", u"xml", u"yaml", u"yml"};

bool IsOtherFile(TextView name)
{
    const size_t dot = name.find_last_of(u'.');
    if (dot == TextView::npos) return false;
    const auto same = [&](TextView ending) { return EqualsNoCase(ending, name.substr(dot + 1)); };
    return std::any_of(std::begin(kOtherEndings), std::end(kOtherEndings), same);
}

/// The reader of an account for the service, which both can end: the program at its end, whatever the host does.
class SharedReader final : public ItemReader {
public:
    explicit SharedReader(std::shared_ptr<ItemReader> reader) : reader_(std::move(reader)) {}
    std::vector<Text> Files() override { return reader_->Files(); }
    std::vector<Text> Ids(TextView file) override { return reader_->Ids(file); }
    std::optional<Text> Read(TextView file, TextView id) override { return reader_->Read(file, id); }
    Text Stamp(TextView file, TextView id) override { return reader_->Stamp(file, id); }
    std::string Folder(TextView file) override { return reader_->Folder(file); }
    Text ProgramRules() override { return reader_->ProgramRules(); }
    void Stop() override { reader_->Stop(); }

private:
    const std::shared_ptr<ItemReader> reader_;
};

Text PathOf(const mvDocument& document)
{
    return document.ItemObject() ? document.Path() : u"new:" + Decimal(document.DocumentID());
}

} // namespace

Assistance::Assistance(DocumentServices& services, Timers& timers, const Clock& clock, AssistPorts ports)
    : services_(services), timers_(timers), clock_(clock), ports_(std::move(ports))
{
    services_.onCompiled = [this](TextView output) { Compiled(output); };
    services_.compiledLine = [this](const mvDocument& document, int32_t line) { return CompiledLine(document, line); };
}

Assistance::~Assistance()
{
    Stop();
}

void Assistance::Stop()
{
    stopped_ = true;
    services_.onCompiled = nullptr;
    services_.compiledLine = nullptr;
    turn_.reset();
    waiting_.reset();
    others_.reset();
    for (auto& [path, reader] : accounts_) reader->Stop();
    worker_.reset();
    accounts_.clear();
    followed_.clear();
}

// Which texts are followed

void Assistance::Follow(mvDocument& document, SourceDocument& text)
{
    if (!ports_.makeService || stopped_) return;
    const int32_t id = document.DocumentID();
    Followed& followed = followed_[id];
    followed.id = id;
    followed.document = document.weak_from_this();
    followed.text = std::make_unique<FollowedText>(text, [this, &followed] { Changed(followed); });
    WakeSoon();
}

void Assistance::Forget(int32_t documentId)
{
    const auto found = followed_.find(documentId);
    if (found == followed_.end()) return;
    Close(found->second);
    followed_.erase(found);
    if (FindingsChanged) FindingsChanged(documentId);
}

void Assistance::Close(Followed& followed)
{
    if (followed.told.empty()) return;
    worker_->Post([path = std::exchange(followed.told, {})](LanguageService& service) { service.Close(path); });
    followed.text->TellAll();
    followed.found.clear();
}

void Assistance::DocumentChanged(const mvDocument& document)
{
    const auto found = followed_.find(document.DocumentID());
    if (found == followed_.end()) return;
    found->second.program = false; // it may be another item
    WakeSoon();
}

void Assistance::SettingsChanged()
{
    for (auto& [id, followed] : followed_) followed.stale = true;
    WakeSoon();
}

bool Assistance::Wants(Followed& followed, const mvDocument& document) const
{
    return document.Highlight() && followed.text->Document().LineCount() <= kMostLines && IsProgram(followed, document);
}

/// Records, notes and scripts are edited here, too, and are not to be judged.
bool Assistance::IsProgram(Followed& followed, const mvDocument& document) const
{
    if (followed.program || !services_.dialects) return followed.program = true;
    if (const auto item = document.ItemObject()) {
        const bool local = item->Provider() == kFileProvider;
        if (local ? IsOtherFile(item->ItemID()) : !MayHoldPrograms(item->Folder())) return false;
    }
    const Dialect* dialect = services_.dialects->Find(services_.settings.Dialect);
    if (!dialect) dialect = services_.dialects->Find(kCommonDialect);
    return followed.program = dialect && LooksLikeProgram(BeginningOf(followed.text->Document()), *dialect);
}

std::vector<std::shared_ptr<mvDocument>> Assistance::Documents() const
{
    std::vector<std::shared_ptr<mvDocument>> documents;
    for (const auto& [id, followed] : followed_)
        if (auto document = followed.document.lock()) documents.push_back(std::move(document));
    return documents;
}

std::shared_ptr<mvDocument> Assistance::OpenDocument(TextView path) const
{
    const auto found =
        std::find_if(followed_.begin(), followed_.end(), [&](const auto& entry) { return entry.second.told == path; });
    return found == followed_.end() ? nullptr : found->second.document.lock();
}

// Telling of changes, once a turn

bool Assistance::Start()
{
    if (!worker_ && ports_.makeService && !stopped_) {
        worker_ = std::make_unique<LanguageWorker>(ports_.makeService, ports_.toWindows, [this] { AskAgain(); });
        const Location host = usualPlace ? usualPlace() : services_.place.host;
        newAccounts_.push_back({host.Provider, host.ServerName, host.Database, {}, {}});
    }
    return worker_ != nullptr;
}

void Assistance::WakeSoon()
{
    if (!turn_ && !stopped_) turn_ = timers_.Every(milliseconds(0), [this] { Flush(); });
}

void Assistance::Changed(Followed& followed)
{
    followed.typedMs = clock_.NowMs();
    followed.stale = true;
    WakeSoon();
    if (!followed.text->Findings().empty() && FindingsMoved) FindingsMoved();
}

void Assistance::Flush()
{
    turn_.reset();
    PlaceMarks();
    for (auto& [id, followed] : followed_) Tell(followed);
    // While a server is waited for, documents may close.
    for (const ItemPlace& place : std::exchange(newAccounts_, {})) AddAccount(place);
    if (!worker_) return;
    for (auto& [id, followed] : followed_)
        if (!followed.told.empty() && std::exchange(followed.stale, false)) AskFindings(followed);
    if (const Text fault = worker_->TakeFault(); !fault.empty())
        services_.log.Write(u"Assistance: " + fault, trace::kErrors);
}

void Assistance::Tell(Followed& followed)
{
    const auto document = followed.document.lock();
    if (!document) return;
    if (!Wants(followed, *document) || !Start()) {
        Close(followed);
        return SetShown(followed, {});
    }
    const Text path = PathOf(*document);
    if (followed.told != path) {
        Close(followed);
        followed.told = path;
        followed.stale = true;
        if (const auto item = document->ItemObject())
            newAccounts_.push_back({item->Provider(), item->ServerName(), item->Database(), {}, {}});
        WakeSoon();
    }
    if (std::optional<ChangedLines> change = followed.text->Take()) {
        auto told = std::make_shared<ChangedLines>(std::move(*change));
        worker_->Post([path, told](LanguageService& service) {
            if (told->whole)
                service.Open(path, told->Lines());
            else
                service.Change(path, told->first, told->removed, told->Lines());
        });
        if (TextTold) TextTold(followed.id);
        if (followed_.size() > 1) others_ = timers_.Every(kOthersLater, [this] { AskAgain(); });
    }
}

/// Once for each; one that cannot be read is as if there were none, and tried again with the next document of it.
void Assistance::AddAccount(const ItemPlace& place)
{
    if (place.provider != kHostProvider || place.database.empty()) return;
    const Text path = ComposeHostPath(place);
    if (accounts_.contains(path)) return;
    std::shared_ptr<ItemReader> reader;
    IgnoringErrors([&] { reader = services_.connection.Reader(place); });
    if (!reader || !worker_) return;
    auto access = std::make_shared<AccountAccess>();
    access->reader = std::make_unique<SharedReader>(accounts_[path] = std::move(reader));
    if (services_.dialects) access->dialect = services_.dialects->Find(services_.settings.Dialect);
    worker_->Post([path, access](LanguageService& service) { service.AddAccount(path, std::move(*access)); });
}

// Questions

Assistance::Followed* Assistance::AskedOf(const mvDocument& document)
{
    const auto found = followed_.find(document.DocumentID());
    if (found == followed_.end()) return nullptr;
    Tell(found->second);
    return worker_ && !found->second.told.empty() ? &found->second : nullptr;
}

bool Assistance::IsAt(int32_t id, int64_t revision) const
{
    const auto found = followed_.find(id);
    return found != followed_.end() && found->second.text->Revision() == revision;
}

void Assistance::AskAgain()
{
    others_.reset();
    for (auto& [id, followed] : followed_)
        if (!followed.told.empty()) AskFindings(followed);
}

void Assistance::AskFindings(Followed& followed)
{
    if (!services_.settings.CheckAsYouType) return SetShown(followed, {});
    const int64_t revision = followed.text->Revision();
    *followed.asked = revision;
    // Nobody computes what a later key has made worthless.
    auto question = [path = followed.told, asked = followed.asked, revision](LanguageService& service) {
        if (*asked != revision) return std::optional<std::vector<ProgramFinding>>();
        std::optional findings(service.Findings(path));
        if (findings->size() > kMostFindings) findings->resize(kMostFindings);
        return findings;
    };
    worker_->Ask(std::move(question),
                 [this, id = followed.id, revision](std::optional<std::vector<ProgramFinding>>& findings) {
                     if (!findings || !IsAt(id, revision)) return;
                     Followed& asked = followed_.at(id);
                     asked.found = std::move(*findings);
                     asked.foundAt = revision;
                     Present(asked);
                 });
}

} // namespace nib
