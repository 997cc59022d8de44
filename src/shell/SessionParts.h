#pragma once
#include <cstdint>

namespace nib {

/// What other rooms add to the life of the program. Each part does nothing until its room plugs it in.
class SessionParts {
public:
    virtual ~SessionParts() = default;
    virtual void LoadSettings() {}
    virtual void SaveSettings() {}
    /// Offers what an earlier session left behind.
    virtual void ScanRecovery() {}
    /// A clean end leaves nothing to recover.
    virtual void EndRecovery() {}
    /// Some minutes of work have passed: what changed goes to its recovery file.
    virtual void AutoSavePass() {}
    /// Copies what has changed before a call that may not come back, and keeps the copies until the release. Answers
    /// what the release wants back.
    virtual int32_t HoldAutoSaveGuard() { return 0; }
    virtual void ReleaseAutoSaveGuard(int32_t) {}
    /// Asked for until it answers true: what is known of the host may not suffice yet.
    virtual bool LoadHostConfiguration() { return true; }
    virtual void ReleaseHostConfiguration() {}
    /// The forms beside the main window.
    virtual void LoadForms() {}
    virtual void UnloadForms() {}
    /// Tells automation clients that the program ends.
    virtual void RaiseQuit() {}
};

} // namespace nib
