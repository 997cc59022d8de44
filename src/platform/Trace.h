#pragma once
#include "base/Text.h"

namespace nib {

/// Where the debug log's lines go. `mask` is a category: 1 errors, 2 object life, 4 command line, 16 lexer tokens.
class TraceChannel {
public:
    virtual ~TraceChannel() = default;
    /// Asked before a line is built, so that a line that nobody wants costs nothing.
    virtual bool Wants(int32_t mask) const = 0;
    virtual void Write(TextView line, int32_t mask) = 0;
};

/// The road to a log viewer in another process: a block of shared words, and a mailbox. A viewer may come and go at any
/// time, hang, or answer nonsense.
class TraceMailbox {
public:
    virtual ~TraceMailbox() = default;
    /// Opens or makes the block of this name with so many slots. False when there is none; throws kSubscript when it
    /// was made for another number of slots.
    virtual bool OpenDebugMemory(TextView name, int32_t capacity) = 0;
    /// False without a block, and for a slot that is not in use.
    virtual bool ReadDebugSlot(int32_t index, uint32_t& value) const = 0;
    virtual bool HasDebugMemory() const = 0;
    /// Tells the viewer this program's name; answers the slot that it gives to it, 0 when it gives none.
    virtual int32_t Register(uint32_t viewer) = 0;
    /// Returns when the viewer has the line, or when it has kept the program waiting long enough.
    virtual void Send(uint32_t viewer, int32_t client, TextView text) = 0;
};

} // namespace nib
