// The state of all commands, computed afresh: it runs after every change of the selection.

#include "hosts/mvConnect.h"
#include "shell/MenuDispatcher.h"
#include "shell/Program.h"
#include "text/SourceViewModel.h"

#include <benchmark/benchmark.h>

namespace nib::bench {
namespace {

struct Silent final : mvConnection, MessageBoxes, MainWindow, ViewFactory, Fonts, Clipboard, Timers, MenuBar {
    // mvConnection
    SelectedItem SelectItem(const SelectRequest&, mvItem*) override { return {}; }
    std::vector<SelectedItem> SelectItems(const SelectRequest&, mvItem*) override { return {}; }
    std::shared_ptr<mvItem> OpenServerForPath(TextView, bool, bool) override { return nullptr; }
    Text ComposeHostPath(const ItemPlace& place) const override { return nib::ComposeHostPath(place); }
    Text ComposeFilePath(TextView name) const override { return nib::ComposeFilePath(name); }
    ItemPlace ParsePath(TextView path) const override { return nib::ParsePath(path); }
    int32_t Show(TextView, int32_t, TextView) override { return 1; }
    // MainWindow
    void Load() override {}
    void Show() override {}
    void Unload() override {}
    void ToForeground() override {}
    void SetTitle(TextView) override {}
    void SetStatusText(int32_t, TextView) override {}
    void ShowStatusPanel(int32_t, bool) override {}
    void SetWaitCursor(bool) override {}
    void UpdateToolBar() override {}
    void ProcessMessages() override {}
    int32_t ActiveDocument() const override { return active; }
    std::unique_ptr<Timer> Every(std::chrono::milliseconds, std::function<void()>) override { return nullptr; }
    // ViewFactory, Fonts, Clipboard
    std::unique_ptr<clsDocView> CreateView(mvDocument&) override;
    std::vector<Text> Families() const override { return {}; }
    bool Add(TextView) override { return false; }
    void Remove(TextView) override {}
    Text ProgramFolder() const override { return u"/"; }
    bool HasText() const override { return false; }
    Text GetText() const override { return {}; }
    void SetText(TextView) override {}
    Text GetPrimary() const override { return {}; }
    void SetPrimary(TextView) override {}
    // MenuBar
    void ToolsChanged(std::span<const ToolChange> changes) override { told += static_cast<int64_t>(changes.size()); }
    void ToolAdded(Band, const MenuTool&) override {}
    void ToolRemoved(Band, const MenuTool&) override {}
    void BandChanged(Band) override {}
    void PopUp(Band, std::optional<ScreenPoint>) override {}

    int32_t active = 0;
    int64_t told = 0;
};

class View final : public clsDocView {
public:
    explicit View(Clipboard& clipboard) : model_(buffer_, clipboard) {}
    void Activate() override {}
    void Show() override {}
    void Unload() override {}
    SourceView& txtText() override { return model_; }
    void SetTitle(TextView) override {}
    void SetViewObject(mvDocument* document) override { document_ = document; }
    mvDocument* ViewObject() const override { return document_; }
    void SetAutoSaveFlag(bool) override {}
    bool AutoSaveFlag() const override { return false; }
    void SetTag(TextView) override {}
    void SetVisible(bool) override {}
    bool Visible() const override { return true; }
    int32_t WindowState() const override { return 0; }

private:
    SourceBuffer buffer_;
    SourceViewModel model_;
    mvDocument* document_ = nullptr;
};

std::unique_ptr<clsDocView> Silent::CreateView(mvDocument&)
{
    return std::make_unique<View>(*this);
}

void UpdateToolBar(benchmark::State& state)
{
    Silent outside;
    SessionParts parts;
    Program program({outside, outside, outside, outside, outside, outside, parts, outside});
    MenuModel menus;
    menus.SetListener(&outside);
    const CommandPorts ports;
    MenuDispatcher dispatcher(program, menus, outside, ports);
    program.Files().FileNew();
    auto document = program.OpenDocuments().Item(1);
    document->SetText(u"text");
    outside.active = document->DocumentID();
    bool changes = state.range(0) != 0;
    for (auto _ : state) {
        if (changes) outside.active = outside.active ? 0 : document->DocumentID();
        dispatcher.UpdateToolBar();
    }
    state.counters["told"] = benchmark::Counter(static_cast<double>(outside.told), benchmark::Counter::kAvgIterations);
    document->FileClose(false);
}
BENCHMARK(UpdateToolBar)->ArgName("changes")->Arg(0)->Arg(1);

} // namespace
} // namespace nib::bench
