#include "language/service/BlockClosers.h"

#include "language/Dialect.h"

#include <algorithm>

namespace nib {

namespace {

bool Has(const BasicLine& line, BasicKey key)
{
    const auto& tokens = line.Tokens();
    return std::any_of(tokens.begin(), tokens.end(), [&](const BasicToken& token) { return token.Is(key); });
}

size_t IndentOf(const BasicLine& line)
{
    return std::min(line.Whole().find_first_not_of(u' '), line.Whole().size());
}

/// Words of the dialect that open a block by themselves: at the line's end, or all of the line.
std::optional<Text> DialectCloser(const BasicLine& line, const Dialect& dialect)
{
    const auto& tokens = line.Tokens();
    for (const DialectBlock& block : dialect.blocks) {
        if (block.role == BlockRole::Closes || block.closer.empty()) continue;
        const std::vector<Text> words = Split(block.words, u' ');
        if (words.size() > tokens.size()) continue;
        const size_t from = block.last && !block.first ? tokens.size() - words.size() : 0;
        bool same = !block.first || !block.last || words.size() == tokens.size();
        for (size_t i = 0; i < words.size(); ++i) same = same && IsWord(Trim(line.Of(tokens[from + i])), words[i]);
        if (same) return block.closer;
    }
    return std::nullopt;
}

} // namespace

std::optional<Text> CloserOf(const BasicLine& line, const Dialect& dialect)
{
    const auto& tokens = line.Tokens();
    if (tokens.empty()) return std::nullopt;
    const auto labelled = tokens.front().kind == BasicToken::Kind::Label && tokens.size() > 1;
    const BasicToken& first = tokens[labelled ? 1 : 0];
    const BasicToken& last = tokens.back();
    const size_t at = static_cast<size_t>(&first - tokens.data());
    if (last.Is(BasicKey::Then) || last.Is(BasicKey::Else) || last.Is(BasicKey::Locked)) return u"END";
    if (first.Is(BasicKey::For) && !Has(line, BasicKey::Next)) {
        const bool named = at + 1 < tokens.size() && tokens[at + 1].kind == BasicToken::Kind::Word;
        return named ? u"NEXT " + Text(line.Of(tokens[at + 1])) : Text(u"NEXT");
    }
    if (first.Is(BasicKey::Loop) && !Has(line, BasicKey::Repeat)) return u"REPEAT";
    if (first.Is(BasicKey::Begin) && at + 1 < tokens.size() && tokens[at + 1].Is(BasicKey::Case)) return u"END CASE";
    return DialectCloser(line, dialect);
}

std::optional<Text> MissingCloser(const ProgramAnalyser& program, const Dialect& dialect, int32_t line)
{
    const ProgramText& lines = *program.Lines();
    int32_t opener = std::min(line, lines.LineCount()) - 1;
    while (opener >= 0 && !lines.At(opener).tokens.IsCode()) --opener;
    if (opener < 0) return std::nullopt;
    std::optional<Text> closer = CloserOf(lines.At(opener).tokens, dialect);
    if (!closer) return closer;
    for (const FlowBlock& block : program.Flow().Blocks()) {
        if (block.opens.item != 0 || block.opens.line != opener || block.closes.item != 0) continue;
        if (block.closes.line <= opener || block.closes.line >= lines.LineCount()) continue;
        // One that stands further left was there for another block.
        if (IndentOf(lines.At(block.closes.line).tokens) >= IndentOf(lines.At(opener).tokens)) return std::nullopt;
    }
    return closer;
}

} // namespace nib
