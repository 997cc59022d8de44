#include "search/OpReplaceAll.h"

#include <algorithm>

namespace nib {

namespace {

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

HitTexts Alike(Text text)
{
    const size_t size = text.size();
    return {std::move(text), size};
}

int32_t BreaksIn(TextView text)
{
    return static_cast<int32_t>(std::count(text.begin(), text.end(), u'\n'));
}

} // namespace

void HitTexts::Add(TextView text)
{
    text_ += text;
    ends_.push_back(text_.size());
}

TextView HitTexts::Of(size_t hit) const
{
    const TextView all = text_;
    if (!alike_) return all.substr(Start(hit), Length(hit));
    return all.size() == each_ ? all : all.substr(hit * each_, each_);
}

ReplacePass::ReplacePass(std::vector<Position> hits, Text found, bool sameCase, TextView replacement,
                         std::shared_ptr<const void> sweep)
    : hits_(std::move(hits)), sweep_(std::move(sweep)), found_(Alike(std::move(found))), knowsFound_(sameCase),
      put_(Alike(WithCrLf(replacement))), breaks_(BreaksIn(put_.Of(0)))
{
    hits_.shrink_to_fit();
}

ReplacePass::ReplacePass(std::vector<Position> hits, HitTexts found, HitTexts replacements,
                         std::shared_ptr<const void> sweep)
    : hits_(std::move(hits)), sweep_(std::move(sweep)), found_(std::move(found)), knowsFound_(true),
      put_(std::move(replacements)), breaks_(BreaksIn(put_.Of(0)))
{
}

ReplacePass::Group ReplacePass::GroupBefore(size_t end) const
{
    size_t first = end - 1;
    while (first > 0 && hits_[first - 1].line == hits_[end - 1].line) --first;
    return {first, end};
}

Position ReplacePass::EndOf(size_t hit) const
{
    return {hits_[hit].col + static_cast<int32_t>(found_.Length(hit)), hits_[hit].line};
}

void ReplacePass::Do(SourceDocument& document)
{
    if (!knowsFound_) {
        const size_t each = found_.Length(0);
        Text old;
        old.reserve(hits_.size() * each);
        for (size_t hit = 0; hit < hits_.size(); ++hit) old += document.GetRange(hits_[hit], EndOf(hit));
        found_ = {std::move(old), each};
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
    edits.Reserve(hits_.size(), put_.Length(0));
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
    if (group.end - group.first == 1) return Text(put_.Of(group.first));
    const Position start = hits_[group.first];
    const Text before = document.GetRange(start, EndOf(group.end - 1));
    Text after;
    after.reserve(before.size() + put_.Length(group.first, group.end));
    size_t at = 0;
    for (size_t i = group.first; i < group.end; ++i) {
        auto hit = static_cast<size_t>(hits_[i].col - start.col);
        after.append(before, at, hit - at).append(put_.Of(i));
        at = hit + found_.Length(i);
    }
    return after;
}

Position ReplacePass::StartOf(size_t hit) const
{
    return MapBehind(hits_[hit], hit);
}

Position ReplacePass::EndAfter(size_t hit) const
{
    return MapBehind(EndOf(hit), hit + 1);
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
    const Position start = StartOf(hit);
    const Position end{start.col + static_cast<int32_t>(found_.Length(hit)), start.line};
    return Put(document, start, end, put_.Of(hit));
}

Position ReplacePass::UndoOne(SourceDocument& document, size_t hit) const
{
    return Put(document, StartOf(hit), EndAfter(hit), found_.Of(hit));
}

Position ReplacePass::Map(Position before) const
{
    const auto behind = std::partition_point(hits_.begin(), hits_.end(), [&](const Position& hit) {
        return EndOf(static_cast<size_t>(&hit - hits_.data())) <= before;
    });
    return MapBehind(before, static_cast<size_t>(behind - hits_.begin()));
}

/// Where a position goes that `count` hits stand before.
Position ReplacePass::MapBehind(Position before, size_t count) const
{
    Position after{before.col, before.line + breaks_ * static_cast<int32_t>(count)};
    if (count == 0 || hits_[count - 1].line != before.line) return after;
    if (breaks_ > 0) {
        const TextView put = put_.Of(count - 1);
        after.col += static_cast<int32_t>(put.size() - put.rfind(u'\n') - 1) - EndOf(count - 1).col;
        return after;
    }
    const auto first = std::partition_point(hits_.begin(), hits_.begin() + static_cast<std::ptrdiff_t>(count),
                                            [&](Position hit) { return hit.line < before.line; });
    after.col += Growth(static_cast<size_t>(first - hits_.begin()), count);
    return after;
}

int32_t ReplacePass::Growth(size_t first, size_t end) const
{
    return static_cast<int32_t>(put_.Length(first, end)) - static_cast<int32_t>(found_.Length(first, end));
}

int32_t ReplacePass::GrowthOf(int32_t line) const
{
    const auto first = std::partition_point(hits_.begin(), hits_.end(), [&](Position hit) { return hit.line < line; });
    const auto end = std::partition_point(first, hits_.end(), [&](Position hit) { return hit.line == line; });
    return Growth(static_cast<size_t>(first - hits_.begin()), static_cast<size_t>(end - hits_.begin()));
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
