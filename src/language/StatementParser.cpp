#include "language/StatementParser.h"

#include <algorithm>

namespace nib {

using Kind = BasicToken::Kind;

void StatementParser::Add(const BasicLine& line, int32_t number)
{
    lines_.push_back(&line);
    for (const BasicToken& token : std::span(line.Tokens()).first(line.CodeTokens())) {
        const char16_t sign = token.kind == Kind::Sign ? line.At(token.start) : u'\0';
        Piece piece{token.kind, token.key, sign, line.EndsValue(token), number, token.start, token.end, token.word};
        const bool digits = token.kind == Kind::Label && line.At(token.start) >= u'0' && line.At(token.start) <= u'9';
        if (token.kind != Kind::Label || (number == 0 && token.key != BasicKey::Print)) {
            pieces_.push_back(piece);
            continue;
        }
        // Within a statement it is no label, and PRINT: is none either.
        piece.kind = digits ? Kind::Number : Kind::Word;
        piece.value = piece.key == BasicKey::None;
        const bool colon = line.At(token.end - 1) == u':';
        if (colon) --piece.end;
        pieces_.push_back(piece);
        if (colon) pieces_.push_back({Kind::Sign, BasicKey::None, u':', false, number, token.end - 1, token.end, -1});
    }
}

void StatementParser::Parse(const BasicDirective* directive, Statements& statements)
{
    into_ = &statements;
    statements.steps.clear();
    statements.uses.clear();
    at_ = 0;
    from_ = SIZE_MAX;
    clauses_ = false;
    Pair();
    using D = BasicDirective::Kind;
    const D what = directive ? directive->kind : D::None;
    if (what == D::Define) {
        Define();
    } else if (what == D::Include || what == D::Insert || what == D::Opaque) {
        AddStep(StepKind::Include, 0);
    } else if (directive) {
        if (what != D::Other && what != D::Internal)
            AddStep(StepKind::Directive, 0).arguments = static_cast<int32_t>(what);
    } else {
        while (Has(at_)) {
            const size_t before = at_;
            Statement();
            if (at_ == before) ++at_;
        }
        if (clauses_) AddStep(StepKind::LineEnd, pieces_.size() - 1);
    }
    pieces_.clear();
    lines_.clear();
}

/// Finds for each bracket the one that closes it, or where its statement ends.
void StatementParser::Pair()
{
    closing_.assign(pieces_.size(), 0);
    std::vector<size_t> open;
    const auto close = [&](size_t at) {
        for (size_t each : open) closing_[each] = static_cast<uint32_t>(at);
        open.clear();
    };
    for (size_t i = 0; i < pieces_.size(); ++i) {
        const char16_t sign = pieces_[i].sign;
        closing_[i] = static_cast<uint32_t>(i);
        if (pieces_[i].kind == Kind::Separator) close(i);
        if (sign == u'(' || sign == u'[') open.push_back(i);
        if ((sign != u')' && sign != u']') || open.empty()) continue;
        closing_[open.back()] = static_cast<uint32_t>(i);
        open.pop_back();
    }
    if (!pieces_.empty()) close(pieces_.size() - 1);
}

bool StatementParser::Word(size_t at, TextView capitals) const
{
    return IsWordAt(at) && words_.TextOf(pieces_[at].word) == capitals;
}

bool StatementParser::EndsStatement(size_t at) const
{
    return !Has(at) || pieces_[at].kind == Kind::Separator;
}

/// Nothing stands between a piece and the one before it.
bool StatementParser::Touches(size_t at) const
{
    return at > 0 && Has(at) && pieces_[at].line == pieces_[at - 1].line && pieces_[at].start == pieces_[at - 1].end;
}

bool StatementParser::LineEnds(size_t at) const
{
    for (; Has(at); ++at)
        if (pieces_[at].kind != Kind::Separator && pieces_[at].sign != u';') return false;
    return true;
}

char16_t StatementParser::CharOf(const Piece& piece, int32_t by) const
{
    return lines_[static_cast<size_t>(piece.line)]->At(piece.start + by);
}

Step& StatementParser::AddStep(StepKind kind, size_t at)
{
    Step step;
    step.kind = kind;
    if (Has(at)) {
        step.line = pieces_[at].line;
        step.start = pieces_[at].start;
        step.end = pieces_[at].end;
    }
    step.firstUse = static_cast<int32_t>(into_->uses.size());
    into_->steps.push_back(step);
    return into_->steps.back();
}

void StatementParser::Finish(Step& step)
{
    step.uses = static_cast<int32_t>(into_->uses.size()) - step.firstUse;
}

void StatementParser::Statement()
{
    const Piece& first = pieces_[at_];
    if (first.kind == Kind::Label) return Labels();
    if (first.kind == Kind::Branch) return Branch();
    if (first.kind != Kind::Word) return;
    if (Word(at_, u"MAT") && IsWordAt(at_ + 1)) ++at_;
    if (const size_t sign = AssignmentSign(at_)) return Assignment(sign);
    if (ByKey()) return;
    if (Property()) return Routine();
    if (const StatementForm* form = words_.FactsOf(first.word).form) return ByForm(form);
    Unknown();
}

/// GET NAME and SET NAME(VALUE), where the dialect has routines of these words.
bool StatementParser::Property() const
{
    const Dialect* dialect = words_.Language();
    if (at_ != 0 || pieces_.front().line != 0 || !IsWordAt(1) || !(Word(0, u"GET") || Word(0, u"SET"))) return false;
    return dialect && dialect->FindBlock(words_.TextOf(pieces_.front().word)) && !IsWordAt(2);
}

void StatementParser::Labels()
{
    Step& step = AddStep(StepKind::Label, at_);
    const Piece& piece = pieces_[at_];
    int32_t end = piece.end;
    while (end > piece.start &&
           (CharOf(piece, end - 1 - piece.start) == u':' || CharOf(piece, end - 1 - piece.start) == u' '))
        --end;
    into_->uses.push_back({piece.word, piece.line, piece.start, end, Use::Declares});
    Finish(step);
    ++at_;
}

/// Words that shape blocks; false for another.
bool StatementParser::ByKey()
{
    using enum BasicKey;
    const auto single = [this](StepKind kind) { AddStep(kind, at_++); };
    switch (pieces_[at_].key) {
    case If: Condition(StepKind::If); break;
    case Then: Clause(ClauseKind::Then, 1); break;
    case Else: Clause(ClauseKind::Else, 1); break;
    case Locked: Clause(ClauseKind::Locked, 1); break;
    case On:
        if (Key(at_ + 1, Error))
            Clause(ClauseKind::Error, 2);
        else
            OnBranch(at_);
        break;
    case Begin:
        if (Key(at_ + 1, BasicKey::Case)) AddStep(StepKind::BeginCase, at_);
        at_ += Key(at_ + 1, BasicKey::Case) || Key(at_ + 1, Transaction) ? 2 : 1;
        break;
    case BasicKey::Case: this->Case(); break;
    case End: EndWord(); break;
    case BasicKey::For: this->For(); break;
    case BasicKey::Next: this->Next(); break;
    case Loop: single(StepKind::Loop); break;
    case Repeat: single(StepKind::Repeat); break;
    case While:
    case Until: Condition(StepKind::Test); break;
    case Do: ++at_; break;
    case Try:
        single(StepKind::Try);
        clauses_ = true;
        break;
    case Catch: {
        Step& step = AddStep(StepKind::Catch, at_++);
        if (IsWordAt(at_)) Note(at_++, Use::Sets, use_flag::kOutput);
        Finish(step);
        break;
    }
    case BasicKey::Routine:
    case Nested: this->Routine(); break;
    default: return false;
    }
    return true;
}

void StatementParser::ByForm(const StatementForm* form)
{
    switch (form->kind) {
    case StepKind::Call: return Call();
    case StepKind::Declare: return Names(StepKind::Declare);
    case StepKind::Common: return Common();
    case StepKind::Constant: return Constants();
    case StepKind::Functions: return Functions();
    case StepKind::Return: return ReturnWord();
    default: break;
    }
    const bool ends = form->kind == StepKind::Leave && Sign(at_ + 1, u'(');
    Step& step = AddStep(ends ? StepKind::Stop : form->kind, at_);
    if (form->operands.starts_with(u'?')) step.flags |= step_flag::kClauses | step_flag::kAsks;
    if (form->operands.starts_with(u'!')) step.flags |= step_flag::kClauses;
    ++at_;
    if (form->word == u"LOCATE" && Sign(at_, u'('))
        Locate();
    else
        Operands(*form, step);
    Finish(step);
}

/// A clause opens a block at the end of its line.
void StatementParser::Clause(ClauseKind kind, size_t words)
{
    Step& step = AddStep(StepKind::Clause, at_);
    step.clause = kind;
    at_ += words;
    if (LineEnds(at_)) step.flags |= step_flag::kBlock;
    clauses_ = true;
}

void StatementParser::EndWord()
{
    using enum BasicKey;
    if (Key(at_ + 1, BasicKey::Case)) {
        AddStep(StepKind::EndCase, at_);
        at_ += 2;
    } else if (Key(at_ + 1, Transaction) || Key(at_ + 1, BasicKey::Routine) || Key(at_ + 1, Nested)) {
        at_ += 2;
    } else {
        AddStep(StepKind::End, at_++);
        clauses_ = true;
    }
}

void StatementParser::Branch()
{
    const Piece& word = pieces_[at_];
    bool sub = false;
    for (int32_t i = 0; i < word.end - word.start; ++i) sub = sub || (CharOf(word, i) | 0x20) == u's';
    Step& step = AddStep(sub ? StepKind::Gosub : StepKind::Go, at_++);
    Targets(step);
    if (Sign(at_, u'(')) Given(step);
    Finish(step);
}

void StatementParser::OnBranch(size_t start)
{
    Step& step = AddStep(StepKind::OnGo, start);
    ++at_;
    const size_t here = into_->steps.size() - 1;
    while (Has(at_) && pieces_[at_].kind != Kind::Branch && pieces_[at_].kind != Kind::Separator) {
        const size_t before = at_;
        Read({});
        if (at_ == before) ++at_;
    }
    if (!Has(at_) || pieces_[at_].kind != Kind::Branch) return Finish(step);
    const Piece& word = pieces_[at_++];
    for (int32_t i = 0; i < word.end - word.start; ++i)
        if ((CharOf(word, i) | 0x20) == u's') into_->steps[here].kind = StepKind::OnGosub;
    Targets(into_->steps[here]);
    Finish(into_->steps[here]);
}

/// The labels from here on, with commas between them.
void StatementParser::Targets(Step& step)
{
    (void)step;
    while (Has(at_)) {
        const Piece& piece = pieces_[at_];
        const bool name = piece.kind == Kind::Target || (piece.kind == Kind::Word && piece.key == BasicKey::None);
        if (!name && piece.kind != Kind::Number) return;
        int32_t word = piece.word;
        int32_t end = piece.end;
        if (piece.kind == Kind::Number) {
            const TextView number = lines_[static_cast<size_t>(piece.line)]->Whole().substr(
                static_cast<size_t>(piece.start), static_cast<size_t>(piece.end - piece.start));
            const size_t first = std::min(number.find_first_not_of(u'0'), number.size() - 1);
            word = words_.NumberOf(number.substr(first));
        } else if (CharOf(piece, end - piece.start - 1) == u':') {
            --end;
        }
        into_->uses.push_back({word, piece.line, piece.start, end, Use::Jumps});
        if (!Sign(++at_, u',')) return;
        ++at_;
    }
}

void StatementParser::Condition(StepKind kind)
{
    Step& step = AddStep(kind, at_++);
    if (kind == StepKind::If) step.flags |= step_flag::kClauses | step_flag::kAsks;
    const size_t first = at_;
    Read({});
    for (size_t i = first; i + 1 < at_; ++i)
        if (OddSign(i)) step.flags |= step_flag::kOdd;
    Finish(step);
}

void StatementParser::Case()
{
    Step& step = AddStep(StepKind::Case, at_++);
    if (Key(at_, BasicKey::Else)) {
        step.flags |= step_flag::kDefault;
        ++at_;
        return;
    }
    const size_t first = at_;
    const bool constant =
        Has(at_) && (pieces_[at_].kind == Kind::Number || Word(at_, u"@TRUE")) && EndsStatement(at_ + 1);
    const bool zero = constant && CharOf(pieces_[at_], 0) == u'0';
    Read({});
    for (size_t i = first; i + 1 < at_; ++i)
        if (OddSign(i)) step.flags |= step_flag::kOdd;
    if (constant && !zero) step.flags |= step_flag::kDefault;
    Finish(step);
}

void StatementParser::For()
{
    static constexpr StatementForm kFor{u"FOR", StepKind::For, u"b TO r STEP r"};
    static constexpr StatementForm kEach{u"FOR", StepKind::For, u"s IN r"};
    const bool each = IsWordAt(at_ + 1) && IsWordAt(at_ + 2) && !Sign(at_ + 2, u'=');
    Step& step = AddStep(StepKind::For, at_);
    at_ += each ? 2 : 1;
    Operands(each ? kEach : kFor, step);
    Finish(step);
}

void StatementParser::Next()
{
    Step& step = AddStep(StepKind::Next, at_++);
    if (IsWordAt(at_) && pieces_[at_].key == BasicKey::None) Note(at_++, Use::Reads, use_flag::kLoop);
    Finish(step);
}

void StatementParser::ReturnWord()
{
    Step& step = AddStep(StepKind::Return, at_++);
    if (Word(at_, u"TO")) {
        ++at_;
        step.kind = StepKind::ReturnTo;
        Targets(step);
    } else {
        Read({});
    }
    Finish(step);
}

/// A statement of the dialect that nothing is known of: it may do anything to the names in it.
void StatementParser::Unknown()
{
    static constexpr StatementForm kAny{u"", StepKind::Plain, u"b"};
    const WordFacts& facts = words_.FactsOf(pieces_[at_].word);
    const bool statement = facts.statement || EndsStatement(at_ + 1);
    Step& step = AddStep(StepKind::Plain, at_);
    step.flags |= step_flag::kClauses;
    const bool method = Sign(at_ + 1, u'-') && Sign(at_ + 2, u'>');
    if (!statement && (method || Sign(at_ + 1, u'(')))
        Note(at_, Use::Both, static_cast<uint16_t>(use_flag::kGiven | (method ? 0 : use_flag::kParens)));
    ++at_;
    Operands(kAny, step);
    Finish(step);
}

} // namespace nib
