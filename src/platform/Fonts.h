#pragma once
#include "base/Text.h"

#include <vector>

namespace nib {

/// Fonts private to this process.
class Fonts {
public:
    virtual ~Fonts() = default;
    /// `fileName` is a full path; true when the font was added.
    virtual bool Add(TextView fileName) = 0;
    virtual void Remove(TextView fileName) = 0;
    /// In the order of the system's own list.
    virtual std::vector<Text> Families() const = 0;
    /// The folder of the running program, without a slash at its end.
    virtual Text ProgramFolder() const = 0;
};

} // namespace nib
