#include "shell/frame/frmMain.h"

#include "documents/mvDocument.h"
#include "platform/qt/QtText.h"
#include "shell/Program.h"
#include "shell/frame/QtScreenKeeper.h"
#include "shell/frame/frmDocument.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScreen>

namespace nib {

namespace {

constexpr TextView kTitle = u"Nib";
constexpr int kShutdownDelay = 50;
constexpr int kStuckFocusDelay = 100;

Desktop PresentDesktop(const QScreen& screen)
{
    double across = screen.logicalDotsPerInchX();
    double down = screen.logicalDotsPerInchY();
    QRect all = screen.virtualGeometry();
    const QScreen* primary = QGuiApplication::primaryScreen();
    QSize size = (primary ? primary : &screen)->geometry().size();
    const auto twips = [&](const QRect& rect) {
        return FrameBounds{PixelsToTwips(rect.x(), across), PixelsToTwips(rect.y(), down),
                           PixelsToTwips(rect.width(), across), PixelsToTwips(rect.height(), down)};
    };
    Desktop desktop{twips(all), PixelsToTwips(size.width(), across), PixelsToTwips(size.height(), down), {}};
    for (const QScreen* each : QGuiApplication::screens()) desktop.screens.push_back(twips(each->availableGeometry()));
    return desktop;
}

} // namespace

frmMain::frmMain() : area_(new QMdiArea(this)), start_(*area_)
{
    area_->setAccessibleName(QCoreApplication::translate("frmMain", "Documents"));
    area_->setViewMode(QMdiArea::SubWindowView);
    area_->setActivationOrder(QMdiArea::ActivationHistoryOrder);
    area_->setOption(QMdiArea::DontMaximizeSubWindowOnActivation, true);
    menuBar_.SetCentral(area_);
    setAcceptDrops(true);
    QObject::connect(area_, &QMdiArea::subWindowActivated, this, [this] { ChildActivated(); });

    shutdownTimer_.setSingleShot(true);
    shutdownTimer_.setInterval(kShutdownDelay);
    QObject::connect(&shutdownTimer_, &QTimer::timeout, this, [this] {
        // The frame does not go from under a dialog; it is asked again when that is over.
        if (IsModal()) return shutdownTimer_.start();
        // The user may have opened one meanwhile.
        if (program_->OpenDocuments().Count() == 0) Unload();
    });
    stuckFocusTimer_.setSingleShot(true);
    stuckFocusTimer_.setInterval(kStuckFocusDelay);
    QObject::connect(&stuckFocusTimer_, &QTimer::timeout, this, [this] { FreeStuckFocus(); });
}

frmMain::~frmMain()
{
    area_->disconnect(this);
    qApp->removeEventFilter(this);
}

// Load

void frmMain::Load(Program& program)
{
    program_ = &program;
    start_.SetProgram(&program);
    program.Log().Write(u"mdiform initialize", trace::kObjects);
    program.Safely(u"frmMain.MDIForm_Load", [this] { LoadParts(); });
}

void frmMain::LoadParts()
{
    program_->Log().Write(u"mdiform load begin", trace::kObjects);
    UpdateCaption();
    placement_.Load(program_->Store(), PresentDesktop(*screen()));
    Place();
    new QtScreenKeeper(this);
    LoadBands();
    panels_ = std::make_unique<QtPanelKeeper>(*this, program_->Store());
    assist_ = std::make_unique<QtAssist>(program_->Assist(), program_->Names(), program_->Services(), *this);
    QObject::connect(qApp, &QApplication::focusChanged, this,
                     [this](const QWidget*, const QWidget* now) { FocusMoved(now); });
    qApp->installEventFilter(this);
    loaded_ = true;
    UpdateToolBar();
    program_->Log().Write(u"mdiform load end", trace::kObjects);
}

void frmMain::Place()
{
    double across = screen()->logicalDotsPerInchX();
    double down = screen()->logicalDotsPerInchY();
    const FrameBounds& bounds = placement_.Bounds();
    setWindowState(Qt::WindowNoState);
    move(TwipsToPixels(bounds.left, across), TwipsToPixels(bounds.top, down));
    resize(TwipsToPixels(bounds.width, across), TwipsToPixels(bounds.height, down));
    if (placement_.State() == window_state::kMinimized) setWindowState(Qt::WindowMinimized);
    if (placement_.State() == window_state::kMaximized) setWindowState(Qt::WindowMaximized);
}

void frmMain::Show()
{
    show();
}

// Place on the desktop

int32_t frmMain::PresentState() const
{
    if (isMinimized()) return window_state::kMinimized;
    return isMaximized() || isFullScreen() ? window_state::kMaximized : window_state::kNormal;
}

FrameBounds frmMain::PresentBounds() const
{
    double across = screen()->logicalDotsPerInchX();
    double down = screen()->logicalDotsPerInchY();
    FrameBounds now{PixelsToTwips(x(), across), PixelsToTwips(y(), down), PixelsToTwips(width(), across),
                    PixelsToTwips(height(), down)};
    if (!QtScreenKeeper::PlacesWindows()) {
        now.left = placement_.Bounds().left;
        now.top = placement_.Bounds().top;
    }
    return now;
}

void frmMain::Placed()
{
    if (loaded_ && isVisible() && !unloading_) placement_.Placed(PresentState(), PresentBounds());
}

void frmMain::moveEvent(QMoveEvent* event)
{
    QMainWindow::moveEvent(event);
    Placed();
}

void frmMain::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    Placed();
}

// Unload

void frmMain::ArmShutdownTimer()
{
    shutdownTimer_.start();
}

bool frmMain::IsModal() const
{
    return background_.IsBusy() || QApplication::activeModalWidget() != nullptr;
}

/// As the user cannot do anything while a box is up.
void frmMain::RunWhenFree(const std::function<void()>& what)
{
    if (!IsModal()) return what();
    QTimer::singleShot(kShutdownDelay, this, [this, what] { RunWhenFree(what); });
}

void frmMain::Unload()
{
    if (unloading_) return;
    unloading_ = true;
    close();
}

void frmMain::closeEvent(QCloseEvent* event)
{
    if (!unloading_ && loaded_) {
        if (Postpone([this] { close(); })) return event->ignore();
        if (!program_->Files().CloseAllToEnd()) return event->ignore();
        unloading_ = true;
    }
    event->accept();
    if (std::exchange(loaded_, false)) program_->Safely(u"frmMain.MDIForm_Unload", [this] { UnloadParts(); });
    if (program_) program_->Shutdown();
    QApplication::quit();
}

void frmMain::UnloadParts()
{
    qApp->removeEventFilter(this);
    qApp->disconnect(this);
    start_.SetProgram(nullptr);
    for (QTimer* timer : {&shutdownTimer_, &stuckFocusTimer_}) timer->stop();
    panels_->Save();
    panels_.reset();
    assist_.reset();
    placement_.Placed(PresentState(), PresentBounds());
    placement_.toolbarVisible = menus_.State(Band::ToolBar).visible;
    placement_.statusbarVisible = menus_.State(Band::StatusBar).visible;
    placement_.Save(program_->Store(), PresentState());
    program_->Log().Write(u"mdiform terminate", trace::kObjects);
}

// The other services of MainWindow

void frmMain::ToForeground()
{
    if (!loaded_) return;
    if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
    show(); // a client may have hidden it, and the user must see what a question is about
    raise();
    activateWindow();
}

void frmMain::UpdateCaption()
{
    frmDocument* form = ActiveForm();
    Text caption(kTitle);
    if (form && !form->Title().empty()) {
        const bool joined = form->WindowState() == window_state::kMaximized;
        caption += joined ? u" - [" + form->Title() + u"]" : u" - " + form->Title();
    } else if (const QMdiSubWindow* guest = ActiveGuest()) {
        caption += u" - " + ToText(guest->windowTitle());
    }
    setWindowTitle(PlainTitle(caption));
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

void frmMain::ProcessMessages()
{
    // The user's input waits: none of it may close what the caller is still at work on.
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

int32_t frmMain::ActiveDocument() const
{
    frmDocument* form = ActiveForm();
    return form && form->ViewObject() ? form->ViewObject()->DocumentID() : 0;
}

// Menus, tool bar, status bar and document tabs

void frmMain::LoadBands()
{
    dispatcher_ = std::make_unique<MenuDispatcher>(*program_, menuBar_);
    menuBar_.SetEvents(dispatcher_.get());
    menus_.ShowBand(Band::StatusBar, placement_.statusbarVisible);
    menus_.ShowBand(Band::ToolBar, placement_.toolbarVisible);
    const MvEdit& settings = program_->EditorSettings();
    menus_.SetIconSize(Band::ToolBar, settings.ToolbarLargeIcons ? kLargeIcons : kSmallIcons);
    menus_.SetHotTrack(Band::ToolBar, settings.ToolbarHotTrack);
}

void frmMain::SetStatusText(int32_t panel, TextView text)
{
    menus_.SetPanelText(panel, text);
}

void frmMain::ShowStatusPanel(int32_t panel, bool visible)
{
    menus_.ShowPanel(panel, visible);
}

void frmMain::UpdateToolBar()
{
    if (loaded_ && !unloading_) dispatcher_->UpdateToolBar();
}

void frmMain::ShowTab(frmDocument& form)
{
    mvDocument* document = form.ViewObject();
    if (!document) return;
    Text name = document->DisplayName();
    size_t own = document->ItemObject() && !document->LocalFile() ? name.size() - document->ItemID().size() : 0;
    if (document->IsDirty()) {
        name.insert(0, 1, u'*');
        own += own > 0;
    }
    MenuBatch batch(menus_);
    menus_.SetTab(document->DocumentID(), name,
                  document->LocalFile() ? document->ItemObject()->DisplayPath() : form.Title(), own);
    menus_.SetTabColor(document->DocumentID(), document->Color());
}

bool frmMain::Run(TextView key)
{
    return dispatcher_->Run(key);
}

bool frmMain::CanRun(TextView key) const
{
    return StateOfCommand(key, dispatcher_->Context()).enabled;
}

void frmMain::ShowContextMenu(HitKind kind, QPoint at)
{
    dispatcher_->ShowContextMenu(kind, ScreenPoint{at.x(), at.y()});
}

} // namespace nib
