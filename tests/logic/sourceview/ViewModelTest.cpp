// Commands of a view without a screen. In the rows "|" is the caret, "[" and "]" bound the selection (its end is the
// caret, unless "|" stands behind "["), and "\n" ends a line.

#include "fakes/MemoryClipboard.h"
#include "text/SourceView.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace nib::view_model_test {

struct Marked {
    Text text;
    Position anchor;
    Position caret;
};

Marked Parse(TextView marked)
{
    Marked m;
    Position at;
    std::optional<Position> open;
    std::optional<Position> close;
    std::optional<Position> bar;
    for (char16_t c : marked) {
        if (c == u'[') {
            open = at;
        } else if (c == u']') {
            close = at;
        } else if (c == u'|') {
            bar = at;
        } else {
            m.text += c;
            at = c == u'\n' ? Position{0, at.line + 1} : Position{at.col + 1, at.line};
        }
    }
    m.caret = bar ? *bar : close.value_or(Position{});
    m.anchor = !open ? m.caret : (*open == m.caret ? *close : *open);
    return m;
}

Text Render(SourceView& view)
{
    Position anchor;
    Position caret;
    view.GetSelection(anchor, caret);
    Position start = std::min(anchor, caret);
    Position end = std::max(anchor, caret);
    Text out;
    for (int32_t n = 0; n < view.Document().LineCount(); ++n) {
        Text line = view.Document().GetLine(n);
        if (anchor == caret) {
            if (caret.line == n) line.insert(static_cast<size_t>(caret.col), u"|");
        } else {
            if (end.line == n) line.insert(static_cast<size_t>(end.col), u"]");
            if (start.line == n) line.insert(static_cast<size_t>(start.col), caret == start ? u"[|" : u"[");
        }
        out.append(n > 0 ? u"\n" : u"").append(line);
    }
    return out;
}

struct ViewTest : testing::Test {
    SourceDocument buffer;
    MemoryClipboard clipboard;
    SourceView view{buffer, clipboard};

    void Load(TextView marked)
    {
        Marked m = Parse(marked);
        view.SetText(m.text);
        buffer.ClearUndo();
        buffer.SetModified(false);
        view.SetSelection(m.anchor, m.caret);
    }
};

using Command = void (*)(SourceView&);

struct Row {
    const char* what;
    TextView before;
    Command run;
    TextView after;
};

template <Move move, bool extend = false>
constexpr Command Go = [](SourceView& v) { v.MoveCaret(move, extend); };
template <bool backward>
constexpr Command DelWord = [](SourceView& v) { v.DeleteWord(backward); };
template <int32_t col, int32_t line, bool copy>
constexpr Command Drag = [](SourceView& v) {
    v.MoveSelection({col, line}, copy);
};
constexpr Command TypeX = [](SourceView& v) { v.TypeText(u"x"); };
constexpr Command OverX = [](SourceView& v) { (v.SetOvertype(true), v.TypeText(u"x")); };
constexpr Command Back = [](SourceView& v) { v.Backspace(); };
constexpr Command Del = [](SourceView& v) { v.Delete(); };
constexpr Command DelLine = [](SourceView& v) { v.DeleteLine(); };
constexpr Command NewLine = [](SourceView& v) { v.NewLine(); };
constexpr Command LinesUp = [](SourceView& v) { v.MoveLinesUp(); };
constexpr Command LinesDown = [](SourceView& v) { v.MoveLinesDown(); };
constexpr Command Duplicate = [](SourceView& v) { v.DuplicateLines(); };
constexpr Command Join = [](SourceView& v) { v.JoinLines(); };
constexpr Command TabIn = [](SourceView& v) { v.Tab(); };
constexpr Command TabOut = [](SourceView& v) { v.Backtab(); };
constexpr Command Word = [](SourceView& v) { v.SelectWord(v.Caret()); };
constexpr Command CutPaste = [](SourceView& v) { (v.Cut(), v.MoveCaret(Move::TextEnd, false), v.Paste()); };

// e + acute, a family of three joined by U+200D, a letter outside the first plane
#define ACUTE u"e\u0301"
#define FAMILY u"\U0001F468\u200D\U0001F469\u200D\U0001F467"
#define CLEF u"\U0001D11E"

const Row kRows[] = {
    {"type", u"A|B", TypeX, u"Ax|B"},
    {"type over selection", u"A[BC\nD]E", TypeX, u"Ax|E"},
    {"type over backward selection", u"A[|BC]E", TypeX, u"Ax|E"},
    {"overtype", u"A|BC", OverX, u"Ax|C"},
    {"overtype at the end of a line", u"A|\nB", OverX, u"Ax|\nB"},
    {"overtype takes a whole grapheme", u"|" FAMILY u"!", OverX, u"x|!"},
    {"overtype replaces a selection only", u"[AB]C", OverX, u"x|C"},
    {"pasted lines", u"A|B", [](SourceView& v) { v.TypeText(u"1\r\n2"); }, u"A1\n2|B"},
    {"typed tabs become blanks", u"A|B", [](SourceView& v) { v.TypeText(u"\t.\n\t."); }, u"A  .\n   .|B"},
    {"backspace", u"AB|C", Back, u"A|C"},
    {"backspace joins lines", u"A\n|B", Back, u"A|B"},
    {"backspace at the start", u"|A", Back, u"|A"},
    {"backspace over blanks to a tab stop", u"     |A", Back, u"   |A"},
    {"backspace over blanks within text", u"A   |", Back, u"A  |"},
    {"backspace over a combining mark", u"a" ACUTE u"|", Back, u"a|"},
    {"backspace over a joined family", u"a" FAMILY u"|b", Back, u"a|b"},
    {"delete", u"A|BC", Del, u"A|C"},
    {"delete joins lines", u"A|\nB", Del, u"A|B"},
    {"delete at the end", u"A|", Del, u"A|"},
    {"delete a pair", u"|" CLEF u"A", Del, u"|A"},
    {"delete a selection", u"A[B\n]C", Del, u"A|C"},
    {"delete word left", u"GOSUB DO.IT$|(", DelWord<true>, u"GOSUB |("},
    {"delete word right", u"|A_1  = 2", DelWord<false>, u"|= 2"},
    {"delete word right at the end joins", u"A|\n  B", DelWord<false>, u"A|  B"},
    {"delete line", u"A\nB|B\nCC", DelLine, u"A\nC|C"},
    {"delete last line", u"A\nB|B", DelLine, u"A|"},
    {"delete the only line", u"AA|", DelLine, u"|"},
    {"new line keeps the indent", u"   A|B", NewLine, u"   A\n   |B"},
    {"new line within the indent", u" |  A", NewLine, u" \n |  A"},
    {"line up", u"A\nB|C\nD", LinesUp, u"B|C\nA\nD"},
    {"last line up", u"A\n[B\nC]", LinesUp, u"[B\nC]\nA"},
    {"first line up", u"A|\nB", LinesUp, u"A|\nB"},
    {"lines down, but one not entered", u"[A\nB\n]C\nD", LinesDown, u"C\n[A\nB\n]D"},
    {"line down to the end", u"A|\nB", LinesDown, u"B\nA|"},
    {"an empty line up", u"A\n|\nB", LinesUp, u"|\nA\nB"},
    {"an empty line down", u"|\nA", LinesDown, u"A\n|"},
    {"last line down", u"A\nB|", LinesDown, u"A\nB|"},
    {"duplicate", u"A|B\nC", Duplicate, u"AB\nA|B\nC"},
    {"duplicate lines", u"x[A\nB]", Duplicate, u"xA\nB\nx[A\nB]"},
    {"join", u"A|\n   B\nC", Join, u"A| B\nC"},
    {"join with blanks there", u"A | \n   B", Join, u"A  |B"},
    {"join lines", u"[A\n\n  B\n]C", Join, u"A| B\nC"},
    {"join at the end", u"A\nB|", Join, u"A\nB|"},
    {"tab to the next stop", u"AB|C", TabIn, u"AB |C"},
    {"tab at a stop", u"ABC|D", TabIn, u"ABC   |D"},
    {"tab replaces a word", u"[AB]C", TabIn, u"   |C"},
    {"tab shifts lines", u"A\n[B\n\n C]\nD", TabIn, u"A\n[   B\n\n    C]\nD"},
    {"tab leaves out a line not entered", u"A[A\nB\n]C", TabIn, u"   A[A\n   B\n]C"},
    {"backtab shifts lines", u"  [A\n     B]", TabOut, u"[A\n  B]"},
    {"backtab alone is a backspace", u"      A|", TabOut, u"      |"},
    {"left by graphemes", ACUTE FAMILY u"|", Go<Move::Left>, ACUTE u"|" FAMILY},
    {"left out of a selection", u"A[BC]", Go<Move::Left>, u"A|BC"},
    {"right out of a selection", u"A[|BC]D", Go<Move::Right>, u"ABC|D"},
    {"right over the line end", u"A|\nB", Go<Move::Right>, u"A\n|B"},
    {"right by a pair", u"|" CLEF u"A", Go<Move::Right>, CLEF u"|A"},
    {"extend right", u"|AB", Go<Move::Right, true>, u"[A]B"},
    {"extend left", u"A|B", Go<Move::Left, true>, u"[|A]B"},
    {"up", u"AB\nCD|", Go<Move::Up>, u"AB|\nCD"},
    {"up at the top", u"A|B", Go<Move::Up>, u"A|B"},
    {"down to a shorter line", u"ABC|\nD", Go<Move::Down>, u"ABC\nD|"},
    {"down does not enter a grapheme", u"AB|\na" ACUTE, Go<Move::Down>, u"AB\na|" ACUTE},
    {"word right", u"|A.B_$1 = C", Go<Move::WordRight>, u"A.B_$1 |= C"},
    {"word right to the end of the line", u"A |B\nC", Go<Move::WordRight>, u"A B|\nC"},
    {"word right to the next line", u"A|\n B", Go<Move::WordRight>, u"A\n| B"},
    {"word left", u"CALL SUB1|(A", Go<Move::WordLeft>, u"CALL |SUB1(A"},
    {"word left over blanks", u"A  |B", Go<Move::WordLeft>, u"|A  B"},
    {"home", u"  A|", Go<Move::LineStart>, u"  |A"},
    {"home again", u"  |A", Go<Move::LineStart>, u"|  A"},
    {"home from column 0", u"|  A", Go<Move::LineStart>, u"  |A"},
    {"end", u"|AB\nC", Go<Move::LineEnd>, u"AB|\nC"},
    {"text end, extending", u"A|B\nC", Go<Move::TextEnd, true>, u"A[B\nC]"},
    {"text start", u"AB\nC|", Go<Move::TextStart>, u"|AB\nC"},
    {"page down stops at the last line", u"A|B\nC\nDE", Go<Move::PageDown>, u"AB\nC\nD|E"},
    {"word under the caret", u"X = A.|B$ + 1", Word, u"X = [A.B$] + 1"},
    {"run of signs", u"A |<= B", Word, u"A [<=] B"},
    {"word at the end", u"A BC|", Word, u"A [BC]"},
    {"cut and paste", u"[AB]C", CutPaste, u"CAB|"},
    {"drag right in the line", u"[AB]CDE", Drag<4, 0, false>, u"CD[AB]E"},
    {"drag left", u"ABC[DE]", Drag<1, 0, false>, u"A[DE]BC"},
    {"drag to a line below", u"[A\nB]C\nDE", Drag<1, 2, false>, u"C\nD[A\nB]E"},
    {"drag along the last line", u"x[A\nB]CD", Drag<2, 1, false>, u"xC[A\nB]D"},
    {"drag onto itself", u"A[BCD]", Drag<2, 0, false>, u"AB|CD"},
    {"drag a copy", u"[AB]C", Drag<3, 0, true>, u"ABC[AB]"}};

class ViewCommands : public ViewTest, public testing::WithParamInterface<Row> {};

TEST_P(ViewCommands, DoAndUndo)
{
    const Row& row = GetParam();
    Load(row.before);
    Text before = view.GetText();
    row.run(view);
    EXPECT_EQ(ToUtf8(Render(view)), ToUtf8(row.after)) << row.what;

    Text after = view.GetText();
    int32_t steps = 0;
    for (; buffer.CanUndo() && steps < 3; ++steps) buffer.Undo();
    EXPECT_LE(steps, row.run == CutPaste ? 2 : 1) << row.what;
    EXPECT_EQ(view.GetText(), before) << row.what;
    while (buffer.CanRedo()) buffer.Redo();
    EXPECT_EQ(view.GetText(), after) << row.what;
}

void PrintTo(const Row& row, std::ostream* out)
{
    *out << row.what;
}

std::string NameOf(const testing::TestParamInfo<Row>& row)
{
    std::string name = row.param.what;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c < '0' || c > 'z'; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Table, ViewCommands, testing::ValuesIn(kRows), NameOf);

TEST_F(ViewTest, VerticalMovementKeepsTheGoalColumn)
{
    Load(u"ABCDE|\nF\nGHIJK");
    for (Move move : {Move::Down, Move::Down}) view.MoveCaret(move, false);
    EXPECT_EQ(view.Caret(), (Position{5, 2}));
    view.MoveCaret(Move::Up, false);
    view.MoveCaret(Move::Left, false);
    view.MoveCaret(Move::Down, false);
    EXPECT_EQ(view.Caret(), (Position{0, 2}));
}

TEST_F(ViewTest, ProgramsPositionsAreClampedAndNeverSplitACharacter)
{
    Load(u"|A" CLEF u"B\n" FAMILY);
    view.SetCaret({99, 99});
    EXPECT_EQ(view.Caret(), buffer.End());
    view.SetCaret({2, 0});
    EXPECT_EQ(view.Caret(), (Position{1, 0}));
    view.SetCaret({3, 1});
    EXPECT_EQ(view.Caret(), (Position{0, 1}));
    view.SetSelection({2, 0}, {32767, 0});
    EXPECT_EQ(view.SelectedText(), CLEF u"B");
}

TEST_F(ViewTest, TheOtherViewsCaretStaysWithItsText)
{
    const std::pair<Position, Position> rows[] = {{{0, 0}, {0, 0}}, {{2, 0}, {0, 1}}, {{2, 1}, {2, 2}}};
    for (const auto& [caret, expected] : rows) {
        Load(u"|AB\nCD");
        SourceView other(buffer, clipboard);
        other.SetCaret(caret);
        view.SetCaret({1, 0});
        view.TypeText(u"x\r\n");
        view.Delete();
        EXPECT_EQ(view.Caret(), (Position{0, 1}));
        EXPECT_EQ(other.Caret(), expected);
    }
}

struct Heard final : ViewEvents {
    std::vector<std::string> log;
    void CaretMoved(Position p) override
    {
        log.push_back("caret " + std::to_string(p.line) + "," + std::to_string(p.col));
    }
    void ModifiedChanged(bool on) override { log.push_back(on ? "modified" : "saved"); }
    void LinesChanged() override { log.push_back("lines"); }
    void OvertypeChanged(bool on) override { log.push_back(on ? "ovr" : "ins"); }
    bool Has(const char* entry) const { return std::count(log.begin(), log.end(), entry) == 1; }
};

TEST_F(ViewTest, TheWindowHearsEachChangeOnce)
{
    Load(u"A|");
    Heard heard;
    view.SetEvents(&heard);
    view.NewLine();
    EXPECT_TRUE(heard.Has("caret 1,0"));
    EXPECT_TRUE(heard.Has("modified"));
    EXPECT_TRUE(heard.Has("lines"));
    EXPECT_EQ(heard.log.size(), 3u);
    heard.log.clear();
    view.SetCaret({0, 1});
    EXPECT_TRUE(heard.log.empty());
    view.SetOvertype(true);
    view.SetOvertype(true);
    EXPECT_TRUE(heard.Has("ovr"));
    buffer.Undo();
    EXPECT_TRUE(heard.Has("saved"));
    EXPECT_EQ(view.Caret(), (Position{1, 0}));
    view.SetEvents(nullptr);
}

TEST_F(ViewTest, TypingIsOneStepUntilTheCaretMoves)
{
    Load(u"|");
    for (TextView c : {u"A", u"B", u"C"}) view.TypeText(c);
    view.MoveCaret(Move::Left, false);
    view.TypeText(u"x");
    buffer.Undo();
    EXPECT_EQ(view.GetText(), u"ABC");
    buffer.Undo();
    EXPECT_EQ(view.GetText(), u"");
}

} // namespace nib::view_model_test
