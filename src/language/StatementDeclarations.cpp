// Statements that tell of names rather than do something with them, and calls; part of StatementParser.

#include "language/StatementParser.h"

#include <algorithm>

namespace nib {

using Kind = BasicToken::Kind;

/// CALL NAME(...), CALL @NAME(...), CALL !NAME(...)
void StatementParser::Call()
{
    Step& step = AddStep(StepKind::Call, at_++);
    step.flags |= step_flag::kClauses;
    if (!Has(at_)) return;
    int32_t start = pieces_[at_].start;
    const size_t prefix = at_;
    while (Has(at_) && pieces_[at_].sign != 0 && !Sign(at_, u'(')) ++at_;
    if (!Has(at_) || (at_ > prefix && !Touches(at_))) return;
    const Piece& name = pieces_[at_];
    const BasicLine& line = *lines_[static_cast<size_t>(name.line)];
    NameUse callee{name.word, name.line, start, name.end, Use::Calls};
    if (name.kind == Kind::String) {
        if (name.end - name.start < 3) return;
        callee.start = name.start + 1;
        callee.end = name.end - 1;
    } else if (name.kind != Kind::Word) {
        return;
    }
    TextView text =
        line.Whole().substr(static_cast<size_t>(callee.start), static_cast<size_t>(callee.end - callee.start));
    if (text.starts_with(u'@')) {
        text.remove_prefix(1);
        ++callee.start;
        callee.use = Use::Reads;
        callee.flags = use_flag::kIndirect;
    }
    callee.word = words_.NumberOf(text);
    Arguments(callee, step);
}

void StatementParser::Arguments(NameUse callee, Step& step)
{
    const bool array = callee.flags & use_flag::kIndirect && Sign(at_ + 1, u'(') && Sign(Closing(at_ + 1) + 1, u'(');
    if (array) {
        callee.flags |= use_flag::kParens;
        Indices(at_ + 1, callee);
    }
    into_->uses.push_back(callee);
    ++at_;
    if (array) {
        const size_t close = Closing(at_);
        ReadTo(close);
        at_ = close + 1;
    }
    if (Sign(at_, u'(')) Given(step);
    Finish(step);
}

/// Arguments in parentheses; what is a variable by itself may be changed by what is called.
void StatementParser::Given(Step& step)
{
    const size_t close = Closing(at_);
    size_t from = ++at_;
    for (size_t i = from; i <= close && Has(i); ++i) {
        if (const size_t past = i < close ? Past(i) : i; past != i && past < close) {
            i = past;
            continue;
        }
        if (i < close && !Sign(i, u',')) continue;
        if (i == close && step.arguments == 0 && from == close) break;
        ++step.arguments;
        at_ = from;
        uint16_t flags = use_flag::kGiven;
        if (Word(at_, u"MAT") && at_ + 1 < i) {
            ++at_;
            flags |= use_flag::kWhole;
        }
        if (IsWordAt(at_) && BehindTarget(at_) == i) Note(at_++, Use::Both, flags);
        ReadTo(i);
        from = i + 1;
    }
    at_ = std::max(at_, close + 1);
}

/// SUBROUTINE NAME(A, MAT B), LOCAL FUNCTION NAME(A), or names that PRIVATE declares.
void StatementParser::Routine()
{
    const size_t start = at_;
    const bool nested = pieces_[at_].key == BasicKey::Nested;
    const bool property = !nested && pieces_[at_].key != BasicKey::Routine;
    if (nested && !Key(at_ + 1, BasicKey::Routine)) {
        if (Word(at_, u"CLASS")) {
            while (!EndsStatement(at_)) ++at_;
            return;
        }
        return Names(StepKind::Declare);
    }
    at_ += nested ? 1 : 0;
    const size_t kind = at_++;
    if (!IsWordAt(at_) && !Sign(at_, u'(') && Touches(at_ + 1)) ++at_; // $NAME, !NAME
    if (into_->steps.size() > 1 || (!IsWordAt(at_) && !Sign(at_, u'('))) return;
    Step& step = AddStep(StepKind::Routine, start);
    if (Word(kind, u"FUNCTION")) step.flags |= step_flag::kFunction;
    if (Word(kind, u"PROGRAM")) step.flags |= step_flag::kProgram;
    if (nested || property) step.flags |= step_flag::kLocal;
    if (IsWordAt(at_)) {
        const Piece& name = pieces_[at_++];
        into_->uses.push_back({name.word, name.line, name.start, name.end, Use::Declares});
    } else {
        into_->uses.push_back({-1, pieces_[kind].line, pieces_[kind].start, pieces_[kind].end, Use::Declares});
    }
    if (Sign(at_, u'(')) {
        const size_t close = Closing(at_);
        for (++at_; at_ < close; ++at_) {
            if (!IsWordAt(at_) || Word(at_, u"MAT")) continue;
            Note(at_, Use::Declares, Word(at_ - 1, u"MAT") ? use_flag::kWhole : uint16_t{0});
            if (Sign(at_ + 1, u'(')) at_ = Closing(at_ + 1);
        }
    }
    while (!EndsStatement(at_)) ++at_;
    Finish(step);
}

/// A list of names, which may be arrays with sizes.
void StatementParser::Names(StepKind kind)
{
    // What is not dimensioned but PRIVATE or PUBLIC may belong to a class.
    const uint16_t flags = pieces_[at_].key == BasicKey::Nested ? use_flag::kWhole : uint16_t{0};
    Step& step = AddStep(kind, at_++);
    while (!EndsStatement(at_)) {
        if (IsWordAt(at_) && pieces_[at_].key == BasicKey::None) {
            Note(at_, Use::Declares, flags);
            if (Sign(at_ + 1, u'(')) {
                const size_t close = Closing(++at_);
                ReadTo(close);
                at_ = close;
            }
        }
        ++at_;
    }
    Finish(step);
}

/// COMMON A, B(3) and COMMON /NAME/ A, B
void StatementParser::Common()
{
    Step& step = AddStep(StepKind::Common, at_);
    step.end = step.start;
    if (Sign(at_ + 1, u'/')) {
        size_t close = at_ + 2;
        while (!EndsStatement(close) && !Sign(close, u'/')) ++close;
        if (close > at_ + 2) {
            step.line = pieces_[at_ + 2].line;
            step.start = pieces_[at_ + 2].start;
            step.end = pieces_[close - 1].end;
        }
        at_ = close;
    }
    ++at_;
    while (!EndsStatement(at_)) {
        if (IsWordAt(at_)) {
            Note(at_, Use::Declares, 0);
            if (Sign(at_ + 1, u'(')) at_ = Closing(at_ + 1);
        }
        ++at_;
    }
    Finish(step);
}

/// EQU A TO 1, B LIT "X<1>"
void StatementParser::Constants()
{
    const auto joins = [this](size_t at) { return Word(at, u"TO") || Word(at, u"LIT") || Word(at, u"LITERALLY"); };
    ++at_;
    while (!EndsStatement(at_)) {
        if (!IsWordAt(at_) || !joins(at_ + 1)) {
            ++at_;
            continue;
        }
        Step& step = AddStep(StepKind::Constant, at_);
        Note(at_, Use::Declares, 0);
        const bool literal = !Word(at_ + 1, u"TO");
        at_ += 2;
        if (Has(at_)) {
            step.line = pieces_[at_].line;
            step.start = pieces_[at_].start;
        }
        const size_t before = into_->uses.size();
        while (!EndsStatement(at_) && !(Sign(at_, u',') && IsWordAt(at_ + 1) && joins(at_ + 2))) {
            if (pieces_[at_].line == step.line) step.end = pieces_[at_].end;
            if (literal && pieces_[at_].kind == Kind::String) Literal(pieces_[at_]);
            ReadTo(at_ + 1);
        }
        for (NameUse& use : std::span(into_->uses).subspan(before)) use.flags |= use_flag::kValue;
        Finish(step);
    }
}

/// What stands in quotes behind LIT takes the place of the constant.
void StatementParser::Literal(const Piece& piece)
{
    if (piece.end - piece.start < 3) return;
    BasicLine inner;
    const TextView whole = lines_[static_cast<size_t>(piece.line)]->Whole();
    inner.Scan(whole.substr(static_cast<size_t>(piece.start) + 1, static_cast<size_t>(piece.end - piece.start) - 2),
               words_);
    const int32_t shift = piece.start + 1;
    for (const BasicToken& token : inner.Tokens())
        if (token.kind == Kind::Word && token.key == BasicKey::None && inner.At(token.start) != u'@')
            into_->uses.push_back({token.word, piece.line, token.start + shift, token.end + shift, Use::Reads});
}

/// $DEFINE NAME VALUE
void StatementParser::Define()
{
    while (Has(at_) && !(IsWordAt(at_) && words_.TextOf(pieces_[at_].word).ends_with(u"DEFINE"))) ++at_;
    ++at_;
    if (!IsWordAt(at_)) return;
    Step& step = AddStep(StepKind::Constant, at_);
    Note(at_++, Use::Declares, 0);
    into_->uses.back().flags = 0;
    step.start = step.end;
    if (Has(at_)) step.start = pieces_[at_].start;
    const size_t before = into_->uses.size();
    while (!EndsStatement(at_)) {
        step.end = pieces_[at_].end;
        ReadTo(at_ + 1);
    }
    for (NameUse& use : std::span(into_->uses).subspan(before)) use.flags |= use_flag::kValue;
    Finish(step);
}

/// DEFFUN NAME(A, B) CALLING "ITEM", DECLARE FUNCTION A, B
void StatementParser::Functions()
{
    Step& step = AddStep(StepKind::Functions, at_);
    const bool list = Key(at_ + 1, BasicKey::Routine);
    at_ += list ? 2 : 1;
    while (IsWordAt(at_)) {
        Note(at_++, Use::Declares, 0);
        if (!list || !Sign(at_, u',')) break;
        ++at_;
    }
    while (!EndsStatement(at_)) ++at_;
    Finish(step);
}

} // namespace nib
