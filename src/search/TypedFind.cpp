#include "search/TypedFind.h"

#include "documents/DocumentServices.h"

#include <chrono>

namespace nib {

namespace {

/// Of an expression that is not typed to its end yet.
constexpr std::chrono::milliseconds kPatience{250};

} // namespace

bool TypedFind::Begin()
{
    document_.reset();
    const auto document = Front();
    if (!document) return false;
    if (!document->HasSelection() || document->SelectionIsMultiLine()) return true;
    engine_.Dialog().findText = document->GetSelectionText();
    return true;
}

/// Another document in front is where it begins anew.
std::shared_ptr<mvDocument> TypedFind::Front()
{
    auto document = services_.openDocuments.ById(services_.frame.ActiveDocument());
    if (!document) return nullptr;
    if (document_.lock() != document) {
        document_ = document;
        origin_ = document->GetOrderedSelection().start;
        recorded_ = false;
    }
    return document;
}

TypedFind::Outcome TypedFind::Typed()
{
    const auto document = Front();
    if (!document) return Outcome::Nothing;
    const Outcome outcome = Go(*document, origin_, false, false);
    if (outcome != Outcome::Found && outcome != Outcome::Wrapped) document->EnsureView().txtText().SetCaret(origin_);
    return outcome;
}

TypedFind::Outcome TypedFind::Step(bool up)
{
    const auto document = Front();
    if (!document) return Outcome::Nothing;
    engine_.Remember();
    const OrderedSelection selection = document->GetOrderedSelection();
    const Outcome outcome = Go(*document, up ? selection.start : selection.end, up, true);
    // What is typed on goes on from here.
    if (outcome == Outcome::Found || outcome == Outcome::Wrapped) origin_ = document->GetOrderedSelection().start;
    return outcome;
}

TypedFind::Outcome TypedFind::Go(mvDocument& document, Position from, bool up, bool pastHit)
{
    const FindDialog& dialog = engine_.Dialog();
    fault_.clear();
    if (dialog.findText.empty()) return Outcome::Nothing;
    Outcome outcome = Outcome::NotFound;
    const std::optional<Error> failure = FailureOf([&] {
        const TextPattern pattern(dialog.findText, dialog.Options());
        pattern.SetPatience(kPatience);
        SourceView& view = document.EnsureView().txtText();
        const SourceDocument& text = view.Document();
        FindHit hit;
        const auto find = [&](Position at) { return text.Find(pattern, at, up, hit); };
        bool found = false;
        if (up)
            found = from != Position{} && find(from.col > 0 ? Position{from.col - 1, from.line}
                                                            : Position{text.LineLength(from.line - 1), from.line - 1});
        else
            found = find(from);
        const bool stays = found && pastHit && !up && hit.length == 0 && hit.at == from;
        if (stays) {
            const bool atEnd = from.col >= text.LineLength(from.line);
            const Position next = atEnd ? Position{0, from.line + 1} : Position{from.col + 1, from.line};
            found = next.line < text.LineCount() && find(next);
        }
        outcome = Outcome::Found;
        if (!found) {
            if (!find(up ? text.End() : Position{})) {
                outcome = Outcome::NotFound;
                return;
            }
            outcome = Outcome::Wrapped;
        }
        if (!std::exchange(recorded_, true)) services_.shell.RecordPosition(document);
        view.SetSelection(hit.at, {hit.at.col + hit.length, hit.at.line});
    });
    if (!failure) return outcome;
    fault_ = failure->description;
    return Outcome::Faulty;
}

} // namespace nib
