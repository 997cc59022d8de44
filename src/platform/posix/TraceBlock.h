#pragma once
#include <cstdint>
#include <string>

namespace nib {

/// A block of 32-bit words that processes of one user share: words 0 and 1 count the slots used and possible, the slots
/// follow. A word is read and written whole; there is no lock.
class TraceBlock {
public:
    TraceBlock() = default;
    ~TraceBlock() { Close(); }
    TraceBlock(const TraceBlock&) = delete;
    TraceBlock& operator=(const TraceBlock&) = delete;

    /// False when the system gives no block, or one that others could write. Throws kSubscript when it was made for
    /// another number of slots or holds nonsense.
    bool Open(const std::string& name, int32_t capacity);
    void Close();
    bool IsOpen() const { return words_ != nullptr; }
    /// False for a slot that is not in use.
    bool Read(int32_t slot, uint32_t& value) const;
    /// Takes the slots up to this one into use.
    void Write(int32_t slot, uint32_t value);
    int32_t Used() const;

private:
    void Check(int32_t capacity, bool made);
    uint32_t Load(int32_t word) const;
    void Store(int32_t word, uint32_t value);

    uint32_t* words_ = nullptr;
    int32_t capacity_ = 0;
};

} // namespace nib
