// The names in expressions and operands; part of StatementParser.

#include "language/StatementParser.h"

#include <algorithm>

namespace nib {

using Kind = BasicToken::Kind;

namespace {

/// More pieces than between the "<" and ">" of any part of a variable: the search for a ">" ends there.
constexpr size_t kMostOfPart = 200;

} // namespace

/// The ">" that belongs to the "<" at `at`; `at` itself when there is none.
size_t StatementParser::EndOfParts(size_t at) const
{
    int32_t depth = 1;
    for (size_t i = at + 1; Has(i) && i < at + kMostOfPart; ++i) {
        if (Sign(i, u'(') || Sign(i, u'[')) {
            i = Closing(i);
            continue;
        }
        if (pieces_[i].kind == Kind::Separator || Sign(i, u')') || Sign(i, u']')) return at;
        depth += Sign(i, u'<') ? 1 : Sign(i, u'>') ? -1 : 0;
        if (depth == 0) return i;
    }
    return at;
}

/// The last piece of the brackets that begin here, be they those of a part of a variable; else the piece itself.
size_t StatementParser::Past(size_t at) const
{
    if (Sign(at, u'(') || Sign(at, u'[')) return Closing(at);
    return Sign(at, u'<') && Touches(at) && pieces_[at - 1].value ? EndOfParts(at) : at;
}

/// Behind a variable and the parts of it that are named.
size_t StatementParser::BehindTarget(size_t at) const
{
    ++at;
    if (Sign(at, u'(')) at = Closing(at) + 1;
    if (Sign(at, u'<')) {
        const size_t end = EndOfParts(at);
        if (end == at) return at;
        at = end + 1;
    }
    while (Sign(at, u'[')) at = Closing(at) + 1;
    return at;
}

/// Where a statement gives a value to a variable: its sign, or 0.
size_t StatementParser::AssignmentSign(size_t at) const
{
    if (!IsWordAt(at)) return 0;
    const bool form = words_.FactsOf(pieces_[at].word).form || pieces_[at].key != BasicKey::None;
    if (form && Sign(at + 1, u'(') && !Sign(Closing(at + 1) + 1, u'=')) return 0;
    if (form &&
        (pieces_[at].key == BasicKey::If || pieces_[at].key == BasicKey::Case || pieces_[at].key == BasicKey::While ||
         pieces_[at].key == BasicKey::Until) &&
        !Sign(at + 1, u'='))
        return 0;
    size_t sign = BehindTarget(at);
    while (Sign(sign, u'-') && Sign(sign + 1, u'>') && Touches(sign + 1) && IsWordAt(sign + 2))
        sign = BehindTarget(sign + 2);
    constexpr TextView kOperations{u"+-*/:|#"};
    if (Has(sign) && pieces_[sign].sign != 0 && kOperations.find(pieces_[sign].sign) != TextView::npos &&
        Sign(sign + 1, u'=') && Touches(sign + 1))
        ++sign;
    return Sign(sign, u'=') ? sign : 0;
}

/// Adds or gives within an expression, where nothing of the kind can stand.
bool StatementParser::OddSign(size_t at) const
{
    constexpr TextView kOperations{u"+-*/:"};
    return pieces_[at].sign != 0 && kOperations.find(pieces_[at].sign) != TextView::npos && Sign(at + 1, u'=') &&
           Touches(at + 1) && at > 0 && pieces_[at - 1].value;
}

void StatementParser::Assignment(size_t sign)
{
    Step& step = AddStep(StepKind::Plain, at_);
    const size_t behind = BehindTarget(at_);
    const bool operation = pieces_[sign - 1].sign != 0 && !pieces_[sign - 1].value;
    const bool member = behind < sign && Sign(behind, u'-') && Sign(behind + 1, u'>');
    const bool element = Sign(at_ + 1, u'(') && behind > at_ + 1;
    const size_t indices = element ? Closing(at_ + 1) + 1 : at_ + 1;
    const bool part = behind > indices;
    uint16_t flags = 0;
    if (part) flags |= use_flag::kPart;
    if (operation || part) flags |= use_flag::kInPlace;
    if (member) flags |= use_flag::kGiven;
    Note(at_++, flags == 0 ? Use::Sets : Use::Both, flags);
    ReadTo(sign);
    at_ = sign + 1;
    Read({});
    Finish(step);
}

int32_t StatementParser::IndexOf(size_t from, size_t to) const
{
    if (to != from + 1) return NameUse::kUnknownIndex;
    const Piece& piece = pieces_[from];
    if (piece.kind == Kind::Word && piece.key == BasicKey::None) return -2 - piece.word;
    if (piece.kind != Kind::Number || piece.end - piece.start > 8) return NameUse::kUnknownIndex;
    int32_t number = 0;
    for (int32_t i = 0; i < piece.end - piece.start; ++i) {
        const char16_t c = CharOf(piece, i);
        if (c < u'0' || c > u'9') return NameUse::kUnknownIndex;
        number = number * 10 + (c - u'0');
    }
    return number;
}

/// What stands in the parentheses behind a name.
void StatementParser::Indices(size_t open, NameUse& use) const
{
    const size_t close = Closing(open);
    size_t from = open + 1;
    size_t count = 0;
    for (size_t i = from; i <= close; ++i) {
        if (const size_t past = i < close ? Past(i) : i; past != i && past < close) {
            i = past;
            continue;
        }
        const bool separates = Sign(i, u',') || Sign(i, u';');
        if (i < close && !separates) continue;
        if (i == close && count == 0 && from == close) break;
        if (count < std::size(use.index)) use.index[count] = IndexOf(from, i);
        ++count;
        from = i + 1;
    }
    use.indices = static_cast<uint8_t>(std::min<size_t>(count, 255));
}

void StatementParser::Note(size_t at, Use how, uint16_t flags)
{
    const Piece& piece = pieces_[at];
    const bool system = CharOf(piece, 0) == u'@';
    if (piece.kind != Kind::Word || (system && !(flags & use_flag::kIndirect))) return;
    NameUse use{piece.word, piece.line, piece.start, piece.end, how, 0, flags};
    if (Sign(at + 1, u'(')) {
        use.flags |= use_flag::kParens;
        Indices(at + 1, use);
    }
    into_->uses.push_back(use);
}

bool StatementParser::IsClauseWord(size_t at, const StatementForm& form) const
{
    if (!IsWordAt(at) || Key(at + 1, BasicKey::Error)) return false;
    const Text& word = words_.TextOf(pieces_[at].word);
    const size_t found = form.operands.find(word);
    return found != TextView::npos && found > 0 && form.operands[found - 1] == u' ' &&
           (found + word.size() == form.operands.size() || form.operands[found + word.size()] == u' ');
}

/// An operand ends before this piece; `first`: it would be its first.
bool StatementParser::Stops(size_t at, const StatementForm* form, bool first) const
{
    const Piece& piece = pieces_[at];
    if (piece.kind == Kind::Separator || piece.kind == Kind::Branch) return true;
    if (piece.kind != Kind::Word) return false;
    const bool behindValue = first || (at > 0 && pieces_[at - 1].value);
    if (!behindValue) return false;
    if (form && IsClauseWord(at, *form)) return true;
    switch (piece.key) {
    case BasicKey::Then:
    case BasicKey::Else:
    case BasicKey::Do:
    case BasicKey::While:
    case BasicKey::Until: return true;
    case BasicKey::Locked: return !first || EndsStatement(at + 1);
    case BasicKey::On: return Key(at + 1, BasicKey::Error);
    case BasicKey::Repeat:
    case BasicKey::Next:
    case BasicKey::End: return !Sign(at + 1, u'(');
    default: return false;
    }
}

/// Reads an operand up to a comma, or up to `end` whatever stands there.
void StatementParser::Read(const Reading& reading, size_t end)
{
    int32_t depth = 0;
    size_t part = 0; ///< the end of the part that is named
    inline_ = false;
    callees_.clear();
    if (from_ == SIZE_MAX) from_ = at_;
    form_ = reading.form;
    for (bool first = true; at_ < std::min(end, pieces_.size()); ++at_, first = false) {
        const Piece& piece = pieces_[at_];
        const bool choice = inline_ && (piece.key == BasicKey::Then || piece.key == BasicKey::Else);
        if (piece.sign == u'<' && at_ >= part) part = Past(at_);
        const bool outside = end == SIZE_MAX && depth == 0 && at_ >= part;
        if (outside && !choice && Stops(at_, reading.form, first)) return;
        if (outside && piece.sign == u',' && reading.form) return;
        if (piece.kind == Kind::Separator && end == SIZE_MAX) return;
        depth += piece.sign == u'(' || piece.sign == u'[' ? 1 : piece.sign == u')' || piece.sign == u']' ? -1 : 0;
        depth = std::max(depth, 0);
        if (piece.sign == u'(') callees_.push_back(CalleeOf(at_));
        if (piece.sign == u')' && !callees_.empty()) callees_.pop_back();
        if (piece.kind == Kind::Word) NoteRead(at_, callees_.empty() ? -1 : callees_.back());
    }
}

/// The word whose arguments or indices the parentheses hold; -1 when there is none.
int32_t StatementParser::CalleeOf(size_t open) const
{
    return open > 0 && Touches(open) && IsWordAt(open - 1) ? pieces_[open - 1].word : -1;
}

/// A word stands by another without an operator between them: one of them belongs to a statement that nobody knows.
bool StatementParser::Beside(size_t at) const
{
    const auto name = [this](size_t i) {
        if (!IsWordAt(i) || pieces_[i].key != BasicKey::None || words_.FactsOf(pieces_[i].word).clause) return false;
        return !form_ || !IsClauseWord(i, *form_);
    };
    const bool behind = at > from_ && pieces_[at - 1].value && !inline_;
    return behind || name(at + 1) || (Has(at + 1) && pieces_[at + 1].kind == Kind::Number);
}

void StatementParser::NoteRead(size_t at, int32_t callee)
{
    using enum BasicKey;
    const BasicKey key = pieces_[at].key;
    if (key == If) inline_ = true;
    if (key == Operator || (inline_ && (key == If || key == Then || key == Else)) || Word(at, u"MAT")) return;
    // BREAK ON, HUSH OFF, CLEARSELECT ALL
    const bool single = at == from_ && (EndsStatement(at + 1) || !pieces_[at].value);
    if (single && key == On) return;
    const bool setting = single && (Word(at, u"OFF") || Word(at, u"ALL") || Word(at, u"CLEAR"));
    if (at > 1 && Sign(at - 1, u'>') && Sign(at - 2, u'-') && Touches(at) && Touches(at - 1)) return;
    const size_t before = into_->uses.size();
    Note(at, Use::Reads, setting || Beside(at) ? use_flag::kUnsure : uint16_t{0});
    const bool alone = (Sign(at - 1, u'(') || Sign(at - 1, u',')) && (Sign(at + 1, u',') || Sign(at + 1, u')'));
    if (at == 0 || callee < 0 || !alone || into_->uses.size() == before) return;
    into_->uses.back().flags |= use_flag::kArgument;
    into_->uses.back().index[0] = callee;
}

/// The clause words of the form part the operands; each part has letters of its own.
void StatementParser::Operands(const StatementForm& form, Step& step)
{
    TextView rest = form.operands;
    if (rest.starts_with(u'?') || rest.starts_with(u'!')) rest.remove_prefix(1);
    TextView letters = rest.substr(0, rest.find(u' '));
    const size_t here = into_->steps.size() - 1;
    (void)step;
    for (size_t index = 0; Has(at_);) {
        if (IsClauseWord(at_, form)) {
            const Text& word = words_.TextOf(pieces_[at_++].word);
            const size_t found = rest.find(Text(u" ").append(word).append(u" "));
            letters = found == TextView::npos ? TextView(u"r") : rest.substr(found + word.size() + 2);
            letters = letters.substr(0, letters.find(u' '));
            index = 0;
            continue;
        }
        const bool first = index == 0;
        if (Stops(at_, &form, first)) return;
        const char16_t letter = letters.empty() ? u'r' : letters[std::min(index, letters.size() - 1)];
        Operand(letter, {letters, &form}, &into_->steps[here]);
        if (Sign(at_, u','))
            ++at_, ++index;
        else if (!IsWordAt(at_) || !IsClauseWord(at_, form))
            return;
    }
}

/// One operand; what does not belong to the variable in it is read.
void StatementParser::Operand(char16_t letter, const Reading& reading, Step* step)
{
    from_ = at_;
    if (letter == u'n') {
        const size_t before = into_->uses.size();
        Read(reading);
        into_->uses.resize(before);
        from_ = SIZE_MAX;
        return;
    }
    if (letter == u'f' && IsWordAt(at_) && CharOf(pieces_[at_], 0) != u'@')
        step->file = static_cast<int32_t>(into_->uses.size()) - step->firstUse;
    if (letter != u'r' && letter != u'f') {
        // INPUT @(x, y): NAME and GET(ARG.) NAME
        const bool place = Sign(at_, u'@') && Sign(at_ + 1, u'(');
        if (place || (letter == u's' && Sign(at_, u'('))) {
            const size_t before = into_->uses.size();
            const size_t close = Closing(at_ + (place ? 1 : 0));
            ReadTo(close);
            at_ = close + 1;
            const auto argument = [this](const NameUse& use) { return words_.TextOf(use.word).ends_with(u'.'); };
            const auto added = into_->uses.begin() + static_cast<std::ptrdiff_t>(before);
            into_->uses.erase(std::remove_if(added, into_->uses.end(), argument), into_->uses.end());
            if (Sign(at_, u',') || Sign(at_, u':')) ++at_;
        }
        if (Word(at_, u"MAT") && IsWordAt(at_ + 1)) ++at_;
        if (IsWordAt(at_) && !Stops(at_, reading.form, true)) Target(letter, step);
    }
    Read(reading);
    from_ = SIZE_MAX;
}

void StatementParser::Target(char16_t letter, Step* step)
{
    (void)step;
    const size_t behind = BehindTarget(at_);
    const bool element = Sign(at_ + 1, u'(');
    const size_t indices = element ? Closing(at_ + 1) + 1 : at_ + 1;
    const bool part = behind > indices;
    using namespace use_flag;
    uint16_t flags = 0;
    Use how = Use::Both;
    switch (letter) {
    case u's':
        how = part ? Use::Both : Use::Sets;
        flags = kOutput;
        break;
    case u'o':
        how = Use::Sets;
        flags = kOutput | kOpens;
        break;
    case u'g': flags = kInPlace; break;
    default: flags = kGiven; break;
    }
    if (part) flags |= kPart;
    // Behind a name alone may stand a comparison: only an operand that is set can have parts.
    Note(at_++, how, flags);
}

/// LOCATE(what, where, ...; found; order)
void StatementParser::Locate()
{
    const size_t close = Closing(at_);
    size_t semicolon = at_;
    for (size_t i = close; i > at_; --i)
        if (Sign(i, u';')) semicolon = i;
    if (semicolon == at_) {
        // Without it the third operand may be set.
        ReadTo(close);
        at_ = close + 1;
        static constexpr StatementForm kLocate{u"LOCATE", StepKind::Plain, u"r IN r BY r SETTING s"};
        return Operands(kLocate, into_->steps.back());
    }
    ReadTo(semicolon);
    at_ = semicolon + 1;
    if (IsWordAt(at_)) Target(u's', nullptr);
    ReadTo(close);
    at_ = close + 1;
    Read({});
}

} // namespace nib
