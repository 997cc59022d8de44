#include "language/BlockCheck.h"

#include "language/FindingCodes.h"

#include <algorithm>

namespace nib {

namespace {

constexpr TextView kClosers[] = {u"END", u"NEXT", u"REPEAT", u"END CASE"};
constexpr TextView kOpeners[] = {u"THEN or ELSE", u"FOR", u"LOOP", u"BEGIN CASE"};

bool IsSeparator(const BasicLine& line, const BasicToken& token)
{
    return token.kind == BasicToken::Kind::Separator || line.IsSign(token, u';');
}

} // namespace

void BlockCheck::Line(const BasicLine& line, Place place)
{
    if (line.Unsure()) unsure_ = true;
    const std::vector<BasicToken>& tokens = line.Tokens();
    if (!tokens.empty() && tokens.front().Is(BasicKey::Nested)) nested_ = true;
    Walk walk{line, place};
    swallowed_.reset();
    for (; walk.at < tokens.size(); ++walk.at) {
        const BasicToken& token = walk.Token();
        if (ended_ && walk.start) LookBehindEnd(walk);
        if (stack_.size() == 1 && walk.start) LookForRoutine(walk);
        if (token.kind == BasicToken::Kind::Label) {
            walk.first = walk.at + 1;
        } else if (token.kind == BasicToken::Kind::Separator) {
            walk.separated = walk.oneLiners > 0;
            walk.first = walk.at + 1;
            walk.start = true;
        } else {
            walk.start = token.kind == BasicToken::Kind::Word && Word(walk);
            if (walk.start) walk.first = walk.at + 1;
        }
    }
}

/// Answers whether a statement begins behind the word.
bool BlockCheck::Word(Walk& walk)
{
    const bool begins = walk.start && !IsVariable(walk);
    const BasicToken* before = walk.Before();
    switch (walk.Token().key) {
    case BasicKey::Then: return Clause(walk, u"THEN");
    case BasicKey::Else: return !(before && before->Is(BasicKey::Case)) && Clause(walk, u"ELSE");
    case BasicKey::Locked: return IsLockedClause(walk) && Clause(walk, u"LOCKED");
    case BasicKey::Error: return before && before->Is(BasicKey::On) && Clause(walk, u"ON ERROR");
    case BasicKey::Do: return true;
    case BasicKey::Try:
        if (begins && LineEnds(walk)) Open(kClause, u"TRY", walk.place);
        return begins;
    case BasicKey::Loop:
        if (begins) Open(kLoop, u"LOOP", walk.place);
        return begins;
    case BasicKey::For:
        if (begins && walk.Next() && walk.Next()->kind == BasicToken::Kind::Word) Open(kFor, u"FOR", walk.place);
        return false;
    case BasicKey::Begin:
        if (!walk.start || !walk.NextIs(BasicKey::Case)) return false;
        Open(kCase, u"BEGIN CASE", walk.place);
        ++walk.at;
        return false;
    case BasicKey::Case:
        if (begins) Case(walk.place);
        return false;
    case BasicKey::Next:
        if (IsCloser(walk, 2)) Close(kFor, walk.place);
        return false;
    case BasicKey::Repeat:
        if (IsCloser(walk, 1)) Close(kLoop, walk.place);
        return false;
    case BasicKey::End: return End(walk);
    default: return false;
    }
}

/// A clause opens a block at the end of its line, and begins a statement elsewhere.
bool BlockCheck::Clause(Walk& walk, TextView word)
{
    if (LineEnds(walk))
        Open(kClause, word, walk.place);
    else
        ++walk.oneLiners;
    return true;
}

bool BlockCheck::End(Walk& walk)
{
    if (!walk.start) {
        const bool clause = walk.NextIs(BasicKey::Else) || walk.NextIs(BasicKey::Then);
        if (walk.oneLiners > 0 && (clause || IsCloser(walk, 1))) --walk.oneLiners;
        return false;
    }
    if (IsVariable(walk)) return false;
    if (walk.NextIs(BasicKey::Case)) {
        Close(kCase, walk.place);
        ++walk.at;
    } else if (walk.NextIs(BasicKey::Transaction) || walk.NextIs(BasicKey::Routine) || walk.NextIs(BasicKey::Nested)) {
        ++walk.at;
    } else if (walk.oneLiners > 0) {
        // IF A THEN B = 1 ; END: some dialects end the clause here, some have ended it at the semicolon.
        unsure_ = unsure_ || walk.separated;
        --walk.oneLiners;
    } else {
        EndOfClause(walk.place);
    }
    return false;
}

void BlockCheck::EndOfClause(Place place)
{
    if (IsOpen(kClause)) {
        CloseInner(kClause, kClosers[kClause], place);
        if (stack_.back().label.line != 0) swallowed_ = stack_.back();
        stack_.pop_back();
    } else if (doubtful_[kClause] > 0) {
        --doubtful_[kClause];
    } else if (!stack_.empty()) {
        const Opener& inner = stack_.back();
        Report(place, {Wording::StrayEnd, {Text(inner.word), findings_.Describe(inner.place)}});
    } else if (place.item == 0 && !nested_) {
        ended_ = place;
    }
}

/// Where the END of a clause is missing, the last END of the program ends it, and the routines of the program are in
/// it.
void BlockCheck::LookForRoutine(const Walk& walk)
{
    Opener& block = stack_.back();
    const BasicToken& token = walk.Token();
    if (token.Is(BasicKey::Return))
        block.returns = true;
    else if (token.kind == BasicToken::Kind::Label && block.returns && block.label.line == 0)
        block.label = walk.place;
}

/// Behind the last END of a program may stand notes; whole statements as in programs are none.
void BlockCheck::LookBehindEnd(const Walk& walk)
{
    const BasicToken& token = walk.Token();
    const bool branch = token.kind == BasicToken::Kind::Branch && walk.Next();
    if (!branch && !token.Is(BasicKey::Return) && !token.Is(BasicKey::End)) return;
    const BasicToken* next = walk.Next(branch ? 2 : 1);
    const bool clause = next && (next->Is(BasicKey::Else) || next->Is(BasicKey::Then) || next->Is(BasicKey::Case));
    if (next && !IsSeparator(walk.line, *next) && !(clause && token.Is(BasicKey::End))) return;
    Report(*ended_, Wording::EndTooEarly);
    ended_.reset();
}

void BlockCheck::Case(Place place)
{
    if (IsOpen(kCase)) {
        CloseInner(kCase, u"CASE", place);
    } else if (doubtful_[kCase] == 0 && !strayCase_) {
        Report(place, {Wording::Without, {Text(u"CASE"), Text(kOpeners[kCase])}});
        strayCase_ = true;
    }
}

void BlockCheck::Close(Kind kind, Place place)
{
    const bool stray = kind == kCase && strayCase_;
    if (IsOpen(kind)) {
        if (CloseInner(kind, kClosers[kind], place)) ++doubtful_[kind];
        stack_.pop_back();
    } else if (stray) {
        strayCase_ = false;
    } else if (doubtful_[kind] > 0) {
        --doubtful_[kind];
    } else {
        Report(place, {Wording::Without, {Text(kClosers[kind]), Text(kOpeners[kind])}});
    }
}

/// Drops what is open inside the innermost block of a kind; true when there was something.
bool BlockCheck::CloseInner(Kind kind, TextView closer, Place place)
{
    if (stack_.back().kind == kind) return false;
    const Opener& inner = stack_.back();
    Report(inner.place, {Wording::ClosedBefore,
                         {Text(inner.word), Text(kClosers[inner.kind]), Text(closer), findings_.Describe(place)}});
    for (; stack_.back().kind != kind; stack_.pop_back()) ++doubtful_[stack_.back().kind];
    return true;
}

bool BlockCheck::IsOpen(Kind kind) const
{
    return std::any_of(stack_.begin(), stack_.end(), [kind](const Opener& opener) { return opener.kind == kind; });
}

/// The word is the target of an assignment.
bool BlockCheck::IsVariable(const Walk& walk)
{
    const BasicToken* next = walk.Next();
    if (!next || next->kind != BasicToken::Kind::Sign) return false;
    constexpr TextView kOperations{u"+-*/:"};
    const char16_t sign = walk.line.At(next->start);
    return sign == u'=' || sign == u'<' || sign == u'[' ||
           (kOperations.find(sign) != TextView::npos && walk.line.At(next->end) == u'=');
}

bool BlockCheck::LineEnds(const Walk& walk)
{
    const auto& tokens = walk.line.Tokens();
    return std::all_of(tokens.begin() + static_cast<std::ptrdiff_t>(walk.at) + 1, tokens.end(),
                       [&](const BasicToken& token) { return IsSeparator(walk.line, token); });
}

/// Without a semicolon before it a closer stands at the end of its statement, with `words` words at most.
bool BlockCheck::IsCloser(const Walk& walk, size_t words)
{
    if (walk.start) return !IsVariable(walk);
    const BasicToken* before = walk.Before();
    if (!before || !walk.line.EndsValue(*before) || walk.at - 1 == walk.first) return false;
    for (size_t by = 1; by <= words; ++by)
        if (!walk.Next(by) || IsSeparator(walk.line, *walk.Next(by))) return true;
    return false;
}

/// LOCKED is a word like others where no clause can stand.
bool BlockCheck::IsLockedClause(const Walk& walk)
{
    if (IsVariable(walk)) return false;
    const BasicToken* before = walk.Before();
    if (!before || walk.start || before->Is(BasicKey::End)) return true;
    return walk.line.EndsValue(*before) && walk.at - 1 != walk.first;
}

void BlockCheck::ElseConditional()
{
    if (!saved_.empty()) stack_ = saved_.back();
}

void BlockCheck::EndConditional()
{
    if (!saved_.empty()) saved_.pop_back();
}

void BlockCheck::Finish()
{
    for (const Opener& opener : stack_)
        Report(opener.place, {Wording::NotClosed, {Text(opener.word), Text(kClosers[opener.kind])}});
    if (swallowed_ && !nested_) {
        const Opener& block = *swallowed_;
        Report(block.place, {Wording::ClosedAtLabel, {Text(block.word), findings_.Describe(block.label)}});
    }
    if (unsure_) return;
    for (const Fault& fault : reports_) findings_.Add(fault.place, finding_code::kBlock, fault.text);
}

std::optional<int32_t> BlockCheck::LastLine() const
{
    if (!ended_ || unsure_) return std::nullopt;
    return ended_->line;
}

} // namespace nib
