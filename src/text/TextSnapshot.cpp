#include "text/TextSnapshot.h"

namespace nib {

LineChunk::LineChunk(const LineChunk& other)
    : lines(other.lines), hidden(other.hidden), nesting(other.nesting), nestingKnown(other.nestingKnown)
{
    for (const LineRecord& line : lines) line.Retain();
}

LineChunk::~LineChunk()
{
    for (LineRecord& line : lines) line.Release();
}

TextSnapshot::TextSnapshot(const std::vector<std::shared_ptr<LineChunk>>& chunks, LoadedText loaded, int32_t count,
                           size_t units)
    : chunks_(chunks.begin(), chunks.end()), loaded_(std::move(loaded)), count_(count), units_(units)
{
    for (const auto& chunk : chunks_) chunk->readers.fetch_add(1, std::memory_order_relaxed);
}

TextSnapshot::~TextSnapshot()
{
    // Whoever then changes the chunk does so after all that was read here.
    for (const auto& chunk : chunks_) chunk->readers.fetch_sub(1, std::memory_order_release);
}

LinewiseText AsLines(std::shared_ptr<const TextSnapshot> text)
{
    const int32_t count = text->LineCount();
    const size_t units = text->UnitCount();
    const auto walk = [text = std::move(text)](const LinewiseText::Visit& visit) {
        text->ForEachLine([&](const LineRecord& line) { visit(line.Units()); });
    };
    return {walk, count, units};
}

} // namespace nib
