#pragma once
// Search as it would be done by hand: every place is looked at, one after the other, and each replacement is made
// before the next hit is looked for. What the program finds and replaces is compared with it.

#include "base/Text.h"
#include "text/SourceDocument.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <vector>

namespace nib::test {

struct PlainSearch {
    enum class Scope { Selection, Document, Everywhere };

    /// Lines of the texts: the one in front, then the others in their turn.
    std::vector<std::vector<Text>> texts;
    Text find;
    Scope scope = Scope::Document;
    bool up = false;
    bool matchCase = false;
    bool wholeWord = false;
    /// The last hit.
    size_t text = 0;
    Position hit;

    int32_t Size() const { return static_cast<int32_t>(find.size()); }

    void FromCaret(Position caret)
    {
        Start(caret, Far());
        start_ = caret;
        // The end of a line stays its end, however it grows.
        if (!up && caret.col == static_cast<int32_t>(texts[0][static_cast<size_t>(caret.line)].size()))
            start_.col = kBottom.col;
        int32_t edge = up ? static_cast<int32_t>(texts[0].size()) - 1 : 0;
        canWrap_ = caret.line != edge;
    }
    void InSelection(Position first, Position last) { up ? Start(last, first) : Start(first, last); }
    void Whole() { Start(Near(), Far()); }

    /// `mayWrap` is asked at the edge of the first text.
    bool Next(const std::function<bool()>& mayWrap)
    {
        while (!(up ? FindUp() : FindDown())) {
            if (std::exchange(canWrap_, false)) {
                if (!mayWrap()) return false;
                from_ = Near();
                end_ = start_;
            } else {
                if (scope != Scope::Everywhere || ++text == texts.size()) return false;
                from_ = Near();
                end_ = Far();
            }
        }
        return true;
    }
    std::vector<std::pair<size_t, Position>> All()
    {
        std::vector<std::pair<size_t, Position>> hits;
        while (Next([] { return true; })) hits.emplace_back(text, hit);
        return hits;
    }
    void Replace(TextView with)
    {
        texts[text][static_cast<size_t>(hit.line)].replace(static_cast<size_t>(hit.col), find.size(), with);
        from_ = {hit.col + static_cast<int32_t>(with.size()), hit.line};
    }

private:
    static constexpr Position kTop{0, 0};
    static constexpr Position kBottom{std::numeric_limits<int32_t>::max(), std::numeric_limits<int32_t>::max()};

    Position Near() const { return up ? kBottom : kTop; }
    Position Far() const { return up ? kTop : kBottom; }
    void Start(Position from, Position end)
    {
        text = 0;
        from_ = from;
        end_ = end;
        canWrap_ = exhausted_ = false;
    }
    static bool IsWord(char16_t c)
    {
        return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || c == u'.' ||
               c == u'_' || c == u'$' || c > 0xBF;
    }
    bool Fits(const Text& line, int32_t column) const
    {
        auto at = static_cast<size_t>(column);
        if (at + find.size() > line.size()) return false;
        TextView here = TextView(line).substr(at, find.size());
        if (matchCase ? here != find : !EqualsNoCase(here, find)) return false;
        if (!wholeWord) return true;
        size_t end = at + find.size();
        return (at == 0 || !IsWord(line[at - 1])) && (end == line.size() || !IsWord(line[end]));
    }
    bool FindDown()
    {
        const auto& lines = texts[text];
        for (Position p = from_; p.line < static_cast<int32_t>(lines.size()); p = {0, p.line + 1})
            for (const Text& line = lines[static_cast<size_t>(p.line)]; p.col < static_cast<int32_t>(line.size());
                 ++p.col)
                if (Fits(line, p.col)) {
                    if (Position{p.col + Size(), p.line} > end_) return false;
                    hit = p;
                    from_ = {p.col + Size(), p.line};
                    return true;
                }
        return false;
    }
    /// The hit that the search comes from is not found again, but one that overlaps it is.
    bool FindUp()
    {
        const auto& lines = texts[text];
        Position p = from_;
        if (std::exchange(exhausted_, false)) return false;
        auto length = [&](int32_t line) { return static_cast<int32_t>(lines[static_cast<size_t>(line)].size()); };
        if (p.line >= static_cast<int32_t>(lines.size())) p = {kBottom.col, static_cast<int32_t>(lines.size()) - 1};
        p.col = std::min(p.col, length(p.line));
        if (p.col > 0)
            --p.col;
        else if (p.line > 0)
            p = {length(p.line - 1), p.line - 1};
        for (; p.line >= 0; --p.line, p.col = p.line >= 0 ? length(p.line) : 0)
            for (; p.col >= 0; --p.col)
                if (Fits(lines[static_cast<size_t>(p.line)], p.col)) {
                    if (p < end_) return false;
                    from_ = hit = p;
                    exhausted_ = p == kTop;
                    return true;
                }
        return false;
    }

    Position start_;
    Position from_;
    Position end_;
    bool canWrap_ = false;
    bool exhausted_ = false;
};

} // namespace nib::test
