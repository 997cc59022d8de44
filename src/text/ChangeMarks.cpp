#include "text/ChangeMarks.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace nib {

namespace {

constexpr size_t kAtOnce = 8;

uint64_t Mixed(uint64_t sum, uint64_t with)
{
    sum = (sum ^ with) * 0x9E3779B97F4A7C15U;
    return sum ^ sum >> 32;
}

/// The same for the same units, whether they are stored in 8 bits or in 16.
uint64_t SumOfWide(uint64_t sum, const char16_t* units, size_t count)
{
    std::array<uint8_t, kAtOnce> low{};
    std::array<uint8_t, kAtOnce> high{};
    uint8_t any = 0;
    for (size_t i = 0; i < count; ++i) {
        low[i] = static_cast<uint8_t>(units[i]);
        high[i] = static_cast<uint8_t>(units[i] >> 8);
        any |= high[i];
    }
    uint64_t eight = 0;
    std::memcpy(&eight, low.data(), kAtOnce);
    sum = Mixed(sum, eight);
    if (any == 0) return sum;
    std::memcpy(&eight, high.data(), kAtOnce);
    return Mixed(~sum, eight);
}

uint64_t SumOf(const UnitSpan& text)
{
    uint64_t sum = text.length + 1;
    for (size_t at = 0; at < text.length; at += kAtOnce) {
        const size_t count = std::min(text.length - at, kAtOnce);
        if (text.wide) {
            sum = SumOfWide(sum, text.Wide() + at, count);
            continue;
        }
        uint64_t eight = 0;
        std::memcpy(&eight, text.Narrow() + at, count);
        sum = Mixed(sum, eight);
    }
    return sum;
}

/// Of a line that is longer than anybody reads, and that counts as changed once it was edited.
constexpr uint64_t kNoSum = 0;

uint64_t SumOf(const LineStore& lines, int32_t line)
{
    const UnitSpan text = lines.At(line).Units();
    return text.length > kLongestRead ? kNoSum : SumOf(text);
}

bool IsAsBefore(const LineStore& lines, int32_t line, uint64_t sum)
{
    return sum != kNoSum && SumOf(lines, line) == sum;
}

} // namespace

void LineDifferences::Clear()
{
    hunks_.clear();
    sums_ = {};
}

size_t LineDifferences::IndexAt(int32_t line) const
{
    auto at = std::partition_point(hunks_.begin(), hunks_.end(), [&](const Hunk& h) { return h.End() <= line; });
    return static_cast<size_t>(at - hunks_.begin());
}

void LineDifferences::BeforeEdit(const LineStore& lines, int32_t first, int32_t last)
{
    for (int32_t line = first; line <= last;) {
        size_t i = IndexAt(line);
        if (i < hunks_.size() && hunks_[i].first <= line) {
            line = hunks_[i].End();
            continue;
        }
        const int32_t end = i < hunks_.size() ? std::min(last + 1, hunks_[i].first) : last + 1;
        Hunk added{line, end - line, sums_.size(), end - line};
        const size_t needed = sums_.size() + static_cast<size_t>(added.count);
        // In ever larger steps: a sweep comes here for each of its lines.
        if (needed > sums_.capacity()) sums_.reserve(std::max(needed, 2 * sums_.capacity()));
        for (; line < end; ++line) sums_.push_back(SumOf(lines, line));
        // Lines that are edited one after the other come together.
        if (i > 0 && hunks_[i - 1].End() == added.first && hunks_[i - 1].IsByLines() &&
            hunks_[i - 1].sums + static_cast<size_t>(hunks_[i - 1].was) == added.sums) {
            hunks_[i - 1].count = hunks_[i - 1].was += added.count;
        } else {
            hunks_.insert(hunks_.begin() + static_cast<std::ptrdiff_t>(i), added);
        }
    }
}

void LineDifferences::LinesReplaced(const LineStore& lines, int32_t first, int32_t oldLast, int32_t newLast)
{
    const int32_t delta = newLast - oldLast;
    const size_t from = IndexAt(first);
    size_t to = from;
    while (to < hunks_.size() && hunks_[to].first <= oldLast) ++to;
    // What lies line by line is cut off at the edit's ends.
    const Hunk head = hunks_[from];
    const Hunk tail = hunks_[to - 1];
    const int32_t before = head.IsByLines() ? std::max(first - head.first, 0) : 0;
    const int32_t behind = tail.IsByLines() ? std::max(tail.End() - oldLast - 1, 0) : 0;
    Hunk middle{head.first + before, tail.End() - behind - head.first - before + delta, sums_.size(), 0};
    for (size_t i = from; i < to; ++i) {
        const size_t begin = hunks_[i].sums + static_cast<size_t>(i == from ? before : 0);
        const size_t end = hunks_[i].sums + static_cast<size_t>(hunks_[i].was - (i + 1 == to ? behind : 0));
        for (size_t at = begin; at < end; ++at) sums_.push_back(sums_[at]);
    }
    middle.was = static_cast<int32_t>(sums_.size() - middle.sums);
    for (size_t i = to; i < hunks_.size(); ++i) hunks_[i].first += delta;
    auto place = hunks_.erase(hunks_.begin() + static_cast<std::ptrdiff_t>(from),
                              hunks_.begin() + static_cast<std::ptrdiff_t>(to));
    if (behind > 0)
        place = hunks_.insert(
            place, {oldLast + 1 + delta, behind, tail.sums + static_cast<size_t>(tail.was - behind), behind});
    place = hunks_.insert(place, middle);
    if (before > 0) place = hunks_.insert(place, {head.first, before, head.sums, before}) + 1;
    Settle(lines, static_cast<size_t>(place - hunks_.begin()));
    Compact();
}

/// Joins it to the last one where neither is line by line, and leaves out what is again as it was.
void LineDifferences::Append(const LineStore& lines, std::vector<Hunk>& hunks, Hunk hunk)
{
    if (!hunk.IsByLines() && !hunks.empty() && !hunks.back().IsByLines() && hunks.back().End() == hunk.first) {
        const Hunk last = hunks.back();
        hunks.pop_back();
        const Hunk joined{last.first, last.count + hunk.count, sums_.size(), last.was + hunk.was};
        for (const Hunk& part : {last, hunk})
            for (size_t at = 0; at < static_cast<size_t>(part.was); ++at) sums_.push_back(sums_[part.sums + at]);
        hunk = joined;
    }
    if (!hunk.IsByLines()) Trim(hunk, lines);
    if (hunk.count > 0 || hunk.was > 0) hunks.push_back(hunk);
}

void LineDifferences::AllReplaced(const LineStore& lines, const std::vector<ReplacedLines>& all)
{
    std::vector<Hunk> hunks;
    hunks.reserve(hunks_.size() + 2 * all.size());
    size_t next = 0;
    int32_t delta = 0;
    const auto keep = [&](Hunk hunk) {
        hunk.first += delta;
        Append(lines, hunks, hunk);
    };
    for (size_t i = 0; i < all.size(); ++i) {
        const int32_t first = all[i].first;
        if (all[i].more == 0) continue;
        while (hunks_[next].End() <= first) keep(hunks_[next++]);
        // What is not line by line changes as a whole, with all that is replaced in it.
        size_t to = next;
        int32_t more = all[i].more;
        int32_t last = all[i].last;
        int32_t behind = 0;
        for (;; more += all[++i].more, last = std::max(last, all[i].last)) {
            while (to < hunks_.size() && hunks_[to].first <= last) ++to;
            const Hunk& tail = hunks_[to - 1];
            behind = tail.IsByLines() ? std::max(tail.End() - last - 1, 0) : 0;
            if (i + 1 == all.size() || all[i + 1].first >= tail.End() - behind) break;
        }
        const Hunk head = hunks_[next];
        const Hunk tail = hunks_[to - 1];
        const int32_t before = head.IsByLines() ? std::max(first - head.first, 0) : 0;
        if (before > 0) keep({head.first, before, head.sums, before});
        Hunk middle{head.first + before, tail.End() - behind - head.first - before + more, sums_.size(), 0};
        for (size_t at = next; at < to; ++at) {
            const size_t begin = hunks_[at].sums + static_cast<size_t>(at == next ? before : 0);
            const size_t end = hunks_[at].sums + static_cast<size_t>(hunks_[at].was - (at + 1 == to ? behind : 0));
            for (size_t sum = begin; sum < end; ++sum) sums_.push_back(sums_[sum]);
        }
        middle.was = static_cast<int32_t>(sums_.size() - middle.sums);
        keep(middle);
        delta += more;
        next = to;
        if (behind > 0) hunks_[--next] = {last + 1, behind, tail.sums + static_cast<size_t>(tail.was - behind), behind};
    }
    while (next < hunks_.size()) keep(hunks_[next++]);
    hunks_ = std::move(hunks);
    Compact();
}

/// What has come and what has gone side by side may be the same again.
void LineDifferences::Settle(const LineStore& lines, size_t i)
{
    Trim(hunks_[i], lines);
    for (size_t left : {i, i - 1}) {
        if (left + 1 >= hunks_.size() || left >= hunks_.size()) continue;
        Hunk& hunk = hunks_[left];
        const Hunk next = hunks_[left + 1];
        if (hunk.IsByLines() || next.IsByLines() || hunk.End() != next.first) continue;
        const Hunk joined{hunk.first, hunk.count + next.count, sums_.size(), hunk.was + next.was};
        for (const Hunk& part : {hunk, next})
            for (size_t at = 0; at < static_cast<size_t>(part.was); ++at) sums_.push_back(sums_[part.sums + at]);
        hunk = joined;
        Trim(hunk, lines);
        hunks_.erase(hunks_.begin() + static_cast<std::ptrdiff_t>(left) + 1);
        i = left;
    }
    if (hunks_[i].count == 0 && hunks_[i].was == 0) hunks_.erase(hunks_.begin() + static_cast<std::ptrdiff_t>(i));
}

/// Takes off at both ends what is again as it was.
void LineDifferences::Trim(Hunk& hunk, const LineStore& lines) const
{
    while (hunk.count > 0 && hunk.was > 0 && IsAsBefore(lines, hunk.first, sums_[hunk.sums])) {
        ++hunk.first;
        ++hunk.sums;
        --hunk.count;
        --hunk.was;
    }
    while (hunk.count > 0 && hunk.was > 0 &&
           IsAsBefore(lines, hunk.End() - 1, sums_[hunk.sums + static_cast<size_t>(hunk.was) - 1])) {
        --hunk.count;
        --hunk.was;
    }
}

/// Sums that no hunk has any more go when they are most of them.
void LineDifferences::Compact()
{
    constexpr size_t kFew = 4096;
    if (hunks_.empty()) return Clear();
    if (sums_.size() < kFew) return;
    size_t used = 0;
    for (const Hunk& hunk : hunks_) used += static_cast<size_t>(hunk.was);
    if (sums_.size() < 4 * used + kFew) return;
    std::vector<uint64_t> kept;
    kept.reserve(used);
    for (Hunk& hunk : hunks_) {
        const auto begin = sums_.begin() + static_cast<std::ptrdiff_t>(hunk.sums);
        hunk.sums = kept.size();
        kept.insert(kept.end(), begin, begin + hunk.was);
    }
    sums_ = std::move(kept);
}

bool LineDifferences::DiffersIn(const Hunk& hunk, const LineStore& lines, int32_t line) const
{
    return !hunk.IsByLines() || !IsAsBefore(lines, line, sums_[hunk.sums + static_cast<size_t>(line - hunk.first)]);
}

bool LineDifferences::Differs(const LineStore& lines, int32_t line) const
{
    const size_t i = IndexAt(line);
    return i < hunks_.size() && hunks_[i].first <= line && DiffersIn(hunks_[i], lines, line);
}

bool LineDifferences::LinesGoneAbove(int32_t line) const
{
    const size_t i = IndexAt(line);
    return i > 0 && hunks_[i - 1].first == line && hunks_[i - 1].count == 0;
}

int32_t LineDifferences::Next(const LineStore& lines, int32_t line) const
{
    if (LinesGoneAbove(line)) return line;
    for (size_t i = IndexAt(line); i < hunks_.size(); ++i) {
        const Hunk& hunk = hunks_[i];
        if (hunk.count == 0) return std::min(hunk.first, lines.Count() - 1);
        for (line = std::max(line, hunk.first); line < hunk.End(); ++line)
            if (DiffersIn(hunk, lines, line)) return line;
    }
    return -1;
}

void ChangeMarks::Reset()
{
    sinceSave_.Clear();
    sinceOpening_.Clear();
    wasSaved_ = all_ = saving_ = false;
    untouched_ = true;
}

void ChangeMarks::BeforeReset()
{
    stored_.BeforeReset(lines_);
    if (saving_) written_.BeforeReset(lines_);
}

void ChangeMarks::BackAtSaved()
{
    sinceSave_.Clear();
    stored_.Clear();
}

void ChangeMarks::Saved()
{
    stored_.Clear();
    // Of a text of which nothing was stored it is the opening.
    if (all_ || untouched_) return Reset();
    if (!wasSaved_) sinceOpening_ = std::move(sinceSave_);
    sinceSave_.Clear();
    wasSaved_ = true;
}

void ChangeMarks::BeginSaving()
{
    sinceSaving_.Clear();
    written_.Clear();
    saving_ = true;
}

void ChangeMarks::EndSaving(bool saved)
{
    const KeptText written = std::exchange(written_, {});
    if (!std::exchange(saving_, false) || !saved) return;
    Saved();
    stored_ = written;
    if (!sinceSaving_.Any()) return;
    sinceSave_ = std::exchange(sinceSaving_, {});
    untouched_ = false;
}

void ChangeMarks::BeforeAll(const std::vector<ReplacedLines>& all)
{
    for (const ReplacedLines& replaced : all) BeforeEdit(replaced.first, replaced.last);
    many_ = true;
}

void ChangeMarks::AllReplaced(const std::vector<ReplacedLines>& all)
{
    many_ = false;
    if (saving_) sinceSaving_.AllReplaced(lines_, all);
    if (all_) return;
    sinceSave_.AllReplaced(lines_, all);
    if (wasSaved_) sinceOpening_.AllReplaced(lines_, all);
}

void ChangeMarks::BeforeEdit(int32_t first, int32_t last)
{
    if (many_) return;
    untouched_ = false;
    stored_.BeforeEdit(lines_, first, last);
    if (saving_) {
        written_.BeforeEdit(lines_, first, last);
        sinceSaving_.BeforeEdit(lines_, first, last);
    }
    if (all_) return;
    sinceSave_.BeforeEdit(lines_, first, last);
    if (wasSaved_) sinceOpening_.BeforeEdit(lines_, first, last);
}

void ChangeMarks::LinesReplaced(int32_t first, int32_t oldLast, int32_t newLast)
{
    if (oldLast == newLast || many_) return;
    if (saving_) sinceSaving_.LinesReplaced(lines_, first, oldLast, newLast);
    if (all_) return;
    sinceSave_.LinesReplaced(lines_, first, oldLast, newLast);
    if (wasSaved_) sinceOpening_.LinesReplaced(lines_, first, oldLast, newLast);
}

LineMarks ChangeMarks::Of(int32_t line) const
{
    if (all_) return {LineChange::Unsaved};
    LineMarks marks;
    const auto mark = [&](const LineDifferences& differences, LineChange change) {
        if (differences.Differs(lines_, line)) marks.line = change;
        if (differences.LinesGoneAbove(line)) marks.goneAbove = change;
    };
    if (sinceOpening_.Any()) mark(sinceOpening_, LineChange::Saved);
    if (sinceSave_.Any()) mark(sinceSave_, LineChange::Unsaved);
    return marks;
}

int32_t ChangeMarks::Next(int32_t line, LineChange change) const
{
    if (all_) return change == LineChange::Unsaved ? line : -1;
    return (change == LineChange::Unsaved ? sinceSave_ : sinceOpening_).Next(lines_, line);
}

} // namespace nib
