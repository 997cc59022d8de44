#include "text/Matching.h"

#include <algorithm>

namespace nib {

namespace {

/// A chain of blocks is not followed further.
constexpr size_t kMostParts = 200;
/// Brackets farther apart than so many lines are seldom meant for each other.
constexpr int32_t kBracketLines = 100;

/// A word with a part in blocks, or what ends a statement.
struct Word {
    TextRange range;
    int32_t step = 0; ///< 1 begins a block, -1 ends one
    WordRole role = WordRole::None;
    bool stops = false;      ///< nothing goes on behind it
    bool followsEnd = false; ///< right behind a word that ends a block, and part of it
};

using Words = std::vector<Word>;

Words WordsOf(std::span<const Token> tokens, TextView text, int32_t line)
{
    Words words;
    bool behindEnd = false;
    for (const Token& token : tokens) {
        const auto piece = text.substr(static_cast<size_t>(token.start), static_cast<size_t>(token.length));
        if (piece.find_first_not_of(u' ') == TextView::npos) continue;
        Word word{{{token.start, line}, {token.End(), line}}};
        word.step = token.attributes == token_attribute::kBeginsBlock ? 1
                    : token.attributes == token_attribute::kEndsBlock ? -1
                                                                      : 0;
        word.role = token.role;
        word.stops = piece == u";";
        word.followsEnd = behindEnd && word.role == WordRole::Continues;
        behindEnd = word.step < 0;
        if (word.step != 0 || word.stops || word.role == WordRole::Leads || word.role == WordRole::Continues)
            words.push_back(word);
    }
    return words;
}

class BlockFinder {
public:
    explicit BlockFinder(SourceDocument& document) : document_(document) {}

    std::optional<BlockMatch> At(Position at)
    {
        if (!IsKnown(at.line) || document_.LineLength(at.line) > kLongestRead) return std::nullopt;
        const Words& words = Line(at.line);
        for (size_t i = 0; i < words.size(); ++i) {
            if (words[i].stops || at < words[i].range.start || words[i].range.end < at) continue;
            // Between two words that touch, the one behind the place.
            if (at == words[i].range.end && i + 1 < words.size() && words[i + 1].range.start == at) continue;
            return From({at.line, i});
        }
        return std::nullopt;
    }

private:
    struct Place {
        int32_t line;
        size_t word;
    };

    bool IsKnown(int32_t line) const { return line < document_.ScannedTo(); }
    const Words& Line(int32_t line)
    {
        if (std::exchange(line_, line) == line) return words_;
        Text scratch;
        std::vector<Token> tokens;
        document_.ScanLine(line, tokens);
        words_ = WordsOf(tokens, document_.LineText(line, scratch), line);
        return words_;
    }
    const Word& At(Place p) { return Line(p.line)[p.word]; }

    /// What ends the block that the word begins.
    std::optional<Place> Close(Place begin)
    {
        int32_t depth = 1;
        const Words& words = Line(begin.line);
        for (size_t i = begin.word + 1; i < words.size(); ++i)
            if ((depth += words[i].step) == 0) return Place{begin.line, i};
        const int32_t line = document_.FindClose(begin.line + 1, depth);
        if (line < 0 || !IsKnown(line)) return std::nullopt;
        depth += document_.OpenBlocks(line) - document_.OpenBlocks(begin.line + 1);
        const Words& last = Line(line);
        for (size_t i = 0; i < last.size(); ++i)
            if ((depth += last[i].step) == 0) return Place{line, i};
        return std::nullopt;
    }

    /// What begins the innermost block that is open in front of the word.
    std::optional<Place> Open(Place end)
    {
        int32_t depth = 1;
        const Words& words = Line(end.line);
        for (size_t i = end.word; i-- > 0;)
            if ((depth -= words[i].step) == 0) return Place{end.line, i};
        const int32_t line = document_.FindOpen(end.line, depth);
        if (line < 0) return std::nullopt;
        const int32_t level = document_.OpenBlocks(end.line) - depth;
        int32_t open = document_.OpenBlocks(line);
        std::optional<Place> found;
        const Words& first = Line(line);
        for (size_t i = 0; i < first.size(); ++i) {
            if (first[i].step > 0 && open == level) found = Place{line, i};
            open = std::max(open + first[i].step, 0);
        }
        return found;
    }

    /// The word that begins the block of a word which leads to it.
    std::optional<Place> LedBy(Place lead)
    {
        const Words& words = Line(lead.line);
        for (size_t i = lead.word + 1; i < words.size() && !words[i].stops && words[i].role != WordRole::Leads; ++i)
            if (words[i].step != 0) return words[i].step > 0 ? std::optional(Place{lead.line, i}) : std::nullopt;
        return std::nullopt;
    }

    std::optional<BlockMatch> From(Place p)
    {
        const Word word = At(p);
        std::optional<Place> begin = p;
        if (word.role == WordRole::Leads) begin = LedBy(p);
        if (word.followsEnd) begin = Open({p.line, p.word - 1});
        if (word.step < 0 || (word.role == WordRole::Continues && !word.followsEnd)) begin = Open(p);
        if (!begin) return std::nullopt;
        BlockMatch match;
        if (!AddPart(match, *begin)) return std::nullopt;
        while (match.parts.size() < kMostParts) {
            const std::optional<Place> before = EndBefore(*begin);
            begin = before ? Open(*before) : std::nullopt;
            if (!begin || !AddPart(match, *begin)) break;
        }
        std::reverse(match.parts.begin(), match.parts.end());
        for (auto next = BeginBehind(last_); next && match.parts.size() < kMostParts; next = BeginBehind(last_)) {
            std::optional<Place> close = Close(*next);
            if (!close) break;
            last_ = *close;
            match.parts.push_back(PartOf(*next, *close));
        }
        AddWords(match);
        return match;
    }

    bool AddPart(BlockMatch& match, Place begin)
    {
        const std::optional<Place> close = Close(begin);
        if (!close) return false;
        if (match.parts.empty()) last_ = *close;
        match.parts.push_back(PartOf(begin, *close));
        return true;
    }

    BlockMatch::Part PartOf(Place begin, Place close)
    {
        BlockMatch::Part part{At(begin).range, {}, document_.OpenBlocks(begin.line)};
        const Words& words = Line(begin.line);
        for (size_t i = 0; i <= begin.word; ++i) part.depth = std::max(part.depth + words[i].step, 0);
        part.end = At(close).range;
        return part;
    }

    /// The word that ends a block which goes on in the one that `begin` begins.
    std::optional<Place> EndBefore(Place begin)
    {
        const Words& words = Line(begin.line);
        for (size_t i = begin.word; i-- > 0 && !words[i].stops;)
            if (words[i].step != 0) return words[i].step < 0 ? std::optional(Place{begin.line, i}) : std::nullopt;
        return std::nullopt;
    }

    std::optional<Place> BeginBehind(Place end)
    {
        const Words& words = Line(end.line);
        for (size_t i = end.word + 1; i < words.size() && !words[i].stops; ++i)
            if (words[i].step != 0) return words[i].step > 0 ? std::optional(Place{end.line, i}) : std::nullopt;
        return std::nullopt;
    }

    void AddWords(BlockMatch& match)
    {
        for (const BlockMatch::Part& part : match.parts) {
            const Words& first = Line(part.begin.start.line);
            auto at = std::find_if(first.begin(), first.end(), [&](const Word& w) { return w.range == part.begin; });
            while (at != first.begin() && !std::prev(at)->stops && std::prev(at)->step == 0) {
                --at;
                if (at->role != WordRole::Leads) continue;
                match.words.push_back(at->range);
                break;
            }
            match.words.push_back(part.begin);
            match.words.push_back(part.end);
            for (const Word& word : Line(part.end.start.line))
                if (word.followsEnd && word.range.start > part.end.start) {
                    match.words.push_back(word.range);
                    break;
                }
        }
    }

    SourceDocument& document_;
    Words words_; ///< of the line asked for last
    int32_t line_ = -1;
    Place last_{}; ///< that ends the last part
};

constexpr TextView kBrackets = u"()[]{}";

class BracketFinder {
public:
    explicit BracketFinder(SourceDocument& document) : document_(document) {}

    std::optional<std::pair<TextRange, TextRange>> At(Position at)
    {
        if (document_.LineLength(at.line) > kLongestRead) return std::nullopt;
        for (Position place : {at, Position{at.col - 1, at.line}}) {
            const TextView text = document_.LineText(at.line, text_);
            if (place.col < 0 || place.col >= static_cast<int32_t>(text.size())) continue;
            const size_t which = kBrackets.find(text[static_cast<size_t>(place.col)]);
            if (which == TextView::npos) continue;
            if (auto other = Partner(place, which)) return std::pair(RangeOf(place), RangeOf(*other));
        }
        return std::nullopt;
    }

private:
    static TextRange RangeOf(Position p) { return {p, {p.col + 1, p.line}}; }

    /// The token that holds a column, if the bracket there is not one by itself: within a comment or a text.
    const Token* Within(int32_t column) const
    {
        for (const Token& token : tokens_)
            if (token.start <= column && column < token.End())
                return token.length > 1 && token.type != kPlainToken ? &token : nullptr;
        return nullptr;
    }

    std::optional<Position> Partner(Position from, size_t which)
    {
        const bool forward = which % 2 == 0;
        const TextView pair = kBrackets.substr(which / 2 * 2, 2);
        document_.ScanLine(from.line, tokens_);
        const Token* own = Within(from.col);
        const std::pair<int32_t, int32_t> bounds = own ? std::pair(own->start, own->End()) : std::pair(0, 0);
        int32_t depth = 0;
        for (int32_t line = from.line; own ? line == from.line : std::abs(line - from.line) <= kBracketLines;) {
            const TextView text = document_.LineText(line, text_);
            if (line != from.line && text.find_first_of(pair) != TextView::npos) document_.ScanLine(line, tokens_);
            size_t at = line == from.line ? static_cast<size_t>(from.col) : forward ? 0 : text.size() - 1;
            for (; at < text.size(); forward ? ++at : --at) {
                const size_t found = pair.find(text[at]);
                const auto column = static_cast<int32_t>(at);
                if (found == TextView::npos) continue;
                if (own ? column < bounds.first || column >= bounds.second : Within(column) != nullptr) continue;
                depth += (found == 0) == forward ? 1 : -1;
                if (depth == 0) return Position{column, line};
            }
            line += forward ? 1 : -1;
            if (line < 0 || line >= document_.LineCount() || document_.LineLength(line) > kLongestRead) break;
        }
        return std::nullopt;
    }

    SourceDocument& document_;
    Text text_;
    std::vector<Token> tokens_;
};

bool Covers(const TextRange& range, Position at)
{
    return range.start <= at && at <= range.end;
}

} // namespace

std::optional<BlockMatch> MatchBlock(SourceDocument& document, Position at)
{
    return BlockFinder(document).At(at);
}

void AddMiddles(const SourceDocument& document, const BlockMatch& match, int32_t line, std::span<const Token> tokens,
                std::vector<TextRange>& words)
{
    const auto continues = [](const Token& token) { return token.role == WordRole::Continues; };
    if (std::none_of(tokens.begin(), tokens.end(), continues)) return;
    Text scratch;
    int32_t open = document.OpenBlocks(line);
    for (const Word& word : WordsOf(tokens, document.LineText(line, scratch), line)) {
        open = std::max(open + word.step, 0);
        if (word.role != WordRole::Continues || word.followsEnd) continue;
        const auto holds = [&](const BlockMatch::Part& part) {
            return part.depth == open && part.begin.end <= word.range.start && word.range.end <= part.end.start;
        };
        if (std::any_of(match.parts.begin(), match.parts.end(), holds)) words.push_back(word.range);
    }
}

std::optional<std::pair<TextRange, TextRange>> MatchBrackets(SourceDocument& document, Position at)
{
    return BracketFinder(document).At(document.Clamp(at));
}

std::optional<TextRange> MatchingWord(SourceDocument& document, Position at)
{
    at = document.Clamp(at);
    if (const auto brackets = MatchBrackets(document, at)) return brackets->second;
    document.EnsureScanned();
    const std::optional<BlockMatch> match = MatchBlock(document, at);
    if (!match) return std::nullopt;
    // An ELSE behind an END begins a block of its own, so each word is of one block or leads to the first.
    for (const BlockMatch::Part& part : match->parts) {
        if (Covers(part.begin, at)) return part.end;
        if (Covers(part.end, at)) return part.begin;
    }
    for (const BlockMatch::Part& part : match->parts)
        if (part.begin.end <= at && at <= part.end.start) return part.end;
    return match->parts.back().end;
}

} // namespace nib
