#pragma once
#include "base/LinewiseText.h"
#include "text/LineText.h"
#include "text/SourceContract.h"

#include <atomic>
#include <memory>
#include <vector>

namespace nib {

/// Lines that follow one another. While a snapshot reads them they stay as they are: who wants to change them takes a
/// copy of the chunk, whose lines have the same texts.
struct LineChunk {
    LineChunk() = default;
    LineChunk(const LineChunk& other);
    LineChunk& operator=(const LineChunk&) = delete;
    ~LineChunk();

    bool IsRead() const { return readers.load(std::memory_order_acquire) > 0; }

    std::vector<LineRecord> lines;
    int32_t hidden = 0;
    mutable Nesting nesting;
    mutable bool nestingKnown = false;
    mutable std::atomic<int32_t> readers{0};
};

/// The lines of a text as they were when it was taken, whatever becomes of the text. Any thread may read it and be the
/// last to let it go.
class TextSnapshot {
public:
    TextSnapshot(const std::vector<std::shared_ptr<LineChunk>>& chunks, LoadedText loaded, int32_t count, size_t units);
    ~TextSnapshot();
    TextSnapshot(const TextSnapshot&) = delete;
    TextSnapshot& operator=(const TextSnapshot&) = delete;

    int32_t LineCount() const { return count_; }
    /// Of all lines, without their ends.
    size_t UnitCount() const { return units_; }
    /// Calls visit(record) for each line, in order.
    template <typename Visit>
    void ForEachLine(Visit&& visit) const
    {
        for (const auto& chunk : chunks_)
            for (const LineRecord& line : chunk->lines) visit(line);
    }

private:
    std::vector<std::shared_ptr<const LineChunk>> chunks_;
    LoadedText loaded_;
    int32_t count_;
    size_t units_;
};

LinewiseText AsLines(std::shared_ptr<const TextSnapshot> text);

} // namespace nib
