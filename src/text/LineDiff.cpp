#include "text/LineDiff.h"

#include "text/SourceDocument.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

namespace nib {

namespace {

/// Edits of a stretch that are looked for before the best way so far is taken.
constexpr int32_t kMostEdits = 300;
/// Lines that stay the lines that they were although their text becomes another; more of them are replaced as one.
constexpr int32_t kMostKept = 1000;

/// A stretch of both texts, ends excluded.
struct Stretch {
    int32_t a;
    int32_t aEnd;
    int32_t b;
    int32_t bEnd;

    bool OneIsEmpty() const { return a == aEnd || b == bEnd; }
};

/// Furthest places reached on each diagonal (a - b), from one end of a stretch.
class Front {
public:
    Front(int32_t lowest, int32_t highest)
        : offset_(1 - int64_t{lowest}), reached_(static_cast<size_t>(int64_t{highest} - lowest + 3)), lowest_(lowest),
          highest_(highest)
    {
    }
    int32_t& operator[](int32_t diagonal) { return reached_[static_cast<size_t>(offset_ + diagonal)]; }
    void Start(int32_t diagonal, int32_t at)
    {
        first = last = diagonal;
        (*this)[diagonal] = at;
    }
    /// One diagonal more to either side, as far as there are any; `outside` is worse than any place.
    void Widen(int32_t outside)
    {
        if (first > lowest_)
            (*this)[--first - 1] = outside;
        else
            ++first;
        if (last < highest_)
            (*this)[++last + 1] = outside;
        else
            --last;
    }
    bool Holds(int32_t diagonal) const { return diagonal >= first && diagonal <= last; }

    int32_t first = 0;
    int32_t last = 0;

private:
    int64_t offset_;
    std::vector<int32_t> reached_;
    int32_t lowest_;
    int32_t highest_;
};

/// The shortest way from one list of numbers to the other, found from both ends at once, which takes little memory.
class Comparison {
public:
    Comparison(std::vector<int32_t> before, std::vector<int32_t> after)
        : a_(std::move(before)), b_(std::move(after)), gone_(a_.size()), come_(b_.size())
    {
        Compare({0, static_cast<int32_t>(a_.size()), 0, static_cast<int32_t>(b_.size())});
    }

    std::vector<LineHunk> Hunks() const
    {
        std::vector<LineHunk> hunks;
        size_t a = 0;
        size_t b = 0;
        while (a < gone_.size() || b < come_.size()) {
            const size_t a0 = a;
            const size_t b0 = b;
            while (a < gone_.size() && gone_[a]) ++a;
            while (b < come_.size() && come_[b]) ++b;
            if (a > a0 || b > b0) {
                hunks.push_back({static_cast<int32_t>(a0), static_cast<int32_t>(a - a0), static_cast<int32_t>(b0),
                                 static_cast<int32_t>(b - b0)});
                continue;
            }
            ++a;
            ++b;
        }
        return hunks;
    }

private:
    bool Same(int32_t a, int32_t b) const { return a_[static_cast<size_t>(a)] == b_[static_cast<size_t>(b)]; }

    void Compare(Stretch s)
    {
        for (;;) {
            while (!s.OneIsEmpty() && Same(s.a, s.b)) ++s.a, ++s.b;
            while (!s.OneIsEmpty() && Same(s.aEnd - 1, s.bEnd - 1)) --s.aEnd, --s.bEnd;
            if (s.OneIsEmpty()) break;
            const auto [a, b] = Middle(s);
            Compare({s.a, a, s.b, b});
            s.a = a;
            s.b = b;
        }
        std::fill(gone_.begin() + s.a, gone_.begin() + s.aEnd, true);
        std::fill(come_.begin() + s.b, come_.begin() + s.bEnd, true);
    }

    /// A place that the shortest way goes through, neither of the corners.
    std::pair<int32_t, int32_t> Middle(const Stretch& s) const
    {
        Front forward(s.a - s.bEnd, s.aEnd - s.b);
        Front backward(s.a - s.bEnd, s.aEnd - s.b);
        forward.Start(s.a - s.b, s.a);
        backward.Start(s.aEnd - s.bEnd, s.aEnd);
        const bool odd = ((forward.first - backward.first) & 1) != 0;
        for (int32_t edits = 1;; ++edits) {
            forward.Widen(-1);
            for (int32_t d = forward.last; d >= forward.first; d -= 2) {
                int32_t a = std::max(forward[d - 1] + 1, forward[d + 1]);
                while (a < s.aEnd && a - d < s.bEnd && Same(a, a - d)) ++a;
                forward[d] = a;
                if (odd && backward.Holds(d) && backward[d] <= a) return {a, a - d};
            }
            backward.Widen(std::numeric_limits<int32_t>::max());
            for (int32_t d = backward.last; d >= backward.first; d -= 2) {
                int32_t a = std::min(backward[d - 1], backward[d + 1] - 1);
                while (a > s.a && a - d > s.b && Same(a - 1, a - d - 1)) --a;
                backward[d] = a;
                if (!odd && forward.Holds(d) && a <= forward[d]) return {a, a - d};
            }
            if (edits >= kMostEdits) return Furthest(forward, s);
        }
    }

    static std::pair<int32_t, int32_t> Furthest(Front& forward, const Stretch& s)
    {
        std::pair<int32_t, int32_t> best{s.a, s.b};
        for (int32_t d = forward.last; d >= forward.first; d -= 2) {
            const int32_t a = std::min(forward[d], s.aEnd);
            const int32_t b = a - d;
            if (b <= s.bEnd && a + b > best.first + best.second) best = {a, b};
        }
        return best;
    }

    std::vector<int32_t> a_;
    std::vector<int32_t> b_;
    std::vector<bool> gone_;
    std::vector<bool> come_;
};

/// Equal lines, equal numbers.
class Numbers {
public:
    std::vector<int32_t> Of(const std::vector<TextView>& lines)
    {
        std::vector<int32_t> numbers;
        numbers.reserve(lines.size());
        for (TextView line : lines)
            numbers.push_back(known_.try_emplace(line, static_cast<int32_t>(known_.size())).first->second);
        return numbers;
    }

private:
    std::unordered_map<TextView, int32_t> known_;
};

/// Only what differs between its ends is touched, so that the caret and marks in the rest stay.
void ReplaceLine(SourceDocument& document, int32_t line, TextView text)
{
    const Text old = document.GetLine(line);
    const size_t shorter = std::min(old.size(), text.size());
    size_t head = 0;
    while (head < shorter && old[head] == text[head]) ++head;
    size_t tail = 0;
    while (tail < shorter - head && old[old.size() - 1 - tail] == text[text.size() - 1 - tail]) ++tail;
    const Position start{static_cast<int32_t>(head), line};
    document.DeleteRange(start, {static_cast<int32_t>(old.size() - tail), line});
    document.InsertText(start, text.substr(head, text.size() - head - tail));
}

void ReplaceHunk(SourceDocument& document, const LineHunk& hunk, const std::vector<TextView>& lines)
{
    const auto at = [&](int32_t n) { return lines[static_cast<size_t>(int64_t{hunk.newLine} + n)]; };
    const int32_t both = std::min(hunk.oldCount, hunk.newCount);
    const int32_t end = hunk.oldLine + hunk.oldCount;
    const int32_t rest = hunk.oldLine + both;
    Text more;
    if (end < document.LineCount()) {
        for (int32_t n = both; n < hunk.newCount; ++n) more.append(at(n)).append(u"\r\n");
        document.DeleteRange({0, rest}, {0, end});
        document.InsertText({0, rest}, more);
    } else {
        // Behind the last line there is no break to go with it. Some line is left: no text has none.
        const Position from{document.LineLength(rest - 1), rest - 1};
        for (int32_t n = both; n < hunk.newCount; ++n) more.append(u"\r\n").append(at(n));
        document.DeleteRange(from, document.End());
        document.InsertText(from, more);
    }
    for (int32_t n = 0; n < both; ++n) ReplaceLine(document, hunk.oldLine + n, at(n));
}

} // namespace

std::vector<LineHunk> DiffLines(const std::vector<TextView>& before, const std::vector<TextView>& after)
{
    Numbers numbers;
    std::vector<int32_t> a = numbers.Of(before);
    return Comparison(std::move(a), numbers.Of(after)).Hunks();
}

std::vector<int32_t> LinePlaces(TextView before, TextView after)
{
    const std::vector<TextView> lines = LinesOf(before);
    std::vector<int32_t> places(lines.size(), -1);
    int32_t from = 0;
    int32_t to = 0;
    const auto same = [&](int32_t end) {
        for (; from < end; ++from, ++to) places[static_cast<size_t>(from)] = to;
    };
    for (const LineHunk& hunk : DiffLines(lines, LinesOf(after))) {
        same(hunk.oldLine);
        from = hunk.oldLine + hunk.oldCount;
        to = hunk.newLine + hunk.newCount;
    }
    same(static_cast<int32_t>(lines.size()));
    return places;
}

std::vector<TextView> LinesOf(TextView text)
{
    std::vector<TextView> lines;
    for (;;) {
        const size_t end = text.find_first_of(u"\r\n");
        lines.push_back(text.substr(0, end));
        if (end == TextView::npos) return lines;
        text.remove_prefix(end + (text.substr(end, 2) == u"\r\n" ? 2 : 1));
    }
}

void ReplaceLines(SourceDocument& document, LineHunk hunk, std::vector<TextView> lines)
{
    if (hunk.newCount == 0 && hunk.oldCount == document.LineCount()) {
        lines = {TextView()}; // no text has no line
        hunk.newLine = 0;
        hunk.newCount = 1;
    }
    document.BreakTyping();
    document.BeginGroup();
    if (std::min(hunk.oldCount, hunk.newCount) > kMostKept) {
        ReplaceHunk(document, {hunk.oldLine + 1, hunk.oldCount - 1, 0, 0}, {});
        hunk.oldCount = 1;
    }
    ReplaceHunk(document, hunk, lines);
    document.EndGroup();
    document.BreakTyping();
}

bool ReplaceByLines(SourceDocument& document, TextView text)
{
    const Text old = document.GetText();
    const std::vector<TextView> lines = LinesOf(text);
    const std::vector<LineHunk> hunks = DiffLines(LinesOf(old), lines);
    if (hunks.empty()) return false;
    document.BreakTyping();
    document.BeginGroup();
    for (auto hunk = hunks.rbegin(); hunk != hunks.rend(); ++hunk) ReplaceHunk(document, *hunk, lines);
    document.EndGroup();
    return true;
}

} // namespace nib
