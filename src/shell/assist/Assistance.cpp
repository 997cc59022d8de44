#include "shell/assist/Assistance.h"

#include "documents/mvDocument.h"

#include <algorithm>

namespace nib {

namespace {

using std::chrono::milliseconds;

/// So long nobody types, and what is wrong in the line is said.
constexpr milliseconds kPause{150};
/// A change in one program is seen in the others that much later.
constexpr milliseconds kOthersLater{400};
/// Nobody writes such a program; what is that long is data.
constexpr int32_t kMostLines = 300'000;

Text PathOf(const mvDocument& document)
{
    return document.ItemObject() ? document.Path() : u"new:" + Decimal(document.DocumentID());
}

} // namespace

Assistance::Assistance(DocumentServices& services, Timers& timers, const Clock& clock, AssistPorts ports)
    : services_(services), timers_(timers), clock_(clock), ports_(std::move(ports))
{
}

Assistance::~Assistance()
{
    Stop();
}

void Assistance::Stop()
{
    stopped_ = true;
    turn_.reset();
    waiting_.reset();
    others_.reset();
    worker_.reset();
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
    const Followed& followed = found->second;
    if (followed.told != PathOf(document) || followed.told.empty() == Wants(document)) WakeSoon();
}

void Assistance::SettingsChanged()
{
    for (auto& [id, followed] : followed_) followed.stale = true;
    WakeSoon();
}

bool Assistance::Wants(const mvDocument& document) const
{
    const auto found = followed_.find(document.DocumentID());
    return found != followed_.end() && document.Highlight() && found->second.text->Document().LineCount() <= kMostLines;
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

void Assistance::WakeSoon()
{
    if (!turn_ && !stopped_) turn_ = timers_.Every(milliseconds(0), [this] { Flush(); });
}

void Assistance::Changed(Followed& followed)
{
    followed.typedMs = clock_.NowMs();
    followed.stale = true;
    WakeSoon();
    if (!followed.text->Findings().empty() && FindingsChanged) FindingsChanged(followed.id);
}

void Assistance::Flush()
{
    turn_.reset();
    for (auto& [id, followed] : followed_) Tell(followed);
    if (!worker_) return;
    if (const Text fault = worker_->TakeFault(); !fault.empty())
        services_.log.Write(u"Assistance: " + fault, trace::kErrors);
}

void Assistance::Tell(Followed& followed)
{
    const auto document = followed.document.lock();
    if (!document) return;
    if (!Wants(*document)) {
        Close(followed);
        return SetShown(followed, {});
    }
    if (!worker_)
        worker_ = std::make_unique<LanguageWorker>(ports_.makeService, ports_.toWindows, [this] { AskAgain(); });
    const Text path = PathOf(*document);
    if (followed.told != path) {
        Close(followed);
        followed.told = path;
        followed.stale = true;
        AddAccount(*document);
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
    if (std::exchange(followed.stale, false)) AskFindings(followed);
}

/// Once for each; one that cannot be read is as if there were none.
void Assistance::AddAccount(const mvDocument& document)
{
    const std::shared_ptr<mvItem> item = document.ItemObject();
    if (!item || item->Provider() != kHostProvider || item->Database().empty()) return;
    const ItemPlace place{item->Provider(), item->ServerName(), item->Database(), {}, {}};
    const Text path = ComposeHostPath(place);
    if (!accounts_.insert(path).second) return;
    auto access = std::make_shared<AccountAccess>();
    IgnoringErrors([&] { access->reader = services_.connection.Reader(place); });
    if (!access->reader) return;
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
    if (KnowledgeChanged) KnowledgeChanged();
}

void Assistance::AskFindings(Followed& followed)
{
    if (!services_.settings.CheckAsYouType) return SetShown(followed, {});
    const int64_t revision = followed.text->Revision();
    *followed.asked = revision;
    // Nobody computes what a later key has made worthless.
    auto question = [path = followed.told, asked = followed.asked, revision](LanguageService& service) {
        return *asked == revision ? std::optional(service.Findings(path)) : std::nullopt;
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

// Findings

void Assistance::Present(Followed& followed)
{
    const auto document = followed.document.lock();
    if (!document || !document->View() || followed.told.empty()) return;
    const int64_t since = clock_.NowMs() - followed.typedMs;
    const int32_t line = since < kPause.count() ? document->View()->txtText().CaretLine() : -1;
    SplitFindings split = HoldBack(followed.found, followed.text->Findings(), line);
    if (split.waits) {
        waiting_ = timers_.Every(kPause - milliseconds(since), [this] {
            waiting_.reset();
            for (auto& [id, waiting] : followed_)
                if (waiting.foundAt == waiting.text->Revision()) Present(waiting);
        });
    }
    SetShown(followed, std::move(split.shown));
}

void Assistance::SetShown(Followed& followed, std::vector<ProgramFinding> findings)
{
    if (findings.empty() && followed.text->Findings().empty()) return;
    followed.text->SetFindings(std::move(findings));
    if (FindingsChanged) FindingsChanged(followed.id);
}

void Assistance::GoTo(int32_t documentId, Position at, TextView why)
{
    const auto document = services_.openDocuments.ById(documentId);
    if (!document || !document->View()) return;
    if (const auto from = services_.openDocuments.ById(services_.frame.ActiveDocument()))
        services_.shell.RecordPosition(*from);
    document->View()->txtText().SetCaret(at);
    document->Activate();
    services_.frame.SetStatusText(1, why);
}

void Assistance::GoToFinding(int32_t documentId, bool backward)
{
    if (const auto next = NextFinding(documentId, backward))
        GoTo(next->document->DocumentID(), next->finding.at.start, next->finding.message);
    else
        services_.frame.SetStatusText(1, u"No problems are known.");
}

const std::vector<ProgramFinding>& Assistance::Findings(int32_t documentId) const
{
    static const std::vector<ProgramFinding> none;
    const auto found = followed_.find(documentId);
    return found == followed_.end() ? none : found->second.text->Findings();
}

std::optional<FindingPlace> Assistance::NextFinding(int32_t documentId, bool backward) const
{
    const auto active = followed_.find(documentId);
    if (active == followed_.end()) return std::nullopt;
    const auto document = active->second.document.lock();
    if (!document || !document->View()) return std::nullopt;
    const Position caret = document->View()->txtText().Caret();
    const auto pick = [&](const Followed& followed, auto&& fits) -> std::optional<FindingPlace> {
        const auto& findings = followed.text->Findings();
        const auto at = [&](const ProgramFinding& finding) { return fits(finding.at.start); };
        if (backward) {
            const auto found = std::find_if(findings.rbegin(), findings.rend(), at);
            if (found != findings.rend()) return FindingPlace{followed.document.lock(), *found};
        } else {
            const auto found = std::find_if(findings.begin(), findings.end(), at);
            if (found != findings.end()) return FindingPlace{followed.document.lock(), *found};
        }
        return std::nullopt;
    };
    if (auto here = pick(active->second, [&](Position p) { return backward ? p < caret : caret < p; })) return here;
    auto next = active;
    do {
        if (backward) {
            if (next == followed_.begin()) next = followed_.end();
            --next;
        } else if (++next == followed_.end()) {
            next = followed_.begin();
        }
        if (auto there = pick(next->second, [](Position) { return true; })) return there;
    } while (next != active);
    return std::nullopt;
}

} // namespace nib
