#include "shell/frmDocument.h"

#include "documents/mvDocument.h"
#include "platform/qt/QtText.h"
#include "platform/sourceview/widget/SourceViewWidget.h"
#include "shell/frmMain.h"

#include <QCloseEvent>
#include <QMdiArea>
#include <QVBoxLayout>

namespace nib {

/// Turns the close button and Ctrl+F4 of the child window into the document's own close question.
class frmDocument::Window final : public QMdiSubWindow {
public:
    explicit Window(frmDocument& form) : form_(&form) {}
    void Detach() { form_ = nullptr; }

protected:
    void closeEvent(QCloseEvent* event) override
    {
        // Closing the document destroys the form and schedules this window's end; the event itself closes nothing.
        event->ignore();
        if (form_) form_->QueryUnload(0);
    }

private:
    frmDocument* form_;
};

frmDocument::frmDocument(frmMain& mainWindow, Clipboard& clipboard) : mainWindow_(mainWindow)
{
    window_ = new Window(*this); // the MDI area takes it
    widget_ = new SourceViewWidget(buffer_, clipboard, window_);
    widget_->setFrameShape(QFrame::NoFrame);
    window_->setWidget(widget_);
    window_->setAttribute(Qt::WA_DeleteOnClose, false);
    window_->resize(760, 520);
    Model().SetEvents(this);
    QObject::connect(widget_, &SourceViewWidget::valueRequested, window_, [this] {
        if (document_) document_->InsValue();
    });
    QObject::connect(widget_, &SourceViewWidget::subValueRequested, window_, [this] {
        if (document_) document_->InsSubValue();
    });
    mainWindow_.AddChild(*this);
}

frmDocument::~frmDocument()
{
    Model().SetEvents(nullptr);
    window_->Detach();
    // The widget refers to this object's text: it goes first, the empty frame when Qt is back in its loop.
    delete widget_;
    mainWindow_.RemoveChild(*this);
    window_->hide();
    window_->deleteLater();
}

QMdiSubWindow* frmDocument::SubWindow() const { return window_; }

SourceViewModel& frmDocument::Model() const
{
    return widget_->Model();
}

SourceView& frmDocument::txtText()
{
    return Model();
}

void frmDocument::Activate()
{
    if (window_->isMinimized()) window_->showNormal();
    mainWindow_.ActivateChild(*this);
    FocusText();
}

void frmDocument::Show()
{
    SetVisible(true);
}

bool frmDocument::QueryUnload(int32_t mode)
{
    if ((mode != 0 && mode != 4) || !document_) return false;
    return !document_->FileClose(true);
}

void frmDocument::Unload()
{
    window_->hide();
}

void frmDocument::SetTitle(TextView title)
{
    title_ = title;
    // "[*]" has a meaning of its own in Qt's titles; doubled it is plain text.
    QString shown = ToQString(title_);
    window_->setWindowTitle(shown.replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
    mainWindow_.ChildTitleChanged(*this);
}

void frmDocument::SetVisible(bool visible)
{
    if (!visible) {
        window_->hide();
        return;
    }
    if (window_->isVisible()) return;
    mainWindow_.ShowChild(*this);
    FocusText();
}

bool frmDocument::Visible() const
{
    return window_->isVisible();
}

void frmDocument::SetWindowState(int32_t state)
{
    if (state == 1)
        window_->showMinimized();
    else if (state == 2)
        window_->showMaximized();
    else
        window_->showNormal();
}

int32_t frmDocument::WindowState() const
{
    return window_->isMinimized() ? 1 : window_->isMaximized() ? 2 : 0;
}

bool frmDocument::IsActive() const
{
    return mainWindow_.ActiveForm() == this;
}

void frmDocument::FocusText()
{
    widget_->setFocus(Qt::OtherFocusReason);
}

void frmDocument::ShowPosition()
{
    Position caret = Model().Caret();
    mainWindow_.SetStatusText(2, u"Ln " + Decimal(caret.line + 1) + u", Col " + Decimal(caret.col + 1));
    mainWindow_.SetStatusText(3, Model().Overtype() ? u"Ovr" : u"Ins");
}

void frmDocument::CaretMoved(Position)
{
    if (!IsActive()) return;
    ShowPosition();
    if (Model().HasSelection() == selectionSeen_) return;
    selectionSeen_ = Model().HasSelection();
    mainWindow_.UpdateToolBar();
}

void frmDocument::ModifiedChanged(bool modified)
{
    autoSaveFlag_ = modified;
    if (document_) document_->UpdateTitle();
    mainWindow_.UpdateToolBar();
}

void frmDocument::LinesChanged()
{
    // Five digits from line 10000 on; the margin never narrows by itself, so that it does not jump while editing.
    int32_t needed = Model().ShowBlocks() ? 8 : 6;
    if (buffer_.LineCount() >= 10000 && Model().MarginWidth() < needed) Model().SetMarginWidth(needed);
}

void frmDocument::OvertypeChanged(bool)
{
    ShowPosition();
}

} // namespace nib
