#pragma once
// What crosses the edge of the text component: what others plug into it, and the values that go to and fro.

#include "base/Text.h"
#include "text/LineText.h"

#include <cstdint>
#include <vector>

namespace nib {

class SourceDocument;

/// What a word is in its language, apart from beginning or ending a block.
enum class WordRole : uint8_t {
    None,
    Keyword,
    Leads,    ///< a statement whose clauses may be blocks, as IF does
    Continues ///< the block that it stands in, as CASE and WHILE do
};

/// What a lexer answers for one token. `type` 0 is the end of the line; other types index the table of styles.
struct Token {
    int32_t type = 0;
    int32_t start = 0;      ///< 0-based column
    int32_t length = 0;     ///< UTF-16 units
    int32_t attributes = 0; ///< 0 or one of token_attribute
    WordRole role = WordRole::None;

    int32_t End() const { return start + length; }
};

namespace token_attribute {
inline constexpr int32_t kBeginsBlock = 1;
inline constexpr int32_t kEndsBlock = 2;
} // namespace token_attribute

/// The type of all text that no lexer coloured; its style is the view's default.
inline constexpr int32_t kPlainToken = 8;

/// Blocks that a stretch of lines leaves open: first `closes` blocks opened above it end, then `opens` of its own go
/// on.
struct Nesting {
    int32_t closes = 0;
    int32_t opens = 0;

    void Follow(Nesting next)
    {
        if (next.closes > opens) closes += next.closes - opens;
        opens = opens > next.closes ? opens - next.closes : 0;
        opens += next.opens;
    }
    friend bool operator==(const Nesting&, const Nesting&) = default;
};

/// What the tokens of a line come to: the blocks that they begin and end, and the lexer's data word.
struct LineScan {
    Nesting nesting;
    uint32_t data = 0;
};

/// The part that a line plays among the blocks.
struct LineIndent {
    Nesting steps;          ///< levels that it steps out before it is placed, and in for the lines behind it
    int32_t column = 0;     ///< 0-based, where its code begins
    bool code = false;      ///< there is some: blank lines, comments and labels alone say nothing of their neighbours
    bool labelled = false;  ///< so that blanks in front of it do not move the code
    bool continued = false; ///< goes on with the statement above: it stands where its writer put it
    bool goesOn = false;    ///< its own statement goes on below
};

/// Called by the document for each line that it scans: BeginLineScan, ScanToken until type 0, EndLineScan.
/// No call-back may edit the document.
class ISourceLex4 {
public:
    virtual ~ISourceLex4() = default;
    virtual void BeginLineScan(SourceDocument& document, int32_t line, TextView lineText, int32_t flags) = 0;
    virtual void ScanToken(Token& token) = 0;
    virtual int16_t EndLineScan(SourceDocument& document) = 0;
    /// The same at once, for a line whose tokens nobody wants; `above` is the data word of the line above it. False:
    /// the document must ask for the tokens.
    virtual bool ScanLine(UnitSpan /*text*/, uint32_t /*above*/, LineScan&) { return false; }
    /// What `text` would be below a line with the data word `above`. False: nobody knows, and indents are copied.
    virtual bool IndentOf(TextView /*text*/, uint32_t /*above*/, LineIndent&) { return false; }
    /// Gives tokens of a line that is painted the types that they look like.
    virtual void Look(TextView /*text*/, std::vector<Token>& /*tokens*/) const {}
    virtual int32_t GetDesiredCase() { return 0; }
    virtual int32_t GetLineIndex() { return 0; }
    virtual void SetLineIndex(int32_t) {}
    virtual int32_t GetProperties() { return 0; }
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
    virtual void PreDraw(DrawContext&) {}
    virtual void PreDrawPage(DrawContext& context) = 0;
    virtual void PreDrawLine(DrawContext& context) = 0;
    virtual void PostDrawPage(DrawContext&) {}
    virtual void PostDraw(DrawContext&) {}
};

/// One undoable edit made by the program. DoOp also runs for redo, so it works from the object's own fields alone.
class ISourceOp {
public:
    virtual ~ISourceOp() = default;
    virtual void DoOp(SourceDocument& document) = 0;
    virtual void UndoOp(SourceDocument& document) = 0;
    /// Operations that answer the same were done in one go, and can be undone so; null: this one was alone.
    virtual const void* Sweep() const { return nullptr; }
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

/// What a line is to the blocks round it, as its control word tells.
struct BlockPart {
    enum class Kind : uint8_t { None, Head, CollapsedHead, End };
    Kind kind = Kind::None;
    bool inside = false; ///< another block encloses this one; of a line that neither begins nor ends one, a block does

    bool IsHead() const { return kind == Kind::Head || kind == Kind::CollapsedHead; }
    bool IsCollapsed() const { return kind == Kind::CollapsedHead; }
    bool Any() const { return kind != Kind::None || inside; }
};

/// Nobody reads a longer line: it is not looked into for what belongs together, or whoever edits it would wait.
inline constexpr int32_t kLongestRead = 1 << 16;

struct TextRange {
    Position start;
    Position end;
    friend bool operator==(const TextRange&, const TextRange&) = default;
};

struct FindHit {
    Position at;
    int32_t length = 0;
};

struct FindOptions {
    bool backward = false; ///< finds a match that starts at or before the position
    bool matchCase = false;
    bool wholeWord = false; ///< a word is letters, digits, ".", "_", "$"
    bool regex = false;     ///< the text is a regular expression; for whoever prepares a TextPattern

    friend bool operator==(const FindOptions&, const FindOptions&) = default;
};

/// Style bits of a token type.
namespace token_style {
inline constexpr int32_t kBold = 1;
inline constexpr int32_t kItalic = 2;
} // namespace token_style

struct SourceFont {
    Text name;
    double size = 10; ///< points
    bool bold = false;
    bool italic = false;
};

} // namespace nib
