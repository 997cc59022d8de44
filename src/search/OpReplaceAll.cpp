#include "search/OpReplaceAll.h"

#include "editing/operations/OpReplace.h"

#include <algorithm>

namespace nib {

namespace {

int32_t Length(TextView text)
{
    return static_cast<int32_t>(text.size());
}

/// Lines joined with CR LF, as a text that is read back from a document has them.
Text WithCrLf(TextView text)
{
    Text joined;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != u'\r' && text[i] != u'\n') {
            joined += text[i];
            continue;
        }
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
        joined += u"\r\n";
    }
    return joined;
}

} // namespace

ReplacePass::ReplacePass(std::vector<Position> hits, Text found, bool sameCase, TextView replacement)
    : hits_(std::move(hits)), found_(std::move(found)), sameCase_(sameCase), replacement_(WithCrLf(replacement)),
      breaks_(static_cast<int32_t>(std::count(replacement_.begin(), replacement_.end(), u'\n'))),
      lastPiece_(Length(replacement_) - static_cast<int32_t>(replacement_.rfind(u'\n') + 1))
{
    hits_.shrink_to_fit();
}

ReplacePass::Group ReplacePass::GroupBefore(size_t end) const
{
    size_t first = end - 1;
    while (first > 0 && hits_[first - 1].line == hits_[end - 1].line) --first;
    return {first, end};
}

Position ReplacePass::EndOf(size_t hit) const
{
    return {hits_[hit].col + Length(found_), hits_[hit].line};
}

// Lines are taken from the last to the first, so that those still to come stand where they stood, and each line is
// rebuilt in one go, however many hits it has.

void ReplacePass::Do(SourceDocument& document)
{
    old_.clear();
    if (!sameCase_) old_.reserve(hits_.size() * found_.size());
    for (size_t end = hits_.size(); end > 0;) {
        Group group = GroupBefore(end);
        Replace(document, group);
        end = group.first;
    }
    done_ = true;
}

void ReplacePass::Replace(SourceDocument& document, Group group)
{
    Position start = hits_[group.first];
    Position end = EndOf(group.end - 1);
    size_t size = found_.size();
    if (group.end - group.first == 1) {
        if (!sameCase_) old_ += GatherText(document, start, end);
        document.DeleteRange(start, end);
        document.InsertText(start, replacement_);
        return;
    }
    Text before = GatherText(document, start, end);
    Text after;
    after.reserve(before.size() + (group.end - group.first) * replacement_.size());
    size_t at = 0;
    for (size_t i = group.first; i < group.end; ++i) {
        auto hit = static_cast<size_t>(hits_[i].col - start.col);
        after.append(before, at, hit - at).append(replacement_);
        if (!sameCase_) old_.append(before, hit, size);
        at = hit + size;
    }
    document.DeleteRange(start, end);
    document.InsertText(start, after);
}

void ReplacePass::Undo(SourceDocument& document)
{
    for (size_t end = hits_.size(); end > 0;) {
        Group group = GroupBefore(end);
        Restore(document, group);
        end = group.first;
    }
    old_.clear();
    done_ = false;
}

void ReplacePass::Restore(SourceDocument& document, Group group)
{
    Position start = hits_[group.first];
    start.line += breaks_ * static_cast<int32_t>(group.first);
    Position end = Map(EndOf(group.end - 1));
    size_t size = found_.size();
    // Those of later lines came first.
    size_t old = (hits_.size() - group.end) * size;
    Text after = group.end - group.first == 1 ? Text{} : GatherText(document, start, end);
    Text before;
    size_t at = replacement_.size();
    for (size_t i = group.first; i < group.end; ++i) {
        if (i > group.first) {
            auto gap = static_cast<size_t>(hits_[i].col - EndOf(i - 1).col);
            before.append(after, at, gap);
            at += gap + replacement_.size();
        }
        before += sameCase_ ? TextView(found_) : TextView(old_).substr(old + (i - group.first) * size, size);
    }
    document.DeleteRange(start, end);
    document.InsertText(start, before);
}

Position ReplacePass::Map(Position before) const
{
    // Hits that end at the position or before it.
    auto behind = std::partition_point(hits_.begin(), hits_.end(), [&](Position hit) {
        return Position{hit.col + Length(found_), hit.line} <= before;
    });
    auto count = static_cast<int32_t>(behind - hits_.begin());
    Position after{before.col, before.line + breaks_ * count};
    if (count == 0 || hits_[static_cast<size_t>(count - 1)].line != before.line) return after;
    if (breaks_ > 0) {
        after.col += lastPiece_ - EndOf(static_cast<size_t>(count - 1)).col;
        return after;
    }
    auto first = std::partition_point(hits_.begin(), behind, [&](Position hit) { return hit.line < before.line; });
    after.col += static_cast<int32_t>(behind - first) * (Length(replacement_) - Length(found_));
    return after;
}

Position ReplacePass::LastEnd() const
{
    return Map(EndOf(hits_.size() - 1));
}

Position ReplacePass::FirstEnd() const
{
    return EndOf(0);
}

void OpReplaceAll::DoOp(SourceDocument& document)
{
    for (auto& pass : passes_) pass->Do(document);
    Position caret = passes_.back()->LastEnd();
    document.NotifyChange(kLinesChanged, 0, document.LineCount() - 1, caret);
}

void OpReplaceAll::UndoOp(SourceDocument& document)
{
    for (auto pass = passes_.rbegin(); pass != passes_.rend(); ++pass) (*pass)->Undo(document);
    Position caret = passes_.front()->FirstEnd();
    document.NotifyChange(kLinesChanged, 0, document.LineCount() - 1, caret);
}

} // namespace nib
