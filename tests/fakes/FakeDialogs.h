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
    void Find() override { Search(u"find"); }
    void FindNext() override { Search(u"find next"); }
    void Replace() override { Search(u"replace"); }
    void Results() override { journal.Add(u"results"); }
    void Properties(mvDocument&) override { journal.Add(u"properties"); }
    void Settings() override { journal.Add(u"settings"); }
    void About() override { journal.Add(u"about"); }
    void HelpTopics() override { journal.Add(u"help"); }
    void Goto(Text& target) override { journal.Add(u"goto '" + target + u"'"); }
    void Print(mvDocument&) override { journal.Add(u"print"); }
    void OfferRecovered(modAutoRecover&, TextView folder, const DynamicArray& names) override
    {
        if (onOffer) onOffer(folder, names);
    }

    Journal& journal;
    std::function<void(TextView folder, const DynamicArray& names)> onOffer;
    std::function<void(TextView what)> onFind;
    bool failing = false;

private:
    void Search(TextView what)
    {
        journal.Add(Text(what));
        if (onFind) onFind(what);
    }
};

struct HeardEvents final : AutomationEvents {
    explicit HeardEvents(Journal& target) : journal(target) {}
    void Quit() override { journal.Add(u"Quit"); }
    void Custom(TextView name) override { journal.Add(u"Custom " + Text(name)); }
    void DocumentClose(int32_t id) override { journal.Add(u"DocumentClose " + Decimal(id)); }

    Journal& journal;
};

} // namespace nib::test
