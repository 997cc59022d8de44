#include "documents/CompilerOutput.h"

#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"
#include "language/BasicDirective.h"
#include "language/WordTable.h"
#include "persistence/store/SettingsStore.h"
#include "text/Units.h"

#include <algorithm>

namespace nib {

namespace {

constexpr TextView kCompiling{u"Compiling "};
constexpr TextView kErrorCount{u" error(s)"};
constexpr TextView kAtLine{u" at line "};
constexpr TextView kOf{u" of "};

TextView LineAt(TextView output, size_t start)
{
    const TextView rest = output.substr(std::min(start, output.size()));
    return rest.substr(0, rest.find_first_of(u"\r\n"));
}

/// Takes "3.4.2" off the front; empty when there is no such number.
std::vector<int32_t> TakeLineNumbers(TextView& line)
{
    std::vector<int32_t> numbers;
    for (;;) {
        const auto end = std::find_if_not(line.begin(), line.end(), units::IsDigit);
        if (end == line.begin()) return {};
        const auto length = static_cast<size_t>(end - line.begin());
        numbers.push_back(LeadingInt(line.substr(0, length)));
        line.remove_prefix(length);
        if (!line.starts_with(u'.')) return numbers;
        line.remove_prefix(1);
    }
}

/// "... at line 3 of PROG", as a program that breaks off ends with.
std::optional<OutputTarget> RunTimeMessage(TextView line)
{
    const size_t at = line.rfind(kAtLine);
    if (at == TextView::npos) return std::nullopt;
    TextView rest = line.substr(at + kAtLine.size());
    std::vector<int32_t> number = TakeLineNumbers(rest);
    if (number.size() != 1 || !rest.starts_with(kOf)) return std::nullopt;
    const TextView name = Trim(rest.substr(kOf.size()));
    if (name.empty()) return std::nullopt;
    return OutputTarget{OutputTarget::Kind::Program, ProgramOfObject(name), std::move(number)};
}

/// The number that a compiler calls the line of an error by, in front of its message or behind "line"; 0 when there is
/// none.
int32_t NumberOfError(TextView text)
{
    const auto behind = std::find_if_not(text.begin(), text.end(), units::IsDigit);
    if (behind != text.begin() && behind != text.end() && (*behind == u':' || *behind == u'.')) return LeadingInt(text);
    for (const TextView word : {TextView(u"Line "), TextView(u"line ")})
        for (size_t at = text.find(word); at != TextView::npos; at = text.find(word, at + 1)) {
            const size_t number = at + word.size();
            const bool whole = at == 0 || !units::IsLetter(text[at - 1]);
            if (whole && number < text.size() && units::IsDigit(text[number])) return LeadingInt(text.substr(number));
        }
    return 0;
}

std::optional<ProgramName> HeadingOn(TextView line)
{
    const TextView names = line.starts_with(kCompiling) ? Trim(line.substr(kCompiling.size())) : TextView();
    const size_t blank = names.find(u' ');
    if (blank == TextView::npos) return std::nullopt;
    return ProgramName{Text(names.substr(0, blank)), Text(Trim(names.substr(blank)))};
}

/// The program that the nearest heading at or above the line names.
std::optional<ProgramName> HeadingAbove(TextView output, size_t lineStart)
{
    for (size_t start = std::min(lineStart, output.size());;) {
        if (std::optional<ProgramName> program = HeadingOn(LineAt(output, start))) return program;
        if (start == 0) return std::nullopt;
        const size_t before = start < 2 ? TextView::npos : output.rfind(u'\n', start - 2);
        start = before == TextView::npos ? 0 : before + 1;
    }
}

/// Other compilers may tell what they compile as well; the one whose headings are meant counts its errors at the end.
OutputTarget TargetOfLine(TextView line, const std::optional<ProgramName>& heading, bool counted)
{
    using Kind = OutputTarget::Kind;
    if (std::optional<OutputTarget> broken = RunTimeMessage(line)) return *std::move(broken);
    if (!heading || !counted) return {};
    std::vector<int32_t> lines = TakeLineNumbers(line);
    if (lines.empty() || !line.starts_with(u": ")) return {Kind::Nowhere, {}, {}};
    return {Kind::Program, *heading, std::move(lines)};
}

BasicDirective IncludeOn(TextView line)
{
    using Kind = BasicDirective::Kind;
    const TextView trimmed = Trim(line);
    for (TextView word : {TextView(u"INCLUDE "), TextView(u"INSERT ")})
        if (IsWord(trimmed.substr(0, word.size()), word)) return ReadInclude(trimmed.substr(word.size()));
    BasicDirective directive = ReadDirective(line);
    return directive.kind == Kind::Include || directive.kind == Kind::Insert ? directive : BasicDirective{};
}

/// Items of one account, whether they are open or not.
class AccountSources {
public:
    AccountSources(DocumentServices& services, const ItemPlace& account) : services_(services), place_(account) {}

    /// As named, then in capitals: some systems do not tell case in names. Null when there is none.
    std::shared_ptr<mvItem> Find(const ProgramName& name)
    {
        for (const bool capitals : {false, true}) {
            place_.folder = capitals ? ToUpper(name.file) : name.file;
            place_.itemId = capitals ? ToUpper(name.item) : name.item;
            const Text path = services_.connection.ComposeHostPath(place_);
            std::shared_ptr<mvItem> item = OrDefault(
                [&] { return services_.connection.OpenServerForPath(path, true, false); }, std::shared_ptr<mvItem>());
            if (item && item->IsItem() && item->Exists()) return item;
        }
        return nullptr;
    }
    std::shared_ptr<mvItem> FindCatalogued(TextView name)
    {
        place_.folder.clear();
        place_.itemId.clear();
        const Text path = services_.connection.ComposeHostPath(place_);
        const auto ask = [&]() -> std::optional<ProgramName> {
            const std::shared_ptr<mvItem> account = services_.connection.OpenServerForPath(path, true, false);
            mvSession* session = account ? account->Session() : nullptr;
            if (!session) return std::nullopt;
            std::optional<ProgramName> program = CataloguedProgram(*session, name);
            return program ? program : CataloguedProgram(*session, ToUpper(name));
        };
        const auto program =
            place_.provider == kHostProvider ? OrDefault(ask, std::optional<ProgramName>()) : std::nullopt;
        return program ? Find(*program) : nullptr;
    }
    /// As it stands in its window, else as it is stored.
    Text LineOf(mvItem& item, int32_t line)
    {
        const std::shared_ptr<mvDocument> open = services_.openDocuments.On(item);
        if (!open || !open->View()) return Text(LineAt(Field(item.ReadItem(0, 0, 0), u'\n', line), 0));
        SourceDocument& text = open->View()->txtText().Document();
        return line >= 1 && line <= text.LineCount() ? text.GetLine(line - 1) : Text();
    }

private:
    DocumentServices& services_;
    ItemPlace place_;
};

} // namespace

std::optional<ProgramName> CataloguedProgram(mvSession& session, TextView name)
{
    return CataloguedProgram([&](int32_t attribute) { return session.GetConfiguration(name, attribute); });
}

OutputTarget TargetOfOutput(TextView output, size_t lineStart)
{
    return TargetOfLine(LineAt(output, lineStart), HeadingAbove(output, lineStart),
                        output.find(kErrorCount) != TextView::npos);
}

std::vector<CompilerError> ErrorsIn(TextView output)
{
    using Kind = OutputTarget::Kind;
    std::vector<CompilerError> errors;
    const bool counted = output.find(kErrorCount) != TextView::npos;
    std::optional<ProgramName> heading;
    for (size_t start = 0; start < output.size();) {
        const TextView line = LineAt(output, start);
        start += line.size() + 1;
        if (std::optional<ProgramName> program = HeadingOn(line)) heading = std::move(program);
        const int32_t number = NumberOfError(line);
        if (number <= 0) continue;
        OutputTarget target = TargetOfLine(line, heading, counted);
        if (target.kind == Kind::Nowhere) continue;
        if (target.kind == Kind::AnyNumber) target.lines = {number};
        errors.push_back({line, std::move(target)});
    }
    return errors;
}

ProgramName IncludedBy(TextView line)
{
    const BasicDirective include = IncludeOn(line);
    return {include.file, include.item};
}

std::optional<SourcePlace> FindSource(DocumentServices& services, const OutputTarget& target, const ItemPlace& compiled)
{
    AccountSources sources(services, compiled);
    const bool wholeName = !target.program.file.empty();
    std::shared_ptr<mvItem> item =
        sources.Find({wholeName ? target.program.file : compiled.folder, target.program.item});
    if (!item && !wholeName) item = sources.FindCatalogued(target.program.item);
    if (!item) return std::nullopt;
    for (size_t i = 0; i + 1 < target.lines.size(); ++i) {
        const BasicDirective include = IncludeOn(sources.LineOf(*item, target.lines[i]));
        const Text file = include.file.empty() ? item->Folder() : include.file;
        std::shared_ptr<mvItem> included = include.item.empty() ? nullptr : sources.Find({file, include.item});
        if (!included) return SourcePlace{item->Path(), target.lines[i]};
        item = std::move(included);
    }
    return SourcePlace{item->Path(), target.lines.back()};
}

std::shared_ptr<mvItem> FindCatalogued(DocumentServices& services, const ItemPlace& account, TextView name)
{
    return AccountSources(services, account).FindCatalogued(name);
}

} // namespace nib
