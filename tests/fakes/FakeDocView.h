#pragma once
#include "base/Error.h"
#include "documents/DocumentServices.h"
#include "fakes/FakeMainWindow.h"
#include "fakes/MemoryClipboard.h"
#include "text/SourceView.h"

#include <optional>

namespace nib::test {

/// A pane of fixed height that remembers where it was scrolled to.
struct FakePane final : ViewHost {
    int32_t pageLines = 25;
    mutable int32_t firstLine = 0;

    int32_t PageLines() const override { return pageLines; }
    void GetFirstVisible(int32_t& line, int32_t& column) const override
    {
        line = firstLine;
        column = 0;
    }
    void SetFirstVisible(int32_t line, int32_t) override { firstLine = line; }
};

/// A document window over the real text component, without a screen.
class FakeDocView final : public clsDocView {
public:
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

    FakePane pane;
    Text title;
    bool visible = false;
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

} // namespace nib::test
