#include "diagnostics/DebugLog.h"

#include "diagnostics/Guarded.h"

namespace nib {

namespace {

constexpr TextView kBlockName = u"qkDebugLog";
constexpr int32_t kSlots = 252;
constexpr int32_t kViewerSlot = 0;

} // namespace

uint32_t modDebugLog::GetDebugWindow()
{
    if (!mailbox_.HasDebugMemory()) {
        client_ = 0;
        if (!mailbox_.OpenDebugMemory(kBlockName, kSlots)) return 0;
    }
    uint32_t viewer = 0;
    if (!mailbox_.ReadDebugSlot(kViewerSlot, viewer)) return 0;
    if (viewer != lastViewer_) {
        client_ = 0;
        lastViewer_ = viewer;
    }
    return viewer;
}

uint32_t modDebugLog::GetDebugMask()
{
    if (!mailbox_.HasDebugMemory() || client_ == 0) {
        uint32_t viewer = GetDebugWindow();
        if (viewer) client_ = mailbox_.Register(viewer);
    }
    uint32_t mask = 0;
    return client_ > 0 && mailbox_.ReadDebugSlot(client_, mask) ? mask : 0;
}

bool modDebugLog::Wanted(int32_t mask)
{
    if (!GetDebugWindow()) return false;
    auto bits = static_cast<uint32_t>(mask);
    return mask == 0 || (GetDebugMask() & bits) == bits;
}

void modDebugLog::Log(TextView text, int32_t mask)
{
    if (Wanted(mask)) mailbox_.Send(lastViewer_, client_, text);
}

bool modDebugLog::Wants(int32_t mask) const
{
    // Asking may find a viewer and register with it, which changes nothing that a caller could see.
    return OrDefault([&] { return const_cast<modDebugLog*>(this)->Wanted(mask); }, false);
}

void modDebugLog::Write(TextView line, int32_t mask)
{
    IgnoringErrors([&] { Log(line, mask); });
}

} // namespace nib
