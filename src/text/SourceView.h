#pragma once
// A view without a screen: caret, selection, styles, and every editing command of the keyboard and mouse as logic. The
// widget paints it and feeds it; tests and the logic run it alone.

#include "platform/Desktop.h"
#include "text/SourceDocument.h"
#include "text/ViewMarks.h"

#include <algorithm>
#include <functional>
#include <map>
#include <optional>

namespace nib {

/// What a view asks of whatever shows it; the defaults serve a view without a screen.
class ViewHost {
public:
    virtual ~ViewHost() = default;
    virtual int32_t LineHeight() const { return 16; }
    virtual int32_t PageLines() const { return 25; }
    virtual void GetFirstVisible(int32_t& line, int32_t& column) { line = column = 0; }
    virtual void SetFirstVisible(int32_t /*line*/, int32_t /*column*/) {}
    virtual void EnsureCaretVisible() {}
    /// The same, at the latest before the next look at the view: an edit asks for it, and many may follow.
    virtual void EnsureCaretVisibleSoon() { EnsureCaretVisible(); }
    /// The caret or the selection moved; `before` and `after` bound the lines to repaint.
    virtual void SelectionChanged(int32_t /*firstLine*/, int32_t /*lastLine*/) {}
    /// Font, colours, wrap, margin: everything must be measured again.
    virtual void AppearanceChanged() {}
    /// Where a caret comes that moves by rows as they are shown (wrapped lines have several); `goal` is the place
    /// across that it aims at, in the host's measure, negative to take it from `at`. False: the view goes by lines and
    /// columns.
    virtual bool MoveRows(Position& /*at*/, int32_t /*rows*/, double& /*goal*/) const { return false; }
    /// First and last caret place of the shown row that `at` is in. False: lines are shown as one row.
    virtual bool RowOf(Position /*at*/, int32_t& /*first*/, int32_t& /*last*/) const { return false; }
    /// The cells in front of a place, by which lines stand under one another, and the column at so many cells; one
    /// behind the end of the line is that end.
    virtual int32_t CellsBefore(Position at) const { return at.col; }
    virtual int32_t ColumnAtCell(int32_t /*line*/, int32_t cell) const { return cell; }
};

/// What the document window hears of its view.
class ViewEvents {
public:
    virtual ~ViewEvents() = default;
    virtual void CaretMoved(Position) {}
    virtual void ModifiedChanged(bool) {}
    virtual void LinesChanged() {}
    virtual void OvertypeChanged(bool) {}
    virtual void EditRefused() {}
};

struct TokenStyle {
    int32_t color = -1; ///< -1: the default text colour
    int32_t style = 0;
    bool chosen = false; ///< drawn as it is, however hard to read; others follow the colour scheme
};

/// For each token type a colour (0x00BBGGRR, or with the top bit a system colour) and a style, bits of token_style.
class TokenStyleTable {
public:
    void SetStyle(int32_t type, int32_t style) { styles_[type].style = style; }
    void SetColor(int32_t type, int32_t color, bool chosen = false)
    {
        styles_[type].color = color;
        styles_[type].chosen = chosen;
    }
    TokenStyle Get(int32_t type) const;

private:
    std::map<int32_t, TokenStyle> styles_;
};

/// A corner of a column, which may stand behind the end of its line.
struct CellPlace {
    int32_t line = 0;
    int32_t cell = 0;
};

/// Where a movement key takes the caret.
enum class Move {
    Left,
    Right,
    Up,
    Down,
    WordLeft,
    WordRight,
    LineStart,
    LineEnd,
    TextStart,
    TextEnd,
    PageUp,
    PageDown
};

/// A window on a document: caret, selection, font, token styles.
class SourceView final : public BufferListener {
public:
    /// `document` outlives the view.
    SourceView(SourceDocument& document, Clipboard& clipboard);
    ~SourceView() override;

    void SetHost(ViewHost* host);       ///< not owned; null for the defaults
    void SetEvents(ViewEvents* events); ///< not owned; may be null
    SourceDocument& Document() { return document_; }

    Position Caret() const { return caret_; }
    int32_t CaretLine() const { return caret_.line; }
    /// Moves the caret, drops the selection and scrolls the caret into sight; a block that hides it is expanded.
    void SetCaret(Position caret);
    Position Anchor() const { return anchor_; }
    bool HasSelection() const { return anchor_ != caret_; }
    /// The anchor first, so that the end may lie before the start.
    void GetSelection(Position& start, Position& end) const;
    /// The same in the order of the text.
    TextRange Selection() const { return {std::min(anchor_, caret_), std::max(anchor_, caret_)}; }
    Text SelectedText() const;
    void SetSelection(Position anchor, Position caret);
    void SelectAll();
    /// Word, or run of other characters, round a position.
    void SelectWord(Position at);
    void SelectLines(int32_t anchorLine, int32_t caretLine);

    /// The whole text, lines joined with CR LF.
    Text GetText() const { return document_.GetText(); }
    /// Replaces the whole text; whether it counts as modified is the caller's business.
    void SetText(TextView text) { document_.SetText(text); }
    std::vector<TabPlace> SetText(ByteText text, int32_t tabWidth)
    {
        return document_.SetText(std::move(text), tabWidth);
    }
    /// Runs the lexer over `line` and finds the token at or behind column `position`; false at the end of the line.
    bool NextToken(int32_t line, int32_t position, Token& token);

    int32_t LineHeight() const { return host_->LineHeight(); } ///< pixels
    /// Whole lines that the pane can show.
    int32_t PageLines() const { return host_->PageLines(); }
    void GetFirstVisible(int32_t& line, int32_t& column) const { host_->GetFirstVisible(line, column); }
    void SetFirstVisible(int32_t line, int32_t column) { host_->SetFirstVisible(line, column); }

    const SourceFont& Font() const { return font_; }
    void SetFont(const SourceFont& font);
    TokenStyleTable& TokenStyles() { return screenStyles_; }
    const TokenStyleTable& TokenStyles() const { return screenStyles_; }
    TokenStyleTable& PrintTokenStyles() { return printStyles_; }
    const TokenStyleTable& PrintTokenStyles() const { return printStyles_; }
    int32_t BackColor() const { return backColor_; }
    void SetBackColor(int32_t color);
    int32_t TabSize() const { return tabSize_; }
    void SetTabSize(int32_t size) { tabSize_ = std::max(size, 1); }
    bool LineWrap() const { return lineWrap_; }
    void SetLineWrap(bool wrap);
    /// Breaks and words that close a block put the line where the blocks say.
    bool IndentsByBlocks() const { return indentsByBlocks_; }
    void SetIndentsByBlocks(bool byBlocks) { indentsByBlocks_ = byBlocks; }
    const ViewMarks& Marks() const { return marks_; }
    void SetMarks(const ViewMarks& marks);
    bool Overtype() const { return overtype_; }
    void SetOvertype(bool overtype);
    /// The margin's width in characters, block column included.
    int32_t MarginWidth() const { return marginWidth_; }
    void SetMarginWidth(int32_t characters);
    bool ShowBlocks() const { return showBlocks_; }
    void SetShowBlocks(bool show);

    /// No command of the user changes the text; the program still may.
    bool ReadOnly() const { return readOnly_; }
    void SetReadOnly(bool readOnly);
    /// Font, colours, margin and manners of another view; caret and selection stay.
    void TakeLook(const SourceView& other);
    /// Of several views on one text the one at work: undo and operations move its caret alone.
    void SetLeads(bool leads) { leads_ = leads; }
    /// For a command that is about to change the text; the window hears of each that is refused.
    bool MayEdit() const
    {
        if (readOnly_ && events_) events_->EditRefused();
        return !readOnly_;
    }

    // Several carets. The members above know of the main one; those that place it take the others away.
    bool HasSeveral() const { return carets_.Several(); }
    /// Empty while there is one.
    const Carets& AllCarets() const { return carets_; }
    /// All of them, one as well.
    std::vector<CaretSpan> CaretSpans() const;
    void SetCarets(std::vector<CaretSpan> spans, size_t main);
    void KeepMainCaret() { SetSelection(anchor_, caret_); }
    /// Cells by which the main caret stands behind the end of its line.
    int32_t CaretBeyond() const { return HasSeveral() ? carets_.Main().caretBeyond : 0; }
    /// Whether any of them has selected text.
    bool AnySelection() const;
    /// What Copy takes: the selections of all, each on a line of its own.
    Text AllSelectedText() const;
    /// For each one more on the line above or below.
    void AddCarets(bool above);
    /// The word, or what is selected; then its next place as well, round the end of the text.
    void SelectNextOccurrence();
    void SelectAllOccurrences();
    /// A caret in each line from corner to corner.
    void SelectColumn(CellPlace anchor, CellPlace caret);
    void ExtendColumn(Move move);
    CellPlace ColumnAnchor() const;
    /// Selects so many columns at so many from each caret, those that an input method is to replace.
    void SelectAround(int32_t from, int32_t length);

    // Commands of keyboard and mouse
    void MoveCaret(Move move, bool extendSelection);
    void Cut();
    void Copy();
    void Paste() { Insert(clipboard_.GetText()); }
    /// Types a text at the caret as the user would, replacing the selection.
    void TypeText(TextView text);
    /// Puts in a text as pasting does: for the selection, never over what stands behind the caret, an undo step of its
    /// own.
    void Insert(TextView text);
    void NewLine();   ///< breaks the line; the rest stands where the blocks say, or as the line did
    void Backspace(); ///< grapheme left; over leading blanks one tab stop
    /// Deletes the selection, or the character behind the caret.
    void Delete();
    void DeleteSelection();
    void DeleteLine();
    void DeleteWord(bool backward);
    void Undo();
    void Redo();
    /// Blanks up to the next tab stop; with a selection of several lines the lines are shifted.
    void Tab();
    void Backtab();
    /// Moves or copies the selection to `target`, as a drag does; one undo step.
    void MoveSelection(Position target, bool copy);
    // The lines of the selection, or the caret's; blocks that are collapsed among them go along. One undo step each.
    void MoveLinesUp() { MoveLines(true); }
    void MoveLinesDown() { MoveLines(false); }
    void DuplicateLines(); ///< below themselves; the selection goes to the copy
    /// Where the other bracket, or the other end of the block, of the one at the caret is.
    std::optional<Position> MatchOfCaret();
    void JoinLines(); ///< into one, with a blank between; a single line with the next

    // BufferListener
    void TextChanged(const TextChange& change) override;
    void TextReset() override;
    void CaretRequested(Position caret) override;
    void CaretsRequested(const Carets& carets) override;
    void ModifiedChanged(bool modified) override;
    void FoldingChanged() override;

private:
    /// While one lives, positions follow the text silently; the command then places the caret once. `group` makes all
    /// changes one step of undo; a lone change stays outside of a group, so that a run of typing can grow.
    class Edit {
    public:
        Edit(SourceView& view, bool group) : view_(view), group_(group)
        {
            ++view_.editing_;
            if (group_) view_.document_.BeginGroup();
        }
        ~Edit()
        {
            if (group_) view_.document_.EndGroup();
            --view_.editing_;
        }
        Edit(const Edit&) = delete;
        Edit& operator=(const Edit&) = delete;

    private:
        SourceView& view_;
        bool group_;
    };
    /// What a command does at a caret that stands behind the end of its line.
    enum class Beyond { Leaves, Fills, StepsBack, Stays };
    struct Column {
        CellPlace anchor;
        CellPlace caret;
    };

    /// The one way in which a command leaves caret and selection.
    void Place(Position anchor, Position caret);
    /// The same for several; one that is left over is placed as a single one.
    void PlaceAll(Carets carets);
    void DropCarets();
    void FollowChange(const TextChange& change);
    /// The members of a single caret become those of a span, or of the main one.
    void Become(const CaretSpan& span);
    /// Tells host and window what moved since they last heard.
    void Tell();
    void TellAll();
    bool SelectsLines() const;
    Position SnapToGrapheme(Position p);
    Position SnapToUnit(Position p);
    Position TargetOf(Move move, bool extendSelection);
    Position HorizontalTarget(Move move, bool extendSelection);
    Position VerticalTarget(Move move);
    Position StepLeft(Position from, bool word);
    Position StepRight(Position from, bool word);
    Position HomeOf(Position from);
    Position EndOf(Position from);
    void MoveAll(Move move, bool extendSelection);

    /// Makes an edit that `plan` tells from caret and selection, at each caret. It is told of the blanks that are put
    /// in front of its text, to fill a line up to a column.
    using Plan = std::function<RangeEdit(int32_t filled)>;
    void Apply(const Plan& plan, Beyond beyond = Beyond::Leaves);
    void ApplyToAll(const Plan& plan, Beyond beyond);
    bool ReplaceAtAll(std::vector<RangeEdit> edits, std::vector<CaretSpan> spans);
    /// Leaves the carets so after an edit that undo takes back with them.
    void KeepAndPlace(const Carets& before, std::vector<CaretSpan> spans, bool edited);
    /// Whether the command does nothing to the text there.
    bool StandsStill(const CaretSpan& span, Beyond beyond) const;
    bool KeepsColumn() const { return HasSeveral() && column_; }
    void ReplaceRange(Position start, Position end, TextView text);
    void InsertAtAll(TextView text);
    void DeleteLines();
    Position OvertypeEnd(TextView text);
    void ShiftLines(bool outwards);
    /// First and last line that a command on whole lines is for.
    ColumnRange SelectedLines() const;
    void MoveLines(bool up);
    /// Where the blocks want the caret's line, if it may be moved there as it is typed.
    std::optional<int32_t> IndentWhileTyping();
    void FollowBlocks(int32_t before);

    /// A caret in the line at so many cells.
    void PutAtCell(int32_t line, int32_t cell, Position& at, int32_t& beyond);
    CellPlace CellOf(Position at, int32_t beyond) const { return {at.line, host_->CellsBefore(at) + beyond}; }
    void StraightenColumn(Column column);
    bool SelectWords(std::vector<CaretSpan>& spans);
    FindOptions OccurrenceOptions() const;

    SourceDocument& document_;
    Clipboard& clipboard_;
    ViewHost noHost_;
    ViewHost* host_ = &noHost_;
    ViewEvents* events_ = nullptr;
    Position anchor_;
    Position caret_;
    Position toldAnchor_;
    Position toldCaret_;
    double goal_ = -1;             ///< place across that vertical movement aims at, negative for the caret's own
    Carets carets_;                ///< all of them while they are several; the members above are the main one's
    std::optional<Column> column_; ///< that they make up
    Text pickedWord_;              ///< of which only whole words are further occurrences
    int32_t toldFirst_ = 0;        ///< lines of several carets that were told of
    int32_t toldLast_ = -1;
    int32_t editing_ = 0;
    Text scratch_;
    std::vector<Token> tokens_;
    int32_t tabSize_ = 3;
    SourceFont font_;
    TokenStyleTable screenStyles_;
    TokenStyleTable printStyles_;
    int32_t backColor_ = static_cast<int32_t>(0x80000005);
    int32_t marginWidth_ = 5;
    bool showBlocks_ = false;
    bool lineWrap_ = false;
    bool indentsByBlocks_ = true;
    ViewMarks marks_;
    bool overtype_ = false;
    bool readOnly_ = false;
    bool leads_ = true;
};

} // namespace nib
