// The child windows of the frame; part of frmMain.

#include "platform/qt/QtText.h"
#include "shell/Program.h"
#include "shell/frame/WindowPlacement.h"
#include "shell/frame/frmDocument.h"
#include "shell/frame/frmMain.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStyle>

#include <algorithm>

namespace nib {

// Coming and going

void frmMain::AddChild(frmDocument& form)
{
    area_->addSubWindow(form.SubWindow());
    form.SubWindow()->hide();
    children_.push_back(&form);
}

void frmMain::RemoveChild(frmDocument& form)
{
    std::erase(children_, &form);
    menus_.RemoveTab(form.DocumentID());
    order_.Remove(&form);
    if (current_ == &form) current_ = nullptr;
    area_->removeSubWindow(form.SubWindow());
    FollowChildren();
    // What lay behind comes to the front, also when the user has stepped through the windows.
    if (frmDocument* front = order_.Front()) area_->setActiveSubWindow(front->SubWindow());
    ChildActivated();
    if (current_) return;
    UpdateCaption();
    program_->StateChanged();
}

void frmMain::FollowChildren()
{
    start_.SetEmpty(std::none_of(children_.begin(), children_.end(), [](auto* form) { return form->Visible(); }));
}

int32_t frmMain::StateForNew(const frmDocument& form) const
{
    for (const frmDocument* other : order_.All()) {
        if (other == &form || !other->Visible()) continue;
        return other->WindowState() == window_state::kMinimized ? window_state::kNormal : other->WindowState();
    }
    return window_state::kMaximized;
}

void frmMain::ShowChild(frmDocument& form)
{
    int32_t state = StateForNew(form);
    childrenMaximised_ = state == window_state::kMaximized;
    start_.SetEmpty(false);
    form.SetWindowState(state);
    area_->setActiveSubWindow(form.SubWindow());
    ShowStatusPanel(2, true);
    ShowStatusPanel(3, true);
}

// Coming to the front

void frmMain::ActivateChild(frmDocument& form)
{
    area_->setActiveSubWindow(form.SubWindow());
}

frmDocument* frmMain::ActiveForm() const
{
    QMdiSubWindow* active = area_->currentSubWindow();
    auto found = std::find_if(children_.begin(), children_.end(),
                              [&](frmDocument* form) { return form->SubWindow() == active; });
    return active && found != children_.end() ? *found : nullptr;
}

void frmMain::ChildActivated()
{
    // Qt tells of no active window while the whole program is in the background; for us nothing changes then.
    frmDocument* form = ActiveForm();
    QMdiSubWindow* guest = ActiveGuest();
    if (guest) GuestActivated(*guest);
    if (arranging_ || form == current_ || (form && !form->Visible())) return;
    if (!form && !guest && !order_.All().empty()) return;
    frmDocument* before = std::exchange(current_, form);
    if (before) before->Deactivated();
    if (!guest) menus_.SetActiveTab(ActiveDocument());
    if (form) {
        order_.ToFront(form);
        FollowFrameState(*form);
        form->Activated();
    }
    UpdateCaption();
    program_->StateChanged();
}

void frmMain::FollowFrameState(frmDocument& form)
{
    int32_t state = form.WindowState();
    if (childrenMaximised_ && state == window_state::kNormal) form.SetWindowState(window_state::kMaximized);
    if (!childrenMaximised_ && state == window_state::kMaximized) form.SetWindowState(window_state::kNormal);
}

void frmMain::StepDocument(bool backward)
{
    frmDocument* before = ActiveForm();
    for (size_t tries = order_.All().size(); tries > 0; --tries) {
        frmDocument* next = order_.Step(backward);
        if (next == before || !next->Visible()) continue;
        ActivateChild(*next);
        if (before && !backward && !childrenMaximised_) before->SubWindow()->lower();
        return;
    }
}

void frmMain::ChildTitleChanged(frmDocument& form)
{
    ShowTab(form);
    if (&form != ActiveForm()) return;
    menus_.SetActiveTab(ActiveDocument());
    UpdateCaption();
}

void frmMain::ChildStateChanged(frmDocument& form)
{
    if (arranging_ || ActiveForm() != &form) return;
    bool maximised = form.WindowState() == window_state::kMaximized;
    if (std::exchange(childrenMaximised_, maximised) && !maximised) RestoreAll();
    UpdateCaption();
}

void frmMain::RestoreAll()
{
    // Qt activates every window that it restores.
    frmDocument* front = ActiveForm();
    arranging_ = true;
    for (frmDocument* form : order_.All())
        if (form->WindowState() == window_state::kMaximized) form->SetWindowState(window_state::kNormal);
    arranging_ = false;
    if (!front) return;
    area_->setActiveSubWindow(front->SubWindow());
    front->FocusText();
    UpdateCaption();
}

// Arrangement

void frmMain::Arrange(int32_t mode)
{
    auto how = static_cast<Arrangement>(mode);
    std::vector<frmDocument*> forms;
    bool icons = false;
    for (frmDocument* form : order_.All()) {
        if (!form->Visible()) continue;
        bool minimised = form->WindowState() == window_state::kMinimized;
        icons = icons || minimised;
        if (!minimised) forms.push_back(form);
    }
    // The front window of a cascade comes last, so that every title bar is in sight.
    if (how == Arrangement::Cascade) std::reverse(forms.begin(), forms.end());
    childrenMaximised_ = false;
    RestoreAll();
    int titleBar = style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, area_);
    QSize room = area_->viewport()->size();
    if (icons) room.rheight() -= titleBar;
    auto cells = ArrangedCells(how, static_cast<int32_t>(forms.size()), room.width(), room.height(), titleBar);
    for (size_t i = 0; i < cells.size(); ++i) {
        QMdiSubWindow* window = forms[i]->SubWindow();
        window->setGeometry(cells[i].left, cells[i].top, cells[i].width, cells[i].height);
        if (how == Arrangement::Cascade) window->raise();
    }
    UpdateCaption();
    program_->StateChanged();
}

} // namespace nib
