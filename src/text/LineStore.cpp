#include "text/LineStore.h"

#include <algorithm>

namespace nib {

namespace {

constexpr size_t kLoadedLines = 512; ///< in a chunk, at load
constexpr size_t kMostLines = 1024;

constexpr auto kControl = static_cast<size_t>(LineWord::Control);

} // namespace

Nesting NestingOf(uint32_t word)
{
    return {static_cast<int32_t>(word >> own_bits::kClosesShift & 0x7F),
            static_cast<int32_t>(word >> own_bits::kOpensShift & 0x7F)};
}

uint32_t WithNesting(uint32_t word, Nesting nesting)
{
    auto closes = static_cast<uint32_t>(std::min(nesting.closes, own_bits::kMostNesting));
    auto opens = static_cast<uint32_t>(std::min(nesting.opens, own_bits::kMostNesting));
    return (word & ~own_bits::kNestingMask) | closes << own_bits::kClosesShift | opens << own_bits::kOpensShift;
}

LineStore::LineStore()
{
    Load(u"");
}

void LineStore::Load(TextView text)
{
    Take(TextLoader(text), text.size());
}

std::vector<TabPlace> LineStore::Load(ByteText text, int32_t tabWidth)
{
    std::vector<TabPlace> tabs;
    const size_t size = text.size;
    Take(ByteLoader(std::move(text), tabWidth, tabs), size);
    return tabs;
}

template <typename Loader>
void LineStore::Take(Loader&& loader, size_t size)
{
    std::vector<std::shared_ptr<Chunk>> chunks;
    size_t units = 0;
    int32_t count = 0;
    UnitSpan line;
    while (loader.Next(line)) {
        if (chunks.empty() || chunks.back()->lines.size() == kLoadedLines) {
            chunks.push_back(std::make_shared<Chunk>());
            chunks.back()->lines.reserve(size < kLoadedLines ? 8 : kLoadedLines);
        }
        chunks.back()->lines.emplace_back().Share(line.data, line.length, line.wide);
        units += line.length;
        ++count;
    }
    chunks_ = std::move(chunks);
    loaded_ = loader.Take();
    units_ = units;
    count_ = count;
    hidden_ = 0;
    RebuildTrees();
}

std::shared_ptr<const TextSnapshot> LineStore::Snapshot() const
{
    return std::make_shared<TextSnapshot>(chunks_, loaded_, count_, units_);
}

LineStore::Chunk& LineStore::Own(size_t chunk)
{
    if (chunks_[chunk]->IsRead()) chunks_[chunk] = std::make_shared<Chunk>(*chunks_[chunk]);
    return *chunks_[chunk];
}

void LineStore::RebuildTrees()
{
    lineTree_.Build(chunks_.size(), [this](size_t i) { return static_cast<int32_t>(chunks_[i]->lines.size()); });
    visibleTree_.Build(chunks_.size(), [this](size_t i) {
        return static_cast<int32_t>(chunks_[i]->lines.size()) - chunks_[i]->hidden;
    });
    prefix_.clear();
    lastLine_ = -1;
}

LineStore::Place LineStore::Search(int32_t line) const
{
    int32_t rest = line;
    size_t chunk = lineTree_.Find(rest);
    last_ = {chunk, static_cast<size_t>(rest)};
    lastLine_ = line;
    return last_;
}

void LineStore::Touch(size_t chunk)
{
    chunks_[chunk]->nestingKnown = false;
    if (prefix_.size() > chunk + 1) prefix_.resize(chunk + 1);
}

void LineStore::Replace(int32_t line, size_t at, size_t count, TextView with)
{
    Record(Locate(line)).Replace(at, count, with);
    if (count_ == 1) loaded_ = {}; // the only line has left it
    units_ += with.size() - count;
}

void LineStore::InsertLines(int32_t line, int32_t count)
{
    if (count <= 0) return;
    Place place = line < count_ ? Locate(line) : Place{chunks_.size() - 1, chunks_.back()->lines.size()};
    lastLine_ = -1;
    auto& lines = Own(place.chunk).lines;
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(place.index), static_cast<size_t>(count), LineRecord());
    count_ += count;
    lineTree_.Add(place.chunk, count);
    visibleTree_.Add(place.chunk, count);
    Touch(place.chunk);
    SplitIfLarge(place.chunk);
}

void LineStore::SplitIfLarge(size_t chunk)
{
    auto& lines = chunks_[chunk]->lines;
    if (lines.size() <= kMostLines) return;
    std::vector<std::shared_ptr<Chunk>> parts;
    for (size_t at = kLoadedLines; at < lines.size(); at += kLoadedLines) {
        auto part = std::make_shared<Chunk>();
        size_t end = std::min(lines.size(), at + kLoadedLines);
        part->lines.assign(lines.begin() + static_cast<std::ptrdiff_t>(at),
                           lines.begin() + static_cast<std::ptrdiff_t>(end));
        for (const LineRecord& line : part->lines) line.Retain();
        parts.push_back(std::move(part));
    }
    chunks_.insert(chunks_.begin() + static_cast<std::ptrdiff_t>(chunk) + 1, parts.begin(), parts.end());
    std::for_each(lines.begin() + static_cast<std::ptrdiff_t>(kLoadedLines), lines.end(),
                  [](LineRecord& line) { line.Release(); });
    lines.resize(kLoadedLines);
    lines.shrink_to_fit(); // a large paste was one chunk for a moment
    for (size_t i = chunk; i <= chunk + parts.size(); ++i) {
        auto& piece = chunks_[i]->lines;
        chunks_[i]->hidden = static_cast<int32_t>(std::count_if(
            piece.begin(), piece.end(), [](const LineRecord& r) { return r.words[kControl] & own_bits::kHidden; }));
    }
    RebuildTrees();
}

void LineStore::RemoveLines(int32_t line, int32_t count)
{
    bool rebuilt = false;
    while (count > 0) {
        Place place = Locate(line);
        lastLine_ = -1;
        Chunk& chunk = Own(place.chunk);
        auto first = chunk.lines.begin() + static_cast<std::ptrdiff_t>(place.index);
        auto here = std::min<int32_t>(count, static_cast<int32_t>(chunk.lines.size() - place.index));
        int32_t hidden = 0;
        std::for_each(first, first + here, [&](LineRecord& record) {
            units_ -= record.Length();
            hidden += record.words[kControl] & own_bits::kHidden ? 1 : 0;
            record.Release();
        });
        chunk.lines.erase(first, first + here);
        chunk.hidden -= hidden;
        hidden_ -= hidden;
        count_ -= here;
        count -= here;
        lineTree_.Add(place.chunk, -here);
        visibleTree_.Add(place.chunk, hidden - here);
        Touch(place.chunk);
        rebuilt = rebuilt || chunk.lines.empty();
    }
    if (!rebuilt || chunks_.size() < 2) return;
    std::erase_if(chunks_, [](auto& chunk) { return chunk->lines.empty(); });
    RebuildTrees();
}

void LineStore::SetWord(int32_t line, size_t which, uint32_t value)
{
    Place place = Locate(line);
    const uint32_t changed = At(line).words[which] ^ value;
    if (!changed) return;
    Record(place).words[which] = value;
    if (which != kControl) return;
    if (changed & own_bits::kHidden) {
        int32_t delta = value & own_bits::kHidden ? 1 : -1;
        chunks_[place.chunk]->hidden += delta;
        hidden_ += delta;
        visibleTree_.Add(place.chunk, -delta);
    }
    if (changed & own_bits::kNestingMask) Touch(place.chunk);
}

int32_t LineStore::VisibleBefore(int32_t line) const
{
    if (hidden_ == 0) return line;
    Place place = Locate(line);
    const Chunk& chunk = *chunks_[place.chunk];
    auto end = chunk.lines.begin() + static_cast<std::ptrdiff_t>(place.index);
    auto here = std::count_if(chunk.lines.begin(), end,
                              [](const LineRecord& r) { return !(r.words[kControl] & own_bits::kHidden); });
    return visibleTree_.Before(place.chunk) + static_cast<int32_t>(here);
}

int32_t LineStore::VisibleLine(int32_t index) const
{
    if (hidden_ == 0) return index;
    int32_t rest = index;
    size_t chunk = visibleTree_.Find(rest);
    if (chunk >= chunks_.size()) return count_ - 1;
    int32_t line = lineTree_.Before(chunk);
    for (const LineRecord& record : chunks_[chunk]->lines) {
        if (!(record.words[kControl] & own_bits::kHidden) && rest-- == 0) break;
        ++line;
    }
    return line;
}

Nesting LineStore::ChunkNesting(size_t i) const
{
    const Chunk& chunk = *chunks_[i];
    if (!chunk.nestingKnown) {
        chunk.nesting = {};
        for (const LineRecord& record : chunk.lines) chunk.nesting.Follow(NestingOf(record.words[kControl]));
        chunk.nestingKnown = true;
    }
    return chunk.nesting;
}

Nesting LineStore::NestingBefore(int32_t line) const
{
    Place place = Locate(line);
    if (prefix_.empty()) prefix_.emplace_back();
    while (prefix_.size() <= place.chunk) {
        Nesting next = prefix_.back();
        next.Follow(ChunkNesting(prefix_.size() - 1));
        prefix_.push_back(next);
    }
    Nesting nesting = prefix_[place.chunk];
    for (size_t i = 0; i < place.index; ++i) nesting.Follow(NestingOf(chunks_[place.chunk]->lines[i].words[kControl]));
    return nesting;
}

int32_t LineStore::FindClose(int32_t line, int32_t depth) const
{
    if (line >= count_) return -1;
    Place place = Locate(line);
    int32_t at = line;
    for (size_t i = place.chunk; i < chunks_.size(); ++i) {
        const Chunk& chunk = *chunks_[i];
        size_t index = i == place.chunk ? place.index : 0;
        Nesting whole = index == 0 ? ChunkNesting(i) : Nesting{depth, 0};
        if (whole.closes < depth) {
            depth += whole.opens - whole.closes;
            at += static_cast<int32_t>(chunk.lines.size());
            continue;
        }
        for (; index < chunk.lines.size(); ++index, ++at) {
            Nesting nesting = NestingOf(chunk.lines[index].words[kControl]);
            if (nesting.closes >= depth) return at;
            depth += nesting.opens - nesting.closes;
        }
    }
    return -1;
}

int32_t LineStore::FindOpen(int32_t line, int32_t depth) const
{
    const int32_t level = NestingBefore(line).opens - depth; // of blocks open before that one
    if (level < 0) return -1;
    const Place end = Locate(line);
    for (size_t i = end.chunk + 1; i-- > 0;) {
        if (i < end.chunk && prefix_[i].opens - ChunkNesting(i).closes > level) continue;
        const size_t count = i == end.chunk ? end.index : chunks_[i]->lines.size();
        int32_t found = -1;
        int32_t open = prefix_[i].opens;
        for (size_t index = 0; index < count; ++index) {
            const Nesting nesting = NestingOf(chunks_[i]->lines[index].words[kControl]);
            open = std::max(open - nesting.closes, 0);
            if (open <= level && nesting.opens > 0) found = static_cast<int32_t>(index);
            open += nesting.opens;
        }
        if (found >= 0) return lineTree_.Before(i) + found;
    }
    return -1;
}

size_t LineStore::MemoryUse() const
{
    size_t bytes = loaded_.bytes + chunks_.size() * (sizeof(Chunk) + sizeof(void*) + 16);
    for (auto& chunk : chunks_) {
        bytes += chunk->lines.capacity() * sizeof(LineRecord);
        for (const LineRecord& record : chunk->lines) bytes += record.OwnBytes();
    }
    return bytes;
}

} // namespace nib
