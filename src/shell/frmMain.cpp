#include "shell/frmMain.h"

#include "documents/mvDocument.h"
#include "platform/qt/QtText.h"
#include "shell/FileCommands.h"
#include "shell/Program.h"
#include "shell/frmDocument.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QScreen>
#include <QUrl>

#include <algorithm>

namespace nib {

frmMain::frmMain() : area_(new QMdiArea(this))
{
    area_->setViewMode(QMdiArea::SubWindowView);
    area_->setActivationOrder(QMdiArea::ActivationHistoryOrder);
    area_->setOption(QMdiArea::DontMaximizeSubWindowOnActivation, true);
    menuBar_.SetCentral(area_);
    ports_.windows = this;
    setAcceptDrops(true);
    QObject::connect(area_, &QMdiArea::subWindowActivated, this, [this] { ChildActivated(); });
}

frmMain::~frmMain()
{
    area_->disconnect(this);
}

void frmMain::Load()
{
    dispatcher_ = std::make_unique<MenuDispatcher>(*program_, menus_, menuBar_, ports_);
    menuBar_.SetEvents(dispatcher_.get());
    SetTitle(u"Nib");
    // Three quarters of the screen, in its middle.
    QRect room = screen()->availableGeometry();
    setGeometry(room.x() + room.width() / 8, room.y() + room.height() / 8, room.width() * 3 / 4, room.height() * 3 / 4);
    UpdateToolBar();
}

void frmMain::Show()
{
    show();
}

void frmMain::Unload()
{
    if (unloading_) return;
    unloading_ = true;
    close();
}

void frmMain::ToForeground()
{
    if (!isVisible()) return;
    if (isMinimized()) showNormal();
    raise();
    activateWindow();
}

void frmMain::SetTitle(TextView title)
{
    title_ = title;
    UpdateCaption();
}

void frmMain::UpdateCaption()
{
    frmDocument* form = ActiveForm();
    Text caption = title_;
    if (form && form->WindowState() == 2) caption += u" - [" + form->Title() + u"]";
    setWindowTitle(ToQString(caption));
}

void frmMain::SetStatusText(int32_t panel, TextView text) { menus_.SetPanelText(panel, text); }

void frmMain::ShowStatusPanel(int32_t panel, bool visible) { menus_.ShowPanel(panel, visible); }

void frmMain::SetWaitCursor(bool wait)
{
    if (wait == waiting_) return;
    waiting_ = wait;
    if (wait)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void frmMain::UpdateToolBar()
{
    if (!dispatcher_ || unloading_) return;
    for (frmDocument* form : children_)
        if (mvDocument* document = form->ViewObject())
            menus_.SetTab(document->DocumentID(), document->DisplayName(), form->Title());
    menus_.SetActiveTab(ActiveDocument());
    dispatcher_->UpdateToolBar();
    UpdateCaption();
}

void frmMain::ProcessMessages()
{
    QApplication::processEvents();
}

int32_t frmMain::ActiveDocument() const
{
    frmDocument* form = ActiveForm();
    return form && form->ViewObject() ? form->ViewObject()->DocumentID() : 0;
}

void frmMain::AddChild(frmDocument& form)
{
    area_->addSubWindow(form.SubWindow());
    form.SubWindow()->hide();
    children_.push_back(&form);
}

void frmMain::RemoveChild(frmDocument& form)
{
    std::erase(children_, &form);
    menus_.RemoveTab(ToInt(form.Tag()));
    if (lastActive_ == &form) lastActive_ = nullptr;
    area_->removeSubWindow(form.SubWindow());
    UpdateToolBar();
}

void frmMain::ShowChild(frmDocument& form)
{
    // A new window follows its neighbour; the first one fills the frame.
    auto other = std::find_if(children_.rbegin(), children_.rend(),
                              [&](frmDocument* child) { return child != &form && child->Visible(); });
    frmDocument* neighbour = lastActive_ && lastActive_ != &form ? lastActive_ : nullptr;
    if (!neighbour && other != children_.rend()) neighbour = *other;
    int32_t state = !neighbour ? 2 : neighbour->WindowState() == 1 ? 0 : neighbour->WindowState();
    form.SetWindowState(state);
    area_->setActiveSubWindow(form.SubWindow());
    ShowStatusPanel(2, true);
    ShowStatusPanel(3, true);
}

void frmMain::ActivateChild(frmDocument& form)
{
    area_->setActiveSubWindow(form.SubWindow());
}

void frmMain::ChildTitleChanged(frmDocument& form)
{
    if (ActiveForm() == &form) UpdateCaption();
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
    if (frmDocument* form = ActiveForm()) {
        if (form->Visible()) lastActive_ = form;
        form->ShowPosition();
        form->FocusText();
    }
    UpdateToolBar();
}

void frmMain::closeEvent(QCloseEvent* event)
{
    if (!unloading_) {
        if (!program_->Files().FileCloseAll()) {
            event->ignore();
            return;
        }
        unloading_ = true;
    }
    event->accept();
    program_->Shutdown();
    QApplication::quit();
}

void frmMain::dragEnterEvent(QDragEnterEvent* event)
{
    if (!event->mimeData()->hasUrls()) return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void frmMain::dropEvent(QDropEvent* event)
{
    std::vector<Text> files;
    for (const QUrl& url : event->mimeData()->urls())
        if (url.isLocalFile()) files.push_back(ToText(url.toLocalFile()));
    event->setDropAction(Qt::CopyAction);
    event->accept();
    program_->HandleDroppedFiles(files);
}

void frmMain::Arrange(int32_t mode)
{
    if (mode == 0)
        area_->cascadeSubWindows();
    else
        area_->tileSubWindows();
    UpdateToolBar();
}

} // namespace nib
