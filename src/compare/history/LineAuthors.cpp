#include "compare/history/LineAuthors.h"

#include <algorithm>
#include <numeric>

namespace nib {

namespace {

/// So far back nobody looks line by line.
constexpr int32_t kMostSteps = 20000;

int32_t CountLines(std::string_view bytes)
{
    return static_cast<int32_t>(std::count(bytes.begin(), bytes.end(), '\n'));
}

/// Calls same(older, newer, count) for the stretches of lines, 0-based, that two texts have in common.
template <typename Same>
void ForEachSame(const GitLibrary& git, std::string_view older, std::string_view newer, Same&& same)
{
    int32_t left = 0;
    int32_t right = 0;
    git.ForEachHunk(older, newer, [&](const GitHunk& hunk) {
        same(left, right, hunk.right - right);
        left = hunk.left + hunk.leftCount;
        right = hunk.right + hunk.rightCount;
    });
    same(left, right, CountLines(newer) - right);
}

} // namespace

LineAuthors::LineAuthors(const VersionRepository& repository, const std::string& tip)
    : repository_(repository), tip_(tip)
{
    if (!repository.IsComparable(tip)) return;
    bytes_ = repository.Bytes(tip);
    left_ = static_cast<size_t>(CountLines(bytes_));
    lines_.assign(left_, -1);
    open_.resize(left_);
    std::iota(open_.begin(), open_.end(), 0);
    if (auto found = repository.List(tip, 1); !found.empty()) next_ = std::move(found.front());
}

bool LineAuthors::Step()
{
    if (left_ == 0 || next_.id.empty()) return false;
    auto before = repository_.List(next_.parent, ++steps_ < kMostSteps ? 1 : 0);
    if (!before.empty() && !repository_.IsComparable(before.front().id)) before.clear();
    std::string bytes = before.empty() ? std::string() : repository_.Bytes(before.front().id);
    std::vector<int32_t> older(static_cast<size_t>(CountLines(bytes)), -1);
    ForEachSame(git_, bytes, bytes_, [&](int32_t from, int32_t to, int32_t many) {
        std::swap_ranges(older.begin() + from, older.begin() + from + many, open_.begin() + to);
    });
    // What was not handed on came with this version.
    const auto number = static_cast<int32_t>(versions_.size());
    const size_t found = left_;
    for (int32_t line : open_) {
        if (line < 0) continue;
        lines_[static_cast<size_t>(line)] = number;
        --left_;
    }
    if (left_ < found) versions_.push_back(next_);
    open_ = std::move(older);
    bytes_ = std::move(bytes);
    next_ = before.empty() ? Version() : std::move(before.front());
    return left_ > 0 && !next_.id.empty();
}

std::vector<int32_t> LineAuthors::LinesOf(std::string_view bytes) const
{
    std::vector<int32_t> lines(static_cast<size_t>(CountLines(bytes)), -1);
    if (bytes.size() > kLargestCompared || lines_.empty()) return lines;
    ForEachSame(git_, repository_.Bytes(tip_), bytes, [&](int32_t from, int32_t to, int32_t many) {
        std::copy_n(lines_.begin() + from, many, lines.begin() + to);
    });
    return lines;
}

} // namespace nib
