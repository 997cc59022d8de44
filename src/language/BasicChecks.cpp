#include "language/BasicChecks.h"

#include "language/FindingCodes.h"

#include <algorithm>

namespace nib {

int32_t FindingList::AddItem(Text name, Place includedAt)
{
    items_.push_back({std::move(name), ProgramLine(includedAt)});
    return static_cast<int32_t>(items_.size());
}

int32_t FindingList::ProgramLine(Place place) const
{
    return place.item == 0 ? place.line : items_[static_cast<size_t>(place.item - 1)].line;
}

Phrase FindingList::Describe(Place place) const
{
    if (place.item == 0) return {Wording::Line, {Decimal(place.line)}};
    return {Wording::LineOf, {Decimal(place.line), items_[static_cast<size_t>(place.item - 1)].name}};
}

void FindingList::Add(Place place, TextView code, Phrase text)
{
    if (place.item != 0) text = {Wording::InPlace, {Describe(place), std::move(text)}};
    findings_.push_back({ProgramLine(place), std::move(text), code});
}

void FindingList::DropBehind(int32_t line)
{
    std::erase_if(findings_, [line](const Finding& finding) { return finding.line > line; });
}

std::vector<Finding> FindingList::Take()
{
    std::stable_sort(findings_.begin(), findings_.end(),
                     [](const Finding& a, const Finding& b) { return a.line < b.line; });
    auto same = [](const Finding& a, const Finding& b) { return a.line == b.line && a.text == b.text; };
    findings_.erase(std::unique(findings_.begin(), findings_.end(), same), findings_.end());
    return std::move(findings_);
}

namespace {

/// The form that all spellings of a label in any dialect have in common.
Text Common(TextView name)
{
    while (name.size() > 1 && name.front() == u'0') name.remove_prefix(1);
    return ToUpper(name);
}

TextView WithoutColon(TextView name)
{
    if (name.ends_with(u':')) name.remove_suffix(1);
    return Trim(name);
}

/// No statement begins with one of these.
constexpr TextView kInfix{u",)]+-/:&=<>#^~|;"};

} // namespace

void LabelCheck::Line(const BasicLine& line, Place place, bool continued)
{
    const std::vector<BasicToken>& tokens = line.Tokens();
    if (tokens.empty()) return;
    size_t at = 0;
    const bool goesOn = inList_ && (tokens.size() == 1 || line.IsSign(tokens[1], u',') ||
                                    tokens.front().kind != BasicToken::Kind::Label);
    inList_ = false;
    if (goesOn)
        at = Targets(line, 0, place);
    else if (tokens.front().kind == BasicToken::Kind::Label)
        Define(line, tokens.front(), place, continued);
    else
        Suppose(line);
    while (at < tokens.size()) {
        if (tokens[at].kind != BasicToken::Kind::Branch) {
            ++at;
            continue;
        }
        statement_ = line.Of(tokens[at]).find_first_of(u"sS") == TextView::npos ? u"GOTO" : u"GOSUB";
        at = Targets(line, at + 1, place);
    }
}

void LabelCheck::Define(const BasicLine& line, const BasicToken& label, Place place, bool continued)
{
    const Text name(WithoutColon(line.Of(label)));
    known_.insert(Common(name));
    if (continued || conditional_ || label.key != BasicKey::None) return;
    const auto [first, isNew] = defined_.try_emplace(name, place);
    if (isNew) return;
    findings_.Add(place, finding_code::kDoubleLabel, {Wording::LabelTwice, {name, findings_.Describe(first->second)}});
}

/// A name alone is a label in some dialects, and routines have names that GOSUB knows in others.
void LabelCheck::Suppose(const BasicLine& line)
{
    const std::vector<BasicToken>& tokens = line.Tokens();
    const auto know = [&](size_t at) {
        if (at < tokens.size() && tokens[at].kind == BasicToken::Kind::Word) known_.insert(Common(line.Of(tokens[at])));
    };
    if (tokens.front().Is(BasicKey::Routine) || tokens.front().Is(BasicKey::Nested)) {
        know(1);
        know(2);
    } else if (tokens.size() == 1 || tokens[1].kind == BasicToken::Kind::Separator || line.IsSign(tokens[1], u':') ||
               (line.IsSign(tokens[1], u'(') && line.IsSign(tokens.back(), u':'))) {
        know(0);
    }
}

/// Takes the labels from `at` on; answers the token behind them.
size_t LabelCheck::Targets(const BasicLine& line, size_t at, Place place)
{
    using Kind = BasicToken::Kind;
    const std::vector<BasicToken>& tokens = line.Tokens();
    while (at < tokens.size()) {
        const BasicToken& token = tokens[at];
        const bool name = token.kind == Kind::Target || (token.kind == Kind::Word && token.key == BasicKey::None);
        if (!name && token.kind != Kind::Number && token.kind != Kind::Label) return at;
        Refer(line, token, place);
        if (++at == tokens.size() || !line.IsSign(tokens[at], u',')) return at;
        inList_ = ++at == tokens.size();
    }
    return at;
}

void LabelCheck::Refer(const BasicLine& line, const BasicToken& target, Place place)
{
    // What stands close behind may belong to the name in a dialect that allows more letters, and what is in it not in
    // one that allows fewer.
    constexpr TextView kEnds{u" ,;):"};
    const char16_t behind = line.At(target.end);
    if (behind != 0 && kEnds.find(behind) == TextView::npos) return;
    const TextView name = WithoutColon(line.Of(target));
    if (name.find_first_of(u"$%") != TextView::npos) return;
    if (name == u"0") return;
    references_.push_back({Text(name), statement_, place});
}

void LabelCheck::Finish(bool surely)
{
    if (incomplete_ && surely) return;
    for (const Reference& reference : references_) {
        if (known_.contains(Common(reference.name))) continue;
        findings_.Add(reference.place, finding_code::kMissingLabel,
                      {Wording::NoLabel, {Text(reference.statement), reference.name}});
    }
}

void ParenCheck::Line(const BasicLine& line, Place place)
{
    if (!line.IsCode()) return;
    if (depth_ > 0 && !GoesOnWith(line)) Finish();
    if (line.OpenQuote()) {
        depth_ = 0; // what the string swallowed is not known
        return;
    }
    bool tooMany = false;
    for (const BasicToken& token : line.Tokens()) {
        if (line.IsSign(token, u'(')) {
            if (depth_++ == 0) opened_ = place;
        } else if (line.IsSign(token, u')')) {
            tooMany = tooMany || depth_ == 0;
            if (depth_ > 0) --depth_;
        }
    }
    if (tooMany) findings_.Add(place, finding_code::kParentheses, {Wording::Without, {Text(u"\")\""), Text(u"\"(\"")}});
    mustGoOn_ = !line.EndsValue(line.Tokens().back());
}

bool ParenCheck::GoesOnWith(const BasicLine& line) const
{
    const BasicToken& first = line.Tokens().front();
    return mustGoOn_ || (first.kind == BasicToken::Kind::Sign && kInfix.find(line.At(first.start)) != TextView::npos);
}

void ParenCheck::Finish()
{
    if (depth_ > 0)
        findings_.Add(opened_, finding_code::kParentheses, {Wording::Without, {Text(u"\"(\""), Text(u"\")\"")}});
    depth_ = 0;
}

} // namespace nib
