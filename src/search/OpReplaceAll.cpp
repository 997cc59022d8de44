#include "search/OpReplaceAll.h"

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

ReplacePass::ReplacePass(std::vector<Position> hits, Text found, bool sameCase, TextView replacement,
                         std::shared_ptr<const void> sweep)
    : hits_(std::move(hits)), sweep_(std::move(sweep)), found_(std::move(found)), sameCase_(sameCase),
      replacement_(WithCrLf(replacement)),
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

void ReplacePass::Do(SourceDocument& document)
{
    old_.clear();
    if (!sameCase_) {
        old_.reserve(hits_.size() * found_.size());
        for (size_t hit = 0; hit < hits_.size(); ++hit) old_ += document.GetRange(hits_[hit], EndOf(hit));
    }
    if (breaks_ == 0) return DoWithinLines(document);
    // From the last to the first, so that those still to come stand where they stood.
    for (size_t end = hits_.size(); end > 0;) {
        const Group group = GroupBefore(end);
        const Position start = hits_[group.first];
        const Text after = Replaced(document, group);
        document.DeleteRange(start, EndOf(group.end - 1));
        document.InsertText(start, after);
        end = group.first;
    }
}

/// The lines stay, and whoever listens hears once.
void ReplacePass::DoWithinLines(SourceDocument& document) const
{
    LineEdits edits;
    edits.Reserve(hits_.size(), replacement_.size());
    for (size_t first = 0; first < hits_.size();) {
        const Position start = hits_[first];
        Group group{first, first + 1};
        while (group.end < hits_.size() && hits_[group.end].line == start.line) ++group.end;
        edits.Replace(start.line, start.col, EndOf(group.end - 1).col - start.col, Replaced(document, group));
        first = group.end;
    }
    document.EditLines(std::move(edits));
}

/// A line in one go, however many hits it has: what stands from the first to the last of them afterwards.
Text ReplacePass::Replaced(const SourceDocument& document, Group group) const
{
    if (group.end - group.first == 1) return replacement_;
    const Position start = hits_[group.first];
    const Text before = document.GetRange(start, EndOf(group.end - 1));
    Text after;
    after.reserve(before.size() + (group.end - group.first) * replacement_.size());
    size_t at = 0;
    for (size_t i = group.first; i < group.end; ++i) {
        auto hit = static_cast<size_t>(hits_[i].col - start.col);
        after.append(before, at, hit - at).append(replacement_);
        at = hit + found_.size();
    }
    return after;
}

Position ReplacePass::StartOf(size_t hit) const
{
    Position at = hits_[hit];
    if (hit == 0) return at;
    Position before = EndOf(hit - 1);
    Position after = Map(before);
    if (at.line != before.line) return {at.col, at.line + after.line - before.line};
    return {after.col + at.col - before.col, after.line};
}

TextView ReplacePass::OldText(size_t hit) const
{
    if (sameCase_) return found_;
    return TextView(old_).substr(hit * found_.size(), found_.size());
}

Position ReplacePass::Put(SourceDocument& document, Position start, Position end, TextView text) const
{
    document.DeleteRange(start, end);
    Position behind = document.InsertText(start, text);
    document.UpdateLines(start.line, behind.line);
    return behind;
}

Position ReplacePass::DoOne(SourceDocument& document, size_t hit) const
{
    Position start = StartOf(hit);
    return Put(document, start, {start.col + Length(found_), start.line}, replacement_);
}

Position ReplacePass::UndoOne(SourceDocument& document, size_t hit) const
{
    return Put(document, StartOf(hit), Map(EndOf(hit)), OldText(hit));
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

void OpReplaceHit::DoOp(SourceDocument& document)
{
    if (undone_) {
        undone_ = false;
        Position caret = pass_->DoOne(document, hit_);
        document.NotifyChange(kLinesChanged, caret.line, caret.line, caret);
        return;
    }
    if (hit_ == 0) pass_->Do(document);
    if (hit_ + 1 == pass_->Count()) document.NotifyChange(kLinesChanged, 0, document.LineCount() - 1, pass_->LastEnd());
}

void OpReplaceHit::UndoOp(SourceDocument& document)
{
    undone_ = true;
    Position caret = pass_->UndoOne(document, hit_);
    document.NotifyChange(kLinesChanged, caret.line, caret.line, caret);
}

} // namespace nib
