#include "shell/assist/NameCommands.h"

#include "documents/mvDocument.h"

#include <algorithm>

namespace nib {

namespace {

constexpr size_t kNumberDigits = 6;
constexpr TextView kNoProgram = u"This document is not read as a program.";

Text ListedNumber(int32_t line)
{
    const Text number = Text(kNumberDigits, u'0') + Decimal(line + 1);
    return number.substr(number.size() - kNumberDigits) + u" ";
}

Text Places(int32_t count)
{
    return Decimal(count) + (count == 1 ? u" place" : u" places");
}

SourceView& ViewOf(mvDocument& document)
{
    return document.EnsureView().txtText();
}

/// The name round a place, for titles.
Text NameIn(const std::vector<PathRange>& places)
{
    if (places.empty()) return {};
    const PathRange& first = places.front();
    const auto start = static_cast<size_t>(first.range.start.col);
    if (first.range.start.line != first.range.end.line || start > first.line.size()) return {};
    return first.line.substr(start, static_cast<size_t>(first.range.end.col) - start);
}

} // namespace

Text ShownName(TextView path)
{
    return OrDefault(
        [&]() -> Text {
            const ItemPlace place = ParsePath(path);
            if (place.provider != kFileProvider) return place.folder + u" " + place.itemId;
            return place.itemId.substr(place.itemId.find_last_of(u'/') + 1);
        },
        Text(path));
}

RenamePreview RenamePreview::Of(const RenamePlan& plan)
{
    RenamePreview preview;
    preview.refusal = plan.refusal;
    for (const PathEdit& item : plan.edits)
        for (size_t i = 0; i < item.edits.size(); ++i)
            preview.rows.push_back(
                {item.path, ShownName(item.path), item.edits[i], i < item.lines.size() ? item.lines[i] : Text(), true});
    return preview;
}

// Where it is

bool NameCommands::GoTo(const PathRange& place)
{
    const auto from = services_.openDocuments.ById(services_.frame.ActiveDocument());
    if (from) services_.shell.RecordPosition(*from);
    auto document = assistance_.OpenDocument(place.path);
    if (!document) {
        if (!openPath_(place.path)) return false;
        document = services_.openDocuments.ById(services_.frame.ActiveDocument());
        if (!document) return false;
    }
    ViewOf(*document).SetCaret(place.range.start);
    document->Activate();
    return true;
}

void NameCommands::GoToDefinition(mvDocument& document)
{
    const bool asked = assistance_.Ask(
        document,
        [at = ViewOf(document).Caret()](LanguageService& service, const Text& path) {
            return service.Definition(path, at);
        },
        [this](const std::vector<PathRange>& places) {
            if (places.empty())
                services_.frame.SetStatusText(1, u"Nothing is known of where this is defined.");
            else if (places.size() == 1)
                GoTo(places.front());
            else
                ListPlaces(u"Definitions of " + NameIn(places), places);
        });
    if (!asked) services_.frame.SetStatusText(1, kNoProgram);
}

void NameCommands::FindReferences(mvDocument& document)
{
    const bool asked = assistance_.Ask(
        document,
        [at = ViewOf(document).Caret()](LanguageService& service, const Text& path) {
            return service.References(path, at, true);
        },
        [this](const std::vector<PathRange>& places) {
            if (places.empty())
                services_.frame.SetStatusText(1, u"There is no name here whose places are known.");
            else
                ListPlaces(u"References to " + NameIn(places), places);
        });
    if (!asked) services_.frame.SetStatusText(1, kNoProgram);
}

void NameCommands::ListPlaces(TextView title, const std::vector<PathRange>& places)
{
    if (!services_.results) return;
    ResultsWindow& results = *services_.results;
    results.ResetResults(title);
    const Text* listed = nullptr;
    for (const PathRange& place : places) {
        if (!listed || *listed != place.path) {
            const auto open = assistance_.OpenDocument(place.path);
            results.AddResultLine(u"", 0, 0, false);
            if (open && !open->ItemObject())
                results.AddResultLine(open->ListName(), 0, 0, true);
            else
                results.AddItemHeader(ShownName(place.path), place.path);
            listed = &place.path;
        }
        const Text number = ListedNumber(place.range.start.line);
        results.AddItemLine(number + place.line, place.range.start.col + static_cast<int32_t>(number.size()),
                            place.range.end.col - place.range.start.col, place.range.start.line + 1);
    }
    services_.frame.SetStatusText(1, Places(static_cast<int32_t>(places.size())) + u".");
}

// Another name

void NameCommands::AskRename(mvDocument& document, std::function<void(const Renamed&)> take)
{
    using Answer = std::pair<std::optional<TextRange>, Text>;
    const bool asked = assistance_.Ask(
        document,
        [at = ViewOf(document).Caret()](LanguageService& service, const Text& path) {
            Answer answer;
            answer.first = service.PrepareRename(path, at, answer.second);
            return answer;
        },
        [&document, take = std::move(take)](const Answer& answer) {
            const auto& [range, refusal] = answer;
            SourceDocument& text = ViewOf(document).Document();
            take({range ? text.GetRange(range->start, range->end) : Text(), refusal});
        });
    if (!asked) services_.frame.SetStatusText(1, kNoProgram);
}

void NameCommands::Preview(mvDocument& document, const Text& name, std::function<void(RenamePreview)> take)
{
    assistance_.Ask(
        document,
        [at = ViewOf(document).Caret(), name](LanguageService& service, const Text& path) {
            return service.Rename(path, at, name);
        },
        [take = std::move(take)](const RenamePlan& plan) { take(RenamePreview::Of(plan)); });
}

bool NameCommands::MayOpen(const std::vector<ItemEdits>& items)
{
    const auto closed =
        std::count_if(items.begin(), items.end(), [&](auto& item) { return !assistance_.OpenDocument(item.path); });
    if (closed == 0) return true;
    const Text count = closed == 1 ? Text(u"One item that is not open will be opened")
                                   : Decimal(closed) + u" items that are not open will be opened";
    const Text question = count + u", changed and left unsaved.\nDo you want to go on?";
    return services_.shell.ShowMessage(question, message_box::kYesNo | message_box::kQuestion) ==
           message_box::kAnswerYes;
}

int32_t NameCommands::Rename(const RenamePreview& preview, TextView oldName)
{
    std::vector<ItemEdits> items;
    for (const RenamePreview::Row& row : preview.rows) {
        if (!row.chosen) continue;
        if (items.empty() || items.back().path != row.path) items.push_back({row.path, {}});
        items.back().rows.push_back(row);
    }
    if (!MayOpen(items)) return 0;
    const int32_t active = services_.frame.ActiveDocument();
    int32_t changed = 0;
    int32_t left = 0;
    for (const ItemEdits& item : items) {
        const int32_t count = ChangeIn(item, oldName);
        changed += count;
        left += static_cast<int32_t>(item.rows.size()) - count;
    }
    if (const auto document = services_.openDocuments.ById(active)) document->Activate();
    services_.frame.SetStatusText(1, Places(changed) + u" renamed.");
    if (left > 0)
        services_.shell.ShowMessage(Places(left) + u" could not be changed: the items are read-only, were not opened, "
                                                   u"or have other text there now.",
                                    message_box::kWarning);
    return changed;
}

int32_t NameCommands::ChangeIn(const ItemEdits& item, TextView oldName)
{
    auto document = assistance_.OpenDocument(item.path);
    if (!document && openPath_(item.path)) document = services_.openDocuments.ById(services_.frame.ActiveDocument());
    if (!document || document->ReadOnly()) return 0;
    SourceDocument& text = ViewOf(*document).Document();
    std::vector<RangeEdit> edits;
    for (const RenamePreview::Row& row : item.rows) {
        const TextRange& at = row.edit.range;
        if (EqualsNoCase(text.GetRange(at.start, at.end), oldName)) edits.push_back({at.start, at.end, row.edit.text});
    }
    const auto count = static_cast<int32_t>(edits.size());
    if (count > 0) text.ReplaceRanges(std::move(edits));
    return count;
}

void NameCommands::Mend(mvDocument& document, const QuickMend& mend)
{
    SourceView& view = ViewOf(document);
    if (!view.MayEdit()) return;
    std::vector<RangeEdit> edits;
    for (const QuickMend::Edit& edit : mend.edits) edits.push_back({edit.range.start, edit.range.end, edit.text});
    view.Document().BreakTyping();
    view.Document().ReplaceRanges(std::move(edits));
}

} // namespace nib
