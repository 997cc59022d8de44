#pragma once
#include "base/Text.h"

#include <vector>

namespace nib {

/// A line of the program, or of an item that it includes.
struct Place {
    int32_t line = 0; ///< 1-based
    int32_t item = 0; ///< 0: the program itself
};

struct Finding {
    int32_t line = 0; ///< of the program, 1-based
    Text text;
};

/// What is wrong, and where. What is wrong in an included item is told at the line that includes it.
class FindingList {
public:
    /// Names an included item; answers its number.
    int32_t AddItem(Text name, Place includedAt);
    void Add(Place place, TextView text);
    /// "line 12", or "line 3 of BP COMMON.INC".
    Text Describe(Place place) const;
    /// The line of the program that stands for a place.
    int32_t ProgramLine(Place place) const;
    /// What follows a line of the program is no part of it.
    void DropBehind(int32_t line);
    /// In the order of the lines, each finding once.
    std::vector<Finding> Take();

private:
    struct Item {
        Text name;
        int32_t line;
    };
    std::vector<Item> items_;
    std::vector<Finding> findings_;
};

} // namespace nib
