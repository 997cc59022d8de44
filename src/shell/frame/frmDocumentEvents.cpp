// What happens in the text of a document window; part of frmDocument.

#include "documents/DocumentSettings.h"
#include "documents/mvDocument.h"
#include "records/frmRecord.h"
#include "shell/Program.h"
#include "shell/frame/frmDocument.h"
#include "shell/frame/frmMain.h"
#include "text/widget/SourceViewWidget.h"

namespace nib {

// Status bar and command states

void frmDocument::ShowPosition()
{
    Position caret = Model().Caret();
    mainWindow_.SetStatusText(2, u"Ln " + Decimal(caret.line + 1) + u", Col " + Decimal(caret.col + 1));
    mainWindow_.SetStatusText(3, Model().Overtype() ? u"Ovr" : u"Ins");
}

void frmDocument::CheckSelection()
{
    if (std::exchange(selectionSeen_, Model().AnySelection()) != selectionSeen_) mainWindow_.Owner().StateChanged();
}

void frmDocument::CaretMoved(Position)
{
    if (!IsActive()) return;
    EndRefusal();
    ShowPosition();
    if (grid_) grid_->FollowCaret();
    CheckSelection();
    if (QtAssist* assist = mainWindow_.Assist()) assist->CaretMoved();
}

void frmDocument::EditRefused()
{
    if (!document_) return;
    refused_ = true;
    mainWindow_.SetStatusText(1, document_->DisplayName() + u" is read-only. Save it under another name to change it.");
    mainWindow_.Owner().Services().boxes.Beep();
}

void frmDocument::EndRefusal()
{
    if (std::exchange(refused_, false)) mainWindow_.SetStatusText(1, u"");
}

void frmDocument::ModifiedChanged(bool modified)
{
    autoSaveFlag_ = modified;
    if (document_) mainWindow_.Owner().Shell().DocumentChanged(*document_);
}

void frmDocument::LinesChanged()
{
    // The margin never narrows by itself, so that it does not jump while editing.
    const int32_t needed = MarginWidthFor(Model());
    if (needed > Model().MarginWidth()) Model().SetMarginWidth(needed);
}

void frmDocument::OvertypeChanged(bool)
{
    if (IsActive()) ShowPosition();
}

void frmDocument::Insert(bool subValue)
{
    if (!document_) return;
    mainWindow_.Owner().Safely(u"frmDocument.txtText_KeyPress", [&] {
        if (!Model().MayEdit()) return;
        if (subValue)
            document_->InsSubValue();
        else
            document_->InsValue();
    });
}

// Mouse

void frmDocument::ClearTarget()
{
    mainWindow_.Owner().Target() = {};
}

HitKind frmDocument::HitAt(Position at)
{
    return (mainWindow_.Owner().Target() = HitTest(Model(), at, &lexer_)).kind;
}

void frmDocument::MouseReleased(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPointF at)
{
    Position place = widget_->PositionAt(at, true);
    if (std::exchange(doubleClicked_, false)) FollowTarget();
    constexpr auto held = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier;
    if (button == Qt::LeftButton && !(modifiers & held)) {
        lastMouse_ = place;
        mainWindow_.Owner().StateChanged();
    } else if (button == Qt::RightButton) {
        QPoint global = widget_->viewport()->mapToGlobal(at.toPoint());
        HitKind kind = HitAt(place);
        window_->Post([kind, global](frmDocument& form) { form.mainWindow_.ShowContextMenu(kind, global); });
    }
}

void frmDocument::FollowTarget()
{
    HitKind kind = HitAt(lastMouse_);
    const char16_t* command = kind == HitKind::Label                              ? u"ctxGoto"
                              : kind == HitKind::Call || kind == HitKind::Include ? u"ctxOpen"
                                                                                  : nullptr;
    // The text may be gone when the command is over: its own event comes to its end first.
    if (command) window_->Post([command](frmDocument& form) { form.mainWindow_.Run(command); });
}

} // namespace nib
