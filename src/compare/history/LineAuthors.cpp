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
template <typename Compare, typename Same>
bool ForEachSame(int32_t newerCount, Compare&& compare, Same&& same)
{
    int32_t older = 0;
    int32_t newer = 0;
    const bool done = compare([&](const git_diff_hunk& hunk) {
        const int32_t begin = hunk.new_start - (hunk.new_lines > 0 ? 1 : 0);
        same(older, newer, begin - newer);
        older += begin - newer + hunk.old_lines;
        newer = begin + hunk.new_lines;
    });
    if (done) same(older, newer, newerCount - newer);
    return done;
}

} // namespace

LineAuthors::LineAuthors(const VersionRepository& repository, const std::string& tip)
    : repository_(repository), tip_(tip), lines_(static_cast<size_t>(CountLines(repository.Bytes(tip))), -1),
      open_(lines_.size()), left_(lines_.size())
{
    std::iota(open_.begin(), open_.end(), 0);
    if (auto found = repository.List(tip, 1); !found.empty()) next_ = std::move(found.front());
}

bool LineAuthors::Step()
{
    if (left_ == 0 || next_.id.empty()) return false;
    const auto before = repository_.List(next_.parent, ++steps_ < kMostSteps ? 1 : 0);
    std::vector<int32_t> older;
    const auto count = static_cast<int32_t>(open_.size());
    const auto compare = [&](const VersionRepository::VisitHunk& visit) {
        if (before.empty()) return false;
        older.assign(static_cast<size_t>(CountLines(repository_.Bytes(before.front().id))), -1);
        return repository_.CompareVersions(before.front().id, next_.id, visit);
    };
    const bool compared = ForEachSame(count, compare, [&](int32_t from, int32_t to, int32_t many) {
        std::swap_ranges(older.begin() + from, older.begin() + from + many, open_.begin() + to);
    });
    // What was not handed on came with this version.
    const auto number = static_cast<int32_t>(versions_.size());
    bool any = false;
    for (int32_t line : open_) {
        if (line < 0) continue;
        lines_[static_cast<size_t>(line)] = number;
        any = true;
        --left_;
    }
    if (any) versions_.push_back(next_);
    open_ = std::move(older);
    next_ = compared ? before.front() : Version();
    return left_ > 0 && compared;
}

std::vector<int32_t> LineAuthors::LinesOf(std::string_view bytes) const
{
    const int32_t count = CountLines(bytes);
    std::vector<int32_t> lines(static_cast<size_t>(count), -1);
    const auto compare = [&](const VersionRepository::VisitHunk& visit) {
        return repository_.Compare(tip_, bytes, visit);
    };
    ForEachSame(count, compare, [&](int32_t from, int32_t to, int32_t many) {
        std::copy_n(lines_.begin() + from, many, lines.begin() + to);
    });
    return lines;
}

} // namespace nib
