#include "shell/frame/frmDocumentWindow.h"

#include "shell/frame/FramePlacement.h"
#include "shell/frame/frmDocument.h"
#include "text/widget/SourceViewWidget.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QMenu>
#include <QVBoxLayout>

namespace nib {

namespace {
/// Room round the text, in twips.
constexpr int32_t kMargin = 100;
constexpr QSize kUsualSize(760, 520);
} // namespace

DocumentWindow::DocumentWindow(frmDocument& form, bool buttons) : form_(&form)
{
    setAttribute(Qt::WA_DeleteOnClose, false);
    if (!buttons) setWindowFlags(Qt::SubWindow | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
    // Its keys for closing and the like are those of the frame's menus; two owners of a key cancel each other.
    for (QAction* action : actions()) action->setShortcuts(QList<QKeySequence>());
    systemMenu()->setWindowTitle(QCoreApplication::translate("frmDocument", "Window Menu"));
    resize(kUsualSize);
}

void DocumentWindow::SetText(SourceViewWidget* text)
{
    auto* room = new QWidget;
    // Painted whole, so that none of the windows behind is painted for nothing.
    room->setAutoFillBackground(true);
    int across = TwipsToPixels(kMargin, logicalDpiX());
    int down = TwipsToPixels(kMargin, logicalDpiY());
    auto* layout = new QVBoxLayout(room);
    layout->setContentsMargins(across, down, across, down);
    layout->addWidget(text);
    room->setFocusProxy(text);
    setWidget(room);
}

void DocumentWindow::Post(std::function<void(frmDocument&)> body)
{
    QMetaObject::invokeMethod(
        this,
        [this, body = std::move(body)] {
            if (form_) body(*form_);
        },
        Qt::QueuedConnection);
}

void DocumentWindow::closeEvent(QCloseEvent* event)
{
    // Closing the document destroys the form and schedules this window's end; the event itself closes nothing.
    event->ignore();
    if (form_) form_->QueryUnload();
}

void DocumentWindow::changeEvent(QEvent* event)
{
    QMdiSubWindow::changeEvent(event);
    if (form_ && event->type() == QEvent::WindowStateChange) form_->StateChanged();
}

} // namespace nib
