#pragma once
#include "text/RegexSearch.h"
#include "text/TextSearch.h"

#include <algorithm>

namespace nib {

/// What is searched for, prepared: a text, or a regular expression, which is looked for line by line. One search has
/// one, whose patience is that of the whole search.
class TextPattern {
public:
    /// Throws where a regular expression is faulty.
    TextPattern(TextView text, FindOptions options);

    bool IsRegex() const { return regex_ != nullptr; }
    /// False when nothing can ever match.
    bool CanMatch() const { return regex_ ? !empty_ : plain_.CanMatch(); }
    /// The first place in a text with line breaks, from a unit on.
    std::optional<ColumnRange> In(TextView text, size_t from) const;
    /// Calls `visit(range)` for each hit in a line.
    template <typename Visit>
    void ForEach(TextView line, Visit&& visit) const
    {
        for (auto hit = In(line, 0); hit; hit = In(line, static_cast<size_t>(std::max(hit->last, hit->first + 1))))
            visit(*hit);
    }
    bool Forward(const LineStore& lines, Position from, FindHit& hit) const;
    bool Backward(const LineStore& lines, Position from, FindHit& hit) const;

    /// What takes the place of hits. Throws where a group is named that there is none of.
    Replacement Prepared(TextView replacement) const;
    Text Replaced(TextView line, size_t at, const Replacement& replacement) const;
    void SetPatience(RegexSearch::Nanoseconds patience) const
    {
        if (regex_) regex_->SetPatience(patience);
    }
    /// The text has been edited since the last call.
    void Forget() const { lineUnits_ = {}; }
    /// In 16 bits a unit; good until the next call.
    TextView Line(UnitSpan units) const;

private:
    bool empty_;
    TextSearch plain_;
    std::unique_ptr<RegexSearch> regex_;
    mutable UnitSpan lineUnits_; ///< in `line_`: whoever goes from hit to hit in a long line asks for it each time
    mutable Text line_;
};

} // namespace nib
