#include "shell/frame/frmDocument.h"

#include "diagnostics/DebugLog.h"
#include "documents/mvDocument.h"
#include "platform/qt/QtText.h"
#include "shell/Program.h"
#include "shell/frame/FramePlacement.h"
#include "shell/frame/frmDocumentWindow.h"
#include "shell/frame/frmMain.h"
#include "text/widget/SourceViewWidget.h"

namespace nib {

namespace {

constexpr int kFocusRetry = 50;

} // namespace

frmDocument::frmDocument(frmMain& mainWindow, Clipboard& clipboard, mvDocument& document)
    : mainWindow_(mainWindow), lexer_(&mainWindow.Owner().Log()), document_(&document),
      documentId_(document.DocumentID())
{
    Program& program = mainWindow_.Owner();
    program.Log().Write(u"frmdocument initialize begin", trace::kObjects);
    window_ = new DocumentWindow(*this, program.EditorSettings().MinMaxClose); // the MDI area takes it
    widget_ = new SourceViewWidget(buffer_, clipboard);
    window_->SetText(widget_);
    mainWindow_.AddChild(*this);
    program.Safely(u"frmDocument.Form_Load", [this] { Load(); });
    Connect();
    program.Log().Write(u"frmdocument initialize end", trace::kObjects);
}

frmDocument::~frmDocument()
{
    document_ = nullptr; // which may be in its own end
    window_->hide();
    Model().SetEvents(nullptr);
    window_->Detach();
    // The widget refers to this object's text: it goes first, the empty frame when Qt is back in its loop.
    delete widget_;
    mainWindow_.RemoveChild(*this);
    window_->deleteLater();
    mainWindow_.Owner().Log().Write(u"frmdocument terminate", trace::kObjects);
}

void frmDocument::Load()
{
    buffer_.SetLexer(&lexer_);
}

void frmDocument::Connect()
{
    Model().SetEvents(this);
    focusTimer_.setSingleShot(true);
    focusTimer_.setInterval(kFocusRetry);
    QObject::connect(&focusTimer_, &QTimer::timeout, window_, [this] {
        if (IsActive()) FocusText();
    });
    using View = SourceViewWidget;
    QObject::connect(widget_, &View::valueRequested, window_, [this] { Insert(false); });
    QObject::connect(widget_, &View::subValueRequested, window_, [this] { Insert(true); });
    QObject::connect(widget_, &View::mousePressed, window_, [this] { ClearTarget(); });
    QObject::connect(widget_, &View::mouseDoubleClicked, window_, [this] { doubleClicked_ = true; });
    QObject::connect(widget_, &View::mouseReleased, window_,
                     [this](Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPointF at) {
                         MouseReleased(button, modifiers, at);
                     });
    QObject::connect(widget_, &View::contextMenuRequested, window_,
                     [this](QPoint global) { mainWindow_.ShowContextMenu(HitAt(Model().Caret()), global); });
}

QMdiSubWindow* frmDocument::SubWindow() const
{
    return window_;
}

SourceView& frmDocument::Model() const
{
    return widget_->Model();
}

SourceView& frmDocument::txtText()
{
    return Model();
}

// The window

void frmDocument::Activate()
{
    if (window_->isMinimized()) window_->showNormal();
    mainWindow_.ActivateChild(*this);
    FocusText();
}

void frmDocument::Show()
{
    if (Visible()) return;
    mainWindow_.ShowChild(*this);
    FocusText();
}

void frmDocument::QueryUnload()
{
    if (document_) mainWindow_.Owner().Files().FileClose(*document_);
}

void frmDocument::SetTitle(TextView title)
{
    title_ = title;
    window_->setWindowTitle(PlainTitle(title_));
    widget_->setAccessibleName(ToQString(title_));
    mainWindow_.ChildTitleChanged(*this);
}

bool frmDocument::Visible() const
{
    return !window_->isHidden();
}

void frmDocument::SetWindowState(int32_t state)
{
    if (state == window_state::kMinimized)
        window_->showMinimized();
    else if (state == window_state::kMaximized)
        window_->showMaximized();
    else
        window_->showNormal();
}

int32_t frmDocument::WindowState() const
{
    if (window_->isMinimized()) return window_state::kMinimized;
    return window_->isMaximized() ? window_state::kMaximized : window_state::kNormal;
}

void frmDocument::StateChanged()
{
    if (std::exchange(lastState_, WindowState()) != lastState_) mainWindow_.ChildStateChanged(*this);
}

bool frmDocument::IsActive() const
{
    return mainWindow_.ActiveForm() == this;
}

// Coming to the front

void frmDocument::Activated()
{
    ClearTarget();
    ShowPosition();
    selectionSeen_ = Model().HasSelection();
    FocusText();
    // Not yet shown in full it cannot take the focus.
    if (!TextHasFocus()) focusTimer_.start();
}

void frmDocument::Deactivated()
{
    focusTimer_.stop();
    if (document_) mainWindow_.Owner().DocumentLeft(*document_);
}

void frmDocument::FocusText()
{
    widget_->setFocus(Qt::OtherFocusReason);
}

bool frmDocument::TextHasFocus() const
{
    return widget_->hasFocus();
}

void frmDocument::ShiftLines(bool outwards)
{
    if (outwards)
        Model().Backtab();
    else
        Model().Tab();
}

} // namespace nib
