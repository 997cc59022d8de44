#pragma once
// Colours a line of program text and tells where blocks open and close. Holds nothing from one line to the next but
// what it stores in the line's own data word.

#include "diagnostics/DebugLog.h"
#include "editing/LexLine.h"
#include "editing/clsKeywords.h"
#include "text/SourceContract.h"

#include <memory>

namespace nib {

/// What `Token::type` can be, and what the data word of a line holds beside the block styles of its keywords.
namespace token_type {
inline constexpr int32_t kEndOfLine = 0;
inline constexpr int32_t kBlank = 1;
inline constexpr int32_t kLabel = 2;
inline constexpr int32_t kNumber = 3;
inline constexpr int32_t kUserKeyword = 4;
inline constexpr int32_t kSeparator = 5;
inline constexpr int32_t kComment = 6;
inline constexpr int32_t kString = 7;
inline constexpr int32_t kNormal = kPlainToken;
inline constexpr int32_t kReserved = 10;
// What some of the plain tokens look like in a dialect; the lexer itself answers none of these.
inline constexpr int32_t kStatement = 11;
inline constexpr int32_t kFunction = 12;
inline constexpr int32_t kNumberLook = 13;
inline constexpr int32_t kValueMark = 1001;
inline constexpr int32_t kSubValueMark = 1002;
} // namespace token_type

namespace line_flag {
inline constexpr int32_t kComment = 0x10000;       ///< begins, behind a label at most, with a comment statement
inline constexpr int32_t kLabel = 0x20000;         ///< begins with a label
inline constexpr int32_t kListContinues = 0x40000; ///< ends with the comma of a label list
// Of a dialect:
inline constexpr int32_t kDirective = 0x80000;   ///< tells the compiler something
inline constexpr int32_t kGoesOn = 0x100000;     ///< the statement at its end goes on in the next line
inline constexpr int32_t kContinues = 0x200000;  ///< goes on with the statement above
inline constexpr int32_t kApartLabel = 0x400000; ///< begins with a label that ends with its first colon
} // namespace line_flag

class LexClass final : public ISourceLex4 {
public:
    /// The log, when there is one, outlives the lexer.
    LexClass(const LexClass&) = delete;
    LexClass& operator=(const LexClass&) = delete;
    explicit LexClass(const DebugLog* log = nullptr) : log_(log ? log : &silent_) {}

    bool Highlight() const { return highlight_; }
    /// Off: all text up to a mark is one blank token.
    void SetHighlight(bool highlight)
    {
        highlight_ = highlight;
        quick_ = false;
    }
    /// A default set until another, which outlives the lexer, is handed over.
    const clsKeywords& Keywords() const { return *keywords_; }
    void SetKeywords(const clsKeywords& keywords);

    void BeginLineScan(SourceDocument& document, int32_t line, TextView lineText, int32_t flags) override;
    void ScanToken(Token& token) override;
    int16_t EndLineScan(SourceDocument& document) override;
    bool ScanLine(UnitSpan text, uint32_t above, LineScan& scan) override;
    bool IndentOf(TextView text, uint32_t above, LineIndent& indent) override;
    void Look(TextView text, std::vector<Token>& tokens) const override;
    int32_t GetLineIndex() override { return position_; }
    void SetLineIndex(int32_t index) override { position_ = index < 0 ? 0 : index; }

private:
    /// Kinds of token as the rules tell them apart, indices of the table of kinds.
    enum class Kind : uint8_t {
        None,      ///< start and end of the line
        Continued, ///< start of a line that goes on with the statement above
        Blank,
        Value,
        SubValue,
        Label,
        LabelReference,
        Number,
        Branch,
        Separator,
        ListComma,
        Comment,
        CutComment, ///< interrupted by a mark
        String,
        CutString, ///< interrupted by a mark
        Open,
        Close,
        Normal,
        UserKeyword,
        Reserved,
    };
    struct KindRow;
    static const KindRow kKinds[];

    /// Where a token ends, and its flags.
    struct Extent {
        int32_t end;
        int32_t flags;
    };

    void Begin(uint32_t above);
    bool IsQuick(const KeywordTables& tables, char16_t c, int32_t& end) const;
    bool QuickStep(Token& token);
    void SkipQuick(const KeywordTables& tables);
    void Pass(const KindRow& row, Kind kind, int32_t end, int32_t flags);
    void GuardedStep(Token& token);
    void Step(Token& token);
    WordRole RoleOf(Kind kind, const Extent& extent) const;
    Kind Next(const KeywordTables& tables, Extent& extent);
    Kind Uncoloured(Extent& extent) const;
    Kind Comment(Extent& extent) const;
    Kind String(int32_t from, Extent& extent) const;
    bool FindComment(const KeywordTables& tables, Extent& extent, Kind& kind);
    bool FindSyntax(char16_t c, Extent& extent, Kind& kind);
    bool FindLabel(const KeywordTables& tables, Extent& extent, Kind& kind) const;
    bool FindBranch(Extent& extent) const;
    bool FindApartLabel(int32_t nameEnd, Extent& extent) const;
    void BeginInDialect(uint32_t above);
    int32_t FlagsOfEnd() const;
    bool CommentFollows() const;
    Kind FindKeyword(const KeywordTables& tables, Extent& extent) const;

    uint8_t TraitsBefore() const;
    const clsKeyword* MatchKeyword(const KeywordTables& tables, uint8_t hint, int32_t& end) const;
    int32_t FlagsOfComment(const KeywordTables& tables, TextView comment) const;
    int32_t FlagsOfKeyword(int32_t block, int32_t end, const KeywordTables& tables) const;
    int32_t FlagsOfDialect(int32_t block, int32_t end, const KeywordTables& tables) const;
    bool LineEndsAt(int32_t at, const KeywordTables& tables) const;

    bool WordAt(int32_t at, TextView upper) const;
    int32_t NameFrom(int32_t at, const uint8_t* classes) const;
    void Trace(const Token& token, int32_t flags) const;

    DebugLog silent_;
    const DebugLog* log_;
    bool highlight_ = true;
    std::unique_ptr<clsKeywords> own_ = std::make_unique<clsKeywords>();
    const clsKeywords* keywords_ = own_.get();

    LexLine text_;
    int32_t line_ = 0;
    int32_t position_ = 0;
    int32_t depth_ = 0; ///< of parentheses; below 0 behind one too many
    int32_t lineFlags_ = 0;
    int32_t stringAt_ = 0; ///< of the last string or comment: that it begins there
    int32_t commentAt_ = 0;
    const LexRules* rules_ = nullptr; ///< of the line
    Kind previous_ = Kind::None;      ///< of the last token other than blanks and marks
    char16_t quote_ = 0;
    bool traced_ = false;
    bool quick_ = false; ///< no mark cut a token, and nobody wants to know more
};

} // namespace nib
