#pragma once
// The frame, its bars, the windows of documents and the dialogs without a screen; what they do goes to a journal.

#include "automation/Application.h"
#include "base/Error.h"
#include "documents/DocumentServices.h"
#include "documents/mvDocument.h"
#include "fakes/MemoryClipboard.h"
#include "shell/MainWindow.h"
#include "shell/menus/MenuModel.h"
#include "text/SourceView.h"

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace nib::test {

/// What several fakes did, in one order.
struct Journal {
    std::vector<Text> lines;

    void Add(Text line) { lines.push_back(std::move(line)); }
    std::vector<Text> Take() { return std::exchange(lines, {}); }
    bool Has(TextView line) const { return std::find(lines.begin(), lines.end(), line) != lines.end(); }
};

/// The frame without a screen: its life goes to the journal, the rest is state to look at.
struct FakeMainWindow : MainWindow {
    explicit FakeMainWindow(Journal& journal) : journal_(journal) {}

    void Load(Program&) override { journal_.Add(u"Load"); }
    void Show() override { journal_.Add(u"Show"); }
    void Unload() override { journal_.Add(u"Unload"); }
    void ToForeground() override {}
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
    bool Postpone(const std::function<void()>& what) override
    {
        if (awaiting) postponed.push_back(what);
        return awaiting;
    }
    void ArmShutdownTimer() override { ending = true; }
    void DisarmShutdownTimer() override { ending = false; }
    MenuModel& Menus() override { return menus; }
    void Arrange(int32_t mode) override { journal_.Add(u"arrange " + Decimal(mode)); }

    std::function<void()> whileProcessing;
    MenuModel menus;
    std::map<int32_t, Text> status;
    std::map<int32_t, bool> panels;
    bool waiting = false;
    bool visible = true;
    bool modal = false;
    bool ending = false;
    bool awaiting = false;
    std::vector<std::function<void()>> postponed;
    int32_t toolBarUpdates = 0;
    int32_t activeDocument = 0;

private:
    Journal& journal_;
};

/// A pane of fixed height that remembers where it was scrolled to.
struct FakePane final : ViewHost {
    int32_t pageLines = 25;
    mutable int32_t firstLine = 0;

    int32_t PageLines() const override { return pageLines; }
    void GetFirstVisible(int32_t& line, int32_t& column) override
    {
        line = firstLine;
        column = 0;
    }
    void SetFirstVisible(int32_t line, int32_t) override { firstLine = line; }
};

/// A document window over the real text component, without a screen.
struct FakeDocView : clsDocView {
    FakeDocView(FakeMainWindow& window, Clipboard& clipboard, int32_t documentId)
        : window_(window), id_(documentId), model_(buffer_, clipboard)
    {
        model_.SetHost(&pane);
    }
    ~FakeDocView() override
    {
        if (IsActive()) window_.activeDocument = 0;
    }

    void Activate() override { window_.activeDocument = id_; }
    void Show() override
    {
        if (!std::exchange(visible, true)) Activate();
    }
    void QueryUnload() override { ++closes; }
    SourceView& txtText() override
    {
        if (failure) throw Error(*failure);
        return model_;
    }
    LexClass* Lexer() override { return nullptr; }
    void SetTitle(TextView text) override
    {
        title = text;
        ++titles;
    }
    void SetAutoSaveFlag(bool flag) { autoSaveFlag_ = flag; }
    bool AutoSaveFlag() const override { return autoSaveFlag_; }
    void SetWindowState(int32_t state) override { state_ = state; }
    int32_t WindowState() const override { return state_; }
    bool IsActive() const override { return window_.activeDocument == id_; }
    bool IsGrid() const override { return grid; }

    FakePane pane;
    Text title;
    bool visible = false;
    bool grid = false;
    int32_t closes = 0;           ///< asked for as by its close button
    int32_t titles = 0;           ///< handed over so far
    std::optional<Error> failure; ///< the text cannot be had

private:
    FakeMainWindow& window_;
    int32_t id_;
    SourceDocument buffer_;
    SourceView model_;
    int32_t state_ = 0;
    bool autoSaveFlag_ = false;
};

class FakeViewFactory {
public:
    FakeViewFactory(FakeMainWindow& window, Clipboard& clipboard) : window_(window), clipboard_(clipboard) {}

    std::unique_ptr<clsDocView> operator()(mvDocument& document)
    {
        if (failure) throw Error(*failure);
        return std::make_unique<FakeDocView>(window_, clipboard_, document.DocumentID());
    }

    std::optional<Error> failure;

private:
    FakeMainWindow& window_;
    Clipboard& clipboard_;
};

struct FakeDialogs final : Dialogs {
    explicit FakeDialogs(Journal& target) : journal(target) {}

    void Load(Program&) override
    {
        journal.Add(u"LoadForms");
        if (failing) throw Error{71, u"No forms"};
    }
    void Unload() override { journal.Add(u"UnloadForms"); }
    void Show(Form form, mvDocument*) override
    {
        static constexpr TextView kNames[] = {u"find",    u"find next",     u"find bar", u"replace", u"find in account",
                                              u"results", u"settings",      u"help",     u"about",   u"properties",
                                              u"print",   u"compare stored"};
        if (static_cast<size_t>(form) >= std::size(kNames)) return journal.Add(u"compare");
        journal.Add(Text(kNames[static_cast<size_t>(form)]));
    }
    void ShowHelp(TextView page) override { journal.Add(u"help " + Text(page)); }
    void Goto(Text& target) override { journal.Add(u"goto '" + target + u"'"); }
    MergeAnswer Merge(MergeModel& merge, TextView name) override
    {
        journal.Add(u"merge " + Text(name));
        return onMerge ? onMerge(merge) : MergeAnswer::Cancel;
    }
    void OfferRecovered(modAutoRecover&, TextView folder, const DynamicArray& names) override
    {
        if (onOffer) onOffer(folder, names);
    }

    Journal& journal;
    std::function<void(TextView folder, const DynamicArray& names)> onOffer;
    std::function<MergeAnswer(MergeModel& merge)> onMerge;
    bool failing = false;
};

struct HeardEvents final : AutomationEvents {
    explicit HeardEvents(Journal& target) : journal(target) {}
    void Ready() override { journal.Add(u"Ready"); }
    void Quit() override { journal.Add(u"Quit"); }
    void Custom(TextView name) override { journal.Add(u"Custom " + Text(name)); }
    void DocumentClose(int32_t id) override { journal.Add(u"DocumentClose " + Decimal(id)); }

    Journal& journal;
};

/// Writes down what it is told to draw.
struct RecordingMenuBar : MenuBar {
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
