#include "shell/ClosedDocuments.h"

#include "shell/Program.h"
#include "shell/menus/MenuModel.h"

#include <algorithm>

namespace nib {

namespace {

constexpr size_t kMostRemembered = 50;

std::vector<int32_t> Others(Program& program, int32_t document)
{
    std::vector<int32_t> tabs = program.Menus().Tabs();
    std::erase(tabs, document);
    return tabs;
}

std::vector<int32_t> Right(Program& program, int32_t document)
{
    std::vector<int32_t> tabs = program.Menus().Tabs();
    tabs.erase(tabs.begin(), std::find(tabs.begin(), tabs.end(), document));
    if (!tabs.empty()) tabs.erase(tabs.begin());
    return tabs;
}

void CloseAll(Program& program, const std::vector<int32_t>& documents)
{
    for (int32_t id : documents) {
        const auto document = program.OpenDocuments().ById(id);
        if (document && !program.Files().FileClose(*document)) return;
    }
}

} // namespace

void ClosedDocuments::Remember(mvDocument& document)
{
    if (!document.ItemObject() || !document.View()) return;
    DocumentState state = StateOf(document);
    std::erase_if(states_, [&](const DocumentState& other) { return other.path == state.path; });
    if (states_.size() == kMostRemembered) states_.erase(states_.begin());
    states_.push_back(std::move(state));
}

void ClosedDocuments::Reopen(Program& program)
{
    if (states_.empty()) return;
    DocumentState state = std::move(states_.back());
    states_.pop_back();
    const auto before = program.OpenDocuments().Count();
    if (!program.OpenPath(state.path, state.readOnly) || program.OpenDocuments().Count() == before) return;
    const auto document = program.OpenDocuments().Item(program.OpenDocuments().Count());
    // The windows may stand otherwise by now.
    state.window = document->View()->WindowState();
    state.placement.clear();
    ApplyState(*document, state);
}

void CloseOthers(Program& program, int32_t document)
{
    CloseAll(program, Others(program, document));
}

void CloseRight(Program& program, int32_t document)
{
    CloseAll(program, Right(program, document));
}

bool HasOthers(Program& program, int32_t document)
{
    return !Others(program, document).empty();
}

bool HasRight(Program& program, int32_t document)
{
    return !Right(program, document).empty();
}

} // namespace nib
