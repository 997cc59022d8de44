// The state of all commands, computed afresh: it runs after every change of the selection.

#include "hosts/mvConnect.h"
#include "shell/MenuDispatcher.h"
#include "shell/Program.h"
#include "text/SourceView.h"

#include <benchmark/benchmark.h>

namespace nib::bench {
namespace {

struct Silent final : mvConnection,
                      MessageBoxes,
                      MainWindow,
                      Dialogs,
                      AutomationEvents,
                      Fonts,
                      Clipboard,
                      Timers,
                      SettingsStore,
                      SessionToken,
                      MenuBar {
    // mvConnection
    SelectedItem SelectItem(const SelectRequest&, mvItem*) override { return {}; }
    std::vector<SelectedItem> SelectItems(const SelectRequest&, mvItem*) override { return {}; }
    std::shared_ptr<mvItem> OpenServerForPath(TextView, bool, bool) override { return nullptr; }
    int32_t Show(TextView, int32_t, TextView) override { return 1; }
    void Beep() override {}
    // MainWindow
    void Load(Program&) override {}
    void Show() override {}
    void Unload() override {}
    void ToForeground() override {}
    void SetStatusText(int32_t, TextView) override {}
    void ShowStatusPanel(int32_t, bool) override {}
    void SetWaitCursor(bool) override {}
    void UpdateToolBar() override {}
    void ProcessMessages() override {}
    int32_t ActiveDocument() const override { return active; }
    MenuModel& Menus() override { return menus; }
    void Arrange(int32_t) override {}
    // Dialogs
    void Show(Form, mvDocument*) override {}
    void Goto(Text&) override {}
    void OfferRecovered(modAutoRecover&, TextView, const DynamicArray&) override {}
    // AutomationEvents, SettingsStore, SessionToken
    void Quit() override {}
    void Custom(TextView) override {}
    void DocumentClose(int32_t) override {}
    Text Get(TextView, TextView fallback) override { return Text(fallback); }
    void Save(TextView, TextView, TextView) override {}
    uint32_t Take(const std::function<bool(uint32_t)>&) override { return 0; }
    bool IsAlive(uint32_t) override { return false; }
    std::unique_ptr<Timer> Every(std::chrono::milliseconds, std::function<void()>) override { return nullptr; }
    // ViewFactory, Fonts, Clipboard
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

    MenuModel menus;
    int32_t active = 0;
    int64_t told = 0;
};

class View final : public clsDocView {
public:
    explicit View(Clipboard& clipboard) : model_(buffer_, clipboard) {}
    void Activate() override {}
    void Show() override {}
    void QueryUnload() override {}
    SourceView& txtText() override { return model_; }
    LexClass* Lexer() override { return nullptr; }
    void SetTitle(TextView) override {}
    bool AutoSaveFlag() const override { return false; }
    void SetWindowState(int32_t) override {}
    int32_t WindowState() const override { return 0; }
    bool IsActive() const override { return true; }

private:
    SourceDocument buffer_;
    SourceView model_;
};

void UpdateToolBar(benchmark::State& state)
{
    Silent outside;
    Program program({outside,
                     outside,
                     outside,
                     outside,
                     [&](mvDocument&) -> std::unique_ptr<clsDocView> { return std::make_unique<View>(outside); },
                     outside,
                     outside,
                     outside,
                     outside,
                     outside,
                     FileSaver(""),
                     outside,
                     {}});
    outside.menus.SetListener(&outside);
    MenuDispatcher dispatcher(program, outside);
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
