#pragma once
// The lines of a program, each with its tokens, and its statements with the names that stand in them. A line is read
// again only when it or a line of its statement has changed.

#include "language/BasicDirective.h"
#include "language/BasicLine.h"
#include "language/Program.h"

#include <memory>
#include <span>

namespace nib {

namespace use_flag {
inline constexpr uint16_t kOutput = 0x01;  ///< set by a clause that asks for a variable, needed or not
inline constexpr uint16_t kInPlace = 0x02; ///< changed where it stands
inline constexpr uint16_t kPart = 0x04;    ///< an element or a piece of it
inline constexpr uint16_t kGiven = 0x08;   ///< to what is called
inline constexpr uint16_t kParens = 0x10;  ///< parentheses follow: an array or a function
inline constexpr uint16_t kWhole = 0x20;   ///< MAT
inline constexpr uint16_t kValue = 0x40;   ///< in the value of a constant
inline constexpr uint16_t kLoop = 0x80;    ///< of a FOR, at its NEXT
inline constexpr uint16_t kOpens = 0x100;
inline constexpr uint16_t kUnsure = 0x400;   ///< may be a word of a statement that nobody knows
inline constexpr uint16_t kArgument = 0x800; ///< alone between the parentheses of the name whose word is index[0]
inline constexpr uint16_t kIndirect = 0x200; ///< holds the name of what is called
} // namespace use_flag

/// A name in a statement.
struct NameUse {
    static constexpr int32_t kUnknownIndex = -1;
    int32_t word;
    int32_t line; ///< below the first one of the statement's
    int32_t start;
    int32_t end;
    Use use;
    uint8_t indices = 0; ///< or arguments, in parentheses
    uint16_t flags = 0;
    /// Of the first two where they are plain numbers; -2 and less: minus 2 less the word of what may be a constant.
    int32_t index[2] = {kUnknownIndex, kUnknownIndex};
};

enum class ClauseKind : uint8_t { Then, Else, Locked, Error };

namespace step_flag {
inline constexpr uint8_t kClauses = 0x01;  ///< clauses may follow
inline constexpr uint8_t kAsks = 0x80;     ///< and are as good as sure to
inline constexpr uint8_t kBlock = 0x02;    ///< of a clause: it goes on in the next lines
inline constexpr uint8_t kFunction = 0x04; ///< of a routine
inline constexpr uint8_t kLocal = 0x08;
inline constexpr uint8_t kProgram = 0x10;
inline constexpr uint8_t kOdd = 0x20;     ///< of a condition: an assignment stands in it
inline constexpr uint8_t kDefault = 0x40; ///< CASE 1, CASE ELSE; the LOOP of a constant
} // namespace step_flag

/// A statement, or the part of one that decides where the program goes on.
struct Step {
    StepKind kind = StepKind::Plain;
    ClauseKind clause = ClauseKind::Then;
    uint8_t flags = 0;
    int32_t line = 0; ///< below the first one of its statement's
    /// Of its first word; of the name of a COMMON, or the value of a constant.
    int32_t start = 0;
    int32_t end = 0;
    int32_t firstUse = 0;
    int32_t uses = 0;
    int32_t arguments = 0; ///< of a CALL; of a directive its kind
    int32_t file = -1;     ///< the use that names the file of a READU, a RELEASE ...
};

/// What stands in a line, and in those that continue it.
struct Statements {
    std::vector<Step> steps;
    std::vector<NameUse> uses;

    std::span<const NameUse> UsesOf(const Step& step) const
    {
        return std::span(uses).subspan(static_cast<size_t>(step.firstUse), static_cast<size_t>(step.uses));
    }
};

class StatementParser;

class ProgramText {
public:
    explicit ProgramText(const Dialect* dialect) : words_(std::make_unique<WordTable>(dialect)) {}
    ProgramText(const Dialect* dialect, std::span<const Text> lines) : ProgramText(dialect) { Replace(0, 0, lines); }

    /// `removed` lines from `first` on give way to others; what is out of range is passed over.
    void Replace(int32_t first, int32_t removed, std::span<const Text> lines);

    struct Line {
        BasicLine tokens;
        std::unique_ptr<const BasicDirective> directive;
        bool comment = false;       ///< in a comment of several lines
        bool silences = false;      ///< its comment may silence findings
        int32_t statementLines = 0; ///< of the statements that begin here; 0: it continues the line above, or is none
        Statements statements;
        uint32_t stamp = 0;  ///< of its last change
        uint64_t parsed = 0; ///< the stamps that the statements are of
    };
    int32_t LineCount() const { return static_cast<int32_t>(lines_.size()); }
    const Line& At(int32_t line) const { return *lines_[static_cast<size_t>(line)]; }
    const WordTable& Words() const { return *words_; }
    WordTable& Words() { return *words_; }
    /// Other after every change.
    uint32_t Version() const { return stamp_; }

private:
    void Gather();
    int32_t GatherFrom(int32_t at, StatementParser& parser);

    std::unique_ptr<WordTable> words_;
    std::vector<std::unique_ptr<Line>> lines_;
    uint32_t stamp_ = 0;
};

/// The lines of an item's text, as the editor cuts it.
std::vector<Text> LinesOfProgram(TextView text);

} // namespace nib
