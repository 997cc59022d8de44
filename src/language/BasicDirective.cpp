#include "language/BasicDirective.h"

#include "language/BasicLine.h"

namespace nib {

namespace {

using Kind = BasicDirective::Kind;

struct Row {
    TextView word;
    Kind kind;
};

constexpr Row kRows[] = {
    {u"INCLUDE", Kind::Include}, {u"INSERT", Kind::Insert}, {u"CHAIN", Kind::Elsewhere}, {u"COPY", Kind::Elsewhere},
    {u"IFDEF", Kind::If},        {u"IFNDEF", Kind::If},     {u"IF", Kind::If},           {u"ELSE", Kind::Else},
    {u"ELIF", Kind::Else},       {u"ENDIF", Kind::EndIf},
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
    for (const Row& row : kRows) {
        if (!IsWord(word, row.word)) continue;
        if (row.kind != Kind::Include && row.kind != Kind::Insert) return {row.kind, {}, {}};
        BasicDirective include = ReadInclude(line);
        if (row.kind == Kind::Insert && include.file.empty() && include.kind == Kind::Include)
            include.kind = Kind::Insert;
        return include;
    }
    return {Kind::Other, {}, {}};
}

BasicDirective ReadInclude(TextView names)
{
    names = names.substr(0, names.find(u';'));
    const TextView first = TakeWord(names);
    const TextView second = TakeWord(names);
    const TextView third = TakeWord(names);
    const BasicDirective elsewhere{Kind::Elsewhere, {}, {}};
    if (first.empty() || IsFarName(first)) return elsewhere;
    if (StartsComment(second)) return {Kind::Include, {}, Text(first)};
    if (IsFarName(second)) return elsewhere;
    if (IsWord(second, u"FROM") && !third.empty()) {
        if (IsFarName(third)) return elsewhere;
        return {Kind::Include, Text(third), Text(first)};
    }
    if (!StartsComment(third)) return elsewhere;
    return {Kind::Include, Text(first), Text(second)};
}

} // namespace nib
