#include "documents/StoredLines.h"

#include "text/LineDiff.h"
#include "text/SourceDocument.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <utility>

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

void StoredLines::Read(const std::vector<TabPlace>& tabs, const std::vector<OddEnd>& odd, int32_t tabWidth,
                       SourceDocument& document, int32_t& lastIdentity)
{
    ReadSome({}, tabs, odd, tabWidth, document, lastIdentity);
}

void StoredLines::ReadSome(const std::vector<bool>& which, const std::vector<TabPlace>& tabs,
                           const std::vector<OddEnd>& odd, int32_t tabWidth, SourceDocument& document,
                           int32_t& lastIdentity)
{
    Known known = known_ ? *known_ : Known();
    std::vector<Line> read;
    Text scratch;
    auto tab = tabs.begin();
    auto end = odd.begin();
    for (int32_t line = 0; line < document.LineCount(); ++line) {
        if (Empty()) { // nothing to find in the lines between
            if (tab == tabs.end() && end == odd.end()) break;
            line = std::min(tab == tabs.end() ? end->line : tab->line, end == odd.end() ? tab->line : end->line);
        }
        if (!which.empty() && !which[static_cast<size_t>(line)]) continue;
        const bool ownEnd = end != odd.end() && end->line == line;
        const bool plain = !ownEnd && (tab == tabs.end() || tab->line != line);
        auto identity = static_cast<int32_t>(document.GetLineData(line, LineWord::Identity));
        if (plain && !(known_ && known_->Knows(static_cast<uint32_t>(identity)))) continue;
        if (identity == 0) {
            if (lastIdentity == std::numeric_limits<int32_t>::max()) break;
            identity = ++lastIdentity;
            document.SetLineData(line, LineWord::Identity, static_cast<uint32_t>(identity));
        }
        read.push_back({identity, std::max(tabWidth, 1), HashOf(document.LineText(line, scratch)), known.columns.size(),
                        0, std::nullopt});
        for (; tab != tabs.end() && tab->line == line; ++tab, ++read.back().tabs) known.columns.push_back(tab->column);
        if (ownEnd) read.back().end = (end++)->end;
        known.anyEnd = known.anyEnd || ownEnd;
    }
    known.Take(std::move(read));
    if (!known.lines.empty()) known_ = std::make_shared<Known>(std::move(known));
}

void StoredLines::Known::Take(std::vector<Line> read)
{
    const auto key = [](const Line& line) { return std::pair(line.identity, line.shown); };
    read.insert(read.end(), lines.begin(), lines.end());
    std::stable_sort(read.begin(), read.end(), [&](const Line& a, const Line& b) { return key(a) < key(b); });
    const auto same = [&](const Line& a, const Line& b) { return key(a) == key(b); };
    read.erase(std::unique(read.begin(), read.end(), same), read.end());
    lines = std::move(read);
}

bool StoredLines::Known::Knows(uint32_t identity) const
{
    if (identity == 0) return false;
    const auto wanted = static_cast<int32_t>(identity);
    const auto found =
        std::partition_point(lines.begin(), lines.end(), [&](const Line& line) { return line.identity < wanted; });
    return found != lines.end() && found->identity == wanted;
}

const StoredLines::Line* StoredLines::Known::Find(const LineRecord& record, Text& shown) const
{
    const uint32_t identity = record.words[static_cast<size_t>(LineWord::Identity)];
    if (!Knows(identity)) return nullptr;
    shown.clear();
    record.Units().AppendTo(shown);
    const std::pair wanted(static_cast<int32_t>(identity), HashOf(shown));
    const auto found = std::partition_point(
        lines.begin(), lines.end(), [&](const Line& line) { return std::pair(line.identity, line.shown) < wanted; });
    const bool there = found != lines.end() && std::pair(found->identity, found->shown) == wanted;
    return there ? &*found : nullptr;
}

void StoredLines::Known::AppendStored(const Line& line, TextView shown, Text& out) const
{
    size_t done = 0;
    for (int32_t tab = 0; tab < line.tabs; ++tab) {
        const auto column = static_cast<size_t>(columns[line.firstTab + static_cast<size_t>(tab)]);
        out.append(shown.substr(done, column - done)).push_back(u'\t');
        done = column + static_cast<size_t>(line.tabWidth);
    }
    out.append(shown.substr(done));
}

LinewiseText StoredLines::Written(std::shared_ptr<const TextSnapshot> text) const
{
    LinewiseText lines = AsLines(text);
    if (Empty()) return lines;
    lines.walk = [known = known_, text = std::move(text)](const LinewiseText::Visit& visit) {
        Text shown;
        Text stored;
        text->ForEachLine([&](const LineRecord& record) {
            const Line* line = known->Find(record, shown);
            if (!line || line->tabs == 0) return visit(record.Units());
            stored.clear();
            known->AppendStored(*line, shown, stored);
            visit({stored.data(), stored.size(), true});
        });
    };
    return lines;
}

void StoredLines::ForgetEnds()
{
    if (!AnyOddEnd()) return;
    auto known = std::make_shared<Known>(*known_);
    known->anyEnd = false;
    for (Line& line : known->lines) line.end.reset();
    known_ = std::move(known);
}

std::vector<OddEnd> StoredLines::OddEnds(const TextSnapshot& text) const
{
    std::vector<OddEnd> odd;
    if (Empty() || !known_->anyEnd) return odd;
    Text shown;
    int32_t number = 0;
    text.ForEachLine([&](const LineRecord& record) {
        const Line* line = known_->Find(record, shown);
        if (line && line->end) odd.push_back({number, *line->end});
        ++number;
    });
    return odd;
}

void StoredLines::Keep(SourceDocument& document, const std::function<void()>& replace) const
{
    if (Empty()) return replace();
    const Text before = document.GetText();
    const std::vector<uint32_t> identities = IdentitiesOf(document);
    replace();
    const std::vector<int32_t> places = LinePlaces(before, document.GetText());
    for (size_t line = 0; line < identities.size(); ++line)
        if (places[line] >= 0) document.SetLineData(places[line], LineWord::Identity, identities[line]);
}

} // namespace nib
