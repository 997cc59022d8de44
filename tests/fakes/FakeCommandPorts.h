#pragma once
// What commands reach outside the documents, all of it into one journal.

#include "documents/DocumentServices.h"
#include "fakes/Journal.h"
#include "shell/CommandPorts.h"

#include <map>

namespace nib::test {

struct FakeCommandPorts final : ChildWindows,
                                SearchForms,
                                ResultsWindow,
                                Dialogs,
                                BlockEdits,
                                Compiler,
                                History,
                                DocumentPrinter,
                                ExtendedCommands {
    Journal journal;
    bool canCompile = false;
    bool canBack = false;
    bool canForward = false;
    bool helpOpens = true;
    std::map<Text, Text> extended;

    CommandPorts All() { return {this, this, this, this, this, this, this, this, this}; }

    void Arrange(int32_t mode) override { journal.Add(u"arrange " + Decimal(mode)); }
    void Find() override { journal.Add(u"find"); }
    void FindNext() override { journal.Add(u"find next"); }
    void Replace() override { journal.Add(u"replace"); }
    void ShowResults(TextView text) override { journal.Add(u"results '" + Text(text) + u"'"); }
    void ResetResults(TextView) override {}
    void AddResultLine(TextView, int32_t, int32_t, bool) override {}
    void Properties(mvDocument&) override { journal.Add(u"properties"); }
    void Settings(int32_t page) override { journal.Add(u"settings " + Decimal(page)); }
    void About() override { journal.Add(u"about"); }
    bool HelpTopics() override
    {
        journal.Add(u"help");
        return helpOpens;
    }
    bool Goto(Text& target) override
    {
        journal.Add(u"goto '" + target + u"'");
        return true;
    }
    void IndentBlock(mvDocument&, bool indent) override { journal.Add(indent ? u"indent" : u"outdent"); }
    void CommentBlock(mvDocument&, bool comment) override { journal.Add(comment ? u"comment" : u"uncomment"); }
    void ToggleCase(mvDocument&) override { journal.Add(u"case"); }
    void Format(mvDocument&) override { journal.Add(u"format"); }
    bool CanCompile(const mvDocument&) const override { return canCompile; }
    void Compile(mvDocument&) override { journal.Add(u"compile"); }
    bool CanBack() const override { return canBack; }
    bool CanForward() const override { return canForward; }
    void Back(mvDocument&) override { journal.Add(u"back"); }
    void Forward(mvDocument&) override { journal.Add(u"forward"); }
    void PrintText(mvDocument&) override { journal.Add(u"print"); }
    Text Look(TextView key) const override { return extended.at(Text(key)); }
    void Raise(mvDocument&, TextView name) override { journal.Add(u"custom " + Text(name)); }
};

} // namespace nib::test
