#pragma once
#include "language/BasicChecks.h"
#include "language/BasicLine.h"

#include <array>
#include <optional>

namespace nib {

/// Blocks: what opens one and is not closed, and what closes one that is not open.
///
/// Where a block is closed while another inside it is still open, either the inner one lacks its end or the outer one
/// has one too many. The first is reported; what then does not fit any more because it was the second is passed over.
class BlockCheck {
public:
    explicit BlockCheck(FindingList& findings) : findings_(findings) {}

    void Line(const BasicLine& line, Place place);
    /// Branches of conditional compilation all begin with the blocks that were open at the first.
    void BeginConditional() { saved_.push_back(stack_); }
    void ElseConditional();
    void EndConditional();
    /// The END of the program was there, and what follows is not a routine of its own.
    bool HasEnded() const { return ended_.has_value(); }
    void NewRoutine() { ended_.reset(); }
    void Finish();
    /// The line of the program that ends it, when what follows does not look like a part of it.
    std::optional<int32_t> LastLine() const;

private:
    enum Kind : uint8_t { kClause, kFor, kLoop, kCase, kKinds };
    struct Opener {
        Kind kind;
        TextView word;
        Place place;
        bool returns = false; ///< a RETURN stands in it, in no block further in
        Place label;          ///< the first label behind that
    };
    /// Where a walk over a line stands.
    struct Walk {
        const BasicLine& line;
        Place place;
        size_t at = 0;    ///< the token
        size_t first = 0; ///< of its statement
        bool start = true;
        int32_t oneLiners = 0; ///< clauses that end with the line
        bool separated = false;
        const BasicToken& Token() const { return line.Tokens()[at]; }
        const BasicToken* Next(size_t by = 1) const
        {
            return at + by < line.Tokens().size() ? &line.Tokens()[at + by] : nullptr;
        }
        const BasicToken* Before() const { return at > 0 ? &line.Tokens()[at - 1] : nullptr; }
        bool NextIs(BasicKey key) const { return Next() && Next()->key == key; }
    };

    bool Word(Walk& walk);
    bool Clause(Walk& walk, TextView word);
    bool End(Walk& walk);
    void EndOfClause(Place place);
    void Case(Place place);
    void Close(Kind kind, Place place);
    void Open(Kind kind, TextView word, Place place) { stack_.push_back({kind, word, place, false, {}}); }
    bool CloseInner(Kind kind, TextView closer, Place place);
    bool IsOpen(Kind kind) const;
    void Report(Place place, Phrase text) { reports_.push_back({place, std::move(text)}); }
    void LookBehindEnd(const Walk& walk);
    void LookForRoutine(const Walk& walk);

    static bool IsVariable(const Walk& walk);
    static bool LineEnds(const Walk& walk);
    static bool IsCloser(const Walk& walk, size_t words);
    static bool IsLockedClause(const Walk& walk);

    struct Fault {
        Place place;
        Phrase text;
    };

    FindingList& findings_;
    std::vector<Fault> reports_; ///< kept back until it is known that the blocks could be told
    std::vector<Opener> stack_;
    std::vector<std::vector<Opener>> saved_;
    std::optional<Opener> swallowed_;        ///< closed by the last END so far, with routines in it
    std::array<int32_t, kKinds> doubtful_{}; ///< closers that need no opener any more
    std::optional<Place> ended_;
    bool strayCase_ = false;
    bool nested_ = false; ///< routines inside the program have an END each
    bool unsure_ = false;
};

} // namespace nib
