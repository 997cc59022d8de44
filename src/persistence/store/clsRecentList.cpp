#include "persistence/store/clsRecentList.h"

#include "base/Error.h"

#include <algorithm>

namespace nib {

namespace {

[[noreturn]] void BadIndex()
{
    throw Error{error_number::kBadIndex, u"Invalid index of a recent list"};
}

} // namespace

void clsRecentList::SetListSize(int32_t size)
{
    if (size < 0) return;
    size = std::min(size, maxListSize_);
    listSize_ = size;
    listCount_ = std::min(listCount_, size);
    if (static_cast<size_t>(size) > entries_.size()) entries_.resize(static_cast<size_t>(size));
}

const Text& clsRecentList::ListItem(int32_t index) const
{
    if (index < 1 || index > listCount_) BadIndex();
    return entries_[static_cast<size_t>(index - 1)];
}

int32_t clsRecentList::Find(TextView text) const
{
    for (int32_t i = 0; i < listCount_; ++i)
        if (EqualsNoCase(entries_[static_cast<size_t>(i)], text)) return i;
    return -1;
}

void clsRecentList::MoveToFront(int32_t from, TextView text)
{
    Text entry(text); // may be a view of an entry that is about to move
    std::rotate(entries_.begin(), entries_.begin() + from, entries_.begin() + from + 1);
    entries_.front() = std::move(entry);
}

void clsRecentList::AddItem(TextView text)
{
    if (listSize_ < 1) return;
    int32_t at = Find(text);
    if (at < 0) {
        listCount_ = std::min(listCount_ + 1, listSize_);
        at = listCount_ - 1;
    }
    MoveToFront(at, text);
}

void clsRecentList::RemoveItem(TextView text)
{
    int32_t at = Find(text);
    if (at < 0) return;
    std::rotate(entries_.begin() + at, entries_.begin() + at + 1, entries_.begin() + listCount_);
    --listCount_;
}

void clsRecentList::SetMaxListSize(int32_t size)
{
    if (size > 0) maxListSize_ = size;
}

} // namespace nib
