#include "search/ItemSearch.h"

#include <algorithm>

namespace nib {

namespace {

constexpr TextView kBreaks{u"\r\n"};
constexpr size_t kLongestShown = 400;
/// Of a long line that is shown before its hit.
constexpr size_t kShownBefore = 100;

FoundLine Shown(TextView line, int32_t number, size_t column, size_t length)
{
    const size_t first = line.size() > kLongestShown && column > kShownBefore ? column - kShownBefore : 0;
    const TextView shown = line.substr(first, kLongestShown);
    column -= first;
    return {number, static_cast<int32_t>(column),
            static_cast<int32_t>(std::min(length, shown.size() - std::min(column, shown.size()))), Text(shown)};
}

/// Text as it is edited; `buffer` takes it where that is another one.
TextView WithoutTabs(TextView text, int32_t tabSize, Text& buffer)
{
    if (text.find(u'\t') == TextView::npos) return text;
    buffer = ExpandTabs(text, tabSize);
    return buffer;
}

/// Appends the line with what takes the place of its hits; their number.
int64_t AppendReplaced(const TextPattern& pattern, TextView line, const Replacement& replacement, Text& out)
{
    auto hit = pattern.In(line, 0);
    if (!hit) return 0;
    const size_t start = out.size();
    Text left(line); // what stands before a place is what has been put there
    int64_t hits = 0;
    size_t from = 0;
    for (; hit; ++hits) {
        const auto at = static_cast<size_t>(hit->first);
        out.append(line.substr(from, at - from)).append(pattern.Replaced(line, at, replacement));
        from = static_cast<size_t>(hit->last);
        if (pattern.IsRegex()) {
            hit = pattern.In(line, std::max(from, at + 1));
            continue;
        }
        left[from - 1] = out.size() > start ? out.back() : u'\n';
        hit = pattern.In(left, from);
    }
    out.append(line.substr(from));
    return hits;
}

} // namespace

TextHits FindInText(const TextPattern& pattern, TextView stored, int32_t tabSize, size_t mostLines)
{
    Text expanded;
    const TextView text = WithoutTabs(stored, tabSize, expanded);
    TextHits found;
    int32_t line = 0;
    size_t start = 0; // of the line of the last hit
    std::optional<size_t> end;
    for (auto hit = pattern.In(text, 0); hit; ++found.hits) {
        const auto at = static_cast<size_t>(hit->first);
        const auto behind = static_cast<size_t>(hit->last);
        if (!end || at > *end) {
            line += static_cast<int32_t>(std::count(text.begin() + static_cast<std::ptrdiff_t>(start),
                                                    text.begin() + static_cast<std::ptrdiff_t>(at), u'\n'));
            start = text.substr(0, at).rfind(u'\n') + 1;
            end = std::min(text.find_first_of(kBreaks, at), text.size());
            if (found.lines.size() < mostLines)
                found.lines.push_back(Shown(text.substr(start, *end - start), line, at - start, behind - at));
            else
                found.cut = true;
        }
        hit = pattern.In(text, std::max(behind, at + 1));
    }
    return found;
}

ReplacedText ReplaceInText(const TextPattern& pattern, TextView text, TextView replacement, int32_t tabSize)
{
    const Replacement prepared = pattern.Prepared(replacement);
    ReplacedText replaced;
    replaced.text.reserve(text.size());
    Text expanded;
    for (;;) {
        const size_t end = std::min(text.find_first_of(kBreaks), text.size());
        const TextView line = text.substr(0, end);
        const int64_t hits = AppendReplaced(pattern, WithoutTabs(line, tabSize, expanded), prepared, replaced.text);
        if (hits == 0) replaced.text += line;
        replaced.hits += hits;
        const size_t next = std::min(text.find_first_not_of(kBreaks, end), text.size());
        replaced.text += text.substr(end, next - end);
        if (next == text.size()) return replaced;
        text.remove_prefix(next);
    }
}

bool FitsPattern(TextView id, TextView pattern)
{
    const Text name = ToUpper(id);
    const Text wanted = pattern.empty() ? Text(u"*") : ToUpper(pattern);
    size_t at = 0;
    size_t next = 0;
    size_t star = Text::npos; // behind the last one met, which may take one character more
    size_t taken = 0;
    while (at < name.size()) {
        if (next < wanted.size() && wanted[next] == u'*') {
            star = ++next;
            taken = at;
        } else if (next < wanted.size() && (wanted[next] == u'?' || wanted[next] == name[at])) {
            ++next;
            ++at;
        } else if (star != Text::npos) {
            next = star;
            at = ++taken;
        } else {
            return false;
        }
    }
    return wanted.find_first_not_of(u'*', next) == Text::npos;
}

} // namespace nib
