#pragma once
#include "base/Error.h"
#include "documents/clsDocView.h"
#include "fakes/FakeMainWindow.h"
#include "fakes/MemoryClipboard.h"
#include "text/SourceViewModel.h"

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
    FakeDocView(FakeMainWindow& window, Clipboard& clipboard) : window_(window), model_(buffer_, clipboard)
    {
        model_.SetHost(&pane);
    }
    ~FakeDocView() override
    {
        if (IsActive()) window_.activeDocument = 0;
    }

    void Activate() override { window_.activeDocument = ToInt(tag_); }
    void Show() override { Activate(); }
    bool QueryUnload(int32_t) override { return false; }
    void Unload() override { visible_ = false; }
    SourceView& txtText() override
    {
        if (failure) throw Error(*failure);
        return model_;
    }
    void SetTitle(TextView title) override
    {
        title_ = title;
        ++titles;
    }
    Text Title() const override { return title_; }
    void SetViewObject(mvDocument* document) override { document_ = document; }
    mvDocument* ViewObject() const override { return document_; }
    void SetAutoSaveFlag(bool flag) override { autoSaveFlag_ = flag; }
    bool AutoSaveFlag() const override { return autoSaveFlag_; }
    void SetTag(TextView tag) override { tag_ = tag; }
    Text Tag() const override { return tag_; }
    void SetVisible(bool visible) override { visible_ = visible; }
    bool Visible() const override { return visible_; }
    void SetWindowState(int32_t state) override { state_ = state; }
    int32_t WindowState() const override { return state_; }
    bool IsActive() const override { return !tag_.empty() && window_.activeDocument == ToInt(tag_); }

    FakePane pane;
    int32_t titles = 0;           ///< handed over so far
    std::optional<Error> failure; ///< the text cannot be had

private:
    FakeMainWindow& window_;
    SourceBuffer buffer_;
    SourceViewModel model_;
    mvDocument* document_ = nullptr;
    Text title_;
    Text tag_;
    int32_t state_ = 0;
    bool autoSaveFlag_ = false;
    bool visible_ = false;
};

} // namespace nib::test
