#include "shell/frame/frmDocument.h"

#include "diagnostics/DebugLog.h"
#include "documents/mvDocument.h"
#include "platform/qt/QtText.h"
#include "records/frmRecord.h"
#include "shell/Program.h"
#include "shell/frame/WindowPlacement.h"
#include "shell/frame/frmMain.h"
#include "text/widget/SourceViewWidget.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QMenu>
#include <QPointer>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>

namespace nib {

namespace {

constexpr int kFocusRetry = 50;
constexpr QSize kUsualSize(760, 520);

/// The words of a title in the user's language; what is named in it stays as it is, whatever words are in that.
Text ShownTitle(TextView title, const mvDocument& document)
{
    const auto item = document.ItemObject();
    const size_t name = (title.starts_with(u'*') ? 1 : 0) + document.DisplayName().size();
    QString rest = ToQString(title.substr(std::min(name, title.size())));
    QString shown = ToQString(title.substr(0, name));
    const auto take = [&](const char* words, const Text& named = {}) {
        const auto filled = [&](QString text) { return text.replace(QLatin1String("%1"), ToQString(named)); };
        const QString plain = filled(QString::fromLatin1(words));
        if (!rest.startsWith(plain)) return;
        rest.remove(0, plain.size());
        shown += filled(QCoreApplication::translate("frmDocument", words));
    };
    if (item) take(QT_TRANSLATE_NOOP("frmDocument", " on %1"), item->HostName());
    if (item) take(QT_TRANSLATE_NOOP("frmDocument", ", account %1"), item->Account());
    take(QT_TRANSLATE_NOOP("frmDocument", " (New)"));
    take(QT_TRANSLATE_NOOP("frmDocument", " (Read only)"));
    return ToText(shown + rest);
}

} // namespace

frmDocument::frmDocument(frmMain& mainWindow, Clipboard& clipboard, mvDocument& document)
    : mainWindow_(mainWindow), lexer_(&mainWindow.Owner().Log()), clipboard_(clipboard), document_(&document),
      documentId_(document.DocumentID())
{
    Program& program = mainWindow_.Owner();
    program.Log().Write(u"frmdocument initialize begin", trace::kObjects);
    window_ = new DocumentWindow(*this, program.EditorSettings().MinMaxClose); // the MDI area takes it
    widget_ = new SourceViewWidget(buffer_, clipboard);
    window_->SetText(widget_);
    mainWindow_.AddChild(*this);
    program.Safely(u"frmDocument.Form_Load", [this] { Load(); });
    Connect();
    program.Log().Write(u"frmdocument initialize end", trace::kObjects);
}

frmDocument::~frmDocument()
{
    mainWindow_.Owner().Assist().Forget(documentId_);
    document_ = nullptr; // which may be in its own end
    window_->hide();
    Model().SetEvents(nullptr);
    window_->Detach();
    // The widgets refer to this object's text: they go first, the empty frame when Qt is back in its loop.
    delete std::exchange(grid_, nullptr);
    delete std::exchange(other_, nullptr);
    delete widget_;
    mainWindow_.RemoveChild(*this);
    window_->deleteLater();
    mainWindow_.Owner().Log().Write(u"frmdocument terminate", trace::kObjects);
}

void frmDocument::Load()
{
    buffer_.SetLexer(&lexer_);
    mainWindow_.Owner().Assist().Follow(*document_, buffer_);
}

void frmDocument::Connect()
{
    Model().SetEvents(this);
    focusTimer_.setSingleShot(true);
    focusTimer_.setInterval(kFocusRetry);
    QObject::connect(&focusTimer_, &QTimer::timeout, window_, [this] {
        if (IsActive()) FocusText();
    });
    ConnectPane(*widget_);
}

QMdiSubWindow* frmDocument::SubWindow() const
{
    return window_;
}

SourceView& frmDocument::Model() const
{
    return widget_->Model();
}

SourceView& frmDocument::txtText()
{
    return Model();
}

// The window

void frmDocument::Activate()
{
    if (window_->isMinimized()) window_->showNormal();
    mainWindow_.ActivateChild(*this);
    FocusText();
}

void frmDocument::Show()
{
    if (Visible()) return;
    mainWindow_.ShowChild(*this);
    FocusText();
}

void frmDocument::QueryUnload()
{
    if (!document_) return;
    const auto later = [window = QPointer(window_)] {
        if (window) window->close();
    };
    if (!mainWindow_.Postpone(later)) mainWindow_.Owner().Files().FileClose(*document_);
}

void frmDocument::SetTitle(TextView title)
{
    title_ = document_ ? ShownTitle(title, *document_) : Text(title);
    window_->setWindowTitle(PlainTitle(title_));
    widget_->setAccessibleName(ToQString(title_));
    if (other_) other_->setAccessibleName(ToQString(title_));
    mainWindow_.ChildTitleChanged(*this);
}

bool frmDocument::Visible() const
{
    return !window_->isHidden();
}

void frmDocument::SetWindowState(int32_t state)
{
    if (state == window_state::kMinimized)
        window_->showMinimized();
    else if (state == window_state::kMaximized)
        window_->showMaximized();
    else
        window_->showNormal();
}

int32_t frmDocument::WindowState() const
{
    if (window_->isMinimized()) return window_state::kMinimized;
    return window_->isMaximized() ? window_state::kMaximized : window_state::kNormal;
}

Text frmDocument::Placement() const
{
    if (WindowState() != window_state::kNormal) return {};
    const QRect at = window_->geometry();
    return ToText(QStringLiteral("%1 %2 %3 %4").arg(at.x()).arg(at.y()).arg(at.width()).arg(at.height()));
}

void frmDocument::SetPlacement(TextView placement)
{
    const QStringList numbers = ToQString(placement).split(u' ');
    if (numbers.size() != 4) return;
    const QRect at(numbers[0].toInt(), numbers[1].toInt(), numbers[2].toInt(), numbers[3].toInt());
    // The frame may be smaller than it was; a title bar out of reach is a window that cannot be moved.
    if (!window_->parentWidget() || !window_->parentWidget()->rect().contains(at.topLeft())) return;
    window_->showNormal();
    window_->setGeometry(QRect(at.topLeft(), at.size().expandedTo(window_->minimumSizeHint())));
}

void frmDocument::StateChanged()
{
    if (std::exchange(lastState_, WindowState()) != lastState_) mainWindow_.ChildStateChanged(*this);
}

bool frmDocument::IsActive() const
{
    return mainWindow_.ActiveForm() == this;
}

// Coming to the front

void frmDocument::Activated()
{
    ClearTarget();
    ShowPosition();
    if (QtAssist* assist = mainWindow_.Assist()) assist->CaretMoved();
    selectionSeen_ = Model().AnySelection();
    FocusText();
    // Not yet shown in full it cannot take the focus.
    if (!TextHasFocus()) focusTimer_.start();
}

void frmDocument::Deactivated()
{
    focusTimer_.stop();
    EndRefusal();
    if (document_) mainWindow_.Owner().DocumentLeft(*document_);
}

void frmDocument::FocusText()
{
    if (grid_) return grid_->TakeFocus();
    widget_->setFocus(Qt::OtherFocusReason);
}

bool frmDocument::TextHasFocus() const
{
    return widget_->hasFocus();
}

void frmDocument::ShiftLines(bool outwards)
{
    if (outwards)
        Model().Backtab();
    else
        Model().Tab();
}

// The visible part

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
    auto* layout = new QVBoxLayout(room);
    layout->setContentsMargins(0, 0, 0, 0);
    panes_ = new QSplitter(Qt::Vertical, room);
    panes_->setChildrenCollapsible(false);
    layout->addWidget(panes_);
    AddPane(text);
    room->setFocusProxy(text);
    setWidget(room);
}

void DocumentWindow::AddPane(SourceViewWidget* text)
{
    panes_->addWidget(text);
    int height = panes_->height() / panes_->count();
    panes_->setSizes(QList<int>(panes_->count(), height));
}

void DocumentWindow::ShowInstead(QWidget* other)
{
    panes_->setVisible(!other);
    if (other) widget()->layout()->addWidget(other);
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
