// Which findings are shown, and the way from one to the next; part of Assistance.

#include "documents/mvDocument.h"
#include "shell/assist/Assistance.h"

#include <algorithm>

namespace nib {

namespace {

using std::chrono::milliseconds;

/// So long nobody types, and what is wrong in the line is said.
constexpr milliseconds kPause{150};

} // namespace

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

void Assistance::GoTo(int32_t documentId, Position at, const Phrase& why)
{
    const auto document = services_.openDocuments.ById(documentId);
    if (!document || !document->View()) return;
    if (const auto from = services_.openDocuments.ById(services_.frame.ActiveDocument()))
        services_.shell.RecordPosition(*from);
    document->View()->txtText().SetCaret(at);
    document->Activate();
    services_.frame.SetStatusText(1, said(why));
}

void Assistance::GoToFinding(int32_t documentId, bool backward)
{
    if (services_.results && services_.results->GoToError(backward)) return;
    if (const auto next = NextFinding(documentId, backward))
        GoTo(next->document->DocumentID(), next->finding.at.start, next->finding.message);
    else
        services_.frame.SetStatusText(1, u"No problems are known.");
}

std::vector<QuickMend> Assistance::Mends(const mvDocument& document, int32_t line) const
{
    std::vector<QuickMend> mends;
    std::vector<QuickMend> silences;
    for (const ProgramFinding& finding : Findings(document.DocumentID())) {
        if (line < finding.at.start.line || finding.at.end.line < line) continue;
        mends.insert(mends.end(), finding.mends.begin(), finding.mends.end());
        // In a line of its own above: nothing of the program changes.
        const int32_t first = finding.at.start.line;
        const Text text = document.View()->txtText().Document().GetLine(first);
        const Text indent(std::min(text.find_first_not_of(u' '), text.size()), u' ');
        const Text comment = indent + u"* nib: ignore " + finding.code + u"\r\n";
        QuickMend silence{{Wording::SilenceHere, {finding.code}}, {{{{0, first}, {0, first}}, comment}}};
        const auto same = [&](const QuickMend& known) { return known.caption == silence.caption; };
        if (std::none_of(silences.begin(), silences.end(), same)) silences.push_back(std::move(silence));
    }
    std::move(silences.begin(), silences.end(), std::back_inserter(mends));
    return mends;
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
