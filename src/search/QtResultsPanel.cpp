#include "search/QtResultsPanel.h"

#include "editing/MvEdit.h"
#include "platform/qt/QtDesktop.h"

namespace nib {

namespace {

constexpr TextView kFloating{u"ResultsFloating"};
constexpr TextView kShown{u"ResultsShown"};
/// Until the user chooses, in lines.
constexpr int kHeight = 11;

} // namespace

QtResultsPanel::QtResultsPanel(frmResults& form, SettingsStore& store, QMainWindow& window)
    : QDockWidget(form.windowTitle(), &window), form_(form), store_(store), window_(window)
{
    setObjectName(QStringLiteral("Results"));
    // It is taken out as a whole by its button: another window then has the place and the size that were kept.
    setFeatures(DockWidgetClosable | DockWidgetFloatable);
    hide();
    form_.onShow = [this] {
        raised_ = false;
        ShowForm();
    };
    form_.onPrinted = [this] {
        if (!docked_ || isVisible()) return;
        raised_ = !toggleViewAction()->isChecked();
        ShowForm();
    };
    form_.onKept = [this] {
        if (std::exchange(raised_, false)) hide();
    };
    form_.onHide = [this] {
        docked_ ? hide() : form_.hide();
        if (docked_ && onLeave) onLeave();
    };
    form_.onDock = [this] {
        store_.Save(kFloating, BooleanWord(docked_));
        Dock(!docked_);
        ShowForm();
        form_.TakeFocus();
    };
    connect(this, &QDockWidget::topLevelChanged, this, [this](bool out) {
        if (out) QMetaObject::invokeMethod(this, form_.onDock, Qt::QueuedConnection);
    });
    Dock(WordToBoolean(store_.Get(kFloating, BooleanWord(false))) != true);
    if (!docked_ || WordToBoolean(store_.Get(kShown, BooleanWord(false))) != true) return;
    Place();
    show();
}

void QtResultsPanel::Unload()
{
    store_.Save(kShown, BooleanWord(docked_ && toggleViewAction()->isChecked()));
}

void QtResultsPanel::Dock(bool docked)
{
    docked_ = docked;
    if (isFloating()) setFloating(false);
    hide();
    form_.SetDocked(docked);
    if (docked) {
        setWidget(&form_);
        form_.show();
        return;
    }
    form_.hide();
    form_.setParent(&window_, Qt::Dialog);
}

void QtResultsPanel::Place()
{
    if (std::exchange(placed_, true)) return;
    window_.addDockWidget(Qt::BottomDockWidgetArea, this);
    if (JoinPanels(window_, *this)) return;
    window_.resizeDocks({this}, {window_.fontMetrics().lineSpacing() * kHeight}, Qt::Vertical);
}

void QtResultsPanel::ShowForm()
{
    if (!docked_) return form_.ShowFloating();
    Place();
    show();
    raise();
}

void QtResultsPanel::showEvent(QShowEvent* event)
{
    QDockWidget::showEvent(event);
    if (onRoomChanged) onRoomChanged();
}

void QtResultsPanel::hideEvent(QHideEvent* event)
{
    QDockWidget::hideEvent(event);
    if (onRoomChanged) onRoomChanged();
}

} // namespace nib
