// The checker of programs: any text at all, as a program and as what it includes.

#include "language/BasicChecker.h"

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
        if (finding.line < 1 || finding.line > program->LineCount() || finding.text.empty()) __builtin_trap();
    return 0;
}
