// Keys, focus and drops that belong to the frame; part of frmMain.

#include "documents/mvDocument.h"
#include "platform/posix/FileName.h"
#include "platform/qt/QtText.h"
#include "shell/FileCommands.h"
#include "shell/Program.h"
#include "shell/frame/frmDocument.h"
#include "shell/frame/frmMain.h"
#include "shell/menus/FrameKeys.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QUrl>

#include <filesystem>

namespace nib {

namespace {

/// By its bytes: a name that is no UTF-8 opens, too.
Text LocalPath(const QUrl& url)
{
    const QByteArray path = QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
    const QByteArray host = url.host().toUtf8();
    return FromFileName((host.isEmpty() ? path : "//" + host + path).toStdString());
}

} // namespace

// Keys

bool frmMain::eventFilter(QObject* watched, QEvent* event)
{
    QEvent::Type type = event->type();
    bool asking = type == QEvent::ShortcutOverride;
    if (asking || type == QEvent::MouseButtonPress) program_->ShowChanges();
    if ((!asking && type != QEvent::KeyPress && type != QEvent::KeyRelease) || !watched->isWidgetType())
        return QMainWindow::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    if (!FilterStroke(key->key(), key->modifiers().toInt(), type != QEvent::KeyRelease, asking)) return false;
    // Accepted, so that neither a shortcut nor a parent of the widget takes the key.
    event->accept();
    return true;
}

bool frmMain::FilterStroke(int key, int modifiers, bool down, bool onlyAsking)
{
    bool tab = key == Qt::Key_Tab || key == Qt::Key_Backtab;
    if (!tab && key != Qt::Key_F6) return false;
    KeyStroke stroke{tab ? FrameKey::Tab : FrameKey::F6, down,
                     (modifiers & Qt::ShiftModifier) != 0 || key == Qt::Key_Backtab,
                     (modifiers & Qt::ControlModifier) != 0, (modifiers & Qt::AltModifier) != 0};
    KeyboardState state;
    state.frameActive = QApplication::activeWindow() == this && !QApplication::activePopupWidget();
    frmDocument* form = ActiveForm();
    state.textFocused = form && form->ViewObject() && form->TextHasFocus();
    // Several carets shift their lines themselves.
    state.multiLineSelection = state.textFocused && form->ViewObject()->SelectionIsMultiLine() &&
                               !form->ViewObject()->View()->txtText().HasSeveral();
    KeyAction action = FilterKey(stroke, state);
    if (action == KeyAction::Pass) return false;
    if (!onlyAsking) Act(action);
    return true;
}

void frmMain::Act(KeyAction action)
{
    if (action == KeyAction::Swallow) return;
    // No window may change while the key is still on its way.
    auto later = [this](auto&& body) { QMetaObject::invokeMethod(this, body, Qt::QueuedConnection); };
    switch (action) {
    case KeyAction::NextDocument: later([this] { StepDocument(false); }); break;
    case KeyAction::PreviousDocument: later([this] { StepDocument(true); }); break;
    case KeyAction::IndentBlock: ShiftLines(u"IndentBlock", false); break;
    case KeyAction::OutdentBlock: ShiftLines(u"OutdentBlock", true); break;
    case KeyAction::Pass:
    case KeyAction::Swallow: break;
    }
}

void frmMain::ShiftLines(TextView command, bool outwards)
{
    frmDocument* form = ActiveForm();
    if (CanRun(command))
        Run(command);
    else if (form)
        form->ShiftLines(outwards);
}

/// Where nobody else has taken it; with a document open the menu leaves the key to the text.
void frmMain::keyPressEvent(QKeyEvent* event)
{
    if (event->keyCombination() != QKeyCombination(Qt::Key_F1)) return QMainWindow::keyPressEvent(event);
    Run(u"HelpTopics");
}

// Focus

bool frmMain::IsStuck(const QWidget* focus) const
{
    if (!focus) return isActiveWindow();
    return focus == this || focus == area_ || focus == area_->viewport() || qobject_cast<const QMdiSubWindow*>(focus);
}

void frmMain::FocusMoved(const QWidget* now)
{
    if (!unloading_ && IsStuck(now)) stuckFocusTimer_.start();
}

void frmMain::FreeStuckFocus()
{
    // Whoever holds the mouse or the keys, such as a window that is being moved, is at work.
    if (QWidget::mouseGrabber() || QWidget::keyboardGrabber() || QApplication::activePopupWidget()) return;
    frmDocument* form = ActiveForm();
    if (!isActiveWindow() || !IsStuck(QApplication::focusWidget())) return;
    if (form)
        form->FocusText();
    else if (QMdiSubWindow* guest = ActiveGuest())
        guest->widget()->setFocus();
    else
        start_.TakeFocus();
}

void frmMain::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && loaded_ && isActiveWindow()) {
        program_->StateChanged();
        for (frmDocument* form : children_) ShowTab(*form); // a dialog may have changed its colour
        start_.Refresh();
        // Not within the event, which a question would hold up.
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (loaded_ && !unloading_) program_->Outside().Look();
            },
            Qt::QueuedConnection);
    }
    // A maximised child window writes into the title what it makes of it.
    if (event->type() == QEvent::WindowTitleChange && loaded_) UpdateCaption();
}

// Drops

void frmMain::dragEnterEvent(QDragEnterEvent* event)
{
    bool files = event->mimeData()->hasUrls() && (event->possibleActions() & Qt::CopyAction);
    if (!files) return event->ignore();
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void frmMain::dragMoveEvent(QDragMoveEvent* event)
{
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void frmMain::dropEvent(QDropEvent* event)
{
    std::vector<Text> paths;
    std::vector<Text> elsewhere;
    for (const QUrl& url : event->mimeData()->urls()) {
        if (url.isLocalFile())
            paths.push_back(LocalPath(url));
        else
            elsewhere.push_back(ToText(url.toDisplayString()));
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    // Opening may ask questions; the program that was dragged from does not wait for the answers.
    QMetaObject::invokeMethod(
        this, [this, paths, elsewhere] { OpenDropped(paths, elsewhere); }, Qt::QueuedConnection);
}

void frmMain::OpenDropped(const std::vector<Text>& paths, const std::vector<Text>& elsewhere)
{
    if (Postpone([this, paths, elsewhere] { OpenDropped(paths, elsewhere); })) return;
    std::vector<Text> files;
    std::vector<Text> folders;
    std::error_code unknown;
    for (const Text& path : paths)
        (std::filesystem::is_directory(ToFileName(path), unknown) ? folders : files).push_back(path);
    ToForeground();
    program_->HandleDroppedFiles(files);
    Text complaint = DropComplaint(folders, elsewhere);
    if (!complaint.empty()) program_->ShowMessage(complaint, message_box::kWarning);
}

} // namespace nib
