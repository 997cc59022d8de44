// The names in expressions and operands; part of StatementParser.

#include "language/StatementParser.h"

#include <algorithm>

namespace nib {

using Kind = BasicToken::Kind;

/// The piece that closes the bracket at `at`; the last one when nothing does.
size_t StatementParser::Closing(size_t at) const
{
    int32_t depth = 0;
    for (size_t i = at; Has(i); ++i) {
        const char16_t sign = pieces_[i].sign;
        if (sign == u'(' || sign == u'[') ++depth;
        if ((sign == u')' || sign == u']') && --depth == 0) return i;
        if (pieces_[i].kind == Kind::Separator) return i;
    }
    return pieces_.empty() ? 0 : pieces_.size() - 1;
}

/// Behind a variable and the parts of it that are named.
size_t StatementParser::BehindTarget(size_t at) const
{
    ++at;
    if (Sign(at, u'(')) at = Closing(at) + 1;
    if (Sign(at, u'<')) {
        size_t end = at + 1;
        for (int32_t depth = 1; Has(end) && depth > 0; ++end) {
            if (pieces_[end].sign == u'(' || pieces_[end].sign == u'[') end = Closing(end);
            if (Has(end) && pieces_[end].kind == Kind::Separator) return at;
            depth += Sign(end, u'<') ? 1 : Sign(end, u'>') ? -1 : 0;
            if (depth > 0 && !Has(end + 1)) return at;
        }
        at = end;
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
        if (i < close && (Sign(i, u'(') || Sign(i, u'['))) {
            i = Closing(i);
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
    if (!IsWordAt(at)) return false;
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
    for (bool first = true; at_ < std::min(end, pieces_.size()); ++at_, first = false) {
        const Piece& piece = pieces_[at_];
        if (end == SIZE_MAX && depth == 0 && (Stops(at_, reading.form, first))) return;
        if (end == SIZE_MAX && depth == 0 && piece.sign == u',' && reading.form) return;
        if (piece.kind == Kind::Separator && end == SIZE_MAX) return;
        depth += piece.sign == u'(' || piece.sign == u'[' ? 1 : piece.sign == u')' || piece.sign == u']' ? -1 : 0;
        depth = std::max(depth, 0);
        if (piece.kind != Kind::Word) continue;
        if (piece.key == BasicKey::Operator || Word(at_, u"MAT")) continue;
        if (at_ > 1 && Sign(at_ - 1, u'>') && Sign(at_ - 2, u'-') && Touches(at_) && Touches(at_ - 1)) continue;
        Note(at_, Use::Reads, 0);
    }
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
    if (letter == u'n') {
        const size_t before = into_->uses.size();
        Read(reading);
        into_->uses.resize(before);
        return;
    }
    if (letter == u'f' && IsWordAt(at_)) step->file = static_cast<int32_t>(into_->uses.size()) - step->firstUse;
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
