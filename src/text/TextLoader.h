#pragma once
#include "text/LineText.h"

#include <memory>

namespace nib {

/// The units of a loaded text, in one block a width; lines point into them.
struct LoadedText {
    struct FreeBlock {
        void operator()(void* block) const;
    };
    using Block = std::unique_ptr<void, FreeBlock>;
    // Sized for the worst case: pages that no line needs are never touched, so they cost no memory.
    Block narrow;
    Block wide;
    size_t bytes = 0; ///< in use in both
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
