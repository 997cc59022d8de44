#include "shell/frmMain.h"

#include "documents/mvDocument.h"
#include "platform/qt/QtText.h"
#include "shell/FileCommands.h"
#include "shell/MenuTable.h"
#include "shell/Program.h"
#include "shell/frmDocument.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QStatusBar>
#include <QUrl>

#include <algorithm>

namespace nib {

frmMain::frmMain() : area_(new QMdiArea(this))
{
    area_->setViewMode(QMdiArea::SubWindowView);
    area_->setActivationOrder(QMdiArea::ActivationHistoryOrder);
    area_->setOption(QMdiArea::DontMaximizeSubWindowOnActivation, true);
    setCentralWidget(area_);
    setAcceptDrops(true);
    QObject::connect(area_, &QMdiArea::subWindowActivated, this, [this] { ChildActivated(); });
}

frmMain::~frmMain()
{
    area_->disconnect(this);
}

void frmMain::Load()
{
    BuildMenus();
    BuildStatusBar();
    SetTitle(u"Nib");
    // Three quarters of the screen, in its middle.
    QRect room = screen()->availableGeometry();
    setGeometry(room.x() + room.width() / 8, room.y() + room.height() / 8, room.width() * 3 / 4, room.height() * 3 / 4);
    UpdateToolBar();
}

void frmMain::BuildMenus()
{
    std::map<Text, QMenu*> menus;
    for (const MenuRow& row : kMainMenu) {
        QMenu*& menu = menus[row.menu];
        if (!menu) {
            menu = menuBar()->addMenu(QString::fromUtf16(row.menu));
            QObject::connect(menu, &QMenu::aboutToShow, this, [this] { UpdateToolBar(); });
        }
        if (row.beginsGroup) menu->addSeparator();
        QAction* action = menu->addAction(QString::fromUtf16(row.caption));
        action->setShortcut(QKeySequence(QString::fromUtf16(row.shortcut), QKeySequence::PortableText));
        action->setCheckable(IsCheckable(row.key));
        QObject::connect(action, &QAction::triggered, this, [this, key = row.key] { Run(key); });
        actions_[row.key] = action;
    }
}

void frmMain::BuildStatusBar()
{
    // The texts that the widths are made for.
    constexpr const char* kTemplates[] = {"", "Ln 100000, Col 100", "Ovr"};
    for (const char* widest : kTemplates) {
        auto* label = new QLabel(this);
        label->setTextFormat(Qt::PlainText);
        label->setMinimumWidth(label->fontMetrics().horizontalAdvance(QLatin1String(widest)) + 12);
        label->setAccessibleName(panels_.empty()       ? tr("Server status")
                                 : panels_.size() == 1 ? tr("Insertion point")
                                                       : tr("Overwrite or insert"));
        statusBar()->addWidget(label, panels_.empty() ? 1 : 0);
        panels_.push_back(label);
    }
    ShowStatusPanel(2, false);
    ShowStatusPanel(3, false);
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

void frmMain::SetStatusText(int32_t panel, TextView text)
{
    if (panel >= 1 && panel <= static_cast<int32_t>(panels_.size()))
        panels_[static_cast<size_t>(panel - 1)]->setText(ToQString(text));
}

void frmMain::ShowStatusPanel(int32_t panel, bool visible)
{
    if (panel >= 1 && panel <= static_cast<int32_t>(panels_.size()))
        panels_[static_cast<size_t>(panel - 1)]->setVisible(visible);
}

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
    if (!program_ || unloading_) return;
    CommandContext context = Context();
    for (auto& [key, action] : actions_) {
        CommandState state = StateOfCommand(key, context);
        action->setEnabled(state.enabled);
        if (action->isCheckable()) action->setChecked(state.checked);
    }
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

CommandContext frmMain::Context()
{
    frmDocument* form = ActiveForm();
    mvDocument* document = form ? form->ViewObject() : nullptr;
    return {*program_, *this, document ? document->shared_from_this() : nullptr};
}

void frmMain::Run(TextView key)
{
    CommandContext context = Context();
    RunCommand(key, context);
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

void frmMain::ToggleMaximized()
{
    if (frmDocument* form = ActiveForm()) form->SetWindowState(form->WindowState() == 2 ? 0 : 2);
    UpdateToolBar();
}

bool frmMain::ActiveMaximized() const
{
    frmDocument* form = ActiveForm();
    return form && form->WindowState() == 2;
}

} // namespace nib
