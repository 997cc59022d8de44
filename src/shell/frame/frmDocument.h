#pragma once
// The child window of one document: its text component, and what the events of that mean to the frame.

#include "documents/DocumentServices.h"
#include "editing/LexClass.h"
#include "shell/ClickTarget.h"
#include "text/SourceView.h"

#include <QMdiSubWindow>
#include <QPointF>
#include <QTimer>

#include <functional>
#include <memory>

class QSplitter;

namespace nib {

class Dictionary;
class DocumentWindow;
class frmMain;
class frmRecord;
class mvDocument;
class SourceViewWidget;

/// The window class behind clsDocView. Qt owns the visible part, the document owns this object; when the document lets
/// it go, the window goes too.
class frmDocument final : public clsDocView, public ViewEvents {
public:
    frmDocument(frmMain& mainWindow, Clipboard& clipboard, mvDocument& document);
    ~frmDocument() override;

    // clsDocView
    void Activate() override;
    void Show() override;
    void QueryUnload() override;
    SourceView& txtText() override;
    LexClass* Lexer() override { return &lexer_; }
    void SetTitle(TextView title) override;
    bool AutoSaveFlag() const override { return autoSaveFlag_; }
    void SetWindowState(int32_t state) override;
    int32_t WindowState() const override;
    Text Placement() const override;
    void SetPlacement(TextView placement) override;
    bool IsActive() const override;
    bool IsSplit() const override { return other_ != nullptr; }
    void SetSplit(bool split) override;
    void ChangePane() override;
    bool IsGrid() const override { return grid_ != nullptr; }
    void SetGrid(bool grid) override;
    Text TakeInput() override;
    void Opened() override;

    // ViewEvents
    void CaretMoved(Position caret) override;
    void ModifiedChanged(bool modified) override;
    void LinesChanged() override;
    void OvertypeChanged(bool overtype) override;
    void EditRefused() override;

    // For the frame
    /// Null once the document lets it go.
    mvDocument* ViewObject() const { return document_; }
    int32_t DocumentID() const { return documentId_; }
    Text Title() const { return title_; }
    bool Visible() const;
    QMdiSubWindow* SubWindow() const;
    /// The window has come to the front, or another has taken its place there.
    void Activated();
    void Deactivated();
    void FocusText();
    /// Of the pane at work, as far as it is in sight; pixels.
    QRect SelectionOnScreen() const;
    bool TextHasFocus() const;
    void ShiftLines(bool outwards);

private:
    friend class DocumentWindow;

    SourceView& Model() const;
    void Load();
    void Connect();
    void ConnectPane(SourceViewWidget& pane);
    void RestoreGrid();
    void RemakeGrid();
    void ShowGrid(Dictionary dictionary);
    /// It is the one at work from now on.
    void Lead(SourceViewWidget& pane);
    void ShowPosition();
    void EndRefusal();
    void StateChanged();
    void CheckSelection();
    void Insert(bool subValue);
    void ClearTarget();
    HitKind HitAt(Position at);
    void MouseReleased(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPointF at);
    void FollowTarget();

    frmMain& mainWindow_;
    LexClass lexer_; ///< outlives the buffer, which calls it
    SourceDocument buffer_;
    DocumentWindow* window_ = nullptr;   ///< owned by the MDI area, deleted with this object
    SourceViewWidget* widget_ = nullptr; ///< the pane at work; owned by window_
    SourceViewWidget* other_ = nullptr;  ///< the other pane of a text in two
    frmRecord* grid_ = nullptr;          ///< in place of the panes; owned by window_
    Text gridFile_;                      ///< whose dictionary that has
    Clipboard& clipboard_;
    mvDocument* document_;
    const int32_t documentId_;
    QTimer focusTimer_;
    Text title_;
    Position lastMouse_; ///< where the left button was last released
    int32_t lastState_ = 0;
    bool doubleClicked_ = false; ///< the next release of the button acts
    bool autoSaveFlag_ = false;
    bool selectionSeen_ = false;
    bool refused_ = false; ///< and the status bar says why
    bool mirroring_ = false;
};

/// The visible part of a document window. It may outlive its form by a moment, and then does nothing more.
class DocumentWindow final : public QMdiSubWindow {
public:
    /// With or without the buttons of its title bar, which stay as they are for the life of the window.
    DocumentWindow(frmDocument& form, bool buttons);
    void Detach() { form_ = nullptr; }
    void SetText(SourceViewWidget* text);
    /// Above or below the panes that are there; the window owns it.
    void AddPane(SourceViewWidget* text);
    /// In place of the panes, which come back without one. The window owns it.
    void ShowInstead(QWidget* other);
    /// Runs `body` when the event being handled is over, if the form is still there.
    void Post(std::function<void(frmDocument&)> body);

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    frmDocument* form_;
    QSplitter* panes_ = nullptr; ///< owned by the window's content
};

} // namespace nib
