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

void StoredLines::Read(TextView stored, const std::vector<OddEnd>& odd, int32_t tabWidth, SourceDocument& document,
                       int32_t& lastIdentity)
{
    if (Empty() && odd.empty() && stored.find(u'\t') == TextView::npos) return;
    std::vector<Line> read;
    Text scratch;
    int32_t number = 0;
    auto end = odd.begin();
    ForEachLine(stored, true, [&](TextView text, bool) {
        const int32_t line = number++;
        const bool ownEnd = end != odd.end() && end->line == line;
        const std::optional<LineEnd> kind = ownEnd ? std::optional((end++)->end) : std::nullopt;
        auto identity = static_cast<int32_t>(document.GetLineData(line, LineWord::Identity));
        const bool plain = !kind && text.find(u'\t') == TextView::npos;
        if (plain && !Find(static_cast<uint32_t>(identity))) return;
        if (identity == 0) {
            if (lastIdentity == std::numeric_limits<int32_t>::max()) return;
            identity = ++lastIdentity;
            document.SetLineData(line, LineWord::Identity, static_cast<uint32_t>(identity));
        }
        read.push_back(Remember(identity, text, document.LineText(line, scratch), std::max(tabWidth, 1)));
        read.back().end = kind;
    });
    Take(std::move(read));
}

StoredLines::Line StoredLines::Remember(int32_t identity, TextView stored, TextView shown, int32_t tabWidth)
{
    Line line{identity, tabWidth, HashOf(shown), columns_.size(), 0, std::nullopt};
    for (size_t at = stored.find(u'\t'); at != TextView::npos; at = stored.find(u'\t', at + 1))
        columns_.push_back(static_cast<int32_t>(at) + line.tabs++ * (tabWidth - 1));
    return line;
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
