#pragma once
// A whole program with its menus and dispatcher.

#include "fakes/TestProgram.h"
#include "shell/MenuDispatcher.h"

namespace nib::test {

struct TestShell : TestProgram {
    MenuModel& menus = window.menus;
    RecordingMenuBar bar;
    MenuDispatcher dispatcher{program, bar};

    bool Run(TextView key) { return dispatcher.Run(key); }
    /// As a click on the tool, whose check mark the bar has turned over before.
    void Click(Band band, TextView key)
    {
        const MenuTool& tool = menus.Tool(band, key);
        if (tool.checkable) menus.SetChecked(band, key, !tool.checked);
        dispatcher.ToolClick(band, tool);
    }
    std::vector<Text> Ran() { return journal.Take(); }
    std::vector<Text> Drawn() { return bar.journal.Take(); }
    SourceView& ViewOf(mvDocument& document) { return View(document).txtText(); }
};

} // namespace nib::test
