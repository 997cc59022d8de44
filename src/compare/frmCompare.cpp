#include "compare/frmCompare.h"

#include "documents/mvDocument.h"
#include "platform/qt/ElidedValue.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtText.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

namespace nib {

namespace {

/// Milliseconds between looks at texts that change.
constexpr int kPace = 100;
/// Looks between those at what is stored.
constexpr int kLooksAtStored = 20;

constexpr std::array<Beside, 2> kSides{Beside::Left, Beside::Right};

int WidthOf(const QMargins& margins)
{
    return margins.left() + margins.right();
}

/// As in the windows of documents.
bool IsClose(const QKeyEvent& event)
{
    return event.key() == Qt::Key_F4 && event.modifiers() == Qt::ControlModifier;
}

} // namespace

frmCompare::frmCompare(DocumentServices& services, SettingsStore& store,
                       std::array<std::unique_ptr<CompareSide>, 2> sides)
    : services_(services), model_(services, store, CallOnWindows, std::move(sides))
{
    Build();
    model_.onChange = [this] { Show(); };
    model_.onEdit = [this] { view_->Edited(); };
    view_->onMove = [this, side = view_->Side()]() mutable {
        ShowState();
        if (std::exchange(side, view_->Side()) == view_->Side()) return;
        if (onSide) onSide();
    };
    view_->onOpen = [this](Beside side, int32_t line) { Open(side, line); };
    connect(&timer_, &QTimer::timeout, this, [this] { Ring(); });
    timer_.start(kPace);
    model_.Compare();
}

/// The view goes first: it looks at the model once more when the focus leaves it.
frmCompare::~frmCompare()
{
    delete view_;
}

void frmCompare::Build()
{
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->addLayout(BuildBar());
    auto* captions = new QHBoxLayout;
    captions->setContentsMargins(6, 0, style()->pixelMetric(QStyle::PM_ScrollBarExtent), 4);
    for (Beside side : kSides) {
        QLabel*& caption = captions_[static_cast<size_t>(side)];
        caption = new ElidedLabel;
        QFont bold = caption->font();
        bold.setBold(true);
        caption->setFont(bold);
        captions->addWidget(caption, 1);
    }
    all->addLayout(captions);
    lbNote_ = new QLabel;
    lbNote_->setTextFormat(Qt::PlainText);
    lbNote_->setContentsMargins(8, 4, 8, 4);
    lbNote_->setWordWrap(true);
    all->addWidget(lbNote_);
    view_ = new QtCompareView(model_, this);
    view_->setMinimumHeight(fontMetrics().lineSpacing()); // it asks for more than small screens have
    all->addWidget(view_, 1);
    captions->setSpacing(view_->GutterWidth());
    setFocusProxy(view_);
    setAutoFillBackground(true);
}

/// Two parts, which stand above one another where there is no room for both in a row. Where there is none for that
/// either the texts come before the options.
QBoxLayout* frmCompare::BuildBar()
{
    bar_ = new QHBoxLayout;
    bar_->setContentsMargins(6, 4, 6, 4);
    bar_->setSpacing(4);
    auto* steps = new QHBoxLayout;
    bar_->addLayout(steps, 1);
    cmdPrevious_ =
        AddButton(*steps, QStringLiteral("\u2191"), tr("The change before (Shift+F8)"), [this] { view_->Step(true); });
    cmdNext_ = AddButton(*steps, QStringLiteral("\u2193"), tr("The next change (F8)"), [this] { view_->Step(false); });
    cmdTake_[0] = AddButton(*steps, QStringLiteral("\u2190"), tr("Takes this over to the left (Alt+Left)"),
                            [this] { view_->Take(Beside::Left); });
    cmdTake_[1] = AddButton(*steps, QStringLiteral("\u2192"), tr("Takes this over to the right (Alt+Right)"),
                            [this] { view_->Take(Beside::Right); });
    // Nothing can ever be taken over between two texts that are in no document.
    if (!model_.Side(Beside::Left).Document() && !model_.Side(Beside::Right).Document())
        for (QToolButton* button : cmdTake_) button->hide();
    lbState_ = new ElidedLabel;
    lbState_->setContentsMargins(8, 0, 8, 0);
    steps->addWidget(lbState_, 1);
    options_ = new QWidget;
    bar_->addWidget(options_);
    auto* options = new QHBoxLayout(options_);
    options->setContentsMargins(0, 0, 0, 0);
    options->addWidget(new QLabel(tr("Ignore:")));
    AddOption(*options, tr("&Blanks"), tr("Indents, blanks at the end, and how many there are between words"),
              &CompareOptions::blanks);
    AddOption(*options, tr("C&ase"), tr("Small and capital letters are the same"), &CompareOptions::letterCase);
    AddOption(*options, tr("Co&mments"), tr("Lines that hold nothing but a comment"), &CompareOptions::comments);
    options->addStretch();
    for (QBoxLayout* part : {steps, options}) part->setSpacing(bar_->spacing());
    return bar_;
}

QSize frmCompare::minimumSizeHint() const
{
    constexpr int kLeastLines = 4;
    return {bar_->itemAt(0)->minimumSize().width() + WidthOf(bar_->contentsMargins()),
            kLeastLines * fontMetrics().lineSpacing()};
}

void frmCompare::resizeEvent(QResizeEvent* event)
{
    constexpr int kLinesForTwo = 9;
    QWidget::resizeEvent(event);
    const int options = options_->minimumSizeHint().width();
    const int state = lbState_->fontMetrics().horizontalAdvance(tr("No differences but those that are ignored"));
    const bool inRow = width() >= minimumSizeHint().width() + options + state;
    bar_->setDirection(inRow ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    options_->setVisible(inRow || (width() >= options + WidthOf(bar_->contentsMargins()) &&
                                   height() >= kLinesForTwo * fontMetrics().lineSpacing()));
}

QToolButton* frmCompare::AddButton(QBoxLayout& bar, const QString& text, const QString& tip, std::function<void()> act)
{
    auto* button = new QToolButton;
    button->setText(text);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QToolButton::clicked, this, std::move(act));
    bar.addWidget(button);
    return button;
}

QCheckBox* frmCompare::AddOption(QBoxLayout& bar, const QString& text, const QString& tip, bool CompareOptions::*option)
{
    auto* box = new QCheckBox(text);
    box->setToolTip(tip);
    box->setChecked(model_.Options().*option);
    connect(box, &QCheckBox::toggled, this, [this, option](bool checked) {
        if (!model_.IsThere()) return;
        CompareOptions options = model_.Options();
        options.*option = checked;
        model_.SetOptions(options);
    });
    bar.addWidget(box);
    return box;
}

// What is shown

void frmCompare::Show()
{
    if (!model_.IsThere()) return;
    for (Beside side : kSides) {
        const CompareSide& of = model_.Side(side);
        const QString name = ToQString(of.Name());
        const Text note = of.Note();
        QLabel& caption = *captions_[static_cast<size_t>(side)];
        caption.setText(note.empty() ? name : name + QStringLiteral(" \u2013 ") + Translated(note));
        caption.setToolTip(caption.text());
    }
    const CompareSide& right = model_.Side(Beside::Right);
    const auto document = right.Document();
    const Text name = document ? document->DisplayName() : right.Name();
    setWindowTitle(PlainTitle(ToText(tr("Compare %1").arg(ToQString(name)))));
    const QString note = NoteText();
    lbNote_->setText(note);
    lbNote_->setVisible(!note.isEmpty());
    view_->Refresh();
    ShowState();
}

QString frmCompare::NoteText() const
{
    if (model_.IsWorking()) return {};
    if (model_.IsBinary()) return tr("One of the two is no text: it is not shown.");
    if (model_.IsStopped()) return tr("The comparison was stopped. F5 begins it again.");
    if (model_.Rows().Differences().coarse)
        return tr(
            "The texts have too little in common to find all of it: some lines are shown as changed that are not.");
    return {};
}

QString frmCompare::StateText() const
{
    if (model_.IsWorking()) return tr("Comparing... (Escape stops)");
    if (model_.IsBinary() || model_.IsStopped()) return {};
    const int32_t changes = model_.Rows().ChangeCount();
    const CompareOptions& options = model_.Options();
    if (changes == 0)
        return options == CompareOptions() ? tr("No differences") : tr("No differences but those that are ignored");
    const int32_t at = view_->Change();
    return at < 0 ? tr("Changes: %1").arg(changes) : tr("Change %1 of %2").arg(at + 1).arg(changes);
}

void frmCompare::ShowState()
{
    if (!model_.IsThere()) return;
    lbState_->setText(StateText());
    cmdPrevious_->setEnabled(view_->CanStep(true));
    cmdNext_->setEnabled(view_->CanStep(false));
    for (Beside side : kSides)
        cmdTake_[static_cast<size_t>(side)]->setEnabled(view_->Change() >= 0 && model_.CanTake(side));
}

void frmCompare::Ring()
{
    if (!model_.IsThere()) {
        timer_.stop();
        QWidget* window = parentWidget() ? parentWidget() : this;
        window->close();
        return;
    }
    model_.Tick();
    if (++rings_ % kLooksAtStored == 0 && isVisible()) model_.Look();
}

void frmCompare::Again(std::optional<CompareText> left)
{
    if (!left) return model_.LookAgain();
    model_.Side(Beside::Left).Take(std::move(*left));
    model_.Compare();
}

void frmCompare::Open(Beside side, int32_t line)
{
    const auto document = model_.Side(side).Document();
    if (!document) return;
    document->Activate();
    document->View()->txtText().SetCaret({0, line});
}

void frmCompare::Save()
{
    for (Beside side : {view_->Side(), CompareModel::Other(view_->Side())}) {
        const auto document = model_.Side(side).Document();
        if (document && document->IsDirty() && onSave) return onSave(*document);
    }
}

bool frmCompare::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Save) || IsClose(*key)) {
            event->accept();
            return true;
        }
    }
    return QWidget::event(event);
}

void frmCompare::keyPressEvent(QKeyEvent* event)
{
    if (!model_.IsThere()) return;
    if (event->key() == Qt::Key_F5)
        Again();
    else if (event->key() == Qt::Key_Escape && model_.IsWorking())
        model_.Stop();
    else if (event->matches(QKeySequence::Save))
        Save();
    else if (IsClose(*event))
        QMetaObject::invokeMethod(parentWidget() ? parentWidget() : this, &QWidget::close, Qt::QueuedConnection);
    else
        QWidget::keyPressEvent(event);
}

} // namespace nib
