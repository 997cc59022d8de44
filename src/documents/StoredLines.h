#pragma once
#include "base/Text.h"
#include "hosts/TextCoding.h"
#include "text/ByteLoader.h"

#include <functional>
#include <optional>
#include <vector>

namespace nib {

class SourceDocument;

/// What lines of a document were in storage where the text that is shown does not tell: their TABs, and an end that
/// most lines do not have. It is known by the identity of the line, and holds whenever the line has the text that it
/// was shown with.
class StoredLines {
public:
    bool Empty() const { return lines_.empty(); }
    void Clear();
    /// The document shows now what is stored, with TABs, as `tabWidth` blanks each, and odd ends in these places. Lines
    /// that need one get an identity.
    void Read(const std::vector<TabPlace>& tabs, const std::vector<OddEnd>& odd, int32_t tabWidth,
              SourceDocument& document, int32_t& lastIdentity);
    /// The document's text with TABs and CR LF; `odd` takes the lines that end otherwise.
    Text Written(const SourceDocument& document, std::vector<OddEnd>& odd) const;
    /// Round a call that replaces the whole text: lines that are in both stay the lines that they were.
    void Keep(SourceDocument& document, const std::function<void()>& replace) const;

private:
    struct Line {
        int32_t identity = 0;
        int32_t tabWidth = 0;
        size_t shown = 0; ///< hash of its text
        size_t firstTab = 0;
        int32_t tabs = 0;
        std::optional<LineEnd> end;
    };

    void Take(std::vector<Line> read);
    /// Null when the line is as it is shown.
    const Line* Find(uint32_t identity) const;
    bool AppendStored(const Line& line, TextView shown, Text& out) const;

    std::vector<Line> lines_;      ///< by identity
    std::vector<int32_t> columns_; ///< of TABs, in the text that is shown
};

} // namespace nib
