#pragma once
#include "language/account/AccountIndex.h"

#include <unordered_set>

namespace nib {

/// What CALL finds.
struct CallTarget {
    std::vector<ItemName> programs; ///< the likeliest first
    bool isNowhere = false;         ///< for certain: else a name without a program may be known elsewhere
};

/// Names that CALL knows in an account: those of VOC, then those of items, then those that items give themselves.
class Catalogue {
public:
    /// Items that are open in windows and give themselves the name there.
    using OpenItems = std::function<std::vector<ItemName>(TextView name)>;

    /// The index outlives this.
    Catalogue(AccountIndex& index, OpenItems open) : index_(index), open_(std::move(open)) {}

    /// From a program of the file.
    CallTarget Find(TextView name, TextView file);

private:
    std::optional<ItemName> FromVoc(const Text& name);
    bool IsInVoc(const Text& name) { return VocRecord(name).has_value(); }
    std::optional<Text> VocRecord(const Text& name);
    void Refresh();

    AccountIndex& index_;
    OpenItems open_;
    std::map<Text, std::optional<Text>> records_; ///< of VOC, as far as they were asked for
    std::unordered_set<Text> catalogued_;         ///< names in folders that a catalogue is kept in
    bool hasVoc_ = false;
    bool hasCatalogue_ = false;
    std::optional<std::chrono::steady_clock::time_point> looked_;
};

} // namespace nib
