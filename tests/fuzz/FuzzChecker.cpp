// The checker and the analyser of programs: any text at all, as a program and as what it includes.

#include "language/BasicChecker.h"
#include "language/Dialects.h"
#include "language/ProgramAnalyser.h"

#include <cstddef>

namespace {

using namespace nib;

/// Every item is the same text.
struct OneItem final : IncludeSource {
    explicit OneItem(std::shared_ptr<const ProgramText> only) : text(std::move(only)) {}
    Answer Find(TextView file, TextView, std::shared_ptr<const ProgramText>& found) override
    {
        if (file.starts_with(u'N')) return Answer::NoItem;
        found = text;
        return Answer::Found;
    }
    std::shared_ptr<const ProgramText> text;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const auto program = std::make_shared<const ProgramText>(
        nullptr, LinesOfProgram(FromUtf8({reinterpret_cast<const char*>(data), size})));
    OneItem items(program);
    for (const Finding& finding : BasicChecker(items).Check(*program, u"BP", u"MAIN"))
        if (finding.line < 1 || finding.line > program->LineCount() || English(finding.text).empty()) __builtin_trap();
    static Dialects dialects;
    const std::vector<Text> lines = LinesOfProgram(FromUtf8({reinterpret_cast<const char*>(data), size}));
    ProgramAnalyser analyser(dialects.Find(u"common"), u"BP", u"MAIN");
    analyser.Replace(0, 0, lines);
    analyser.Analyse(items);
    // Half of it goes and comes back.
    const auto half = static_cast<int32_t>(lines.size() / 2);
    analyser.Replace(0, half, {});
    analyser.Analyse(items);
    analyser.Replace(0, 0, std::span(lines).first(static_cast<size_t>(half)));
    for (const ProgramFinding& finding : analyser.Analyse(items).findings)
        if (finding.at.start.line >= analyser.Lines()->LineCount() || finding.at.end < finding.at.start)
            __builtin_trap();
    for (const Occurrence& place : analyser.Known().occurrences)
        if (place.symbol < 0 || place.symbol >= static_cast<int32_t>(analyser.Known().symbols.size())) __builtin_trap();
    analyser.Words(0, analyser.Lines()->LineCount());
    return 0;
}
