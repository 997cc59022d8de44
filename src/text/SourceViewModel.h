#pragma once
// A view without a screen: caret, selection, styles, and every editing command of the keyboard and mouse as logic. The
// widget paints it and feeds it; tests and the logic run it alone.

#include "platform/Desktop.h"
#include "text/SourceBuffer.h"
#include "text/SourceView.h"

#include <map>

namespace nib {

/// What a view asks of whatever shows it; the defaults serve a view without a screen.
class ViewHost {
public:
    virtual ~ViewHost() = default;
    virtual int32_t LineHeight() const { return 16; }
    virtual int32_t PageLines() const { return 25; }
    virtual void GetFirstVisible(int32_t& line, int32_t& column) const { line = column = 0; }
    virtual void SetFirstVisible(int32_t /*line*/, int32_t /*column*/) {}
    virtual void EnsureCaretVisible() {}
    /// The caret or the selection moved; `before` and `after` bound the lines to repaint.
    virtual void SelectionChanged(int32_t /*firstLine*/, int32_t /*lastLine*/) {}
    /// Font, colours, wrap, margin: everything must be measured again.
    virtual void AppearanceChanged() {}
    virtual void Print() {}
    /// Where a caret comes that moves by rows as they are shown (wrapped lines have several); `goal` is the place
    /// across that it aims at, in the host's measure, negative to take it from `at`. False: the view goes by lines and
    /// columns.
    virtual bool MoveRows(Position& /*at*/, int32_t /*rows*/, double& /*goal*/) const { return false; }
    /// First and last caret place of the shown row that `at` is in. False: lines are shown as one row.
    virtual bool RowOf(Position /*at*/, int32_t& /*first*/, int32_t& /*last*/) const { return false; }
};

/// What the document window hears of its view.
class ViewEvents {
public:
    virtual ~ViewEvents() = default;
    virtual void CaretMoved(Position) {}
    virtual void ModifiedChanged(bool) {}
    virtual void LinesChanged() {}
    virtual void OvertypeChanged(bool) {}
};

struct TokenStyle {
    int32_t color = -1; ///< -1: the default text colour
    int32_t style = 0;
};

class TokenStyleTable final : public TokenTable {
public:
    void SetStyle(int32_t type, int32_t style, int32_t reserved = -1) override;
    void SetColor(int32_t type, int32_t color, int32_t reserved = -1) override;
    TokenStyle Get(int32_t type) const;

private:
    std::map<int32_t, TokenStyle> styles_;
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

class SourceViewModel final : public SourceView, public BufferListener {
public:
    /// `buffer` outlives the view.
    SourceViewModel(SourceBuffer& buffer, Clipboard& clipboard);
    ~SourceViewModel() override;

    void SetHost(ViewHost* host);       ///< not owned; null for the defaults
    void SetEvents(ViewEvents* events); ///< not owned; may be null
    SourceBuffer& Buffer() { return buffer_; }

    // SourceView
    SourceDocument& Document() override { return buffer_; }
    Position Caret() const override { return caret_; }
    void SetCaret(Position caret) override;
    bool HasSelection() const override { return anchor_ != caret_; }
    void GetSelection(Position& start, Position& end) const override;
    void SetSelection(Position anchor, Position caret) override;
    int32_t TabSize() const override { return tabSize_; }
    void SetTabSize(int32_t size) override;
    Text GetText() const override;
    void SetText(TextView text) override;
    int32_t LineHeight() const override;
    int32_t PageLines() const override;
    void GetFirstVisible(int32_t& line, int32_t& column) const override;
    void SetFirstVisible(int32_t line, int32_t column) override;
    SourceFont Font() const override { return font_; }
    void SetFont(const SourceFont& font) override;
    TokenTable& TokenStyles() override { return screenStyles_; }
    TokenTable& PrintTokenStyles() override { return printStyles_; }
    bool LineWrap() const override { return lineWrap_; }
    void SetLineWrap(bool wrap) override;
    bool Overtype() const override { return overtype_; }
    void SetOvertype(bool overtype) override;
    void SetBackColor(int32_t color) override;
    int32_t MarginWidth() const override { return marginWidth_; }
    void SetMarginWidth(int32_t characters) override;
    bool ShowBlocks() const override { return showBlocks_; }
    void SetShowBlocks(bool show) override;
    void Cut() override;
    void Copy() override;
    void Paste() override;
    void Delete() override;
    void DeleteLine() override;
    void SelectAll() override;
    void TypeText(TextView text) override;
    ISourceDraw2* DrawHandler() const override { return drawHandler_; }
    void SetDrawHandler(ISourceDraw2* handler) override { drawHandler_ = handler; }
    void Print() override;
    bool NextToken(int32_t line, int32_t position, Token& token) override;

    // Commands of keyboard and mouse
    void MoveCaret(Move move, bool extendSelection);
    /// Puts in a text as pasting does: for the selection, never over what stands behind the caret, an undo step of its
    /// own.
    void Insert(TextView text);
    void NewLine();   ///< breaks the line and keeps its indent
    void Backspace(); ///< grapheme left; over leading blanks one tab stop
    void DeleteForward();
    void DeleteWord(bool backward);
    /// Blanks up to the next tab stop; with a selection of several lines the lines are shifted.
    void Tab();
    void Backtab();
    /// Word, or run of other characters, round a position.
    void SelectWord(Position at);
    void SelectLines(int32_t anchorLine, int32_t caretLine);
    /// Moves or copies the selection to `target`, as a drag does; one undo step.
    void MoveSelection(Position target, bool copy);
    Text SelectedText() const;
    Position Anchor() const { return anchor_; }
    int32_t BackColor() const { return backColor_; }
    const TokenStyleTable& ScreenStyles() const { return screenStyles_; }
    const TokenStyleTable& PrintStyles() const { return printStyles_; }

    // BufferListener
    void TextChanged(const TextChange& change) override;
    void TextReset() override;
    void CaretRequested(Position caret) override;
    void ModifiedChanged(bool modified) override;
    void FoldingChanged() override;

private:
    class Edit;

    /// The one way in which a command leaves caret and selection.
    void Place(Position anchor, Position caret);
    /// Tells host and window what moved since they last heard.
    void Tell();
    void Ordered(Position& start, Position& end) const;
    bool SelectsLines() const;
    Position SnapToGrapheme(Position p);
    Position SnapToUnit(Position p);
    Position HorizontalTarget(Move move, bool extendSelection);
    Position VerticalTarget(Move move);
    Position StepLeft(Position from, bool word);
    Position StepRight(Position from, bool word);
    Position HomeOf(Position from);
    Position EndOf(Position from);
    void ReplaceRange(Position start, Position end, TextView text);
    Position OvertypeEnd(TextView text);
    Text WithoutTabs(TextView text, int32_t column) const;
    void ShiftLines(bool outwards);

    SourceBuffer& buffer_;
    Clipboard& clipboard_;
    ViewHost noHost_;
    ViewHost* host_ = &noHost_;
    ViewEvents* events_ = nullptr;
    Position anchor_;
    Position caret_;
    Position toldAnchor_;
    Position toldCaret_;
    double goal_ = -1; ///< place across that vertical movement aims at, negative for the caret's own
    int32_t editing_ = 0;
    Text scratch_;
    std::vector<Token> tokens_;
    int32_t tabSize_ = 3;
    SourceFont font_;
    TokenStyleTable screenStyles_;
    TokenStyleTable printStyles_;
    ISourceDraw2* drawHandler_ = nullptr;
    int32_t backColor_ = static_cast<int32_t>(0x80000005);
    int32_t marginWidth_ = 5;
    bool showBlocks_ = false;
    bool lineWrap_ = false;
    bool overtype_ = false;
};

} // namespace nib
