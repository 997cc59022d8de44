#pragma once
#include "base/Error.h"
#include "fakes/Journal.h"
#include "shell/SessionParts.h"

#include <functional>

namespace nib::test {

/// Writes each step to the journal; the step named in `failing` throws.
class FakeSessionParts final : public SessionParts {
public:
    explicit FakeSessionParts(Journal& journal) : journal_(journal) {}

    void LoadSettings() override { Step(u"LoadSettings"); }
    void SaveSettings() override { Step(u"SaveSettings"); }
    void ScanRecovery() override { Step(u"ScanRecovery"); }
    void EndRecovery() override { Step(u"EndRecovery"); }
    void AutoSavePass() override
    {
        Step(u"AutoSavePass");
        if (onPass) onPass();
    }
    int32_t HoldAutoSaveGuard() override { return onHold ? onHold() : 0; }
    void ReleaseAutoSaveGuard(int32_t guard) override
    {
        if (onRelease) onRelease(guard);
    }
    bool LoadHostConfiguration() override
    {
        Step(u"LoadHostConfiguration");
        return configures;
    }
    void ReleaseHostConfiguration() override { Step(u"ReleaseHostConfiguration"); }
    void LoadForms() override { Step(u"LoadForms"); }
    void UnloadForms() override { Step(u"UnloadForms"); }
    void RaiseQuit() override { Step(u"RaiseQuit"); }

    Text failing;
    std::function<void()> onPass;
    std::function<int32_t()> onHold;
    std::function<void(int32_t)> onRelease;
    bool configures = true;

private:
    void Step(TextView name)
    {
        journal_.Add(Text(name));
        if (name == failing) throw Error{71, Text(name) + u" failed"};
    }

    Journal& journal_;
};

} // namespace nib::test
