#pragma once
// What commands and automation reach outside the documents, all of it into one journal.

#include "automation/Application.h"
#include "base/Error.h"
#include "fakes/Journal.h"
#include "shell/MainWindow.h"

#include <functional>

namespace nib::test {

struct FakeDialogs final : Dialogs {
    explicit FakeDialogs(Journal& target) : journal(target) {}

    void Load(Program&) override
    {
        journal.Add(u"LoadForms");
        if (failing) throw Error{71, u"No forms"};
    }
    void Unload() override { journal.Add(u"UnloadForms"); }
    void Show(Form form, mvDocument*) override
    {
        static constexpr TextView kNames[] = {u"find", u"find next", u"replace",    u"results", u"settings",
                                              u"help", u"about",     u"properties", u"print"};
        journal.Add(Text(kNames[static_cast<size_t>(form)]));
    }
    void Goto(Text& target) override { journal.Add(u"goto '" + target + u"'"); }
    void OfferRecovered(modAutoRecover&, TextView folder, const DynamicArray& names) override
    {
        if (onOffer) onOffer(folder, names);
    }

    Journal& journal;
    std::function<void(TextView folder, const DynamicArray& names)> onOffer;
    bool failing = false;
};

struct HeardEvents final : AutomationEvents {
    explicit HeardEvents(Journal& target) : journal(target) {}
    void Ready() override { journal.Add(u"Ready"); }
    void Quit() override { journal.Add(u"Quit"); }
    void Custom(TextView name) override { journal.Add(u"Custom " + Text(name)); }
    void DocumentClose(int32_t id) override { journal.Add(u"DocumentClose " + Decimal(id)); }

    Journal& journal;
};

} // namespace nib::test
