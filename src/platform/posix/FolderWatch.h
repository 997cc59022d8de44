#pragma once
#include "platform/posix/FileContent.h"

#include <map>
#include <string>
#include <vector>

namespace nib {

/// Tells what comes, goes or changes in folders, where the system sees all of it: it does not where other machines
/// write to the same disk.
class FolderWatch {
public:
    FolderWatch();

    /// False where nothing will be told of the folder. What is told carries the number.
    bool Add(const std::string& folder, int32_t number);
    void Remove(int32_t number);

    struct Change {
        int32_t folder = 0;
        std::string name; ///< empty: of the folder itself, or too much has happened there
    };
    /// Since it was asked last; each once. Waits for nothing.
    std::vector<Change> Changes();

private:
    void Take(const char* events, size_t size, std::vector<Change>& changes);

    Descriptor file_;
    std::multimap<int, int32_t> numbers_; ///< by the system's own
};

/// Whether all that happens in the folder happens on this machine.
bool IsOfThisMachine(const std::string& folder);

} // namespace nib
