#pragma once
#include "base/ByteText.h"
#include "text/LineText.h"

#include <vector>

namespace nib {

/// A TAB of a text as it was read.
struct TabPlace {
    int32_t line = 0;
    int32_t column = 0; ///< where its blanks begin in the text that is shown

    friend bool operator==(const TabPlace&, const TabPlace&) = default;
};

/// Cuts a text into lines that point into the bytes as they were read. Only those with TABs or with characters beyond
/// ASCII are rewritten, in place where they fit.
class ByteLoader {
public:
    /// Each TAB becomes `tabWidth` blanks, and `tabs` takes its place.
    ByteLoader(ByteText text, int32_t tabWidth, std::vector<TabPlace>& tabs);
    /// The next line; false when there is none left. A text that ends in a line break ends in an empty line.
    bool Next(UnitSpan& line);
    LoadedText Take() { return std::move(loaded_); }

private:
    struct Seen {
        bool tab = false;
        bool high = false;
    };

    size_t FindBreak(size_t at, Seen& seen) const;
    UnitSpan Rewritten(char* piece, size_t length, Seen seen);
    void ExpandTabs();
    UnitSpan Stored(char* place, size_t room);
    void* Room(size_t bytes);

    ByteText text_;
    size_t tabWidth_;
    std::vector<TabPlace>& tabs_;
    LoadedText loaded_;
    size_t at_ = 0;
    int32_t line_ = 0;
    bool done_ = false;
    Text units_;
    Text expanded_;
    char* free_ = nullptr; ///< in the last block for lines that did not fit in their place
    size_t left_ = 0;
};

/// The same of a text that holds its TABs still.
std::vector<TabPlace> TabsOf(TextView text, int32_t tabWidth);

} // namespace nib
