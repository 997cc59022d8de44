#pragma once
#include <cstdint>
#include <string>
#include <unordered_map>

namespace nib {

/// Who holds the program: a client from its first call until it has released as often as it holds, or has left.
class Holders {
public:
    /// Any call; the first one of a client makes it a holder.
    void Touch(const std::string& client) { counts_.try_emplace(client, 1); }
    /// One more.
    void Hold(const std::string& client) { ++counts_[client]; }
    /// One less; harmless for a client that holds nothing.
    void Release(const std::string& client)
    {
        auto found = counts_.find(client);
        if (found != counts_.end() && --found->second == 0) counts_.erase(found);
    }
    /// True when it held something.
    bool Left(const std::string& client) { return counts_.erase(client) > 0; }
    void Clear() { counts_.clear(); }
    bool Empty() const { return counts_.empty(); }

private:
    std::unordered_map<std::string, int64_t> counts_;
};

} // namespace nib
