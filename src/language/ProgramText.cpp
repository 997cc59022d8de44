#include "language/ProgramText.h"

#include "language/FindingCodes.h"
#include "language/StatementParser.h"
#include "text/SourceDocument.h"

#include <algorithm>

namespace nib {

namespace {

/// More lines than any statement has: what goes on for longer is no program.
constexpr int32_t kMostLines = 500;

std::unique_ptr<const BasicDirective> DirectiveOf(const BasicLine& line)
{
    BasicDirective directive = ReadDirective(line.Whole());
    if (directive.kind == BasicDirective::Kind::None && line.Tokens().size() > 1) {
        const BasicToken& first = line.Tokens().front();
        const BasicToken::Kind next = line.Tokens()[1].kind;
        using enum BasicToken::Kind;
        if (first.Is(BasicKey::Include) && (next == Word || next == String || next == Number))
            directive = ReadInclude(line.Whole().substr(static_cast<size_t>(first.end)));
    }
    if (directive.kind == BasicDirective::Kind::None) return nullptr;
    return std::make_unique<const BasicDirective>(std::move(directive));
}

TextView CommentOf(const BasicLine& line)
{
    return line.Whole().substr(static_cast<size_t>(line.CommentStart()));
}

} // namespace

void ProgramText::Replace(int32_t first, int32_t removed, std::span<const Text> lines)
{
    first = std::clamp(first, 0, LineCount());
    removed = std::clamp(removed, 0, LineCount() - first);
    const auto at = lines_.begin() + first;
    std::vector<std::unique_ptr<Line>> fresh;
    fresh.reserve(lines.size());
    ++stamp_;
    for (const Text& text : lines) {
        auto line = std::make_unique<Line>();
        line->tokens.Scan(text, *words_);
        line->directive = DirectiveOf(line->tokens);
        line->silences = SilencesFindings(CommentOf(line->tokens));
        line->stamp = ++stamp_;
        fresh.push_back(std::move(line));
    }
    lines_.erase(at, at + removed);
    lines_.insert(lines_.begin() + first, std::make_move_iterator(fresh.begin()), std::make_move_iterator(fresh.end()));
    Gather();
}

/// Finds which lines belong together, and reads the statements of those that changed.
void ProgramText::Gather()
{
    bool inComment = false;
    StatementParser parser(*words_);
    for (int32_t at = 0; at < LineCount();) {
        Line& line = *lines_[static_cast<size_t>(at)];
        const TextView text = Trim(line.tokens.Whole());
        line.comment = inComment || text.starts_with(u"/*");
        line.statementLines = 0;
        if (line.comment) inComment = text.find(u"*/") == TextView::npos;
        at += line.comment ? 1 : GatherFrom(at, parser);
    }
}

/// Answers how many lines the statements take that begin at `at`.
int32_t ProgramText::GatherFrom(int32_t at, StatementParser& parser)
{
    Line& first = *lines_[static_cast<size_t>(at)];
    int32_t count = 1;
    uint64_t stamps = first.stamp;
    const auto goesOn = [&](int32_t last) {
        const Line& line = *lines_[static_cast<size_t>(last)];
        return line.tokens.Continues() && !line.directive && count < kMostLines && last + 1 < LineCount();
    };
    // Comments and blank lines may stand between.
    for (int32_t last = at; goesOn(last);) {
        int32_t next = last + 1;
        while (next < LineCount() && !lines_[static_cast<size_t>(next)]->tokens.HasStatement()) ++next;
        if (next == LineCount() || lines_[static_cast<size_t>(next)]->directive) break;
        for (int32_t i = last + 1; i <= next; ++i) {
            Line& line = *lines_[static_cast<size_t>(i)];
            line.comment = false;
            line.statementLines = 0;
            stamps = stamps * 0x9E3779B97F4A7C15ULL + line.stamp;
        }
        count = next - at + 1;
        last = next;
    }
    first.statementLines = count;
    if (first.parsed == stamps) return count;
    first.parsed = stamps;
    for (int32_t i = 0; i < count; ++i) parser.Add(lines_[static_cast<size_t>(at) + static_cast<size_t>(i)]->tokens, i);
    parser.Parse(first.directive.get(), first.statements);
    return count;
}

std::vector<Text> LinesOfProgram(TextView text)
{
    SourceDocument document;
    document.SetText(text);
    std::vector<Text> lines;
    lines.reserve(static_cast<size_t>(document.LineCount()));
    for (int32_t i = 0; i < document.LineCount(); ++i) lines.push_back(document.GetLine(i));
    return lines;
}

} // namespace nib
