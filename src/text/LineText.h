#pragma once
// How a line's text lies in memory: 8 bits a unit while all units allow it, else 16; either inside the block of the
// loaded text or, once edited, in a block of its own.

#include "base/UnitSpan.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace nib {

/// Line record of 24 bytes; a million of them are the cost of a loaded text beside its units.
class LineRecord {
public:
    static constexpr size_t kMaxLength = (size_t{1} << 30) - 1;

    uint32_t words[3] = {0, 0, 0};

    UnitSpan Units() const { return {text_, length_, wide_ != 0}; }
    size_t Length() const { return length_; }
    /// Points into a block that outlives the line.
    void Share(const void* text, size_t length, bool wide);
    /// Replaces `count` units at `at`; the line then has a block of its own.
    void Replace(size_t at, size_t count, TextView with);
    /// A copy of this record holds an own block, too: neither writes to it, and the last one frees it. Each may belong
    /// to another thread.
    void Retain() const;
    /// Lets go of an own block; the record must not be used afterwards.
    void Release();
    size_t OwnBytes() const;

private:
    void MakeOwn(bool wide, size_t needed);

    uint32_t length_ : 30 = 0;
    uint32_t wide_ : 1 = 0;
    uint32_t own_ : 1 = 0; ///< the block may be that of copies, too
    void* text_ = nullptr;
};

static_assert(sizeof(LineRecord) == 24);

/// The blocks that the lines of a loaded text point into.
struct LoadedText {
    static std::shared_ptr<void> NewBlock(size_t bytes);

    std::vector<std::shared_ptr<void>> blocks;
    size_t bytes = 0; ///< in use in all of them
};

/// Cuts a text into lines at CR LF, CR and LF, narrowing on the way: one pass, no allocation a line.
class TextLoader {
public:
    explicit TextLoader(TextView text);
    /// The next line; false when there is none left. A text that ends in a line break ends in an empty line.
    bool Next(UnitSpan& line);
    LoadedText Take() { return std::move(loaded_); }

private:
    const char16_t* NarrowLine(const char16_t* from, bool& wide);

    const char16_t* at_;
    const char16_t* end_;
    bool done_ = false;
    LoadedText loaded_;
    uint8_t* narrow_;
    char16_t* wide_ = nullptr;
};

} // namespace nib
