#include "platform/posix/TraceBlock.h"

#include "base/Error.h"
#include "platform/posix/Descriptor.h"

#include <atomic>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nib {

namespace {

constexpr int32_t kUsedWord = 0;
constexpr int32_t kCapacityWord = 1;
constexpr int32_t kFirstSlot = 2;

size_t BytesFor(int32_t capacity)
{
    return static_cast<size_t>(capacity + kFirstSlot) * sizeof(uint32_t);
}

Error WrongBlock()
{
    return {error_number::kSubscript, u"The block of the debug log is of another size."};
}

} // namespace

bool TraceBlock::Open(const std::string& name, int32_t capacity)
{
    if (name.empty() || capacity < 1) return false;
    Close();
    const std::string path = "/" + name;
    Descriptor file(shm_open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    struct stat status {};
    // Whoever else may write here could make this program talk to a viewer of his.
    if (!file || fstat(file.Get(), &status) != 0 || status.st_uid != geteuid() || (status.st_mode & 077) != 0) {
        return false;
    }
    const bool made = status.st_size == 0;
    if (made && ftruncate(file.Get(), static_cast<off_t>(BytesFor(capacity))) != 0) return false;
    if (!made && static_cast<size_t>(status.st_size) != BytesFor(capacity)) throw WrongBlock();
    void* at = mmap(nullptr, BytesFor(capacity), PROT_READ | PROT_WRITE, MAP_SHARED, file.Get(), 0);
    if (at == MAP_FAILED) return false;
    words_ = static_cast<uint32_t*>(at);
    capacity_ = capacity;
    Check(capacity, made);
    return true;
}

void TraceBlock::Check(int32_t capacity, bool made)
{
    // Another process may have made it this moment and not have come to its capacity yet.
    if (made || Load(kCapacityWord) == 0) Store(kCapacityWord, static_cast<uint32_t>(capacity));
    if (Load(kCapacityWord) == static_cast<uint32_t>(capacity) && Load(kUsedWord) <= Load(kCapacityWord)) return;
    Close();
    throw WrongBlock();
}

void TraceBlock::Close()
{
    if (words_) munmap(words_, BytesFor(capacity_));
    words_ = nullptr;
}

uint32_t TraceBlock::Load(int32_t word) const
{
    return std::atomic_ref<uint32_t>(words_[word]).load(std::memory_order_relaxed);
}

void TraceBlock::Store(int32_t word, uint32_t value)
{
    std::atomic_ref<uint32_t>(words_[word]).store(value, std::memory_order_release);
}

int32_t TraceBlock::Used() const
{
    if (!words_) return 0;
    const uint32_t used = Load(kUsedWord);
    return used > static_cast<uint32_t>(capacity_) ? capacity_ : static_cast<int32_t>(used);
}

bool TraceBlock::Read(int32_t slot, uint32_t& value) const
{
    if (slot < 0 || slot >= Used()) return false;
    value = Load(kFirstSlot + slot);
    return true;
}

void TraceBlock::Write(int32_t slot, uint32_t value)
{
    if (!words_ || slot < 0 || slot >= capacity_) return;
    Store(kFirstSlot + slot, value);
    if (slot >= Used()) Store(kUsedWord, static_cast<uint32_t>(slot + 1));
}

} // namespace nib
