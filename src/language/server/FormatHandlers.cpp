// The editor's formatter for clients. They get what changes of a line, so that carets and marks stay where they are.

#include "editing/LexClass.h"
#include "editing/MvEdit.h"
#include "editing/operations/OpFormat.h"
#include "language/server/Handlers.h"

#include <algorithm>

namespace nib::handlers {

namespace {

constexpr int32_t kWidestTab = 16;

size_t FrontOf(TextView line)
{
    return std::min(line.find_first_not_of(u" \t"), line.size());
}

/// With blanks for the TABs in front, which is how the formatter knows indents.
Text WithBlanks(TextView line, int32_t tabSize)
{
    const size_t front = FrontOf(line);
    Text blanks;
    for (char16_t c : line.substr(0, front)) {
        const size_t width = static_cast<size_t>(std::max(tabSize, 1));
        blanks.append(c == u'\t' ? width - blanks.size() % width : 1, u' ');
    }
    return blanks.append(line.substr(front));
}

/// The part of a line in front of its code, as it is and as it should be.
struct Front {
    Text now;
    Text then;
};

Front FrontOf(TextView raw, TextView line, const BlankEdit& edit)
{
    const auto label = static_cast<size_t>(edit.label);
    const size_t labelAt = edit.label > 0 ? static_cast<size_t>(edit.leading) : 0;
    const size_t code = std::min(line.find_first_not_of(u' ', labelAt + label), line.size());
    const auto blanks = code - labelAt - label + static_cast<size_t>(edit.delta);
    const size_t rawCode = raw.size() - (line.size() - code);
    return {Text(raw.substr(0, rawCode)), Text(line.substr(labelAt, label)).append(blanks, u' ')};
}

void AddEdit(Json& edits, const ClientText& text, int32_t line, size_t start, size_t end, TextView with)
{
    const TextRange range{{static_cast<int32_t>(start), line}, {static_cast<int32_t>(end), line}};
    edits.push_back({{"range", text.Write(range)}, {"newText", ToJson(with)}});
}

void AddEdits(Json& edits, const ClientText& text, int32_t line, TextView laidOut, const BlankEdit& edit)
{
    const Text raw = text.Line(line);
    const auto [now, then] = FrontOf(raw, laidOut, edit);
    if (now != then) {
        const auto start =
            static_cast<size_t>(std::mismatch(now.begin(), now.end(), then.begin(), then.end()).first - now.begin());
        const size_t most = std::min(now.size(), then.size()) - start;
        size_t same = 0;
        while (same < most && now[now.size() - 1 - same] == then[then.size() - 1 - same]) ++same;
        AddEdit(edits, text, line, start, now.size() - same, TextView(then).substr(start, then.size() - same - start));
    }
    const size_t trailing = std::min(static_cast<size_t>(edit.trailing), raw.size() - now.size());
    if (trailing > 0) AddEdit(edits, text, line, raw.size() - trailing, raw.size(), {});
}

Json Layout(Workspace& workspace, const ClientDocument& open, const Json& params, int32_t first, int32_t last)
{
    FormatRules rules{MvEdit()};
    const Json& tabSize = Below(params, "/options/tabSize");
    if (tabSize.is_number_integer())
        rules.tabSize = static_cast<int32_t>(std::clamp<int64_t>(tabSize.get<int64_t>(), 0, kWidestTab));

    Text whole;
    const int32_t count = open.text.LineCount();
    for (int32_t line = 0; line < count; ++line)
        whole.append(line > 0 ? u"\n" : u"").append(WithBlanks(open.text.Line(line), rules.tabSize));
    clsKeywords words;
    words.SetRules(workspace.dialects.Rules(workspace.DialectOf(open.path)));
    LexClass lexer;
    lexer.SetKeywords(words);
    SourceDocument document;
    document.SetLexer(&lexer);
    document.SetText(whole);
    document.EnsureScanned();

    Json edits = Json::array();
    FormatWalk walk(rules);
    for (int32_t line = 0; line <= last; ++line) {
        const Text text = document.GetLine(line);
        const BlankEdit edit = walk.Next(text, document.GetLineData(line, LineWord::Lexer));
        if (line >= first) AddEdits(edits, open.text, line, text, edit);
    }
    return edits;
}

} // namespace

Json Format(Workspace& workspace, const Json& params)
{
    const ClientDocument& open = workspace.Get(Below(params, "/textDocument/uri"));
    return Layout(workspace, open, params, 0, open.text.LineCount() - 1);
}

Json FormatRange(Workspace& workspace, const Json& params)
{
    const ClientDocument& open = workspace.Get(Below(params, "/textDocument/uri"));
    const TextRange range = open.text.ReadRange(Member(params, "range"));
    const bool endsBefore = range.end.col == 0 && range.end.line > range.start.line;
    return Layout(workspace, open, params, range.start.line, range.end.line - (endsBefore ? 1 : 0));
}

} // namespace nib::handlers
