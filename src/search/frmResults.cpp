#include "search/frmResults.h"

#include "base/Twips.h"
#include "platform/qt/QtText.h"
#include "printing/QtPrintingSurface.h"
#include "search/QtResultsList.h"

#include <QFontDialog>
#include <QMenuBar>
#include <QScrollBar>
#include <QTextBlock>
#include <QVBoxLayout>

#include <algorithm>

namespace nib {

namespace {

/// A double click has selected its word by then.
constexpr int kDoubleClickMs = 50;
constexpr int kDesignColumns = 80;
constexpr int kDesignRows = 16;

/// Lines of ours within the output of a command, by their ends: what has been left out of it.
constexpr TextView kNoteEnds[] = {u" lines are left out here)", u"(the rest of the output was cut off)",
                                  u"(The command asked for input, and was ended.)"};

Text WithNotes(TextView output)
{
    Text shown(output);
    for (const TextView end : kNoteEnds) {
        const size_t at = shown.find(end);
        if (at == Text::npos) continue;
        const size_t start = shown.rfind(u'\n', at) + 1; // 0 where there is none
        const size_t size = at + end.size() - start;
        shown.replace(start, size, ToText(TranslatedText(TextView(shown).substr(start, size))));
    }
    return shown;
}

} // namespace

frmResults::frmResults(ResultsModel& model, SettingsStore& store, QWidget* owner)
    : QDialog(owner), model_(model), store_(store)
{
    chooseFont = [this](QFont& font) {
        bool chosen = false;
        font = QFontDialog::getFont(&chosen, font, this);
        return chosen;
    };
    Build();
    BuildMenus();
    SetFont();
    const QFontMetrics metrics(txResults_->font());
    size_ = {metrics.averageCharWidth() * kDesignColumns, metrics.height() * kDesignRows};
    resize(size_);
}

frmResults::~frmResults() = default;

void frmResults::Build()
{
    setWindowTitle(tr("Results"));
    setAccessibleName(windowTitle()); // also as a part of another window
    setSizeGripEnabled(false);
    txResults_ = new QtResultsList(model_);
    txResults_->setAccessibleName(tr("Results"));
    txResults_->setToolTip(tr("Double-click to edit source line"));
    txResults_->onEnter = [this] { JumpToSource(); };
    txResults_->onEscape = [this] { reject(); };
    txResults_->onDoubleClick = [this] { dblClkTimer_.start(kDoubleClickMs); };
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(txResults_);
    dblClkTimer_.setSingleShot(true);
    connect(&dblClkTimer_, &QTimer::timeout, this, [this] { JumpToSource(); });
    fillTimer_.setSingleShot(true);
    connect(&fillTimer_, &QTimer::timeout, this, [this] {
        FillIn();
        if (running_) ShowPrinted();
    });
}

void frmResults::BuildMenus()
{
    struct Tool {
        const char* name;
        QString caption;
        QKeySequence key;
        std::function<void()> run;
        bool file;
        bool popup;
    };
    auto select = [this](bool all) {
        QTextCursor cursor = txResults_->textCursor();
        if (all)
            cursor.select(QTextCursor::Document);
        else
            cursor.setPosition(0);
        txResults_->setTextCursor(cursor);
    };
    const Tool tools[] = {
        {"Print", tr("&Print"), QKeySequence(Qt::CTRL | Qt::Key_P),
         [this] {
             if (onPrint) onPrint(*this);
         },
         true, true},
        {"Font", tr("Fon&t..."), {}, [this] { ChooseFont(); }, true, false},
        {"Close", tr("&Close"), {}, [this] { reject(); }, true, false},
        {"Copy", tr("&Copy"), QKeySequence(Qt::CTRL | Qt::Key_C), [this] { txResults_->copy(); }, false, true},
        {"SelectAll", tr("Select &All"), {}, [select] { select(true); }, false, true},
        {"SelectNone", tr("Select &None"), {}, [select] { select(false); }, false, true},
    };
    auto* bar = new QMenuBar(this);
    QMenu* file = bar->addMenu(tr("&File"));
    QMenu* edit = bar->addMenu(tr("&Edit"));
    popup_ = new QMenu(this);
    for (const Tool& tool : tools) {
        QAction* action = (tool.file ? file : edit)->addAction(tool.caption);
        action->setObjectName(QLatin1String(tool.name));
        action->setShortcut(tool.key);
        connect(action, &QAction::triggered, this, tool.run);
        // The window may hold another's text with the same keys.
        action->setShortcutContext(Qt::WidgetShortcut);
        if (!tool.key.isEmpty()) txResults_->addAction(action);
        if (tool.popup) popup_->addAction(action);
    }
    dock_ = file->addAction({}, this, [this] { onDock(); });
    dock_->setVisible(false);
    txResults_->popup = popup_;
    layout()->setMenuBar(bar);
}

void frmResults::SetFont()
{
    QFont font = this->font();
    if (!model_.FontName().empty()) font.setFamily(ToQString(model_.FontName()));
    font.setPointSizeF(model_.FontSize());
    txResults_->setFont(font);
}

void frmResults::ChooseFont()
{
    QFont font(txResults_->font().family());
    font.setPointSizeF(txResults_->font().pointSizeF());
    if (!chooseFont(font)) return;
    model_.SetFont(ViewOf(font.family()), font.pointSizeF());
    SetFont();
}

// The list

void frmResults::ShowResults(TextView text)
{
    running_ = false;
    if (!text.empty()) {
        model_.ShowResults(WithNotes(text));
        Changed();
    }
    FillIn();
    Present();
}

void frmResults::KeepResults(TextView text)
{
    running_ = false;
    model_.ShowResults(WithNotes(text));
    Changed();
    if (onKept) onKept();
}

// Turns of the loop go by only while the user is kept waiting; before that the list is not through.
void frmResults::AddOutput(TextView lines, bool first)
{
    running_ = true;
    model_.AddOutput(lines, first);
    Changed();
}

void frmResults::ShowPrinted()
{
    if (onPrinted) onPrinted();
    txResults_->verticalScrollBar()->setValue(txResults_->verticalScrollBar()->maximum());
}

void frmResults::ResetResults(TextView title)
{
    running_ = false;
    model_.ResetResults(ToText(TranslatedText(title)));
    Changed();
    Present();
}

void frmResults::AddResultLine(TextView text, int32_t highlightStart, int32_t highlightLength, bool emphasis)
{
    model_.AddResultLine(text, highlightStart, highlightLength, emphasis);
    Changed();
}

void frmResults::AddNote(const std::vector<Text>& sentences)
{
    std::vector<Text> shown = sentences;
    for (Text& sentence : shown) sentence = ToText(TranslatedText(sentence));
    ResultsWindow::AddNote(shown);
}

void frmResults::AddItemHeader(TextView text, TextView path)
{
    model_.AddItemHeader(text, path);
    Changed();
}

void frmResults::AddItemLine(TextView text, int32_t highlightStart, int32_t highlightLength, int32_t line)
{
    model_.AddItemLine(text, highlightStart, highlightLength, line);
    Changed();
}

void frmResults::Changed()
{
    if (!filled_) return;
    filled_ = false;
    fillTimer_.start(0);
}

void frmResults::FillIn()
{
    fillTimer_.stop();
    if (std::exchange(filled_, true)) return;
    const TextView contents = model_.Contents();
    const bool grows = std::exchange(shownList_, model_.ListNumber()) == model_.ListNumber();
    const size_t shown = std::exchange(shownUnits_, contents.size());
    if (grows) {
        // What is read and selected meanwhile stays where it is.
        QTextCursor kept = txResults_->textCursor();
        kept.setKeepPositionOnInsert(true);
        QTextCursor end(txResults_->document());
        end.movePosition(QTextCursor::End);
        end.insertText(ShownResults(contents.substr(shown)));
        if (kept != txResults_->textCursor()) {
            kept.setKeepPositionOnInsert(false);
            txResults_->setTextCursor(kept);
        }
        return;
    }
    txResults_->setPlainText(ShownResults(contents));
    txResults_->horizontalScrollBar()->setValue(0);
}

void frmResults::PlaceWindow()
{
    if (std::exchange(positioned_, true) || !parentWidget()) return;
    resize(size_);
    const int dots = logicalDpiX();
    const QRect main = parentWidget()->window()->frameGeometry();
    const ResultsBounds present{0, 0, PixelsToTwips(width(), dots), PixelsToTwips(height(), dots)};
    const ResultsBounds bounds = PlaceResults(store_, present,
                                              {PixelsToTwips(main.x(), dots), PixelsToTwips(main.y(), dots),
                                               PixelsToTwips(main.width(), dots), PixelsToTwips(main.height(), dots)});
    resize(TwipsToPixels(bounds.width, dots), TwipsToPixels(bounds.height, dots));
    move(TwipsToPixels(bounds.left, dots), TwipsToPixels(bounds.top, dots));
}

void frmResults::Present()
{
    findChild<QAction*>(QStringLiteral("Print"))->setEnabled(onPrint != nullptr);
    onShow ? onShow() : ShowFloating();
}

void frmResults::ShowFloating()
{
    PlaceWindow();
    show();
    raise();
    TakeFocus();
}

void frmResults::TakeFocus()
{
    activateWindow();
    txResults_->setFocus(Qt::OtherFocusReason);
}

void frmResults::SetDocked(bool docked)
{
    if (docked) KeepSize();
    positioned_ = false; // a window again, it is as large as it was then
    layout()->menuBar()->setVisible(!docked);
    dock_->setVisible(true);
    dock_->setText(docked ? tr("&Float") : tr("&Dock"));
    for (const char* name : {"Font", "Close"}) popup_->removeAction(findChild<QAction*>(QLatin1String(name)));
    popup_->removeAction(dock_);
    if (!docked) return;
    popup_->addActions(
        {findChild<QAction*>(QStringLiteral("Font")), dock_, findChild<QAction*>(QStringLiteral("Close"))});
}

void frmResults::KeepSize()
{
    const bool normal = !(windowState() & (Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen));
    if (!positioned_ || !normal || !isWindow()) return;
    const int dots = logicalDpiX();
    SaveResultsSize(store_, {0, 0, PixelsToTwips(width(), dots), PixelsToTwips(height(), dots)});
}

void frmResults::PrintTo(const Paper& paper) const
{
    QTextDocument document;
    document.setDefaultFont(txResults_->font());
    document.setPlainText(ShownResults(model_.Contents()));
    QPalette colors = palette();
    for (const auto role : {QPalette::Highlight, QPalette::HighlightedText}) {
        const int grey = qGray(colors.color(QPalette::Active, role).rgb());
        if (paper.grey) colors.setColor(role, QColor(grey, grey, grey));
    }
    QTextCursor cursor(&document);
    QTextBlock block = document.begin();
    for (int32_t line = 0; line < model_.LineCount() && block.isValid(); ++line, block = block.next()) {
        for (const auto& range : ResultsFormats(model_.LineStyle(line), block.length() - 1, colors)) {
            cursor.setPosition(block.position() + range.start);
            cursor.setPosition(block.position() + range.start + range.length, QTextCursor::KeepAnchor);
            cursor.mergeCharFormat(range.format);
        }
    }
    DrawTextPages(document, paper);
}

bool frmResults::GoToError(bool backward)
{
    if (!isVisible()) return false;
    const std::optional<int32_t> row = model_.GoToError(backward);
    if (!row) return false;
    FillIn();
    QTextCursor cursor(txResults_->document()->findBlockByNumber(*row));
    // Backwards, so that the beginning of a long line is in sight.
    cursor.movePosition(QTextCursor::EndOfBlock);
    cursor.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
    txResults_->setTextCursor(cursor);
    return true;
}

void frmResults::JumpToSource()
{
    const QTextCursor cursor = txResults_->textCursor();
    QTextCursor start = cursor;
    start.setPosition(cursor.selectionStart());
    model_.JumpToSource({start.positionInBlock(), start.blockNumber()}, ViewOf(cursor.selectedText()));
}

} // namespace nib
