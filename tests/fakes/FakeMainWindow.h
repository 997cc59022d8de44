#pragma once
#include "fakes/Journal.h"
#include "shell/MainWindow.h"
#include "shell/menus/MenuModel.h"

#include <functional>
#include <map>

namespace nib::test {

/// The frame without a screen: its life goes to the journal, the rest is state to look at.
class FakeMainWindow final : public MainWindow {
public:
    explicit FakeMainWindow(Journal& journal) : journal_(journal) {}

    void Load(Program&) override { journal_.Add(u"Load"); }
    void Show() override { journal_.Add(u"Show"); }
    void Unload() override
    {
        journal_.Add(u"Unload");
        if (onUnload) onUnload();
    }
    void ToForeground() override { ++toForeground; }
    void SetStatusText(int32_t panel, TextView text) override
    {
        status[panel] = text;
        if (!text.empty()) journal_.Add(u"status " + Text(text));
    }
    void ShowStatusPanel(int32_t panel, bool shown) override { panels[panel] = shown; }
    void SetWaitCursor(bool wait) override { waiting = wait; }
    void UpdateToolBar() override { ++toolBarUpdates; }
    void ProcessMessages() override
    {
        journal_.Add(u"messages");
        if (whileProcessing) whileProcessing();
    }
    int32_t ActiveDocument() const override { return activeDocument; }
    bool Visible() const override { return visible; }
    void SetVisible(bool now) override { visible = now; }
    bool IsModal() const override { return modal; }
    void ArmShutdownTimer() override { ending = true; }
    void DisarmShutdownTimer() override { ending = false; }
    MenuModel& Menus() override { return menus; }
    void Arrange(int32_t mode) override { journal_.Add(u"arrange " + Decimal(mode)); }

    std::function<void()> onUnload;
    std::function<void()> whileProcessing;
    MenuModel menus;
    std::map<int32_t, Text> status;
    std::map<int32_t, bool> panels;
    bool waiting = false;
    bool visible = true;
    bool modal = false;
    bool ending = false;
    int32_t toForeground = 0;
    int32_t toolBarUpdates = 0;
    int32_t activeDocument = 0;

private:
    Journal& journal_;
};

} // namespace nib::test
