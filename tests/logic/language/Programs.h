#pragma once
// Programs as tests write them: one text, and items that it may include.

#include "language/Dialects.h"
#include "language/FindingCodes.h"
#include "language/ProgramAnalyser.h"

#include <map>

namespace nib::test {

/// Items of INC, by their names; FAR is a file that cannot be looked into, BP has none.
struct SomeItems final : IncludeSource {
    std::map<Text, std::shared_ptr<const ProgramText>> items;

    SomeItems()
    {
        Add(u"NAMES", u"EQU ONE TO 1\nCOMMON /C/ SHARED, LIST(3)");
        Add(u"CODE", u"SET.HERE = READ.HERE\nGOSUB OUTSIDE\nINSIDE: RETURN");
        Add(u"CIRCLE", u"$INCLUDE INC CIRCLE\nEQU TWO TO 2");
    }
    void Add(const Text& name, TextView text)
    {
        items[name] = std::make_shared<ProgramText>(nullptr, LinesOfProgram(text));
    }
    Answer Find(TextView file, TextView item, std::shared_ptr<const ProgramText>& text) override
    {
        if (file == u"FAR") return Answer::Unknown;
        const auto found = file == u"INC" ? items.find(Text(item)) : items.end();
        if (found == items.end()) return Answer::NoItem;
        text = found->second;
        return Answer::Found;
    }
};

inline const Dialect* CommonDialect()
{
    static Dialects dialects;
    return dialects.Find(u"common");
}

struct AnalysedProgram {
    std::unique_ptr<ProgramAnalyser> analyser;
    const ProgramFacts& program;
};

inline AnalysedProgram Analysed(TextView text, IncludeSource& items, bool dialect = true)
{
    auto analyser = std::make_unique<ProgramAnalyser>(dialect ? CommonDialect() : nullptr, u"BP", u"MAIN");
    analyser->Replace(0, 0, LinesOfProgram(text));
    const ProgramFacts& program = analyser->Analyse(items);
    return {std::move(analyser), program};
}

} // namespace nib::test
