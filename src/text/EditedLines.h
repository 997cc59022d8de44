#pragma once
#include <cstdint>
#include <vector>

namespace nib {

/// Lines that were edited and wait for a scan. While lines neither come nor go each is known by its number; after that
/// only from which one on, and up to how many before the end.
class EditedLines {
public:
    struct Range {
        int32_t first;
        int32_t last;
    };

    /// Lines `first` to `oldLast` became `first` to `newLast` of now `count`.
    void Add(int32_t first, int32_t oldLast, int32_t newLast, int32_t count);
    /// The same for many at once, as they are now; lines came or went there.
    void AddAll(std::vector<Range> ranges, int32_t count);
    bool Any() const { return first_ >= 0; }
    /// True when all of them lie within these, and none has come or gone.
    bool AreWithin(int32_t first, int32_t last, int32_t count) const;
    void Clear();
    /// Forgets and answers them, ascending and apart from one another.
    std::vector<Range> Take(int32_t count);

private:
    std::vector<Range> ranges_;
    int32_t first_ = -1;
    int32_t tail_ = 0; ///< lines behind the last edited one
    bool moved_ = false;
};

} // namespace nib
