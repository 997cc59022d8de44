#include "documents/CompilerOutput.h"

#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"
#include "language/BasicDirective.h"
#include "language/WordTable.h"
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

/// The program that the nearest heading at or above the line names.
std::optional<ProgramName> HeadingAbove(TextView output, size_t lineStart)
{
    for (size_t start = std::min(lineStart, output.size());;) {
        const TextView line = LineAt(output, start);
        const TextView names = line.starts_with(kCompiling) ? Trim(line.substr(kCompiling.size())) : TextView();
        const size_t blank = names.find(u' ');
        if (blank != TextView::npos) return ProgramName{Text(names.substr(0, blank)), Text(Trim(names.substr(blank)))};
        if (start == 0) return std::nullopt;
        const size_t before = start < 2 ? TextView::npos : output.rfind(u'\n', start - 2);
        start = before == TextView::npos ? 0 : before + 1;
    }
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
    using Kind = OutputTarget::Kind;
    TextView line = LineAt(output, lineStart);
    if (std::optional<OutputTarget> broken = RunTimeMessage(line)) return *std::move(broken);
    // Other compilers may tell what they compile as well; this one counts its errors at the end.
    std::optional<ProgramName> program = HeadingAbove(output, lineStart);
    if (!program || output.find(kErrorCount) == TextView::npos) return {};
    std::vector<int32_t> lines = TakeLineNumbers(line);
    if (lines.empty() || !line.starts_with(u": ")) return {Kind::Nowhere, {}, {}};
    return {Kind::Program, *std::move(program), std::move(lines)};
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
