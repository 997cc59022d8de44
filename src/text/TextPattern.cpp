#include "text/TextPattern.h"

#include <algorithm>

namespace nib {

TextPattern::TextPattern(TextView text, FindOptions options)
    : empty_(text.empty()), plain_(options.regex ? TextView() : text, options),
      regex_(options.regex && !empty_ ? std::make_unique<RegexSearch>(text, options) : nullptr)
{
}

TextView TextPattern::Line(UnitSpan units) const
{
    if (units.wide) return {units.Wide(), units.length};
    if (units.data != lineUnits_.data || units.length != lineUnits_.length) {
        line_.clear();
        if (units.length > line_.capacity()) line_ = {};
        units.AppendTo(line_);
        lineUnits_ = units;
    }
    return line_;
}

std::optional<ColumnRange> TextPattern::In(TextView text, size_t from) const
{
    if (!regex_) {
        const size_t at = plain_.In(text, from);
        if (at == TextView::npos) return {};
        return ColumnRange{static_cast<int32_t>(at), static_cast<int32_t>(at + plain_.Length())};
    }
    if (from > 0 && from < text.size() && text[from - 1] == u'\r' && text[from] == u'\n') ++from; // one break
    while (from <= text.size()) {
        const size_t before = from == 0 ? TextView::npos : text.find_last_of(u"\r\n", from - 1);
        const size_t start = before == TextView::npos ? 0 : before + 1;
        const size_t end = std::min(text.find_first_of(u"\r\n", from), text.size());
        if (const auto hit = regex_->In(text.substr(start, end - start), from - start))
            return ColumnRange{hit->first + static_cast<int32_t>(start), hit->last + static_cast<int32_t>(start)};
        from = end + (text.substr(end, 2) == u"\r\n" ? 2 : 1);
    }
    return {};
}

bool TextPattern::Forward(const LineStore& lines, Position from, FindHit& hit) const
{
    if (!regex_) return plain_.Forward(lines, from, hit);
    for (; from.line < lines.Count(); from = {0, from.line + 1}) {
        const auto found = regex_->In(Line(lines.At(from.line).Units()), static_cast<size_t>(from.col));
        if (!found) continue;
        hit = {{found->first, from.line}, found->last - found->first};
        return true;
    }
    return false;
}

bool TextPattern::Backward(const LineStore& lines, Position from, FindHit& hit) const
{
    if (!regex_) return plain_.Backward(lines, from, hit);
    for (bool any = false; from.line >= 0; --from.line) {
        const TextView line = Line(lines.At(from.line).Units());
        // The last of the hits that a search from the left would come to.
        for (auto next = regex_->In(line, 0); next && next->first <= from.col;) {
            hit = {{next->first, from.line}, next->last - next->first};
            any = true;
            next = regex_->In(line, static_cast<size_t>(std::max(next->last, next->first + 1)));
        }
        if (any) return true;
        if (from.line > 0) from.col = static_cast<int32_t>(lines.Length(from.line - 1));
    }
    return false;
}

Replacement TextPattern::Prepared(TextView replacement) const
{
    if (regex_) return regex_->Prepared(replacement);
    Replacement plain;
    plain.pieces.push_back({Text(replacement)});
    return plain;
}

Text TextPattern::Replaced(TextView line, size_t at, const Replacement& replacement) const
{
    return regex_ ? regex_->Replaced(line, at, replacement) : replacement.pieces.front().text;
}

} // namespace nib
