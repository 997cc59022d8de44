#include "compare/TextDifferences.h"

#include "compare/GitLibrary.h"
#include "compare/LineNumbers.h"

#include <algorithm>
#include <functional>

namespace nib {

namespace {

/// Lines of both sides that are handed over to the library at once: it can neither be stopped nor held to a time.
constexpr int32_t kMostAtOnce = 120'000;
/// Of each side, where nothing tells where to cut.
constexpr int32_t kWindow = 40'000;
/// Beyond it the ends of stretches are not worth looking for lines that are in them once.
constexpr int kDeepest = 40;

/// Stretches of what is compared, ends excluded.
struct Stretch {
    int32_t left;
    int32_t leftEnd;
    int32_t right;
    int32_t rightEnd;

    bool OneIsEmpty() const { return left == leftEnd || right == rightEnd; }
    int32_t Size() const { return leftEnd - left + rightEnd - right; }
};

struct Pair {
    int32_t left;
    int32_t right;
};

class Comparison {
public:
    Comparison(const LineNumbers& numbers, const std::atomic<bool>* cancelled, std::chrono::milliseconds time)
        : numbers_(numbers), cancelled_(cancelled), end_(std::chrono::steady_clock::now() + time),
          seen_(static_cast<size_t>(numbers.Count()))
    {
    }

    /// False once cancelled.
    bool Run(Stretch all)
    {
        if (all.Size() > kMostAtOnce) return Compare(all, 0);
        ByLibrary(all);
        return true;
    }

    std::vector<Stretch> changes; ///< in order, apart
    bool coarse = false;

private:
    /// Where a line is that a stretch holds once on either side; -1 for none, -2 for several.
    struct Seen {
        int32_t left = -1;
        int32_t right = -1;
    };

    int32_t Left(int32_t n) const { return numbers_.left[static_cast<size_t>(n)]; }
    int32_t Right(int32_t n) const { return numbers_.right[static_cast<size_t>(n)]; }
    bool IsLate() const { return std::chrono::steady_clock::now() > end_; }

    void Add(const Stretch& change)
    {
        if (change.left == change.leftEnd && change.right == change.rightEnd) return;
        if (!changes.empty() && changes.back().leftEnd == change.left && changes.back().rightEnd == change.right) {
            changes.back().leftEnd = change.leftEnd;
            changes.back().rightEnd = change.rightEnd;
            return;
        }
        changes.push_back(change);
    }

    bool Compare(Stretch s, int depth)
    {
        if (cancelled_ && *cancelled_) return false;
        while (!s.OneIsEmpty() && Left(s.left) == Right(s.right)) ++s.left, ++s.right;
        while (!s.OneIsEmpty() && Left(s.leftEnd - 1) == Right(s.rightEnd - 1)) --s.leftEnd, --s.rightEnd;
        if (s.OneIsEmpty()) {
            Add(s);
            return true;
        }
        if (IsLate()) return GiveUp(s);
        if (s.Size() <= kMostAtOnce) {
            ByLibrary(s);
            return true;
        }
        bool shared = false;
        const std::vector<Pair> anchors = Anchors(s, shared);
        if (!shared) {
            Add(s);
            return true;
        }
        if (anchors.empty() || depth == kDeepest) return ByWindows(s);
        for (const Pair& anchor : anchors) {
            if ((anchor.left > s.left || anchor.right > s.right) &&
                !Compare({s.left, anchor.left, s.right, anchor.right}, depth + 1))
                return false;
            s.left = anchor.left + 1;
            s.right = anchor.right + 1;
        }
        return Compare(s, depth + 1);
    }

    /// Lines that all stand there many times: from the top down, as far as a piece of both shows. What the piece finds
    /// near its end may be due to that end.
    bool ByWindows(Stretch s)
    {
        while (s.Size() > kMostAtOnce) {
            if (cancelled_ && *cancelled_) return false;
            if (IsLate()) return GiveUp(s);
            const Stretch window{s.left, std::min(s.left + kWindow, s.leftEnd), s.right,
                                 std::min(s.right + kWindow, s.rightEnd)};
            Pair at{s.left, s.right};
            const Pair end{s.left + kWindow / 4 * 3, s.right + kWindow / 4 * 3};
            bool open = true;
            ForEachChange(window, [&](const Stretch& change) {
                if (!open) return;
                open = change.leftEnd <= end.left && change.rightEnd <= end.right;
                if (!open) {
                    at = {change.left, change.right};
                    return;
                }
                Add(change);
                at = {change.leftEnd, change.rightEnd};
            });
            // Behind the last change all is the same.
            if (open) {
                const int32_t same = std::max(std::min(end.left - at.left, end.right - at.right), 0);
                at = {at.left + same, at.right + same};
            }
            if (at.left == s.left || at.right == s.right) {
                at = {std::min(s.left + kWindow / 2, s.leftEnd), std::min(s.right + kWindow / 2, s.rightEnd)};
                coarse = true;
                Add({s.left, at.left, s.right, at.right});
            }
            s.left = at.left;
            s.right = at.right;
            if (s.OneIsEmpty()) break;
        }
        ByLibrary(s);
        return true;
    }

    bool GiveUp(const Stretch& s)
    {
        coarse = true;
        Add(s);
        return true;
    }

    /// Lines that either side holds once, as many as stand in the same order. `shared` tells whether any line is on
    /// both sides at all.
    std::vector<Pair> Anchors(const Stretch& s, bool& shared)
    {
        const auto note = [](int32_t& place, int32_t n) { place = place == -1 ? n : -2; };
        for (int32_t n = s.left; n < s.leftEnd; ++n) note(seen_[static_cast<size_t>(Left(n))].left, n);
        for (int32_t n = s.right; n < s.rightEnd; ++n) {
            Seen& seen = seen_[static_cast<size_t>(Right(n))];
            note(seen.right, n);
            shared = shared || seen.left != -1;
        }
        std::vector<Pair> once;
        for (int32_t n = s.left; n < s.leftEnd; ++n) {
            const Seen& seen = seen_[static_cast<size_t>(Left(n))];
            if (seen.left >= 0 && seen.right >= 0) once.push_back({seen.left, seen.right});
        }
        for (int32_t n = s.left; n < s.leftEnd; ++n) seen_[static_cast<size_t>(Left(n))] = {};
        for (int32_t n = s.right; n < s.rightEnd; ++n) seen_[static_cast<size_t>(Right(n))] = {};
        return LongestRise(once);
    }

    static std::vector<Pair> LongestRise(const std::vector<Pair>& pairs)
    {
        std::vector<size_t> tails;
        std::vector<size_t> before(pairs.size());
        for (size_t n = 0; n < pairs.size(); ++n) {
            auto place = tails.end();
            if (!tails.empty() && pairs[tails.back()].right > pairs[n].right)
                place = std::partition_point(tails.begin(), tails.end(),
                                             [&](size_t tail) { return pairs[tail].right < pairs[n].right; });
            before[n] = place == tails.begin() ? n : *(place - 1);
            if (place == tails.end())
                tails.push_back(n);
            else
                *place = n;
        }
        std::vector<Pair> rise(tails.size());
        for (size_t n = rise.size(), at = n ? tails.back() : 0; n > 0; at = before[at]) rise[--n] = pairs[at];
        return rise;
    }

    void ByLibrary(const Stretch& s)
    {
        ForEachChange(s, [this](const Stretch& change) { Add(change); });
    }

    void ForEachChange(const Stretch& s, const std::function<void(const Stretch& change)>& visit)
    {
        std::string left;
        std::string right;
        for (int32_t n = s.left; n < s.leftEnd; ++n) numbers_.AppendLine(Left(n), left);
        for (int32_t n = s.right; n < s.rightEnd; ++n) numbers_.AppendLine(Right(n), right);
        git_.ForEachHunk(left, right, [&](const GitHunk& hunk) {
            visit({s.left + hunk.left, s.left + hunk.left + hunk.leftCount, s.right + hunk.right,
                   s.right + hunk.right + hunk.rightCount});
        });
    }

    const LineNumbers& numbers_;
    const std::atomic<bool>* cancelled_;
    std::chrono::steady_clock::time_point end_;
    GitLibrary git_;
    std::vector<Seen> seen_;
};

/// Puts blocks together so that they cover both texts.
class Blocks {
public:
    Blocks(const ComparedLines& left, const ComparedLines& right) : left_(left), right_(right) {}

    /// The next lines that count are alike.
    void Same(int32_t left, int32_t right)
    {
        const int32_t l = left_.Place(left);
        const int32_t r = right_.Place(right);
        Pass(l, r);
        if (out_.empty() || out_.back().kind != BlockKind::Same) out_.push_back({BlockKind::Same, l, 0, r, 0});
        Take(1, 1);
    }
    void Change(const Stretch& change)
    {
        const bool anyLeft = change.left < change.leftEnd;
        const bool anyRight = change.right < change.rightEnd;
        Pass(anyLeft ? left_.Place(change.left) : atLeft_, anyRight ? right_.Place(change.right) : atRight_);
        const BlockKind kind = !anyRight ? BlockKind::LeftOnly : anyLeft ? BlockKind::Changed : BlockKind::RightOnly;
        out_.push_back({kind, atLeft_, 0, atRight_, 0});
        Take(anyLeft ? left_.Place(change.leftEnd - 1) + 1 - atLeft_ : 0,
             anyRight ? right_.Place(change.rightEnd - 1) + 1 - atRight_ : 0);
    }
    std::vector<LineBlock> Finish()
    {
        Pass(left_.count, right_.count);
        return std::move(out_);
    }

private:
    void Pass(int32_t left, int32_t right)
    {
        if (left == atLeft_ && right == atRight_) return;
        out_.push_back({BlockKind::Passed, atLeft_, 0, atRight_, 0});
        Take(left - atLeft_, right - atRight_);
    }
    void Take(int32_t left, int32_t right)
    {
        out_.back().leftCount += left;
        out_.back().rightCount += right;
        atLeft_ += left;
        atRight_ += right;
    }

    const ComparedLines& left_;
    const ComparedLines& right_;
    std::vector<LineBlock> out_;
    int32_t atLeft_ = 0;
    int32_t atRight_ = 0;
};

} // namespace

bool TextDifferences::AreSame() const
{
    return ChangeCount() == 0;
}

int32_t TextDifferences::ChangeCount() const
{
    return static_cast<int32_t>(std::count_if(blocks.begin(), blocks.end(), [](auto& b) { return b.IsChange(); }));
}

int64_t TextDifferences::LinesLeft() const
{
    int64_t lines = 0;
    for (const LineBlock& block : blocks) lines += block.IsChange() ? block.leftCount : 0;
    return lines;
}

int64_t TextDifferences::LinesRight() const
{
    int64_t lines = 0;
    for (const LineBlock& block : blocks) lines += block.IsChange() ? block.rightCount : 0;
    return lines;
}

std::optional<TextDifferences> CompareLines(const LinewiseText& left, const LinewiseText& right,
                                            const CompareOptions& options, const std::atomic<bool>* cancelled,
                                            std::chrono::milliseconds time)
{
    const ComparedLines leftLines = TakeLines(left, options, cancelled);
    const ComparedLines rightLines = TakeLines(right, options, cancelled);
    if (cancelled && *cancelled) return std::nullopt;
    const LineNumbers numbers(leftLines, rightLines);
    Comparison comparison(numbers, cancelled, time);
    if (!comparison.Run({0, leftLines.Size(), 0, rightLines.Size()})) return std::nullopt;
    Blocks blocks(leftLines, rightLines);
    int32_t l = 0;
    int32_t r = 0;
    for (const Stretch& change : comparison.changes) {
        while (l < change.left) blocks.Same(l++, r++);
        blocks.Change(change);
        l = change.leftEnd;
        r = change.rightEnd;
    }
    while (l < leftLines.Size()) blocks.Same(l++, r++);
    return TextDifferences{blocks.Finish(), comparison.coarse};
}

bool LooksBinary(const LinewiseText& text)
{
    constexpr size_t kLooked = 8000;
    size_t looked = 0;
    bool binary = false;
    text.walk([&](const UnitSpan& line) {
        for (size_t n = 0; n < line.length && looked < kLooked && !binary; ++n, ++looked) binary = line[n] == 0;
    });
    return binary;
}

} // namespace nib
