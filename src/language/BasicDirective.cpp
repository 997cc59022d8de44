#include "language/BasicDirective.h"

#include "language/BasicLine.h"

#include <algorithm>

namespace nib {

namespace {

using Directive = BasicDirective::Kind;

struct DirectiveRow {
    TextView word;
    Directive kind;
};

constexpr DirectiveRow kDirectives[] = {
    {u"INCLUDE", Directive::Include}, {u"INSERT", Directive::Insert}, {u"CHAIN", Directive::Opaque},
    {u"COPY", Directive::Opaque},     {u"IFDEF", Directive::If},      {u"IFNDEF", Directive::If},
    {u"IF", Directive::If},           {u"ELSE", Directive::Else},     {u"ELIF", Directive::Else},
    {u"ENDIF", Directive::EndIf},     {u"DEFINE", Directive::Define}, {u"INTERNAL", Directive::Internal},
};

TextView TakeWord(TextView& text)
{
    const size_t start = std::min(text.find_first_not_of(u" \t"), text.size());
    text.remove_prefix(start);
    const bool quoted = text.starts_with(u'"') || text.starts_with(u'\'');
    size_t end = quoted ? text.find(text.front(), 1) : text.find_first_of(u" \t");
    end = end == TextView::npos ? text.size() : end + (quoted ? 1 : 0);
    TextView word = text.substr(0, end);
    text.remove_prefix(end);
    if (quoted && word.size() > 2) word = word.substr(1, word.size() - 2);
    return word;
}

bool StartsComment(TextView word)
{
    return word.empty() || word.starts_with(u'*') || word.starts_with(u'!') || word.starts_with(u"//");
}

/// A path, or a file of another account.
bool IsFarName(TextView name)
{
    return name.find_first_of(u"/\\,*<>{}()") != TextView::npos;
}

} // namespace

BasicDirective ReadDirective(TextView line)
{
    const size_t start = line.find_first_not_of(u" \t");
    if (start == TextView::npos || (line[start] != u'$' && line[start] != u'#')) return {};
    line.remove_prefix(start + 1);
    const TextView word = TakeWord(line);
    for (const DirectiveRow& row : kDirectives) {
        if (!IsWord(word, row.word)) continue;
        if (row.kind != Directive::Include && row.kind != Directive::Insert) return {row.kind, {}, {}};
        BasicDirective include = ReadInclude(line);
        if (row.kind == Directive::Insert && include.file.empty() && include.kind == Directive::Include)
            include.kind = Directive::Insert;
        return include;
    }
    return {Directive::Other, {}, {}};
}

BasicDirective ReadInclude(TextView names)
{
    names = names.substr(0, names.find(u';'));
    const TextView first = TakeWord(names);
    const TextView second = TakeWord(names);
    const TextView third = TakeWord(names);
    BasicDirective elsewhere{Directive::Opaque, {}, {}};
    if (first.empty() || IsFarName(first)) return elsewhere;
    if (StartsComment(second)) return {Directive::Include, {}, Text(first)};
    if (IsFarName(second)) return elsewhere;
    if (IsWord(second, u"FROM") && !third.empty()) {
        if (IsFarName(third)) return elsewhere;
        return {Directive::Include, Text(third), Text(first)};
    }
    if (!StartsComment(third)) return elsewhere;
    return {Directive::Include, Text(first), Text(second)};
}

} // namespace nib
