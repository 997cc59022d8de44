// Windows among those of the documents that show no document of their own; part of frmMain.

#include "platform/qt/QtText.h"
#include "shell/Program.h"
#include "shell/frame/frmDocument.h"
#include "shell/frame/frmMain.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>

#include <algorithm>

namespace nib {

namespace {

constexpr QSize kUsualSize(900, 560);

} // namespace

void frmMain::TakeGuest(QWidget* content)
{
    for (const auto& [known, guest] : guests_)
        if (guest->widget() == content) return ActivateGuest(known);
    const int32_t tab = --lastGuest_;
    QMdiSubWindow* guest = area_->addSubWindow(content);
    // As those of documents: keys are the frame's.
    for (QAction* action : guest->actions()) action->setShortcuts(QList<QKeySequence>());
    guest->resize(kUsualSize);
    guests_[tab] = guest;
    ShowGuestTab(tab);
    QObject::connect(content, &QWidget::windowTitleChanged, this, [this, tab] {
        ShowGuestTab(tab);
        UpdateCaption();
    });
    QObject::connect(content, &QObject::destroyed, guest, [guest] { guest->deleteLater(); });
    QObject::connect(guest, &QObject::destroyed, this, [this, tab] {
        guests_.erase(tab);
        if (unloading_) return;
        menus_.RemoveTab(tab);
        if (frmDocument* front = order_.Front()) area_->setActiveSubWindow(front->SubWindow());
        UpdateCaption();
    });
    start_.SetEmpty(false);
    if (childrenMaximised_)
        guest->showMaximized();
    else
        guest->show();
    area_->setActiveSubWindow(guest);
}

QMdiSubWindow* frmMain::ActiveGuest() const
{
    QMdiSubWindow* active = area_->currentSubWindow();
    const bool known = std::any_of(guests_.begin(), guests_.end(), [&](auto& each) { return each.second == active; });
    return active && known && active->widget() ? active : nullptr;
}

int32_t frmMain::GuestInFront() const
{
    const QMdiSubWindow* active = ActiveGuest();
    const auto of = std::find_if(guests_.begin(), guests_.end(), [&](auto& each) { return each.second == active; });
    return of == guests_.end() ? 0 : of->first;
}

void frmMain::GuestActivated(QMdiSubWindow& guest)
{
    menus_.SetActiveTab(GuestInFront());
    if (childrenMaximised_ && !guest.isMaximized() && !guest.isMinimized()) guest.showMaximized();
    guest.widget()->setFocus();
    for (int32_t panel : {2, 3}) SetStatusText(panel, {}); // of the caret in a document
    UpdateCaption();
    program_->StateChanged();
}

void frmMain::ShowGuestTab(int32_t tab)
{
    const Text title = ToText(guests_[tab]->widget()->windowTitle());
    menus_.SetTab(tab, title, title);
}

void frmMain::ActivateGuest(int32_t tab)
{
    const auto guest = guests_.find(tab);
    if (guest == guests_.end()) return;
    if (guest->second->isMinimized()) guest->second->showNormal();
    area_->setActiveSubWindow(guest->second);
}

void frmMain::CloseGuest(int32_t tab)
{
    const auto guest = guests_.find(tab);
    if (guest != guests_.end()) guest->second->close();
}

} // namespace nib
