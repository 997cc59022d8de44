#pragma once
#include "text/TextSearch.h"

#include <chrono>
#include <memory>

struct URegularExpression;

namespace nib {

/// What is wrong with a regular expression.
struct PatternFault {
    int32_t at = 0; ///< character of it, 1-based; 0 when no single one is to blame
    TextView text;

    Text Told() const;
};

/// What takes the place of a hit: text, and the groups of the expression in it.
struct Replacement {
    struct Piece {
        Text text;
        int32_t group = -1; ///< follows the text; negative: none
    };
    std::vector<Piece> pieces;
};

/// One regular expression, prepared: finds its hits within a line. Of one thread, as it remembers what it read last.
///
/// A few expressions would need years for a short line. So the time spent is measured, and too much of it for what has
/// been read is an error.
class RegexSearch {
public:
    using Nanoseconds = std::chrono::nanoseconds;

    /// Throws where the expression is faulty.
    RegexSearch(TextView expression, FindOptions options);
    ~RegexSearch();
    RegexSearch(const RegexSearch&) = delete;
    RegexSearch& operator=(const RegexSearch&) = delete;

    static std::optional<PatternFault> FaultOf(TextView expression);

    /// The first hit from a column on; it may be empty.
    std::optional<ColumnRange> In(TextView line, size_t from);
    /// Throws where a group is named that the expression does not have.
    Replacement Prepared(TextView replacement) const;
    /// What takes the place of the hit that begins at a column.
    Text Replaced(TextView line, size_t at, const Replacement& replacement);
    /// The time allowed beside that for reading.
    void SetPatience(Nanoseconds patience) { patience_ = patience; }

private:
    struct Close {
        void operator()(URegularExpression* expression) const;
    };
    using Handle = std::unique_ptr<URegularExpression, Close>;

    static Handle Opened(TextView expression, bool matchCase, std::optional<PatternFault>& fault);
    bool Find(size_t from);
    bool IsTired(Nanoseconds more) const;
    static int8_t MayGoOn(const void* search, int32_t steps);
    size_t Group(int32_t group, bool end) const;

    Handle expression_;
    bool wholeWord_;
    Nanoseconds patience_ = std::chrono::seconds(1);
    Nanoseconds spent_{};
    size_t read_ = 0; ///< units
    std::chrono::steady_clock::time_point started_;
};

} // namespace nib
