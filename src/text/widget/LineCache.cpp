#include "text/widget/LineCache.h"

#include <algorithm>

namespace nib {

namespace {

/// More than any screen shows.
constexpr size_t kMostEntries = 1000;

} // namespace

int32_t LineEntry::FromShown(int32_t column) const
{
    if (preeditAt < 0 || column <= preeditAt) return column;
    return std::max(column - preeditLength, preeditAt);
}

void LineCache::SetWrapWidth(qreal width)
{
    if (width == wrapWidth_) return;
    wrapWidth_ = width;
    Clear();
}

void LineCache::SetPreedit(Position at, TextView text)
{
    Invalidate(preeditAt_.line, preeditAt_.line);
    preeditAt_ = at;
    preedit_ = text;
    Invalidate(at.line, at.line);
}

TextView LineCache::ShownText(int32_t line)
{
    TextView text = document_.LineText(line, scratch_);
    if (preedit_.empty() || line != preeditAt_.line) return text;
    auto at = std::min(static_cast<size_t>(preeditAt_.col), text.size());
    composed_.assign(text.substr(0, at)).append(preedit_).append(text.substr(at));
    return composed_;
}

LineEntry& LineCache::Find(int32_t line)
{
    auto found = entries_.find(line);
    if (found != entries_.end()) return *found->second;
    if (entries_.size() >= kMostEntries) entries_.clear();
    return *entries_.emplace(line, std::make_unique<LineEntry>()).first->second;
}

void LineCache::LayOut(int32_t line, LineEntry& entry)
{
    TextView text = ShownText(line);
    bool composing = !preedit_.empty() && line == preeditAt_.line;
    entry.preeditAt = composing ? preeditAt_.col : -1;
    entry.preeditLength = composing ? static_cast<int32_t>(preedit_.size()) : 0;
    if (LineLayout::NeedsShaping(text, metrics_)) {
        entry.layout.BuildShaped(text, entry.styled ? Formats(entry.tokens) : QList<QTextLayout::FormatRange>(),
                                 metrics_, wrapWidth_);
    } else {
        entry.layout.BuildCells(text, metrics_, wrapWidth_);
    }
    entry.laidOut = true;
}

LineEntry& LineCache::Measured(int32_t line)
{
    LineEntry& entry = Find(line);
    if (!entry.laidOut) LayOut(line, entry);
    return entry;
}

LineEntry& LineCache::Styled(int32_t line)
{
    LineEntry& entry = Find(line);
    if (!entry.styled) {
        // Scanning tells of changed lines, this one among them; what counts as built is settled after it.
        document_.ScanLine(line, entry.tokens);
        document_.Look(document_.LineText(line, scratch_), entry.tokens);
        bool wasLaidOut = entry.laidOut;
        if (!wasLaidOut) LayOut(line, entry);
        MakeRoomForPreedit(entry);
        entry.styled = true;
        if (entry.layout.Shaped()) LayOut(line, entry);
    }
    return entry;
}

void LineCache::MakeRoomForPreedit(LineEntry& entry) const
{
    if (entry.preeditAt < 0) return;
    for (Token& token : entry.tokens) {
        if (token.start >= entry.preeditAt) {
            token.start += entry.preeditLength;
        } else if (token.start + token.length > entry.preeditAt) {
            token.length += entry.preeditLength;
        }
    }
}

QList<QTextLayout::FormatRange> LineCache::Formats(const std::vector<Token>& tokens) const
{
    QList<QTextLayout::FormatRange> formats;
    formats.reserve(static_cast<qsizetype>(tokens.size()));
    for (const Token& token : tokens) {
        if (token.type == 0) continue;
        ScreenStyle style = colors_.Style(token.type);
        QTextLayout::FormatRange range;
        range.start = token.start;
        range.length = token.length;
        range.format.setFont(metrics_.StyledFont(style.style));
        range.format.setForeground(style.color);
        formats.append(range);
    }
    return formats;
}

void LineCache::Invalidate(int32_t first, int32_t last)
{
    const auto forget = [](LineEntry& entry) { entry.laidOut = entry.styled = false; };
    // A command on many lines comes here for each of them.
    if (int64_t{last} - first < static_cast<int64_t>(entries_.size())) {
        for (int32_t line = first; line <= last; ++line)
            if (const auto found = entries_.find(line); found != entries_.end()) forget(*found->second);
        return;
    }
    for (auto& [line, entry] : entries_)
        if (line >= first && line <= last) forget(*entry);
}

} // namespace nib
