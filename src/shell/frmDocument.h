#pragma once
// The child window of one document: its text component, and the events that the frame wants to hear of.

#include "documents/clsDocView.h"
#include "platform/sourceview/SourceViewModel.h"

#include <QMdiSubWindow>

#include <memory>

namespace nib {

class frmMain;
class SourceViewWidget;

/// The window class behind clsDocView. Qt owns the visible part, the document owns this object; when the document lets
/// it go, the window goes too.
class frmDocument final : public clsDocView, public ViewEvents {
public:
    explicit frmDocument(frmMain& mainWindow, Clipboard& clipboard);
    ~frmDocument() override;

    // clsDocView
    void Activate() override;
    void Show() override;
    bool QueryUnload(int32_t mode) override;
    void Unload() override;
    SourceView& txtText() override;
    void SetTitle(TextView title) override;
    Text Title() const override { return title_; }
    void SetViewObject(mvDocument* document) override { document_ = document; }
    mvDocument* ViewObject() const override { return document_; }
    void SetAutoSaveFlag(bool flag) override { autoSaveFlag_ = flag; }
    bool AutoSaveFlag() const override { return autoSaveFlag_; }
    void SetTag(TextView tag) override { tag_ = tag; }
    Text Tag() const override { return tag_; }
    void SetVisible(bool visible) override;
    bool Visible() const override;
    void SetWindowState(int32_t state) override;
    int32_t WindowState() const override;
    bool IsActive() const override;

    // ViewEvents
    void CaretMoved(Position caret) override;
    void ModifiedChanged(bool modified) override;
    void LinesChanged() override;
    void OvertypeChanged(bool overtype) override;

    QMdiSubWindow* SubWindow() const;
    /// Panels 2 and 3 afresh, when the window comes to the front.
    void ShowPosition();
    void FocusText();

private:
    class Window;

    SourceViewModel& Model() const;

    frmMain& mainWindow_;
    SourceBuffer buffer_;
    SourceViewWidget* widget_ = nullptr; ///< owned by window_
    Window* window_ = nullptr;           ///< owned by the MDI area, deleted with this object
    mvDocument* document_ = nullptr;
    Text title_;
    Text tag_;
    bool autoSaveFlag_ = false;
    bool selectionSeen_ = false;
};

} // namespace nib
