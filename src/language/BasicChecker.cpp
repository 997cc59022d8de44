#include "language/BasicChecker.h"

#include "language/FindingCodes.h"

namespace nib {

namespace {

/// More than any program has; an end for items that include one another in ever new ways.
constexpr int32_t kMostIncludes = 1000;

} // namespace

std::vector<Finding> BasicChecker::Check(const ProgramText& program, TextView file, TextView item)
{
    Run({program, file, item, 0, nullptr});
    parens_.Finish();
    blocks_.Finish();
    labels_.Finish(surely_);
    if (blocks_.LastLine()) findings_.DropBehind(*blocks_.LastLine());
    return findings_.Take();
}

void BasicChecker::Run(const Source& source)
{
    for (int32_t i = 0; i < source.text.LineCount(); ++i) {
        const Place place{i + 1, source.number};
        const ProgramText::Line& line = source.text.At(i);
        if (line.comment) continue;
        const bool statement = !line.directive || line.tokens.Tokens().front().Is(BasicKey::Include);
        if (statement && line.tokens.IsCode()) Line(line.tokens, place);
        if (line.directive) Directive(*line.directive, source, place);
    }
}

void BasicChecker::Line(const BasicLine& line, Place place)
{
    const BasicToken& first = line.Tokens().front();
    const size_t size = line.Tokens().size();
    if (size > 1 && (first.Is(BasicKey::Routine) || first.Is(BasicKey::Nested))) {
        blocks_.NewRoutine();
        labels_.NewRoutine();
    }
    const bool continued = continues_ || parens_.IsOpen();
    if (const char16_t quote = line.OpenQuote())
        findings_.Add(place, finding_code::kOpenString, {Wording::OpenString, {Text(1, quote)}});
    parens_.Line(line, place);
    labels_.Line(line, place, continued);
    blocks_.Line(line, place);
    continues_ = line.Continues();
}

void BasicChecker::Directive(const BasicDirective& directive, const Source& source, Place place)
{
    using Kind = BasicDirective::Kind;
    switch (directive.kind) {
    case Kind::None:
    case Kind::Other:
    case Kind::Internal:
    case Kind::Define: return;
    case Kind::Include:
    case Kind::Insert: Include(directive, source, place); return;
    case Kind::Opaque: labels_.SetIncomplete(); return;
    case Kind::If:
        ++conditionals_;
        blocks_.BeginConditional();
        break;
    case Kind::Else: blocks_.ElseConditional(); break;
    case Kind::EndIf:
        conditionals_ -= conditionals_ > 0 ? 1 : 0;
        blocks_.EndConditional();
        break;
    }
    labels_.SetConditional(conditionals_ > 0);
}

void BasicChecker::Include(const BasicDirective& directive, const Source& source, Place place)
{
    const Text file = directive.file.empty() ? Text(source.file) : directive.file;
    const Text name = file + u" " + directive.item;
    for (const Source* outer = &source; outer; outer = outer->includedBy)
        if (outer->file == file && outer->item == directive.item) return labels_.SetIncomplete();
    std::shared_ptr<const ProgramText> text;
    using enum IncludeSource::Answer;
    const IncludeSource::Answer answer =
        ++includeCount_ > kMostIncludes ? Unknown : includes_.Find(file, directive.item, text);
    if (answer == Found) {
        const int32_t number = findings_.AddItem(name, place);
        return Run({*text, file, directive.item, number, &source});
    }
    labels_.SetIncomplete();
    if (conditionals_ > 0 || directive.kind == BasicDirective::Kind::Insert) return;
    if (answer == NoItem) findings_.Add(place, finding_code::kMissingInclude, {Wording::NoInclude, {name}});
    if (answer == NoFile) findings_.Add(place, finding_code::kMissingInclude, {Wording::NoIncludeFile, {name, file}});
}

} // namespace nib
