// Several carets. In the rows each "|" is a caret, "[" and "]" bound a selection ("[|" when its caret stands in front),
// each "~" is a cell behind the end of the line, and "\n" ends a line.

#include "BufferModel.h"
#include "ToyLexer.h"
#include "fakes/MemoryClipboard.h"
#include "text/SourceView.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace nib::carets_test {

using test::BufferModel;
using test::Dice;

struct CaretsTest : testing::Test {
    SourceDocument buffer;
    MemoryClipboard clipboard;
    SourceView view{buffer, clipboard};

    void Load(TextView marked)
    {
        Text text;
        std::vector<CaretSpan> spans;
        Position at;
        bool backward = false;
        for (size_t i = 0; i < marked.size(); ++i) {
            const char16_t c = marked[i];
            if (c == u'[') {
                backward = marked.substr(i + 1, 1) == u"|";
                i += backward ? 1 : 0;
                spans.push_back({at, at});
            } else if (c == u']') {
                (backward ? spans.back().anchor : spans.back().caret) = at;
            } else if (c == u'|') {
                spans.push_back({at, at});
            } else {
                text += c;
                at = c == u'\n' ? Position{0, at.line + 1} : Position{at.col + 1, at.line};
            }
        }
        view.SetText(text);
        buffer.ClearUndo();
        view.SetOvertype(false);
        view.SetCarets(spans, spans.size() - 1);
    }

    std::string Render()
    {
        std::vector<Text> lines;
        for (int32_t n = 0; n < buffer.LineCount(); ++n) lines.push_back(buffer.GetLine(n));
        const std::vector<CaretSpan> spans = view.CaretSpans();
        for (auto span = spans.rbegin(); span != spans.rend(); ++span) {
            auto put = [&](Position cell, TextView sign) {
                Text& line = lines[static_cast<size_t>(cell.line)];
                if (static_cast<int32_t>(line.size()) < cell.col) line.resize(static_cast<size_t>(cell.col), u'~');
                line.insert(static_cast<size_t>(cell.col), sign);
            };
            if (!span->IsEmpty()) put(span->LastCell(), u"]");
            put(span->FirstCell(), span->IsEmpty() ? u"|" : span->CaretCell() < span->AnchorCell() ? u"[|" : u"[");
        }
        Text out;
        for (const Text& line : lines) out.append(out.empty() && &line == lines.data() ? u"" : u"\n").append(line);
        return ToUtf8(out);
    }
};

using Command = void (*)(SourceView&);

template <Move move, bool extend = false>
constexpr Command Go = [](SourceView& v) { v.MoveCaret(move, extend); };
template <Move move>
constexpr Command Grow = [](SourceView& v) { v.ExtendColumn(move); };
template <int32_t line, int32_t cell, int32_t toLine, int32_t toCell>
constexpr Command Column = [](SourceView& v) {
    v.SelectColumn({line, cell}, {toLine, toCell});
};
template <bool above>
constexpr Command Add = [](SourceView& v) { v.AddCarets(above); };
template <bool backward>
constexpr Command DelWord = [](SourceView& v) { v.DeleteWord(backward); };
constexpr Command TypeX = [](SourceView& v) { v.TypeText(u"x"); };
constexpr Command OverXY = [](SourceView& v) { (v.SetOvertype(true), v.TypeText(u"xy")); };
constexpr Command Back = [](SourceView& v) { v.Backspace(); };
constexpr Command Del = [](SourceView& v) { v.Delete(); };
constexpr Command DelLine = [](SourceView& v) { v.DeleteLine(); };
constexpr Command NewLine = [](SourceView& v) { v.NewLine(); };
constexpr Command TabIn = [](SourceView& v) { v.Tab(); };
constexpr Command TabOut = [](SourceView& v) { v.Backtab(); };
constexpr Command Next = [](SourceView& v) { v.SelectNextOccurrence(); };
constexpr Command All = [](SourceView& v) { v.SelectAllOccurrences(); };
constexpr Command One = [](SourceView& v) { v.KeepMainCaret(); };
constexpr Command CutPaste = [](SourceView& v) { (v.Cut(), v.Paste()); };
constexpr Command PasteAB = [](SourceView& v) { v.Insert(u"A\r\nB\r\n"); };
constexpr Command PasteABC = [](SourceView& v) { v.Insert(u"A\nB\nC"); };

struct Row {
    const char* what;
    TextView before;
    std::vector<Command> run;
    const char* after;
};

const Row kRows[] = {
    {"type", u"a|b\nc|d|", {TypeX}, "ax|b\ncx|dx|"},
    {"overtype stops at the next caret", u"|a|bcd", {OverXY}, "xy|xy|d"},
    {"words that overlap go once", u"ab|cd|ef g|", {DelWord<true>}, "|ef |"},
    {"a word partly selected", u"fo[ob]ar| z", {DelWord<true>}, "| z"},
    {"delete lines", u"a|a\nb|b\ncc\nd|\nee|", {DelLine}, "c|c|"},
    {"new lines keep their indents", u"  a|b|\n c|", {NewLine}, "  a\n  |b\n  |\n c\n |"},
    {"tab shifts each line once", u"[a\nb][c\nd]\n|e", {TabIn}, "[   a\n   b][c\n   d]\n|   e"},
    {"backtab shifts lines", u"  [a\n    b]\n |c", {TabOut}, "[a\n b]\n|c"},
    {"up keeps each goal", u"ab|c|d\ne\nab|c|d", {Go<Move::Down>, Go<Move::Down>}, "abcd\ne\nab|c|d"},
    {"selections grow into each other", u"a|bc|d", {Go<Move::WordRight, true>}, "a[bcd]"},
    {"one again", u"a|\n[b]", {One}, "a\n[b]"},
    {"adds below over a short line", u"ab|c\nd\nefg", {Add<false>, Add<false>}, "ab|c\nd|\nef|g"},
    {"adds above with selections", u"abc\na[bc]", {Add<true>}, "a[bc]\na[bc]"},
    {"the word first", u"a.b| a.b", {Next}, "[a.b] a.b"},
    {"then its next place, words only", u"a| ab a b a", {Next, Next}, "[a] ab [a] b a"},
    {"a part of words, if it was selected", u"[a] ab", {Next}, "[a] [a]b"},
    {"round the end, until all are taken", u"x a x a| x a", {Next, Next, Next, Next}, "x [a] x [a] x [a]"},
    {"never what overlaps", u"a[aa]aa", {Next, Next}, "a[aa][aa]"},
    {"all occurrences", u"x a x a| ax\na", {All}, "x [a] x [a] ax\n[a]"},
    {"each gets its own back", u"[a]b\n[cd]e\nf|", {CutPaste}, "a|b\ncd|e\nf|"},
    {"a line for each", u"1|\n2|", {PasteAB}, "1A|\n2B|"},
    {"else all for each", u"1|\n2|", {PasteABC}, "1A\nB\nC|\n2A\nB\nC|"},
    {"column", u"abc\n\nabc", {Column<0, 1, 2, 3>}, "a[bc]\n~[~~]\na[bc]"},
    {"column from below, backward", u"abc\nabc", {Column<1, 2, 0, 1>}, "a[|b]c\na[|b]c"},
    {"typing fills short lines", u"abc\n\nabc", {Column<0, 1, 2, 3>, TypeX}, "ax|\n x|\nax|"},
    {"a column goes on as one", u"a\n\nabc", {Column<0, 2, 2, 2>, TypeX, Grow<Move::Right>}, "a x[~]\n  x[~]\nabx[c]"},
    {"backspace behind the end", u"a\nabcd", {Column<0, 3, 1, 3>, Back}, "a~|\nab|d"},
    {"backspace in an indent keeps it straight", u"   a\nbbb", {Column<0, 3, 1, 3>, Back}, "  |a\nbb|"},
    {"a column joins no lines", u"ab\nab\nc", {Column<0, 2, 1, 2>, Del, Column<0, 0, 1, 0>, Back}, "|ab\n|ab\nc"},
    {"tab in a column", u"ab\n\nab", {Column<0, 1, 2, 1>, TabIn}, "a  |b\n   |\na  |b"},
    {"cut and paste a column", u"abc\n\ndef", {Column<0, 1, 2, 2>, CutPaste}, "ab|c\n |\nde|f"},
    {"keys make a column", u"a|b\nabc", {Grow<Move::Down>, Grow<Move::LineEnd>}, "a[b~]\na[bc]"},
    {"and a smaller one", u"a|b\nab\nab", {Grow<Move::Down>, Grow<Move::Down>, Grow<Move::Up>}, "a|b\na|b\nab"},
    {"and go over to the other side",
     u"a\nab|\nab",
     {Grow<Move::LineStart>, Grow<Move::PageUp>, Grow<Move::Left>},
     "[|a~]\n[|ab]\nab"},
};

TEST_F(CaretsTest, DoAndUndo)
{
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.what);
        Load(row.before);
        const Text before = view.GetText();
        Text last;
        for (Command command : row.run) (last = view.GetText(), command(view));
        EXPECT_EQ(Render(), row.after);
        const Text after = view.GetText();
        int32_t steps = 0;
        for (; buffer.CanUndo() && steps < 3; ++steps) view.Undo();
        EXPECT_LE(steps, row.run.back() == CutPaste ? 2 : 1);
        EXPECT_EQ(view.GetText(), before);
        while (buffer.CanRedo()) view.Redo();
        EXPECT_EQ(view.GetText(), after);
        if (after != last) {
            EXPECT_EQ(Render(), row.after);
        }
    }
}

TEST_F(CaretsTest, TypingIsOneStepUntilTheCaretsMove)
{
    Load(u"a|a|\n|");
    const std::string before = Render();
    for (Command command : {TypeX, TypeX, Go<Move::Left>, Back, TypeX}) command(view);
    for (const char* expected : {"a|xa|x\n|x", "ax|xax|x\nx|x", before.c_str()}) {
        view.SetCaret({});
        view.Undo();
        EXPECT_EQ(Render(), expected);
    }
}

/// A text as one string, and carets as offsets in it.
struct Plain {
    struct Span {
        size_t anchor;
        size_t caret;
        size_t Start() const { return std::min(anchor, caret); }
        size_t End() const { return std::max(anchor, caret); }
        friend bool operator==(const Span&, const Span&) = default;
    };
    Text text;
    std::vector<Span> spans;

    static Plain Of(SourceView& view)
    {
        Plain plain{Replace(view.GetText(), u"\r\n", u"\n"), {}};
        auto offset = [&](Position p) {
            size_t at = 0;
            for (int32_t line = 0; line < p.line; ++line) at = plain.text.find(u'\n', at) + 1;
            return at + static_cast<size_t>(p.col);
        };
        for (const CaretSpan& span : view.CaretSpans())
            plain.spans.push_back({offset(span.anchor), offset(span.caret)});
        return plain;
    }

    size_t To(Move move, Span span, bool extend) const
    {
        const bool collapse = !extend && span.anchor != span.caret;
        if (move == Move::Left) return collapse ? span.Start() : span.caret - (span.caret > 0 ? 1 : 0);
        if (move == Move::Right) return collapse ? span.End() : std::min(span.caret + 1, text.size());
        return std::min(text.find(u'\n', span.caret), text.size());
    }
    void Go(Move move, bool extend)
    {
        for (Span& span : spans) {
            const size_t to = To(move, span, extend);
            span = {extend ? span.anchor : to, to};
        }
        Join();
    }
    /// Takes out what is selected, else from `left` in front of the caret to `right` behind it, and puts in `with`.
    void Edit(size_t left, size_t right, TextView with)
    {
        std::vector<bool> gone(text.size());
        for (const Span& span : spans) {
            const bool empty = span.anchor == span.caret;
            const size_t from = empty ? span.caret - std::min(left, span.caret) : span.Start();
            const size_t to = empty ? std::min(span.caret + right, text.size()) : span.End();
            std::fill(gone.begin() + static_cast<std::ptrdiff_t>(from), gone.begin() + static_cast<std::ptrdiff_t>(to),
                      true);
        }
        Text out;
        std::vector<Span> carets;
        auto next = spans.begin();
        for (size_t i = 0; i <= text.size(); ++i) {
            for (; next != spans.end() && next->Start() == i; ++next) {
                out += with;
                carets.push_back({out.size(), out.size()});
            }
            if (i < text.size() && !gone[i]) out += text[i];
        }
        text = out;
        spans = carets;
        Join();
    }
    void Join()
    {
        std::vector<Span> joined;
        for (const Span& span : spans) {
            const bool point = span.anchor == span.caret;
            if (!joined.empty() &&
                (span.Start() < joined.back().End() ||
                 (span.Start() == joined.back().End() && (point || joined.back().anchor == joined.back().caret))))
                joined.back() = {joined.back().Start(), std::max(joined.back().End(), span.End())};
            else
                joined.push_back({span.Start(), span.End()});
        }
        spans = joined;
    }
};

TEST_F(CaretsTest, AnyCommandsDoAsOnAPlainText)
{
    Dice dice(7);
    for (int32_t round = 0; round < 60; ++round) {
        view.SetText(dice.Lines(12, u"abc"));
        buffer.ClearUndo();
        const Text first = view.GetText();
        for (int32_t step = 0; step < 40; ++step) {
            std::vector<CaretSpan> spans = view.CaretSpans();
            if (dice.OneIn(3)) {
                const BufferModel model = BufferModel::Of(buffer);
                for (int32_t n = dice.Below(6); n > 0; --n) {
                    const Position at = dice.At(model);
                    spans.push_back({dice.OneIn(2) ? at : dice.At(model), at});
                }
                const auto main = static_cast<size_t>(dice.Below(static_cast<int32_t>(spans.size())));
                view.SetCarets(spans, main);
            }
            const Plain before = Plain::Of(view);
            Plain plain = before;
            const bool extend = dice.OneIn(2);
            if (before.spans.size() == 2) continue; // whom a paste gives a line each
            buffer.BreakTyping();
            switch (dice.Below(7)) {
            case 0: (view.TypeText(u"xy"), plain.Edit(0, 0, u"xy")); break;
            case 1: (view.NewLine(), plain.Edit(0, 0, u"\n")); break;
            case 2: (view.Backspace(), plain.Edit(1, 0, {})); break;
            case 3: (view.Delete(), plain.Edit(0, 1, {})); break;
            case 4: (view.Insert(u"1\r\n2\u00e9"), plain.Edit(0, 0, u"1\n2\u00e9")); break;
            default: {
                constexpr Move kMoves[] = {Move::Left, Move::Right, Move::LineEnd};
                const Move move = kMoves[dice.Below(3)];
                (view.MoveCaret(move, extend), plain.Go(move, extend));
            }
            }
            Plain after = Plain::Of(view);
            const Plain kept = after;
            after.Join(); // which direction they have does not matter
            ASSERT_EQ(ToUtf8(after.text), ToUtf8(plain.text)) << round << " " << step;
            ASSERT_EQ(after.spans, plain.spans) << round << " " << step;
            if (after.text == before.text || before.spans.size() < 2) continue;
            view.Undo();
            ASSERT_EQ(Plain::Of(view).text, before.text);
            ASSERT_EQ(Plain::Of(view).spans, before.spans);
            view.Redo();
            ASSERT_EQ(Plain::Of(view).spans, kept.spans);
        }
        while (buffer.CanUndo()) view.Undo();
        ASSERT_EQ(view.GetText(), first);
    }
}

TEST(RangeEditsTest, AreAsIfMadeFromTheLastToTheFirst)
{
    Dice dice(11);
    for (int32_t round = 0; round < 300; ++round) {
        test::ToyLexer lexers[2];
        SourceDocument document;
        document.SetText(dice.Lines(20, u"ab,{}"));
        document.SetLexer(&lexers[0]);
        document.EnsureScanned();
        for (int32_t line = 0; line < document.LineCount(); ++line) {
            document.SetLineData(line, LineWord::Identity, static_cast<uint32_t>(line + 1));
            if (line % 3 == 0) document.ToggleBookmark(line);
        }
        const BufferModel before = BufferModel::Of(document);
        std::vector<Position> places;
        for (int32_t n = 2 * dice.Below(8); n > 0; --n) places.push_back(dice.At(before));
        std::sort(places.begin(), places.end());
        std::vector<RangeEdit> edits;
        for (size_t i = 0; i < places.size(); i += 2)
            edits.push_back({places[i], places[i + 1], dice.OneIn(2) ? Text() : dice.Lines(3, u"c,{")});
        BufferModel after = before;
        for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit) {
            after.Erase(edit->start, edit->end);
            if (!edit->text.empty()) after.Insert(edit->start, edit->text);
        }
        document.ReplaceRanges(edits);
        for (int32_t turn = 0; turn < 3; ++turn) {
            ASSERT_EQ(BufferModel::Of(document), turn == 1 ? before : after) << round << " " << turn;
            SourceDocument fresh;
            fresh.SetText(document.GetText());
            fresh.SetLexer(&lexers[1]);
            for (int32_t line = 0; line < fresh.LineCount(); ++line)
                ASSERT_EQ(document.GetLineData(line, LineWord::Lexer), fresh.GetLineData(line, LineWord::Lexer));
            turn == 0 ? document.Undo() : document.Redo();
        }
    }
}

} // namespace nib::carets_test
