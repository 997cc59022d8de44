#include "shell/assist/FollowedText.h"

#include <algorithm>

namespace nib {

namespace {

/// More are cut from a snapshot, which costs the thread of the windows nothing.
constexpr int32_t kFewLines = 200;

} // namespace

std::vector<Text> ChangedLines::Lines()
{
    if (!snapshot) return std::move(texts);
    std::vector<Text> lines;
    lines.reserve(static_cast<size_t>(count));
    int32_t at = 0;
    snapshot->ForEachLine([&](const LineRecord& line) {
        const int32_t number = at++;
        if (number < first || number >= first + count) return;
        line.Units().AppendTo(lines.emplace_back());
    });
    snapshot.reset();
    return lines;
}

FollowedText::FollowedText(SourceDocument& text, std::function<void()> changed)
    : text_(text), changed_(std::move(changed))
{
    text_.AddListener(this);
}

std::optional<ChangedLines> FollowedText::Take()
{
    if (!whole_ && !span_) return std::nullopt;
    const Span span = whole_ ? Span{0, 0, text_.LineCount()} : *span_;
    ChangedLines told{whole_, span.first, span.oldEnd - span.first, span.newEnd - span.first, {}, {}};
    if (told.count > kFewLines)
        told.snapshot = text_.Snapshot();
    else
        for (int32_t line = span.first; line < span.newEnd; ++line) told.texts.push_back(text_.GetLine(line));
    whole_ = false;
    span_.reset();
    return told;
}

void FollowedText::TextChanged(const TextChange& change)
{
    ++revision_;
    const int32_t first = change.start.line;
    const int32_t oldEnd = change.oldEnd.line + 1;
    const int32_t newEnd = change.newEnd.line + 1;
    if (!span_) {
        span_ = Span{first, oldEnd, newEnd};
    } else {
        Span& span = *span_;
        const int32_t behind = std::max(oldEnd - span.newEnd, 0); // lines that were as told till now
        span = {std::min(span.first, first), span.oldEnd + behind, std::max(span.newEnd, oldEnd) + newEnd - oldEnd};
    }
    for (ProgramFinding& finding : findings_) {
        finding.mends.clear(); // they were for the text as it was
        if (finding.at.end < change.start) continue;
        finding.at = {change.Map(finding.at.start), change.Map(finding.at.end, true)};
        if (finding.at.end < finding.at.start) finding.at.end = finding.at.start;
    }
    MoveMarks(change);
    changed_();
}

void FollowedText::MoveMarks(const TextChange& change)
{
    std::erase_if(marks_, [&](CompileMark& mark) {
        const std::optional<int32_t> line = mark.line < change.start.line ? mark.line : change.LineAfter(mark.line);
        mark.line = line.value_or(0);
        return !line;
    });
}

void FollowedText::SetMarks(std::vector<CompileMark> marks)
{
    marks_ = std::move(marks);
    std::stable_sort(marks_.begin(), marks_.end(),
                     [](const CompileMark& a, const CompileMark& b) { return a.line < b.line; });
}

void FollowedText::TextReset()
{
    ++revision_;
    whole_ = true;
    findings_.clear();
    marks_.clear();
    changed_();
}

SplitFindings HoldBack(std::vector<ProgramFinding> found, const std::vector<ProgramFinding>& shown, int32_t typedLine)
{
    SplitFindings split;
    for (ProgramFinding& finding : found) {
        const auto same = [&](const ProgramFinding& known) {
            return known.at.start.line == typedLine && known.code == finding.code;
        };
        if (finding.at.start.line == typedLine && std::none_of(shown.begin(), shown.end(), same))
            split.waits = true;
        else
            split.shown.push_back(std::move(finding));
    }
    return split;
}

} // namespace nib
