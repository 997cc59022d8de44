#pragma once
#include "fakes/Journal.h"
#include "shell/menus/MenuModel.h"

namespace nib::test {

/// Writes down what it is told to draw.
class RecordingMenuBar final : public MenuBar {
public:
    void ToolsChanged(std::span<const ToolChange> changes) override
    {
        ++batches;
        for (const ToolChange& change : changes) journal.Add(u"~" + change.tool->key + u" " + Decimal(change.what));
    }
    void ToolAdded(Band, const MenuTool& tool) override { journal.Add(u"+" + tool.key); }
    void ToolRemoved(Band, const MenuTool& tool) override { journal.Add(u"-" + tool.key); }
    void BandChanged(Band band) override { journal.Add(u"band " + Decimal(static_cast<int32_t>(band))); }
    void PopUp(Band band, std::optional<ScreenPoint> at) override
    {
        journal.Add(u"pop " + Decimal(static_cast<int32_t>(band)) + (at ? u" at " + Decimal(at->x) : Text()));
    }

    Journal journal;
    int32_t batches = 0;
};

} // namespace nib::test
