#include "shell/assist/QtPaneHelp.h"

#include "documents/mvDocument.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtText.h"
#include "shell/assist/QtCompletionList.h"
#include "shell/assist/QtPhrase.h"
#include "text/widget/SourceViewWidget.h"

#include <QKeyEvent>
#include <QMenu>
#include <QToolTip>

namespace nib {

namespace {

constexpr int kHoverDelay = 500;

bool Types(const QKeyEvent& event)
{
    const auto held = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (held && held != (Qt::ControlModifier | Qt::AltModifier)) return false;
    return !event.text().isEmpty() && event.text().front().isPrint();
}

} // namespace

QtPaneHelp::QtPaneHelp(Assistance& assistance, DocumentServices& services, NameCommands& names, int32_t documentId,
                       SourceViewWidget& pane)
    : QObject(&pane), assistance_(assistance), services_(services), names_(names), documentId_(documentId), pane_(pane),
      model_(pane.Model())
{
    pane.installEventFilter(this);
    pane.viewport()->installEventFilter(this);
    hover_.setSingleShot(true);
    hover_.setInterval(kHoverDelay);
    connect(&hover_, &QTimer::timeout, this, [this] { AskHover(); });
}

bool QtPaneHelp::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress: {
        if (watched != &pane_) break;
        hover_.stop();
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (TakesKey(key)) return true;
        if (IsModifier(key.key())) break;
        const bool enter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
        const bool text = Types(key) || (key.key() == Qt::Key_Backspace && model_.IsOpen());
        // Once the text has taken it.
        QTimer::singleShot(0, this,
                           [this,
                            typed = enter  ? Typed::Return
                                    : text ? Typed::Letters
                                           : Typed::Other,
                            written = key.text()] { AfterKey(typed, written); });
        break;
    }
    case QEvent::InputMethod:
        if (watched == &pane_) QTimer::singleShot(0, this, [this] { AfterKey(Typed::Letters, {}); });
        break;
    case QEvent::MouseMove:
        if (watched != pane_.viewport() || static_cast<QMouseEvent*>(event)->buttons()) break;
        pointed_ = static_cast<QMouseEvent*>(event)->position().toPoint();
        hover_.start();
        break;
    case QEvent::MouseButtonPress:
    case QEvent::Wheel:
    case QEvent::FocusOut:
    case QEvent::Hide:
        hover_.stop();
        CloseAll();
        break;
    case QEvent::Leave: hover_.stop(); break;
    default: break;
    }
    return QObject::eventFilter(watched, event);
}

// Keys

bool QtPaneHelp::TakesKey(const QKeyEvent& event)
{
    const bool plain = !(event.modifiers() & ~Qt::KeypadModifier);
    if (!plain) return false;
    if (event.key() == Qt::Key_F1) return AskHelp(), true;
    if (!model_.IsOpen()) {
        if (event.key() != Qt::Key_Escape || !tip_ || !tip_->isVisible()) return false;
        tip_->hide();
        return true;
    }
    int32_t step = 0;
    switch (event.key()) {
    case Qt::Key_Up: step = -1; break;
    case Qt::Key_Down: step = 1; break;
    case Qt::Key_PageUp: step = -list_->PageRows(); break;
    case Qt::Key_PageDown: step = list_->PageRows(); break;
    case Qt::Key_Escape: return CloseList(), true;
    case Qt::Key_Tab: return Accept(), true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!model_.TakesReturn()) return false;
        return Accept(), true;
    default: return false;
    }
    model_.Step(step);
    list_->Choose(model_.Chosen());
    return true;
}

void QtPaneHelp::AfterKey(Typed typed, const QString& text)
{
    if (typed == Typed::Letters) {
        Suggest(true);
    } else {
        CloseList();
    }
    if (typed == Typed::Return) OfferCloser();
    const bool open = tip_ && tip_->isVisible();
    if (open || text == QLatin1String("(") || text == QLatin1String(",")) AskSignature();
}

void QtPaneHelp::CloseAll()
{
    CloseList();
    if (tip_) tip_->hide();
}

// Suggestions

void QtPaneHelp::Complete()
{
    Suggest(false);
}

void QtPaneHelp::Suggest(bool automatic)
{
    const auto document = Document();
    if (!document || !model_.Wants(automatic, services_.settings.CompleteWords)) return CloseList();
    const Position at = pane_.Model().Caret();
    const QPointer<QtPaneHelp> self(this);
    assistance_.Ask(
        *document, [at](LanguageService& service, const Text& path) { return service.Complete(path, at); },
        [self, at, number = ++asked_](Completions& completions) {
            if (!self || self->asked_ != number) return;
            if (self->pane_.hasFocus() && self->model_.Take(std::move(completions), at)) return self->ShowList();
            self->CloseList();
        });
}

void QtPaneHelp::OfferCloser()
{
    const auto document = Document();
    if (!document || !services_.settings.CompleteWords || pane_.Model().HasSeveral()) return;
    const Position at = pane_.Model().Caret();
    const QPointer<QtPaneHelp> self(this);
    assistance_.Ask(
        *document, [at](LanguageService& service, const Text& path) { return service.CloserFor(path, at.line); },
        [self, at, number = ++asked_](const std::optional<Text>& closer) {
            if (self && self->asked_ == number && closer && self->pane_.hasFocus() &&
                self->model_.TakeCloser(*closer, at))
                self->ShowList();
        });
}

void QtPaneHelp::CloseList()
{
    ++asked_;
    model_.Close();
    if (list_) list_->hide();
}

void QtPaneHelp::ShowList()
{
    if (!list_) {
        list_ = new QtCompletionList(&pane_);
        list_->onPick = [this](int32_t item) {
            model_.Choose(item);
            Accept();
        };
    }
    list_->ShowItems(model_.Items(), CellAt(model_.Start()), CodeFont());
    list_->Choose(model_.Chosen());
}

void QtPaneHelp::Accept()
{
    ++asked_;
    list_->hide();
    model_.Accept();
}

// Parameters

void QtPaneHelp::AskSignature()
{
    const auto document = Document();
    if (!document || pane_.Model().HasSeveral()) return;
    const QPointer<QtPaneHelp> self(this);
    assistance_.Ask(
        *document,
        [at = pane_.Model().Caret()](LanguageService& service, const Text& path) {
            return service.Signature(path, at);
        },
        [self](const std::optional<SignatureHelp>& help) {
            if (!self) return;
            if (help && self->pane_.hasFocus())
                self->ShowSignature(*help);
            else if (self->tip_)
                self->tip_->hide();
        });
}

void QtPaneHelp::ShowSignature(const SignatureHelp& help)
{
    const auto active = static_cast<size_t>(help.active);
    const auto [from, to] =
        active < help.parameters.size() ? help.parameters[active] : std::pair<int32_t, int32_t>(0, 0);
    ShowAtCaret(HelpHtml(help.form, help.help, from, to));
}

void QtPaneHelp::ShowAtCaret(const QString& html)
{
    if (!tip_) tip_ = new QtTip(&pane_);
    tip_->setFont(CodeFont());
    tip_->ShowAbove(html, CellAt(pane_.Model().Caret()));
}

// What the mouse points at

void QtPaneHelp::AskHover()
{
    if (!pane_.viewport()->underMouse() || model_.IsOpen()) return;
    const auto document = Document();
    const Position at = pane_.PositionAt(pointed_, true);
    const QRectF cell = pane_.CellOf(at).adjusted(-1, 0, 1, 1);
    if (pane_.ZoneAt(pointed_) != SourceViewWidget::Zone::Content) {
        if (cell.top() <= pointed_.y() && pointed_.y() <= cell.bottom())
            ShowTip(LineHtml(at.line), pointed_, {0, qFloor(cell.top()), qFloor(cell.left()), qFloor(cell.height())});
        return;
    }
    if (!document || !cell.contains(pointed_)) return;
    const QPointer<QtPaneHelp> self(this);
    const bool asked = assistance_.Ask(
        *document, [at](LanguageService& service, const Text& path) { return service.Hover(path, at); },
        [self, at, point = pointed_](const std::optional<HoverText>& hover) {
            if (self && self->pointed_ == point) self->ShowHover(at, hover, point);
        });
    if (!asked) ShowHover(at, std::nullopt, pointed_);
}

namespace {

QString Strong(const QString& message)
{
    return QStringLiteral("<div><b>") + message.toHtmlEscaped() + QStringLiteral("</b></div>");
}

} // namespace

/// What the last compile said of a line.
QString QtPaneHelp::MarksHtml(int32_t line) const
{
    QString html;
    for (const CompileMark& mark : assistance_.Marks(documentId_))
        if (mark.line == line) html += Strong(ToQString(mark.message));
    return html;
}

QString QtPaneHelp::LineHtml(int32_t line) const
{
    QString html = MarksHtml(line);
    for (const ProgramFinding& finding : assistance_.Findings(documentId_))
        if (finding.at.start.line == line) html += Strong(Shown(finding.message));
    return html;
}

void QtPaneHelp::AskHelp()
{
    const bool again = tip_ && tip_->isVisible();
    CloseAll();
    const auto document = Document();
    const Position at = pane_.Model().Caret();
    const auto show = [self = QPointer<QtPaneHelp>(this), at](const std::optional<HoverText>& hover) {
        if (!self || self->pane_.Model().Caret() != at) return;
        const QString html = self->PlaceHtml(at, hover);
        if (!html.isEmpty())
            self->ShowAtCaret(html);
        else if (self->assistance_.HelpWanted)
            self->assistance_.HelpWanted();
    };
    const auto ask = [at](LanguageService& service, const Text& path) { return service.Hover(path, at); };
    if (again && assistance_.HelpWanted) return assistance_.HelpWanted();
    if (!document || !assistance_.Ask(*document, ask, show)) show(std::nullopt);
}

void QtPaneHelp::ShowHover(Position at, const std::optional<HoverText>& hover, QPoint point)
{
    ShowTip(PlaceHtml(at, hover), point, pane_.CellOf(at).toAlignedRect());
}

QString QtPaneHelp::PlaceHtml(Position at, const std::optional<HoverText>& hover) const
{
    QString html = MarksHtml(at.line);
    for (const ProgramFinding& finding : assistance_.Findings(documentId_)) {
        if (at < finding.at.start || finding.at.end < at) continue;
        html += Strong(Shown(finding.message));
        const FindingKind& kind = FindingKindOf(finding.code);
        if (kind.code == finding.code)
            html += QStringLiteral("<div>") + ShownHelp(kind).toHtmlEscaped() + QStringLiteral("</div>");
        if (!finding.mends.empty())
            html += QStringLiteral("<div><i>") + tr("Alt+Return offers to mend it.") + QStringLiteral("</i></div>");
    }
    if (hover) {
        if (!html.isEmpty()) html += QStringLiteral("<hr>");
        html += HelpHtml(hover->form, hover->help);
    }
    return html;
}

void QtPaneHelp::ShowTip(const QString& html, QPoint point, const QRect& place)
{
    if (!html.isEmpty()) QToolTip::showText(pane_.viewport()->mapToGlobal(point), html, pane_.viewport(), place);
}

// Mends

void QtPaneHelp::ShowMends()
{
    const auto document = Document();
    if (!document) return;
    QMenu menu(&pane_);
    menu.setWindowTitle(tr("Quick Mends"));
    const std::vector<QuickMend> mends = assistance_.Mends(*document, pane_.Model().CaretLine());
    for (size_t i = 0; i < mends.size(); ++i)
        menu.addAction(ToQString(DoubleAmpersands(ShownText(mends[i].caption))))->setData(static_cast<int>(i));
    if (mends.empty()) return services_.frame.SetStatusText(1, u"There is nothing here that can be mended so.");
    menu.setActiveAction(menu.actions().front());
    const QAction* chosen = menu.exec(CellAt(pane_.Model().Caret()).bottomLeft());
    if (chosen) names_.Mend(*document, mends[static_cast<size_t>(chosen->data().toInt())]);
}

std::shared_ptr<mvDocument> QtPaneHelp::Document() const
{
    return services_.openDocuments.ById(documentId_);
}

QRect QtPaneHelp::CellAt(Position p) const
{
    const QRect cell = pane_.CellOf(p).toAlignedRect();
    return {pane_.viewport()->mapToGlobal(cell.topLeft()), cell.size()};
}

QFont QtPaneHelp::CodeFont() const
{
    const SourceFont& font = pane_.Model().Font();
    QFont code(ToQString(font.name));
    code.setPointSizeF(std::max(font.size + pane_.Zoom(), 4.0));
    return code;
}

} // namespace nib
