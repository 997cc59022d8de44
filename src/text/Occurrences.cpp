#include "text/Occurrences.h"

#include "text/Units.h"

#include <algorithm>

namespace nib {

namespace {

bool IsNameUnit(char16_t c)
{
    return units::IsLetter(c) || units::IsDigit(c) || c == u'.' || c == u'_' || c == u'$' || c == u'%' || c == u'@' ||
           c >= 0xC0;
}

bool IsName(TextView text)
{
    const auto isLetter = [](char16_t c) { return units::IsLetter(c) || c >= 0xC0; };
    return !text.empty() && !units::IsDigit(text[0]) && std::all_of(text.begin(), text.end(), IsNameUnit) &&
           std::any_of(text.begin(), text.end(), isLetter);
}

/// Signs that a name may begin with, each of which is a token of its own.
int32_t SignsBefore(TextView text, int32_t column)
{
    int32_t signs = 0;
    while (signs < column && TextView(u"@%$").find(text[static_cast<size_t>(column - signs - 1)]) != TextView::npos)
        ++signs;
    return signs;
}

/// A line that no lexer has cut is one token.
bool IsUncut(const Token& token, ColumnRange word)
{
    return token.type == kPlainToken && token.start <= word.first && word.last <= token.End();
}

} // namespace

Text NameAt(SourceDocument& document, Position at)
{
    at = document.Clamp(at);
    if (document.LineLength(at.line) > kLongestRead) return {};
    std::vector<Token> tokens;
    document.ScanLine(at.line, tokens);
    Text scratch;
    const TextView text = document.LineText(at.line, scratch);
    const auto piece = [&](ColumnRange range) {
        return text.substr(static_cast<size_t>(range.first), static_cast<size_t>(range.last - range.first));
    };
    for (int32_t column : {at.col, at.col - 1}) {
        const auto holds = [&](const Token& t) { return t.start <= column && column < t.End(); };
        const auto token = std::find_if(tokens.begin(), tokens.end(), holds);
        if (token == tokens.end() || token->role != WordRole::None || token->attributes != 0) continue;
        ColumnRange range{token->start, token->End()};
        if (piece(range).back() == u':') --range.last; // of a label
        range.first -= SignsBefore(text, range.first);
        if (IsName(piece(range))) return Text(piece(range));
        if (!IsUncut(*token, range)) continue;
        range = WordAt(text, column);
        if (IsName(piece(range))) return Text(piece(range));
    }
    return {};
}

bool Occurrences::IsName(TextView text, std::span<const Token> tokens, ColumnRange range)
{
    if (SignsBefore(text, range.first) > 0) return false;
    const auto last = std::find_if(tokens.begin(), tokens.end(), [&](const Token& t) { return range.last <= t.End(); });
    if (last == tokens.end()) return false;
    const bool whole =
        last->End() == range.last || (last->End() == range.last + 1 && text[static_cast<size_t>(range.last)] == u':');
    const int32_t first = last->start - SignsBefore(text, last->start);
    return (whole && first == range.first) || IsUncut(*last, range);
}

} // namespace nib
