#include "text/widget/TextOffsets.h"

#include <algorithm>

namespace nib {

void TextOffsets::KnowUpTo(int32_t line)
{
    if (starts_.empty()) starts_.push_back(0);
    for (auto next = static_cast<int32_t>(starts_.size()); next <= line; ++next) {
        starts_.push_back(starts_.back() + buffer_.LineLength(next - 1) + 1);
    }
}

void TextOffsets::Forget(int32_t line)
{
    auto keep = static_cast<size_t>(std::max(line, 0)) + 1;
    if (starts_.size() > keep) starts_.resize(keep);
}

int32_t TextOffsets::Of(Position p)
{
    p = buffer_.Clamp(p);
    KnowUpTo(p.line);
    return starts_[static_cast<size_t>(p.line)] + p.col;
}

int32_t TextOffsets::Count()
{
    return Of(buffer_.End());
}

Position TextOffsets::At(int32_t offset)
{
    offset = std::max(offset, 0);
    int32_t lines = buffer_.LineCount();
    for (int32_t known = 64; starts_.empty() || starts_.back() <= offset; known *= 4) {
        KnowUpTo(std::min(known, lines - 1));
        if (static_cast<int32_t>(starts_.size()) >= lines) break;
    }
    auto above = std::upper_bound(starts_.begin(), starts_.end(), offset);
    auto line = static_cast<int32_t>(above - starts_.begin()) - 1;
    return {std::min(offset - starts_[static_cast<size_t>(line)], buffer_.LineLength(line)), line};
}

Text TextOffsets::Range(int32_t start, int32_t end)
{
    Text text;
    if (start >= end) return text;
    Position from = At(start);
    Position to = At(end);
    Text scratch;
    for (int32_t line = from.line; line <= to.line; ++line) {
        TextView whole = buffer_.LineText(line, scratch);
        auto first = static_cast<size_t>(line == from.line ? from.col : 0);
        auto last = line == to.line ? static_cast<size_t>(to.col) : whole.size();
        text.append(whole.substr(first, last - first));
        if (line != to.line) text.push_back(u'\n');
    }
    return text;
}

} // namespace nib
