#include "hosts/SeenFile.h"

#include "platform/posix/FileName.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include <time.h>

namespace nib {

namespace {

constexpr int64_t kSecond = 1'000'000'000;
/// The clock of file times stands still for up to 10 ms; a further program may hold on to what it wrote before.
constexpr int64_t kGrain = kSecond / 20;
/// No program writes that much within a tick, and to read it again would make the next save slower.
constexpr int64_t kLargestDoubt = 8 << 20;

/// A further change of a file gives it another stamp than this one, which was taken right now. The clock of a distant
/// disk may be ahead of ours; then there is no telling.
bool IsCertain(const FileStamp& stamp)
{
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    const int64_t age = static_cast<int64_t>(now.tv_sec) * kSecond + now.tv_nsec - stamp.changed;
    return age > kGrain || age < -kSecond || stamp.size > kLargestDoubt;
}

FileStamp Look(const std::string& path)
{
    FileStamp stamp;
    if (int error = ReadStamp(path, stamp); error != 0)
        throw SystemFailure(FromFileName(path) + u" cannot be saved", error);
    return stamp;
}

/// As HashBytes tells contents apart, in a third of the time: the steps of four chains wait for nothing of each other.
uint64_t HashInChains(std::string_view bytes)
{
    constexpr uint64_t kOdd = 0x9E3779B97F4A7C15;
    constexpr size_t kChains = 4;
    uint64_t chains[kChains] = {1, 2, 3, 4};
    constexpr size_t kStep = sizeof chains;
    size_t at = 0;
    for (uint64_t words[kChains]; at + kStep <= bytes.size(); at += kStep) {
        std::memcpy(words, bytes.data() + at, kStep);
        for (size_t i = 0; i < kChains; ++i) chains[i] = std::rotl((chains[i] ^ words[i]) * kOdd, 29);
    }
    uint64_t hash = HashBytes(bytes.substr(at));
    for (uint64_t chain : chains) hash = std::rotl((hash ^ chain) * kOdd, 29);
    return hash;
}

} // namespace

SeenFile::SeenFile(const FileStamp& stamp, std::string_view bytes) : prints_{PrintOf(bytes)}
{
    SetStamp(stamp);
}

void SeenFile::SetStamp(const FileStamp& stamp)
{
    stamp_ = stamp;
    certain_ = IsCertain(stamp);
}

SeenFile SeenFile::Now(const std::string& path)
{
    SeenFile seen(Look(path));
    // What can be written and not read is known by its stamp alone.
    SystemErrorOf([&] {
        const FileContent content = ReadWholeFile(path);
        seen = SeenFile(content.stamp, content.Bytes());
    });
    return seen;
}

SeenFile::Print SeenFile::PrintOf(std::string_view bytes)
{
    return {static_cast<int64_t>(bytes.size()), HashInChains(bytes)};
}

Text SeenFile::Version() const
{
    if (prints_.empty()) return {};
    const Print& print = prints_.front();
    return Decimal(print.size) + u":" + Hex(static_cast<int32_t>(print.hash >> 32)) + u":" +
           Hex(static_cast<int32_t>(print.hash));
}

StoredState SeenFile::Compare(const std::string& path)
{
    const FileStamp now = Look(path);
    if (!now.Exists()) return Exists() ? StoredState::Gone : StoredState::Same;
    if (now == stamp_ && certain_) {
        prints_.resize(std::min<size_t>(prints_.size(), 1));
        return StoredState::Same;
    }
    const bool possible =
        std::any_of(prints_.begin(), prints_.end(), [&](const Print& print) { return print.size == now.size; });
    if (!possible) return StoredState::Changed;
    const FileContent content = ReadWholeFile(path);
    if (std::find(prints_.begin(), prints_.end(), PrintOf(content.Bytes())) == prints_.end())
        return StoredState::Changed;
    *this = SeenFile(content.stamp, content.Bytes());
    return StoredState::Same;
}

} // namespace nib
