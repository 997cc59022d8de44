#pragma once
#include "base/Text.h"
#include "hosts/TextCoding.h"
#include "text/ByteLoader.h"
#include "text/TextSnapshot.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace nib {

class SourceDocument;

/// What lines of a document were in storage where the text that is shown does not tell: their TABs, and an end that
/// most lines do not have. It is known by the identity of the line and the text that it was shown with, and holds
/// whenever the line has that text; so it may hold for several texts of one line, which undo goes back to.
class StoredLines {
public:
    bool Empty() const { return !known_; }
    void Clear() { known_.reset(); }
    /// The document shows now what is stored, with TABs, as `tabWidth` blanks each, and odd ends in these places. Lines
    /// that need one get an identity.
    void Read(const std::vector<TabPlace>& tabs, const std::vector<OddEnd>& odd, int32_t tabWidth,
              SourceDocument& document, int32_t& lastIdentity);
    /// The same where only those lines of the document are stored that have a true here.
    void ReadSome(const std::vector<bool>& which, const std::vector<TabPlace>& tabs, const std::vector<OddEnd>& odd,
                  int32_t tabWidth, SourceDocument& document, int32_t& lastIdentity);
    /// The lines with their TABs, as they are to be written; good however long this object lives.
    LinewiseText Written(std::shared_ptr<const TextSnapshot> text) const;
    /// Lines end as most do from here on.
    void ForgetEnds();
    bool AnyOddEnd() const { return known_ && known_->anyEnd; }
    /// Those of its lines that end otherwise than most.
    std::vector<OddEnd> OddEnds(const TextSnapshot& text) const;
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

    /// Never changed once it is there.
    struct Known {
        std::vector<Line> lines;      ///< by identity, and by what they were shown with
        std::vector<int32_t> columns; ///< of TABs, in the text that is shown
        bool anyEnd = false;

        /// What was read last counts.
        void Take(std::vector<Line> read);
        bool Knows(uint32_t identity) const;
        /// Null when the line is as it is shown; else `shown` gets its text.
        const Line* Find(const LineRecord& record, Text& shown) const;
        void AppendStored(const Line& line, TextView shown, Text& out) const;
    };

    std::shared_ptr<const Known> known_; ///< null for nothing
};

} // namespace nib
