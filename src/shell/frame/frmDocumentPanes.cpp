// The panes of a document window: one, or two on the same text; part of frmDocument.

#include "platform/qt/QtText.h"
#include "shell/frame/frmDocument.h"
#include "shell/frame/frmMain.h"
#include "text/widget/SourceViewWidget.h"

namespace nib {

void frmDocument::ConnectPane(SourceViewWidget& pane)
{
    using View = SourceViewWidget;
    if (QtAssist* assist = mainWindow_.Assist()) assist->AddPane(documentId_, pane);
    QObject::connect(&pane, &View::focused, window_, [this, &pane] { Lead(pane); });
    QObject::connect(&pane, &View::lookChanged, window_, [this, &pane] {
        SourceViewWidget* twin = &pane == widget_ ? other_ : widget_;
        if (!twin || std::exchange(mirroring_, true)) return;
        twin->Model().TakeLook(pane.Model());
        mirroring_ = false;
    });
    QObject::connect(&pane, &View::valueRequested, window_, [this] { Insert(false); });
    QObject::connect(&pane, &View::subValueRequested, window_, [this] { Insert(true); });
    QObject::connect(&pane, &View::mousePressed, window_, [this] { ClearTarget(); });
    QObject::connect(&pane, &View::mouseDoubleClicked, window_, [this] { doubleClicked_ = true; });
    QObject::connect(&pane, &View::mouseReleased, window_,
                     [this](Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPointF at) {
                         MouseReleased(button, modifiers, at);
                     });
    QObject::connect(&pane, &View::contextMenuRequested, window_,
                     [this](QPoint global) { mainWindow_.ShowContextMenu(HitAt(Model().Caret()), global); });
}

void frmDocument::Lead(SourceViewWidget& pane)
{
    if (&pane != other_) return;
    Model().SetEvents(nullptr);
    Model().SetLeads(false);
    std::swap(widget_, other_);
    Model().SetLeads(true);
    Model().SetEvents(this);
    window_->widget()->setFocusProxy(widget_);
    CaretMoved(Model().Caret());
}

void frmDocument::SetSplit(bool split)
{
    if (split == IsSplit()) return;
    if (!split) {
        delete std::exchange(other_, nullptr);
        return FocusText();
    }
    other_ = new SourceViewWidget(buffer_, clipboard_);
    window_->AddPane(other_);
    other_->setAccessibleName(ToQString(title_));
    other_->Model().SetLeads(false);
    other_->Model().TakeLook(Model());
    other_->SetZoom(widget_->Zoom());
    other_->show();
    FocusText(); // whatever the new one did about it
    ConnectPane(*other_);
    // Both begin where the reader is.
    int32_t line = 0;
    int32_t column = 0;
    Model().GetFirstVisible(line, column);
    other_->Model().SetFirstVisible(line, column);
    other_->Model().SetCaret(Model().Caret());
    widget_->RevealPlace(Model().Caret());
}

QRect frmDocument::SelectionOnScreen() const
{
    const TextRange selection = widget_->Model().Selection();
    const QRectF place = widget_->CellOf(selection.start) | widget_->CellOf(selection.end) | widget_->CaretRect();
    const QRect seen = place.toAlignedRect() & widget_->viewport()->rect();
    return {widget_->viewport()->mapToGlobal(seen.topLeft()), seen.size()};
}

void frmDocument::ChangePane()
{
    if (other_) other_->setFocus(Qt::OtherFocusReason);
}

} // namespace nib
