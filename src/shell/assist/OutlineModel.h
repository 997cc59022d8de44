#pragma once
#include "language/service/LanguageService.h"

#include <optional>
#include <vector>

namespace nib {

/// The labels and subroutines of one program, as far as they pass a filter.
class OutlineModel {
public:
    void SetEntries(std::vector<OutlineEntry> entries);
    /// Letters that a name holds in this order, in any case; empty: all.
    void SetFilter(TextView filter);
    /// Those that are shown, in the order of the text.
    const std::vector<OutlineEntry>& Shown() const { return shown_; }
    /// The shown entry that the line is in, by its index.
    std::optional<size_t> At(int32_t line) const;

private:
    void Choose();

    std::vector<OutlineEntry> entries_;
    std::vector<OutlineEntry> shown_;
    Text filter_;
};

} // namespace nib
