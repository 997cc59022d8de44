#include "compare/WordDifferences.h"

#include "compare/LineNumbers.h"
#include "text/LineDiff.h"

#include <algorithm>

namespace nib {

namespace {

/// Longer lines are compared by their ends.
constexpr size_t kLongest = 4000;
/// Lines of one side times those of the other that are looked at one by one.
constexpr size_t kMostPairs = 4000;
/// Lines as like as that are one line that was changed.
constexpr double kLike = 0.5;
constexpr double kLittle = 0.25;

bool IsSpace(char16_t c)
{
    return c == u' ' || c == u'\t';
}

size_t WordEnd(TextView line, size_t at)
{
    const auto kind = [&](char16_t c) { return IsWordUnit(c) ? 1 : IsSpace(c) ? 2 : 0; };
    const int first = kind(line[at]);
    if (first == 0) return static_cast<size_t>(NextGrapheme(line, static_cast<int32_t>(at)));
    while (at < line.size() && kind(line[at]) == first) ++at;
    return at;
}

/// Words, runs of blanks, and single other characters.
std::vector<TextView> WordsOf(TextView line)
{
    std::vector<TextView> words;
    for (size_t at = 0; at < line.size();) {
        const size_t end = std::max(WordEnd(line, at), at + 1);
        words.push_back(line.substr(at, end - at));
        at = end;
    }
    return words;
}

/// What is left of both without their common ends.
void CutEnds(TextView left, TextView right, ColumnRange& l, ColumnRange& r)
{
    const size_t shorter = std::min(left.size(), right.size());
    size_t head = 0;
    while (head < shorter && left[head] == right[head]) ++head;
    size_t tail = 0;
    while (tail < shorter - head && left[left.size() - 1 - tail] == right[right.size() - 1 - tail]) ++tail;
    const auto cut = [&](TextView text, ColumnRange& range) {
        const int32_t from = GraphemeStart(text, static_cast<int32_t>(head));
        const auto end = static_cast<int32_t>(text.size() - tail);
        const int32_t to = GraphemeStart(text, end) == end ? end : NextGrapheme(text, end);
        range = {range.first + from, range.first + std::max(from, to)};
    };
    cut(left, l);
    cut(right, r);
}

void AddRange(std::vector<ColumnRange>& ranges, ColumnRange range)
{
    if (range.first >= range.last) return;
    if (!ranges.empty() && ranges.back().last == range.first)
        ranges.back().last = range.last;
    else
        ranges.push_back(range);
}

bool IsAll(TextView text, bool (*kind)(char16_t))
{
    return std::all_of(text.begin(), text.end(), kind);
}

/// Characters that are no blanks.
int64_t Ink(TextView text)
{
    return static_cast<int64_t>(text.size()) - std::count_if(text.begin(), text.end(), IsSpace);
}

TextView Piece(TextView line, ColumnRange at)
{
    return line.substr(static_cast<size_t>(at.first), static_cast<size_t>(at.last - at.first));
}

/// At its ends.
ColumnRange WithoutBlanks(TextView line, ColumnRange range)
{
    const auto blank = [&](int32_t column) { return IsSpace(line[static_cast<size_t>(column)]); };
    while (range.first < range.last && blank(range.first)) ++range.first;
    while (range.first < range.last && blank(range.last - 1)) --range.last;
    return range;
}

/// A line's words as they are compared, and where they stand.
class Words {
public:
    Words(TextView line, const CompareOptions& options) : end_(static_cast<int32_t>(line.size()))
    {
        for (TextView word : WordsOf(line)) {
            starts_.push_back(static_cast<int32_t>(word.data() - line.data()));
            texts_.push_back(options.blanks && IsSpace(word[0])
                                 ? Text(u" ")
                                 : ComparedForm(word, {false, options.letterCase, false}));
        }
    }
    std::vector<TextView> Compared() const { return {texts_.begin(), texts_.end()}; }
    ColumnRange Columns(int32_t word, int32_t count) const { return {ColumnOf(word), ColumnOf(word + count)}; }

private:
    int32_t ColumnOf(int32_t word) const
    {
        const auto n = static_cast<size_t>(word);
        return n < starts_.size() ? starts_[n] : end_;
    }

    std::vector<Text> texts_;
    std::vector<int32_t> starts_;
    int32_t end_;
};

/// How much of two lines is the same, 0 to 1, by their words without regard to order.
class Likeness {
public:
    explicit Likeness(TextView line)
    {
        for (TextView word : WordsOf(line)) {
            if (IsSpace(word[0])) continue;
            words_.push_back(word);
            units_ += word.size();
        }
        std::sort(words_.begin(), words_.end());
    }
    double With(const Likeness& other) const
    {
        if (units_ + other.units_ == 0) return 1;
        size_t same = 0;
        for (auto a = words_.begin(), b = other.words_.begin(); a != words_.end() && b != other.words_.end();) {
            if (*a == *b) {
                same += a->size();
                ++a, ++b;
            } else if (*a < *b) {
                ++a;
            } else {
                ++b;
            }
        }
        return 2.0 * static_cast<double>(same) / static_cast<double>(units_ + other.units_);
    }

private:
    std::vector<TextView> words_;
    size_t units_ = 0;
};

/// Like lines in the order of both, so that they are as like as can be all together.
std::vector<LinePair> LikePairs(const std::vector<TextView>& left, const std::vector<TextView>& right)
{
    const std::vector<Likeness> l(left.begin(), left.end());
    const std::vector<Likeness> r(right.begin(), right.end());
    const size_t wide = r.size() + 1;
    std::vector<double> like((l.size() + 1) * wide);
    std::vector<double> best(like.size());
    for (size_t i = l.size(); i-- > 0;) {
        for (size_t j = r.size(); j-- > 0;) {
            const size_t at = i * wide + j;
            like[at] = l[i].With(r[j]);
            best[at] = std::max(best[at + wide], best[at + 1]);
            if (like[at] >= kLike) best[at] = std::max(best[at], best[at + wide + 1] + like[at]);
        }
    }
    std::vector<LinePair> pairs;
    for (size_t i = 0, j = 0; i < l.size() && j < r.size();) {
        const size_t at = i * wide + j;
        if (like[at] >= kLike && best[at] == best[at + wide + 1] + like[at])
            pairs.push_back({static_cast<int32_t>(i++), static_cast<int32_t>(j++)});
        else if (best[at] == best[at + wide])
            ++i;
        else
            ++j;
    }
    return pairs;
}

} // namespace

WordDifferences CompareWords(TextView left, TextView right, const CompareOptions& options)
{
    WordDifferences found;
    if (ComparedForm(left, options) == ComparedForm(right, options)) return found;
    if (left.size() > kLongest || right.size() > kLongest) {
        found = {{{0, static_cast<int32_t>(left.size())}}, {{0, static_cast<int32_t>(right.size())}}};
        CutEnds(left, right, found.left[0], found.right[0]);
        return found;
    }
    const Words l(left, options);
    const Words r(right, options);
    int64_t changed = 0;
    for (const LineHunk& hunk : DiffLines(l.Compared(), r.Compared())) {
        ColumnRange was = l.Columns(hunk.oldLine, hunk.oldCount);
        ColumnRange is = r.Columns(hunk.newLine, hunk.newCount);
        const TextView wasText = Piece(left, was);
        const TextView isText = Piece(right, is);
        changed += Ink(wasText) + Ink(isText);
        if (!wasText.empty() && !isText.empty() && IsAll(wasText, IsWordUnit) && IsAll(isText, IsWordUnit))
            CutEnds(wasText, isText, was, is);
        if (options.blanks) {
            was = WithoutBlanks(left, was);
            is = WithoutBlanks(right, is);
        }
        AddRange(found.left, was);
        AddRange(found.right, is);
    }
    const auto all = static_cast<double>(Ink(left) + Ink(right));
    if (all - static_cast<double>(changed) >= kLittle * all) return found;
    found = {};
    AddRange(found.left, {0, static_cast<int32_t>(left.size())});
    AddRange(found.right, {0, static_cast<int32_t>(right.size())});
    return found;
}

std::vector<LinePair> PairLines(const std::vector<TextView>& left, const std::vector<TextView>& right)
{
    std::vector<LinePair> like;
    if (left.size() != 1 || right.size() != 1)
        if (left.size() * right.size() <= kMostPairs) like = LikePairs(left, right);
    like.push_back({static_cast<int32_t>(left.size()), static_cast<int32_t>(right.size())});
    std::vector<LinePair> rows;
    LinePair at{0, 0};
    for (const LinePair& pair : like) {
        while (at.left < pair.left || at.right < pair.right)
            rows.push_back({at.left < pair.left ? at.left++ : -1, at.right < pair.right ? at.right++ : -1});
        rows.push_back(pair);
        at = {pair.left + 1, pair.right + 1};
    }
    rows.pop_back();
    return rows;
}

} // namespace nib
