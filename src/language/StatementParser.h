#pragma once
// Reads statements from tokens: what each does, and what happens to the names that stand in it. Whatever it does not
// understand it passes over to the next statement.

#include "language/ProgramText.h"

namespace nib {

class StatementParser {
public:
    explicit StatementParser(WordTable& words) : words_(words) {}

    /// Lines in their order; `number` counts from the first of the statement.
    void Add(const BasicLine& line, int32_t number);
    /// Reads what has been added into `statements`.
    void Parse(const BasicDirective* directive, Statements& statements);

private:
    struct Piece {
        BasicToken::Kind kind;
        BasicKey key;
        char16_t sign; ///< 0 when it is none
        bool value;    ///< ends a value
        int32_t line;
        int32_t start;
        int32_t end;
        int32_t word;
    };
    /// How the operands of a statement are read.
    struct Reading {
        TextView letters = u"r";
        const StatementForm* form = nullptr; ///< whose clause words end them
    };

    bool Has(size_t at) const { return at < pieces_.size(); }
    bool Sign(size_t at, char16_t sign) const { return Has(at) && pieces_[at].sign == sign; }
    bool Key(size_t at, BasicKey key) const
    {
        return Has(at) && pieces_[at].kind == BasicToken::Kind::Word && pieces_[at].key == key;
    }
    bool IsWordAt(size_t at) const { return Has(at) && pieces_[at].kind == BasicToken::Kind::Word; }
    bool Word(size_t at, TextView capitals) const;
    bool EndsStatement(size_t at) const;
    bool Touches(size_t at) const;
    bool LineEnds(size_t at) const;
    char16_t CharOf(const Piece& piece, int32_t by) const;

    void Statement();
    bool ByKey();
    void ByForm(const StatementForm* form);
    bool Property() const;
    void Labels();
    void Clause(ClauseKind kind, size_t words);
    void EndWord();
    void Branch();
    void OnBranch(size_t start);
    void Targets(Step& step);
    void Condition(StepKind kind);
    void Case();
    void For();
    void Next();
    void Call();
    void Arguments(NameUse callee, Step& step);
    void Given(Step& step);
    void Routine();
    void Names(StepKind kind);
    void Common();
    void Constants();
    void Literal(const Piece& piece);
    void Define();
    void Functions();
    void ReturnWord();
    void Assignment(size_t sign);
    void Locate();
    void Unknown();

    Step& AddStep(StepKind kind, size_t at);
    void Finish(Step& step);
    void Operands(const StatementForm& form, Step& step);
    void Operand(char16_t letter, const Reading& reading, Step* step);
    void Target(char16_t letter, Step* step);
    void Read(const Reading& reading, size_t end = SIZE_MAX);
    void ReadTo(size_t end) { Read({}, end); }
    bool Stops(size_t at, const StatementForm* form, bool first) const;
    bool IsClauseWord(size_t at, const StatementForm& form) const;
    void Pair();
    /// The piece that closes the bracket at `at`; the last one of its statement when nothing does.
    size_t Closing(size_t at) const { return Has(at) ? closing_[at] : pieces_.size(); }
    size_t EndOfParts(size_t at) const;
    size_t Past(size_t at) const;
    size_t BehindTarget(size_t at) const;
    size_t AssignmentSign(size_t at) const;
    bool OddSign(size_t at) const;
    void Note(size_t at, Use use, uint16_t flags);
    void NoteRead(size_t at, int32_t callee);
    bool Beside(size_t at) const;
    int32_t CalleeOf(size_t open) const;
    void Indices(size_t open, NameUse& use) const;
    int32_t IndexOf(size_t from, size_t to) const;

    WordTable& words_;
    Statements* into_ = nullptr;
    std::vector<Piece> pieces_;
    std::vector<uint32_t> closing_; ///< for each piece
    std::vector<const BasicLine*> lines_;
    size_t at_ = 0;
    std::vector<int32_t> callees_; ///< whose parentheses are open
    size_t from_ = SIZE_MAX;       ///< where the operand begins
    const StatementForm* form_ = nullptr;
    bool inline_ = false; ///< IF, THEN and ELSE have stood in the expression
    bool clauses_ = false;
};

} // namespace nib
