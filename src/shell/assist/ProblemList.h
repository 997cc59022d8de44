#pragma once
#include "shell/assist/Assistance.h"

#include <array>
#include <vector>

namespace nib {

/// The findings of all open documents as a list, by document and place.
class ProblemList {
public:
    static constexpr size_t kLevels = 3;
    /// Nobody reads further.
    static constexpr size_t kMostRows = 2000;

    struct Row {
        int32_t documentId = 0;
        Text document;
        FindingLevel level = FindingLevel::Warning;
        Position at;
        Phrase message;
        friend bool operator==(const Row&, const Row&) = default;
    };

    explicit ProblemList(const Assistance& assistance) : assistance_(assistance) {}

    /// True when the list is another one.
    bool Refresh();
    const std::vector<Row>& Rows() const { return rows_; }
    /// Of a level, also when that is hidden.
    int32_t Count(FindingLevel level) const { return counts_[static_cast<size_t>(level)]; }
    bool IsShown(FindingLevel level) const { return shown_[static_cast<size_t>(level)]; }
    void SetShown(FindingLevel level, bool shown) { shown_[static_cast<size_t>(level)] = shown; }

private:
    const Assistance& assistance_;
    std::vector<Row> rows_;
    std::array<int32_t, kLevels> counts_{};
    std::array<bool, kLevels> shown_{true, true, true};
};

} // namespace nib
