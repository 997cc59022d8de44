#include "documents/StoredLines.h"

#include "text/LineDiff.h"
#include "text/SourceDocument.h"

#include <algorithm>
#include <functional>
#include <limits>

namespace nib {

namespace {

size_t HashOf(TextView text)
{
    return std::hash<TextView>()(text);
}

std::vector<uint32_t> IdentitiesOf(const SourceDocument& document)
{
    std::vector<uint32_t> identities;
    identities.reserve(static_cast<size_t>(document.LineCount()));
    for (int32_t line = 0; line < document.LineCount(); ++line)
        identities.push_back(document.GetLineData(line, LineWord::Identity));
    return identities;
}

} // namespace

void StoredLines::Clear()
{
    lines_ = {};
    columns_ = {};
}

void StoredLines::Read(const std::vector<TabPlace>& tabs, const std::vector<OddEnd>& odd, int32_t tabWidth,
                       SourceDocument& document, int32_t& lastIdentity)
{
    std::vector<Line> read;
    Text scratch;
    auto tab = tabs.begin();
    auto end = odd.begin();
    for (int32_t line = 0; line < document.LineCount(); ++line) {
        if (Empty()) { // nothing to find in the lines between
            if (tab == tabs.end() && end == odd.end()) break;
            line = std::min(tab == tabs.end() ? end->line : tab->line, end == odd.end() ? tab->line : end->line);
        }
        const bool ownEnd = end != odd.end() && end->line == line;
        const bool plain = !ownEnd && (tab == tabs.end() || tab->line != line);
        auto identity = static_cast<int32_t>(document.GetLineData(line, LineWord::Identity));
        if (plain && !Find(static_cast<uint32_t>(identity))) continue;
        if (identity == 0) {
            if (lastIdentity == std::numeric_limits<int32_t>::max()) break;
            identity = ++lastIdentity;
            document.SetLineData(line, LineWord::Identity, static_cast<uint32_t>(identity));
        }
        read.push_back({identity, std::max(tabWidth, 1), HashOf(document.LineText(line, scratch)), columns_.size(), 0,
                        std::nullopt});
        for (; tab != tabs.end() && tab->line == line; ++tab, ++read.back().tabs) columns_.push_back(tab->column);
        if (ownEnd) read.back().end = (end++)->end;
    }
    Take(std::move(read));
}

/// What was read last counts.
void StoredLines::Take(std::vector<Line> read)
{
    const auto byIdentity = [](const Line& a, const Line& b) { return a.identity < b.identity; };
    read.insert(read.end(), lines_.begin(), lines_.end());
    std::stable_sort(read.begin(), read.end(), byIdentity);
    const auto same = [](const Line& a, const Line& b) { return a.identity == b.identity; };
    read.erase(std::unique(read.begin(), read.end(), same), read.end());
    lines_ = std::move(read);
}

const StoredLines::Line* StoredLines::Find(uint32_t identity) const
{
    if (identity == 0) return nullptr;
    const auto found = std::lower_bound(lines_.begin(), lines_.end(), identity, [](const Line& line, uint32_t wanted) {
        return static_cast<uint32_t>(line.identity) < wanted;
    });
    const bool there = found != lines_.end() && static_cast<uint32_t>(found->identity) == identity;
    return there ? &*found : nullptr;
}

bool StoredLines::AppendStored(const Line& line, TextView shown, Text& out) const
{
    if (HashOf(shown) != line.shown) return false;
    size_t done = 0;
    for (int32_t tab = 0; tab < line.tabs; ++tab) {
        const auto column = static_cast<size_t>(columns_[line.firstTab + static_cast<size_t>(tab)]);
        out.append(shown.substr(done, column - done)).push_back(u'\t');
        done = column + static_cast<size_t>(line.tabWidth);
    }
    out.append(shown.substr(done));
    return true;
}

Text StoredLines::Written(const SourceDocument& document, std::vector<OddEnd>& odd) const
{
    Text out;
    Text scratch;
    for (int32_t line = 0; line < document.LineCount(); ++line) {
        if (line > 0) out += u"\r\n";
        const TextView shown = document.LineText(line, scratch);
        const Line* stored = Find(document.GetLineData(line, LineWord::Identity));
        if (!stored || !AppendStored(*stored, shown, out))
            out += shown;
        else if (stored->end)
            odd.push_back({line, *stored->end});
    }
    return out;
}

void StoredLines::Keep(SourceDocument& document, const std::function<void()>& replace) const
{
    if (Empty()) return replace();
    const Text before = document.GetText();
    const std::vector<uint32_t> identities = IdentitiesOf(document);
    replace();
    const Text after = document.GetText();
    int32_t from = 0;
    int32_t to = 0;
    const auto carryUpTo = [&](int32_t end) {
        for (; from < end; ++from, ++to)
            document.SetLineData(to, LineWord::Identity, identities[static_cast<size_t>(from)]);
    };
    for (const LineHunk& hunk : DiffLines(LinesOf(before), LinesOf(after))) {
        carryUpTo(hunk.oldLine);
        from = hunk.oldLine + hunk.oldCount;
        to = hunk.newLine + hunk.newCount;
    }
    carryUpTo(static_cast<int32_t>(identities.size()));
}

} // namespace nib
