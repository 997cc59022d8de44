#include "shell/menus/QtMenuBar.h"

#include "platform/qt/QtText.h"
#include "shell/menus/QtStatusPanels.h"
#include "shell/menus/QtTabRow.h"
#include "shell/menus/QtToolActions.h"

#include <QCoreApplication>
#include <QCursor>
#include <QEvent>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace nib {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(QtMenuBar)
};

constexpr int kSmallPixels = 22;
constexpr int kLargePixels = 32;

} // namespace

struct QtMenuBar::Impl final : QObject {
    Impl(QMainWindow& owner, MenuModel& menus);

    bool eventFilter(QObject* watched, QEvent* event) override;
    void ShowToolBar();
    void ShowMoreIcon();
    void OpenPanel(const MenuTool& panel, QWidget& shown);

    QMainWindow& window;
    MenuModel& model;
    MenuEvents* events = nullptr;
    QToolBar* toolBar;
    QToolButton* moreTools; ///< Qt's own, for what a narrow bar has no room for; null where it makes none
    QMenu* popUp;
    QMenu* tabMenu;
    QtTabRow* row;
    QtStatusPanels panels;
    QtToolActions actions;
};

QtMenuBar::Impl::Impl(QMainWindow& owner, MenuModel& menus)
    : window(owner), model(menus), toolBar(new QToolBar(&owner)),
      moreTools(toolBar->findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"))), popUp(new QMenu(&owner)),
      tabMenu(new QMenu(&owner)), row(new QtTabRow(menus.Root(Band::Taskbar), &owner)),
      panels(*owner.statusBar(), [this](const MenuTool& panel, QWidget& shown) { OpenPanel(panel, shown); }),
      actions(
          [this](Band band, const MenuTool& tool, bool checked) {
              if (tool.checkable) model.SetChecked(band, tool.key, checked);
              if (events) events->ToolClick(band, tool);
          },
          [this](const MenuTool& menu) {
              if (events) events->MenuOpening(menu);
          })
{
    UseIconTheme();
    toolBar->setObjectName(QStringLiteral("ToolBar"));
    toolBar->setWindowTitle(Texts::tr("Tool Bar"));
    toolBar->setAccessibleName(toolBar->windowTitle());
    toolBar->setMovable(false);
    // Qt's own menu would hide the bar behind the model's back.
    toolBar->setContextMenuPolicy(Qt::PreventContextMenu);
    toolBar->toggleViewAction()->setVisible(false);
    if (moreTools) {
        moreTools->setAccessibleName(Texts::tr("More Tools"));
        moreTools->setToolTip(moreTools->accessibleName());
    }
    ShowMoreIcon();
    window.addToolBar(toolBar);
    if (auto* more = window.menuBar()->findChild<QToolButton*>(QStringLiteral("qt_menubar_ext_button")))
        more->setAccessibleName(Texts::tr("More Menus"));
    window.menuBar()->setAccessibleName(Texts::tr("Menu Bar"));
    window.statusBar()->setAccessibleName(Texts::tr("Status Bar"));
    // Menus are called by their window's title.
    popUp->setWindowTitle(Texts::tr("Context Menu"));
    tabMenu->setWindowTitle(Texts::tr("Tab Menu"));
    row->Tabs().moved = [this](int32_t tab, size_t place) { model.MoveTab(tab, place); };

    actions.SetHolder(Band::MainMenu, model.Root(Band::MainMenu), *window.menuBar());
    actions.SetHolder(Band::ToolBar, model.Root(Band::ToolBar), *toolBar);
    actions.SetHolder(Band::Popup, model.Root(Band::Popup), *popUp);
    actions.SetHolder(Band::TabContext, model.Root(Band::TabContext), *tabMenu);
    for (auto& panel : model.Root(Band::StatusBar).tools) panels.Add(*panel);
    for (auto& tab : model.Root(Band::Taskbar).tools) row->Tabs().Add(*tab);
    ShowToolBar();
    window.statusBar()->setVisible(model.State(Band::StatusBar).visible);
    window.installEventFilter(this);
}

bool QtMenuBar::Impl::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &window && event->type() == QEvent::PaletteChange) {
        UseIconTheme();
        actions.RefreshIcons();
        ShowMoreIcon();
    }
    return QObject::eventFilter(watched, event);
}

/// The style's own picture is a black arrow, which a dark bar swallows.
void QtMenuBar::Impl::ShowMoreIcon()
{
    QIcon icon = ToolIcon(u"arrow-right-double");
    if (moreTools && !icon.isNull()) moreTools->setIcon(icon);
}

/// Above the panel, as the bar is at the lower edge of the screen.
void QtMenuBar::Impl::OpenPanel(const MenuTool& panel, QWidget& shown)
{
    const MenuTool* opened = model.Find(Band::MainMenu, panel.tag);
    if (!opened) return;
    if (QMenu* menu = actions.MenuOf(*opened)) {
        if (events) events->MenuOpening(*opened); // its captions may change its size
        menu->popup(shown.mapToGlobal(QPoint(0, -menu->sizeHint().height())));
    } else if (events && opened->enabled) {
        events->ToolClick(Band::MainMenu, *opened);
    }
}

void QtMenuBar::Impl::ShowToolBar()
{
    const BandState& state = model.State(Band::ToolBar);
    int pixels = state.iconSize == kLargeIcons ? kLargePixels : kSmallPixels;
    toolBar->setIconSize({pixels, pixels});
    for (QAction* action : toolBar->actions())
        if (auto* button = qobject_cast<QToolButton*>(toolBar->widgetForAction(action)))
            button->setAutoRaise(state.hotTrack);
    toolBar->setVisible(state.visible);
}

QtMenuBar::QtMenuBar(QMainWindow& window, MenuModel& model) : impl_(std::make_unique<Impl>(window, model))
{
    model.SetListener(this);
}

QtMenuBar::~QtMenuBar()
{
    impl_->model.SetListener(nullptr);
    SetEvents(nullptr);
}

void QtMenuBar::SetEvents(MenuEvents* events)
{
    impl_->events = events;
    impl_->row->SetEvents(events);
}

void QtMenuBar::SetCentral(QWidget* area)
{
    auto* centre = new QWidget(&impl_->window);
    auto* column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(impl_->row);
    column->addWidget(area, 1);
    impl_->window.setCentralWidget(centre);
}

void QtMenuBar::ToolsChanged(std::span<const ToolChange> changes)
{
    bool tabs = false;
    for (const ToolChange& change : changes) {
        switch (change.band) {
        case Band::StatusBar: impl_->panels.Change(*change.tool); break;
        case Band::Taskbar:
            impl_->row->Tabs().Change(*change.tool);
            tabs = true;
            break;
        default: impl_->actions.Change(change);
        }
    }
    if (tabs) impl_->row->Follow();
}

void QtMenuBar::ToolAdded(Band band, const MenuTool& tool)
{
    switch (band) {
    case Band::StatusBar: return impl_->panels.Add(tool);
    case Band::Taskbar: impl_->row->Tabs().Add(tool); return impl_->row->Follow();
    default: impl_->actions.Add(band, tool);
    }
    if (band == Band::ToolBar) impl_->ShowToolBar();
}

void QtMenuBar::ToolRemoved(Band band, const MenuTool& tool)
{
    switch (band) {
    case Band::StatusBar: return impl_->panels.Remove(tool);
    case Band::Taskbar: impl_->row->Tabs().Remove(tool); return impl_->row->Follow(&tool);
    default: impl_->actions.Remove(tool);
    }
}

void QtMenuBar::BandChanged(Band band)
{
    if (band == Band::ToolBar) impl_->ShowToolBar();
    if (band == Band::StatusBar) impl_->window.statusBar()->setVisible(impl_->model.State(band).visible);
}

void QtMenuBar::PopUp(Band band, std::optional<ScreenPoint> at)
{
    if (QMenu* menu = PopUpMenu(band)) menu->popup(at ? QPoint(at->x, at->y) : QCursor::pos());
}

QToolBar* QtMenuBar::ToolBar() const
{
    return impl_->toolBar;
}

QTabBar* QtMenuBar::Tabs() const
{
    return &impl_->row->Tabs();
}

QMenu* QtMenuBar::PopUpMenu(Band band) const
{
    return band == Band::Popup ? impl_->popUp : band == Band::TabContext ? impl_->tabMenu : nullptr;
}

} // namespace nib
