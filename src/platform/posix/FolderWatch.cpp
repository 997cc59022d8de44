#include "platform/posix/FolderWatch.h"

#include <algorithm>
#include <cstring>

#include <sys/inotify.h>
#include <sys/vfs.h>

namespace nib {

namespace {

/// As linux/magic.h has them, and those of systems that have no line there.
constexpr uint32_t kForeign[] = {
    0x6969,     // NFS
    0x517B,     // SMB
    0xFF534D42, // CIFS
    0xFE534D42, // SMB 2 and later
    0x65735546, // in a process of its own: sshfs and its like
    0x01021997, // 9P
    0x73757245, // Coda
    0x5346414F, // AFS
    0x6B414653, // AFS of the kernel
    0x00C36400, // Ceph
    0x01161970, // GFS 2
    0x7461636F, // OCFS 2
    0x0BD00BD0, // Lustre
    0x786F4256, // a folder of the machine that a virtual one runs on
};

constexpr uint32_t kWatched = IN_CLOSE_WRITE | IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF |
                              IN_MOVE_SELF | IN_ATTRIB | IN_ONLYDIR;

} // namespace

bool IsOfThisMachine(const std::string& folder)
{
    struct statfs status {};
    if (statfs(folder.c_str(), &status) != 0) return false;
    const auto kind = static_cast<uint32_t>(status.f_type);
    return std::find(std::begin(kForeign), std::end(kForeign), kind) == std::end(kForeign);
}

FolderWatch::FolderWatch() : file_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}

bool FolderWatch::Add(const std::string& folder, int32_t number)
{
    if (!file_ || !IsOfThisMachine(folder)) return false;
    const int watch = inotify_add_watch(file_.Get(), folder.c_str(), kWatched);
    if (watch < 0) return false;
    numbers_.emplace(watch, number);
    return true;
}

void FolderWatch::Remove(int32_t number)
{
    for (auto at = numbers_.begin(); at != numbers_.end();) {
        if (at->second != number) {
            ++at;
            continue;
        }
        const int watch = at->first;
        at = numbers_.erase(at);
        // Two names may lead to one folder.
        if (!numbers_.contains(watch)) inotify_rm_watch(file_.Get(), watch);
    }
}

std::vector<FolderWatch::Change> FolderWatch::Changes()
{
    std::vector<Change> changes;
    alignas(inotify_event) char events[16 << 10];
    for (;;) {
        const ssize_t size = file_ ? read(file_.Get(), events, sizeof events) : 0;
        if (size <= 0) break;
        Take(events, static_cast<size_t>(size), changes);
    }
    const auto key = [](const Change& change) { return std::tie(change.folder, change.name); };
    std::sort(changes.begin(), changes.end(), [&](auto& a, auto& b) { return key(a) < key(b); });
    const auto same = [&](auto& a, auto& b) { return key(a) == key(b); };
    changes.erase(std::unique(changes.begin(), changes.end(), same), changes.end());
    return changes;
}

void FolderWatch::Take(const char* events, size_t size, std::vector<Change>& changes)
{
    for (size_t at = 0; at + sizeof(inotify_event) <= size;) {
        inotify_event event{};
        std::memcpy(&event, events + at, sizeof event);
        const char* name = events + at + sizeof event;
        at += sizeof event + event.len;
        if (event.mask & IN_Q_OVERFLOW) {
            for (const auto& [watch, number] : numbers_) changes.push_back({number, {}});
            continue;
        }
        const auto [first, last] = numbers_.equal_range(event.wd);
        for (auto known = first; known != last; ++known)
            changes.push_back({known->second, event.len > 0 ? std::string(name) : std::string()});
    }
}

} // namespace nib
