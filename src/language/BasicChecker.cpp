#include "language/BasicChecker.h"

#include "text/SourceDocument.h"

namespace nib {

namespace {

/// More than any program has; an end for items that include one another in ever new ways.
constexpr int32_t kMostIncludes = 1000;

} // namespace

std::vector<Finding> BasicChecker::Check(SourceDocument& program, TextView file, TextView item)
{
    Run({program, file, item, 0, nullptr});
    parens_.Finish();
    blocks_.Finish();
    labels_.Finish();
    if (const std::optional<int32_t> last = blocks_.LastLine()) findings_.DropBehind(*last);
    return findings_.Take();
}

void BasicChecker::Run(const Source& source)
{
    for (int32_t i = 0; i < source.document.LineCount(); ++i) {
        const Place place{i + 1, source.number};
        const Text text = source.document.GetLine(i);
        const TextView trimmed = Trim(text);
        if (inComment_ || trimmed.starts_with(u"/*")) {
            inComment_ = trimmed.find(u"*/") == TextView::npos;
            continue;
        }
        const BasicDirective directive = ReadDirective(text);
        if (directive.kind != BasicDirective::Kind::None) {
            Directive(directive, source, place);
            continue;
        }
        line_.Scan(source.document, i);
        if (line_.IsCode()) Line(source, place);
    }
}

void BasicChecker::Line(const Source& source, Place place)
{
    const BasicToken& first = line_.Tokens().front();
    const size_t size = line_.Tokens().size();
    if (size > 1 && (first.Is(BasicKey::Routine) || first.Is(BasicKey::Nested))) {
        blocks_.NewRoutine();
        labels_.NewRoutine();
    }
    const bool continued = continues_ || parens_.IsOpen();
    if (const char16_t quote = line_.OpenQuote())
        findings_.Add(place, u"The string that begins with " + Text(1, quote) + u" is not closed.");
    parens_.Line(line_, place);
    labels_.Line(line_, place, continued);
    blocks_.Line(line_, place);
    continues_ = line_.Continues();

    if (!first.Is(BasicKey::Include) || size < 2) return;
    const BasicToken::Kind next = line_.Tokens()[1].kind;
    if (next != BasicToken::Kind::Word && next != BasicToken::Kind::String && next != BasicToken::Kind::Number) return;
    const Text names(line_.Whole().substr(static_cast<size_t>(first.end)));
    Directive(ReadInclude(names), source, place);
}

void BasicChecker::Directive(const BasicDirective& directive, const Source& source, Place place)
{
    using Kind = BasicDirective::Kind;
    switch (directive.kind) {
    case Kind::None:
    case Kind::Other: return;
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
    SourceDocument* text = nullptr;
    const IncludeItems::Answer answer =
        ++includeCount_ > kMostIncludes ? IncludeItems::Answer::Unknown : includes_.Find(file, directive.item, text);
    if (answer == IncludeItems::Answer::Found) {
        const int32_t number = findings_.AddItem(name, place);
        return Run({*text, file, directive.item, number, &source});
    }
    labels_.SetIncomplete();
    if (conditionals_ > 0 || directive.kind == BasicDirective::Kind::Insert) return;
    if (answer == IncludeItems::Answer::NoItem) findings_.Add(place, u"Include item " + name + u" does not exist.");
    if (answer == IncludeItems::Answer::NoFile)
        findings_.Add(place, u"Include item " + name + u" does not exist: there is no file " + file + u".");
}

} // namespace nib
