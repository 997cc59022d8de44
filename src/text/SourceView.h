#pragma once
// The contract of the text component: what the editor's logic requires of a document and of a view on it. The component
// in this room stands behind it, with or without a screen.
//
// Positions are 0-based, column before line; a line holds no line end. Ranges exclude their end position. A line number
// or column outside the text is clamped to it, unless a member says otherwise. All calls belong to the main thread.

#include "base/Text.h"

#include <cstdint>
#include <memory>

namespace nib {

class SourceDocument;

/// What a lexer answers for one token. `type` 0 is the end of the line; other types index the token table.
struct Token {
    int32_t type = 0;
    int32_t start = 0;      ///< 0-based column
    int32_t length = 0;     ///< UTF-16 units
    int32_t attributes = 0; ///< 0 none, 1 begins a block, 2 ends a block
};

/// Called by the document for each line that it scans: BeginLineScan, ScanToken until type 0, EndLineScan.
/// No call-back may edit the document.
class ISourceLex4 {
public:
    virtual ~ISourceLex4() = default;
    virtual void BeginLineScan(SourceDocument& document, int32_t line, TextView lineText, int32_t flags) = 0;
    virtual void ScanToken(Token& token) = 0;
    virtual int16_t EndLineScan(SourceDocument& document) = 0;
    virtual int32_t GetDesiredCase() = 0;
    virtual int32_t GetLineIndex() = 0;
    virtual void SetLineIndex(int32_t index) = 0;
    virtual int32_t GetProperties() = 0;
};

/// The surface of a page being printed, in device units; text goes through it so that no handler needs a screen.
class DrawSurface {
public:
    virtual ~DrawSurface() = default;
    virtual int32_t TextWidth(TextView text) = 0;
    /// Black on white, whatever colours the tokens have.
    virtual void DrawText(int32_t x, int32_t y, TextView text) = 0;
};

struct DrawContext {
    DrawSurface* surface = nullptr;
    int32_t charWidth = 0;
    int32_t lineHeight = 0;
    int32_t left = 0;
    int32_t right = 0;
    int32_t x = 0; ///< where the row's text starts; PreDrawLine may move it
    int32_t y = 0;
    int32_t line = 0;          ///< 0-based
    bool continuation = false; ///< a further row of a wrapped line
    int32_t page = 0;          ///< 1-based
};

class ISourceDraw2 {
public:
    virtual ~ISourceDraw2() = default;
    virtual void PreDraw(DrawContext& context) = 0;
    virtual void PreDrawPage(DrawContext& context) = 0;
    virtual void PreDrawLine(DrawContext& context) = 0;
    virtual void PostDrawPage(DrawContext& context) = 0;
    virtual void PostDraw(DrawContext& context) = 0;
};

/// One undoable edit made by the program. DoOp also runs for redo, so it works from the object's own fields alone.
class ISourceOp {
public:
    virtual ~ISourceOp() = default;
    virtual void DoOp(SourceDocument& document) = 0;
    virtual void UndoOp(SourceDocument& document) = 0;
};

/// The data words of a line.
enum class LineWord : int32_t { Control = 0, Lexer = 1, Identity = 2 };

/// Bits of LineWord::Control that readers outside the component know.
namespace line_bits {
inline constexpr uint32_t kBookmark = 0x02;
inline constexpr uint32_t kBlockMask = 0x1C;   ///< 0: the line belongs to no block
inline constexpr uint32_t kBlockInside = 0x04; ///< added to the values below when another block encloses this one
inline constexpr uint32_t kBlockEnd = 0x08;
inline constexpr uint32_t kBlockStateMask = 0x18;
inline constexpr uint32_t kBlockHead = 0x10;      ///< first line of an expanded block
inline constexpr uint32_t kBlockCollapsed = 0x18; ///< first line of a collapsed block
} // namespace line_bits

struct FindHit {
    Position at;
    int32_t length = 0;
};

struct FindOptions {
    bool backward = false; ///< finds a match that starts at or before the position
    bool matchCase = false;
    bool wholeWord = false; ///< a word is letters, digits, ".", "_", "$"

    friend bool operator==(const FindOptions&, const FindOptions&) = default;
};

/// The one kind of change notice.
inline constexpr int32_t kLinesChanged = 70;

class SourceDocument {
public:
    virtual ~SourceDocument() = default;

    virtual int32_t LineCount() const = 0; ///< at least 1
    virtual Text GetLine(int32_t line) const = 0;
    /// The same without a text of its own for each line: in `scratch` or where the line is stored; good until the next
    /// edit.
    virtual TextView LineText(int32_t line, Text& scratch) const { return scratch = GetLine(line); }
    virtual int32_t LineLength(int32_t line) const = 0;
    virtual uint32_t GetLineData(int32_t line, LineWord which) const = 0;
    virtual void SetLineData(int32_t line, LineWord which, uint32_t value) = 0;

    /// CR LF, CR and LF in `text` are line breaks. Answers the position behind the inserted text.
    virtual Position InsertText(Position at, TextView text) = 0;
    virtual void DeleteRange(Position start, Position end) = 0;
    /// Scans these lines, and on below them while the state passed from line to line changes; answers the last line
    /// whose data changed. Repaints them.
    virtual int32_t UpdateLines(int32_t first, int32_t last) = 0;
    /// Tells all views that these lines changed and where the caret goes. `kind` is kLinesChanged.
    virtual void NotifyChange(int32_t kind, int32_t first, int32_t last, Position caret) = 0;

    virtual bool Modified() const = 0;
    virtual void SetModified(bool modified) = 0;
    virtual bool CanUndo() const = 0;
    virtual bool CanRedo() const = 0;
    virtual void Undo() = 0;
    virtual void Redo() = 0;
    virtual void ClearUndo() = 0;

    /// Answers false when there is no further match; the text may not hold line breaks.
    virtual bool Find(TextView text, Position from, FindOptions options, FindHit& hit) const = 0;

    virtual void ToggleBookmark(int32_t line) = 0;
    virtual void ClearBookmarks() = 0;
    virtual int32_t BookmarkCount() const = 0;
    /// The next bookmarked line after `line` in the direction, round the ends; -1 when there is none.
    virtual int32_t FindBookmark(int32_t line, bool backward) const = 0;

    /// Not owned; null means plain text. All lines count as unscanned afterwards.
    virtual void SetLexer(ISourceLex4* lexer) = 0;
    /// Puts the operation on the undo stack and calls its DoOp; one step of undo.
    virtual void ExecuteOp(std::unique_ptr<ISourceOp> operation) = 0;

    /// Blocks: `line` is a head; does nothing when it is none. Collapsing needs all lines scanned and sees to it.
    virtual void CollapseBlock(int32_t line) = 0;
    virtual void ExpandBlock(int32_t line) = 0;
    virtual void CollapseAll() = 0;
    virtual void ExpandAll() = 0;
    /// True when a collapsed block hides the line.
    virtual bool IsHidden(int32_t line) const = 0;
};

/// Style bits of a token type.
namespace token_style {
inline constexpr int32_t kBold = 1;
inline constexpr int32_t kItalic = 2;
} // namespace token_style

/// For each token type a colour (0x00BBGGRR, or with the top bit a system colour) and a style.
class TokenTable {
public:
    virtual ~TokenTable() = default;
    virtual void SetStyle(int32_t type, int32_t style, int32_t reserved = -1) = 0;
    virtual void SetColor(int32_t type, int32_t color, int32_t reserved = -1) = 0;
};

struct SourceFont {
    Text name;
    double size = 10; ///< points
    bool bold = false;
    bool italic = false;
};

/// A window on a document: caret, selection, font, token styles.
class SourceView {
public:
    virtual ~SourceView() = default;

    virtual SourceDocument& Document() = 0;

    virtual Position Caret() const = 0;
    /// Moves the caret, drops the selection and scrolls the caret into sight.
    virtual void SetCaret(Position caret) = 0;
    int32_t CaretCol() const { return Caret().col; }
    int32_t CaretLine() const { return Caret().line; }

    virtual bool HasSelection() const = 0;
    /// The anchor first, so that the end may lie before the start.
    virtual void GetSelection(Position& start, Position& end) const = 0;
    virtual void SetSelection(Position anchor, Position caret) = 0;

    virtual int32_t TabSize() const = 0;
    virtual void SetTabSize(int32_t size) = 0;
    /// The whole text, lines joined with CR LF.
    virtual Text GetText() const = 0;
    /// Replaces the whole text. Undo, bookmarks and the dirty flag are the caller's business.
    virtual void SetText(TextView text) = 0;

    virtual int32_t LineHeight() const = 0; ///< pixels
    /// Whole lines that the pane can show.
    virtual int32_t PageLines() const = 0;
    virtual void GetFirstVisible(int32_t& line, int32_t& column) const = 0;
    virtual void SetFirstVisible(int32_t line, int32_t column) = 0;

    virtual SourceFont Font() const = 0;
    virtual void SetFont(const SourceFont& font) = 0;
    virtual TokenTable& TokenStyles() = 0;
    virtual TokenTable& PrintTokenStyles() = 0;

    virtual bool LineWrap() const = 0;
    virtual void SetLineWrap(bool wrap) = 0;
    virtual bool Overtype() const = 0;
    virtual void SetOvertype(bool overtype) = 0;
    virtual void SetBackColor(int32_t color) = 0;
    /// The margin's width in characters, block column included.
    virtual int32_t MarginWidth() const = 0;
    virtual void SetMarginWidth(int32_t characters) = 0;
    virtual bool ShowBlocks() const = 0;
    virtual void SetShowBlocks(bool show) = 0;

    virtual void Cut() = 0;
    virtual void Copy() = 0;
    virtual void Paste() = 0;
    /// Deletes the selection, or the character behind the caret.
    virtual void Delete() = 0;
    virtual void DeleteLine() = 0;
    virtual void SelectAll() = 0;
    /// Types a text at the caret as the user would, replacing the selection.
    virtual void TypeText(TextView text) = 0;

    virtual ISourceDraw2* DrawHandler() const = 0;
    virtual void SetDrawHandler(ISourceDraw2* handler) = 0;
    virtual void Print() = 0;

    /// Runs the lexer over `line` and finds the token at or behind column `position`; false at the end of the line.
    virtual bool NextToken(int32_t line, int32_t position, Token& token) = 0;
};

} // namespace nib
