#pragma once
#include "base/Text.h"

#include <vector>

namespace nib {

/// A most-recently-used list of strings, unique ignoring case; entry 1 is the most recent.
class clsRecentList {
public:
    int32_t ListSize() const { return listSize_; }
    /// Negative: ignored. Above MaxListSize: that. Below 1: the list is empty and stays so.
    void SetListSize(int32_t size);
    int32_t ListCount() const { return listCount_; }
    /// Throws kBadIndex outside 1 to ListCount.
    const Text& ListItem(int32_t index) const;
    void AddItem(TextView text);
    void RemoveItem(TextView text);
    void Clear() { listCount_ = 0; }
    int32_t MaxListSize() const { return maxListSize_; }
    /// Accepted only above 0; ListSize is not adjusted.
    void SetMaxListSize(int32_t size);

private:
    /// 0-based index of the entry, -1 when absent.
    int32_t Find(TextView text) const;
    void MoveToFront(int32_t from, TextView text);

    int32_t listSize_ = 4;
    int32_t listCount_ = 0;
    int32_t maxListSize_ = 30;
    std::vector<Text> entries_ = std::vector<Text>(4); ///< never shrinks
};

} // namespace nib
