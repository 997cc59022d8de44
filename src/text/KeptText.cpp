#include "text/KeptText.h"

namespace nib {

void KeptText::Clear()
{
    text_.reset();
    lost_ = false;
}

void KeptText::Set(std::shared_ptr<const TextSnapshot> text)
{
    text_ = std::move(text);
    lost_ = false;
}

void KeptText::BeforeEdit(const LineStore& lines, int32_t first, int32_t last)
{
    for (int32_t line = first; line <= last && !lost_; ++line)
        lost_ = lines.Length(line) > static_cast<size_t>(kLongestRead);
    if (lost_)
        text_.reset();
    else
        BeforeReset(lines);
}

void KeptText::BeforeReset(const LineStore& lines)
{
    if (!text_ && !lost_) text_ = lines.Snapshot();
}

std::shared_ptr<const TextSnapshot> KeptText::Get(const LineStore& lines) const
{
    return text_ || lost_ ? text_ : lines.Snapshot();
}

} // namespace nib
