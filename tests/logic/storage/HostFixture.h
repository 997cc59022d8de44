#pragma once
#include "TempFolder.h"
#include "fakes/Failure.h"
#include "hosts/HostConnection.h"
#include "hosts/accounts/AccountLink.h"

#include <gtest/gtest.h>

namespace nib::test {

struct ScriptedPicker : PickerDialog {
    std::optional<PickerAnswer> Run(const SelectRequest&, TextView startPath, ItemBrowser&) override
    {
        start = startPath;
        return answer;
    }
    std::optional<PickerAnswer> answer;
    Text start;
};

struct ScriptedBoxes : MessageBoxes {
    int32_t Show(TextView text, int32_t, TextView) override
    {
        shown.emplace_back(text);
        return answer;
    }
    void Beep() override {}
    std::vector<Text> shown;
    int32_t answer = message_box::kAnswerYes;
};

/// A connection to an account DEMO with a little of everything.
struct HostFixture : testing::Test {
    HostFixture()
    {
        folder.File("accounts/DEMO/BP/INVOICE", "A=1\nPRINT A\n");
        folder.Folder("accounts/DEMO/VOC");
        connection =
            std::make_unique<HostConnection>(Config(), picker, boxes, AccountLinks(FromUtf8(folder / "programs")));
    }
    HostConfig Config() const
    {
        const Text text = u"# hosts\n[*]\nname=box\naccount=DEMO\nroot=" + FromUtf8(folder / "accounts") +
                          u"\n[Odd]\nkind=x\n[west]\ncharset=windows-1252\nroot=" + FromUtf8(folder / "accounts");
        return HostConfig::Parse(text, folder.Path());
    }
    std::shared_ptr<mvItem> Open(TextView path, bool readOnly = false, bool lock = false)
    {
        return connection->OpenServerForPath(path, readOnly, lock);
    }

    TempFolder folder;
    ScriptedPicker picker;
    ScriptedBoxes boxes;
    std::unique_ptr<HostConnection> connection;
    HostLinks links{Config(), AccountLinks({})};
    HostBrowser browser{links};
};

} // namespace nib::test
