#pragma once
#include <QPagedPaintDevice>

#include <cstdint>
#include <vector>

namespace nib {

/// Where pages go, and what was chosen for them beside the device's own layout and page ranges.
struct Paper {
    QPagedPaintDevice& device;
    bool grey = false;
    bool lastFirst = false;
};

/// The pages of a text of `count` pages that were asked for, in the order of their printing. Throws when the text ends
/// before all of them.
std::vector<int32_t> ChosenPages(const Paper& paper, int32_t count);
/// Throws what a user is told of a device that does not do as it should.
[[noreturn]] void RefuseDevice();

} // namespace nib
