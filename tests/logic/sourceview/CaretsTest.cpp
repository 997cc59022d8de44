// Several carets. In the rows each "|" is a caret, "[" and "]" bound a selection ("[|" when its caret stands in front),
// each "~" is a cell behind the end of the line, and "\n" ends a line.

#include "BufferModel.h"
#include "fakes/MemoryClipboard.h"
#include "text/SourceView.h"

#include <gtest/gtest.h>

#include <map>
#include <numeric>

namespace nib::carets_test {

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
constexpr Command Cut = [](SourceView& v) { v.Cut(); };
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
    {"type over selections", u"[ab]c[|d]\n[e\nf]g", {TypeX}, "x|cx|\nx|g"},
    {"overtype stops at the next caret", u"|a|bcd", {OverXY}, "xy|xy|d"},
    {"carets that meet are one", u"a|b|c", {Back}, "|c"},
    {"backspace joins lines", u"ab\n|c\n|d", {Back}, "ab|c|d"},
    {"delete", u"|a|b\nc|\nd", {Del}, "|\nc|d"},
    {"words that overlap go once", u"ab|cd|ef g|", {DelWord<true>}, "|ef |"},
    {"a word partly selected", u"fo[ob]ar| z", {DelWord<true>}, "| z"},
    {"delete lines", u"a|a\nb|b\ncc\nd|\nee|", {DelLine}, "c|c|"},
    {"delete all lines", u"a|\nb|", {DelLine}, "|"},
    {"new lines keep their indents", u"  a|b|\n c|", {NewLine}, "  a\n  |b\n  |\n c\n |"},
    {"tab to the next stop", u"|a|b\nabc|", {TabIn}, "   |a  |b\nabc   |"},
    {"tab shifts each line once", u"[a\nb][c\nd]\n|e", {TabIn}, "[   a\n   b][c\n   d]\n|   e"},
    {"backtab shifts lines", u"  [a\n    b]\n |c", {TabOut}, "[a\n b]\n|c"},
    {"left out of selections", u"[ab]c[|d]|", {Go<Move::Left>}, "|abc|d"},
    {"up keeps each goal", u"ab|c|d\ne\nab|c|d", {Go<Move::Down>, Go<Move::Down>}, "abcd\ne\nab|c|d"},
    {"selections grow into each other", u"a|bc|d", {Go<Move::WordRight, true>}, "a[bcd]"},
    {"ends of lines", u"|a\n|bc", {Go<Move::LineEnd>}, "a|\nbc|"},
    {"start of the text", u"a|\nb|", {Go<Move::TextStart>}, "|a\nb"},
    {"one again", u"a|\n[b]", {One}, "a\n[b]"},
    {"adds below over a short line", u"ab|c\nd\nefg", {Add<false>, Add<false>}, "ab|c\nd|\nef|g"},
    {"adds above with selections", u"abc\na[bc]", {Add<true>}, "a[bc]\na[bc]"},
    {"adds nothing beyond the end", u"a|", {Add<false>}, "a|"},
    {"the word first", u"a.b| a.b", {Next}, "[a.b] a.b"},
    {"then its next place, words only", u"a| ab a b a", {Next, Next}, "[a] ab [a] b a"},
    {"a part of words, if it was selected", u"[a] ab", {Next}, "[a] [a]b"},
    {"round the end, until all are taken", u"x a x a| x a", {Next, Next, Next, Next}, "x [a] x [a] x [a]"},
    {"never what overlaps", u"a[aa]aa", {Next, Next}, "a[aa][aa]"},
    {"all occurrences", u"x a x a| ax\na", {All}, "x [a] x [a] ax\n[a]"},
    {"cuts selections only", u"[a]b|c", {Cut}, "|b|c"},
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
    {"delete a column", u"abc\na\nabc", {Column<0, 1, 2, 2>, Del}, "a|c\na|\na|c"},
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

TEST_F(CaretsTest, UndoBringsTheCaretsBack)
{
    Load(u"[a]b\n[|c]d\n");
    const std::string before = Render();
    for (Command command : {TypeX, NewLine, Go<Move::Up>, TypeX, TypeX, Back}) command(view);
    view.SetCaret({});
    for (TextView text : {u"xx\r\nb\r\nxx\r\nd\r\n", u"x\r\nb\r\nx\r\nd\r\n", u"xb\r\nxd\r\n"}) {
        view.Undo();
        if (text.size() > 14) {
            EXPECT_EQ(view.AllCarets().Spans().size(), 2u);
        }
    }
    while (buffer.CanUndo()) view.Undo();
    EXPECT_EQ(Render(), before);
}
} // namespace nib::carets_test
