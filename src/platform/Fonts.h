#pragma once
#include "base/Text.h"

#include <vector>

namespace nib {

/// Private fonts of this process, and the families that the screen offers.
class Fonts {
public:
    virtual ~Fonts() = default;
    /// `fileName` is a full path; true when it was added.
    virtual bool Add(TextView fileName) = 0;
    virtual void Remove(TextView fileName) = 0;
    virtual std::vector<Text> Families() const = 0;
    /// The folder that the program was started from.
    virtual Text ProgramFolder() const = 0;
};

} // namespace nib
