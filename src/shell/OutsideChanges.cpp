#include "shell/OutsideChanges.h"

#include "compare/TextDifferences.h"
#include "hosts/ItemText.h"
#include "shell/Program.h"
#include "text/LineDiff.h"
#include "text/TextSearch.h"

#include <optional>
#include <utility>

namespace nib {

namespace {

using namespace message_box;

/// More lines say no more.
constexpr int32_t kMostLines = 2000;
constexpr size_t kNumberDigits = 4;

/// The lists of differing lines, each with the number of the document's line that a double click goes to.
class DifferenceList {
public:
    explicit DifferenceList(ResultsWindow& results) : results_(results) {}

    void Add(int32_t line, TextView sign, TextView text)
    {
        if (++lines_ > kMostLines) return;
        Text number = Decimal(line + 1);
        if (number.size() < kNumberDigits) number.insert(0, kNumberDigits - number.size(), u'0');
        results_.AddResultLine(number.append(sign).append(text), 0, 0, false);
    }
    void End()
    {
        if (lines_ == 0) results_.AddNote({u"No line differs."});
        if (lines_ > kMostLines) results_.AddNote({u"(" + Decimal(lines_ - kMostLines) + u" lines are left out here)"});
    }

private:
    ResultsWindow& results_;
    int32_t lines_ = 0;
};

} // namespace

void OutsideChanges::Look()
{
    if (asking_ || program_.Window().IsModal() || program_.IsShuttingDown()) return;
    for (auto& document : program_.OpenDocuments().All()) {
        const auto item = document->ItemObject();
        // A client may have closed it while another one was asked about.
        if (!item || !program_.OpenDocuments().ById(document->DocumentID())) continue;
        const StoredState state = item->State();
        if (state == StoredState::Same) asked_.erase(document->DocumentID());
        const bool differs = state == StoredState::Changed || state == StoredState::Gone;
        if (differs && !asked_.contains(document->DocumentID())) Ask(*document, state);
    }
}

bool OutsideChanges::MaySave(mvDocument& document)
{
    const auto item = document.ItemObject();
    const StoredState state = item ? item->StateToSave() : StoredState::Same;
    const bool differs = state == StoredState::Changed || state == StoredState::Gone;
    return !differs || Ask(document, state);
}

bool OutsideChanges::Ask(mvDocument& document, StoredState state)
{
    if (std::exchange(asking_, true)) return false;
    const auto self = document.shared_from_this();
    asked_.insert(document.DocumentID());
    const bool may = program_.Safely(u"OutsideChanges.Ask", [&] {
        return state == StoredState::Gone ? AskAboutLoss(document) : AskAboutChange(document);
    });
    asking_ = false;
    // By now, since whoever saves it under its own name after all is asked again.
    if (std::exchange(copyWanted_, false)) program_.Files().FileSaveCopy(document);
    return may;
}

bool OutsideChanges::AskAboutChange(mvDocument& document)
{
    Text question = document.DisplayName() +
                    u" was changed by another program since it was opened.\n\nReload takes what is "
                    u"stored now, Keep stays with the text in the window, Compare lists what "
                    u"differs.";
    if (document.IsDirty()) question += u" It has unsaved changes: after Reload they are lost unless you undo it.";
    const bool merges = document.IsDirty() && !document.ReadOnly() && document.TextAsStored();
    if (merges) question += u" Merge brings theirs and yours together, and stores nothing yet.";
    const int32_t usual = document.IsDirty() && !merges ? kThirdDefault : 0;
    const int32_t buttons = merges ? kMergeReloadKeepCompareCancel : kReloadKeepCompareCancel;
    const int32_t answer = program_.ShowMessage(question, buttons | kQuestion | usual);
    if (!document.ItemObject()) return false; // a client has closed it meanwhile
    if (answer == kAnswerReload) return document.Reload(), false;
    if (!document.ReadOnly()) document.SetModified(true); // it is not what is stored
    if (answer == kAnswerKeep) Keep(document);
    if (answer == kAnswerCompare) Compare(document);
    if (answer == kAnswerMerge) Merge(document);
    return answer == kAnswerKeep;
}

void OutsideChanges::Keep(mvDocument& document)
{
    document.ItemObject()->AcceptState();
    if (document.ReadOnly() || !document.View() || !program_.Versions().Keeps(*document.ItemObject())) return;
    // It is what the next save replaces, and the history shows it as that.
    IgnoringErrors([&] {
        const auto stored = program_.Connection().OpenServerForPath(document.Path(), true, false);
        document.SetReplaced(stored->ReadItem(0, 0, 0));
    });
}

bool OutsideChanges::AskAboutLoss(mvDocument& document)
{
    const Text question = document.DisplayName() +
                          u" is not there any more: another program has deleted or renamed it. Keep "
                          u"leaves its text open, to be saved again; Close asks about that first.";
    const int32_t answer = program_.ShowMessage(question, kKeepClose | kWarning);
    if (!document.ItemObject()) return false;
    document.ItemObject()->AcceptState();
    document.SetModified(true); // the window holds the only copy
    document.UpdateTitle();     // which it says, also where it was modified before
    if (answer == kAnswerClose) program_.Files().FileClose(document);
    return answer == kAnswerKeep;
}

void OutsideChanges::Merge(mvDocument& document)
{
    while (!MergeOnce(document))
        program_.ShowMessage(document.DisplayName() +
                                 u" was changed once more meanwhile. This is the merge with what is stored now.",
                             kInformation);
}

/// False when it is no merge of what is there by now.
bool OutsideChanges::MergeOnce(mvDocument& document)
{
    const auto base = document.TextAsStored();
    if (!base) return true; // a client has edited meanwhile what is too long to be kept
    const auto stored = program_.Connection().OpenServerForPath(document.Path(), true, false);
    const Text theirs = stored->ReadItem(0, 0, 0);
    const Text mine = document.GetText();
    std::optional<MergeModel> merge;
    {
        WaitCursor wait(program_.Window());
        const int32_t tabSize = program_.EditorSettings().TabSize;
        program_.Window().Await([&] { merge.emplace(AsLines(base).Whole(), ExpandTabs(theirs, tabSize), mine); });
    }
    const MergeAnswer answer = program_.Forms().Merge(*merge, document.DisplayName());
    if (!document.ItemObject()) return true; // a client has closed it meanwhile
    if (answer == MergeAnswer::TakeTheirs) document.Reload();
    copyWanted_ = answer == MergeAnswer::KeepCopy;
    if (answer != MergeAnswer::Merge) return true;
    return document.GetText() == mine && document.TakeMerged(*stored, theirs, merge->Outcome());
}

/// What stands in the window alone, and what is stored instead.
void OutsideChanges::Compare(mvDocument& document)
{
    ResultsWindow* results = program_.Services().results;
    if (!results) return;
    const auto stored = program_.Connection().OpenServerForPath(document.Path(), true, false);
    const Text outside = ExpandTabs(stored->ReadItem(0, 0, 0), program_.EditorSettings().TabSize);
    const Text own = document.GetText();
    const std::vector<TextView> before = LinesOf(own);
    const std::vector<TextView> after = LinesOf(outside);
    results->ResetResults(u"What differs: - in the window, + stored");
    results->AddResultLine(u"", 0, 0, false);
    results->AddResultLine(document.ListName(), 0, 0, true);
    DifferenceList list(*results);
    const auto found = CompareLines(LinesIn(own), LinesIn(outside));
    for (const LineBlock& block : found->blocks) {
        if (!block.IsChange()) continue;
        for (int32_t line = block.left; line < block.LeftEnd(); ++line)
            list.Add(line, u" - ", before[static_cast<size_t>(line)]);
        for (int32_t line = block.right; line < block.RightEnd(); ++line)
            list.Add(block.left, u" + ", after[static_cast<size_t>(line)]);
    }
    list.End();
    results->ShowResults({});
}

} // namespace nib
