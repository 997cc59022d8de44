#include "editing/operations/BlockOps.h"
#include "MarkedEditor.h"
#include "editing/operations/OpFormat.h"
#include "fakes/WordLexer.h"

#include <gtest/gtest.h>

#include <random>

namespace nib::test::block_ops_test {

enum class Op { Indent, Outdent, Comment, Uncomment, Toggle, Replace, Format };

void Execute(MarkedEditor& editor, Op op)
{
    std::unique_ptr<ISourceOp> operation;
    switch (op) {
    case Op::Indent: operation = std::make_unique<OpIndentBlock>(true, editor.view); break;
    case Op::Outdent: operation = std::make_unique<OpIndentBlock>(false, editor.view); break;
    case Op::Comment: operation = std::make_unique<OpCommentBlock>(true, editor.view, editor.settings); break;
    case Op::Uncomment: operation = std::make_unique<OpCommentBlock>(false, editor.view, editor.settings); break;
    case Op::Replace: {
        Position start;
        Position end;
        editor.view.GetSelection(start, end);
        if (end < start) std::swap(start, end);
        end = {std::max(end.col, start.col), start.line}; // as a hit, in one line
        operation = std::make_unique<OpReplace>(start, end, u"x\r\n'y");
        break;
    }
    case Op::Toggle: operation = std::make_unique<OpToggleCase>(editor.view); break;
    case Op::Format: operation = std::make_unique<OpFormat>(editor.view, editor.settings, OpFormat::ShowWait()); break;
    }
    editor.buffer.ExecuteOp(std::move(operation));
}

struct Row {
    Op op;
    Text before, after;
};

/// Each there, back and there again; a selection and its direction come along.
void Check(const std::vector<Row>& rows, const MvEdit& settings = {})
{
    for (const Row& row : rows) {
        MarkedEditor editor(row.before);
        editor.settings = settings.Clone();
        Execute(editor, row.op);
        EXPECT_EQ(ToUtf8(editor.Marked()), ToUtf8(row.after)) << ToUtf8(row.before);
        editor.view.SetCaret({0, 0}); // an undo knows its place
        editor.buffer.Undo();
        EXPECT_EQ(ToUtf8(editor.Marked()), ToUtf8(row.before));
        editor.view.SetCaret({0, 0});
        editor.buffer.Redo();
        EXPECT_EQ(ToUtf8(editor.Marked()), ToUtf8(row.after)) << "again: " << ToUtf8(row.before);
    }
}

TEST(BlockOpsTest, Indent)
{
    Check({{Op::Indent, u"a\n^b\nc", u"a\n^   b\nc"},
           {Op::Indent, u"a\nb^b\nc", u"a\n   b^b\nc"},
           {Op::Indent, u"a\n^", u"a\n^   "},
           {Op::Indent, u"^", u"^   "},
           {Op::Indent, u"~a\nb\n^c", u"~   a\n   b\n^c"},
           {Op::Indent, u"a~a\n\nb^b", u"   a~a\n   \n   b^b"},
           {Op::Indent, u"a^a\nb~b", u"   a^a\n   b~b"},
           {Op::Indent, u"^a\nb~", u"^   a\n   b~"},
           {Op::Indent, u"a~a^", u"   a~a^"}});
}

TEST(BlockOpsTest, Outdent)
{
    Check({{Op::Outdent, u" ^a", u"^a"},
           {Op::Outdent, u"    ^a", u" ^a"},
           {Op::Outdent, u"^", u"^"},
           {Op::Outdent, u"  ^", u"^"},
           {Op::Outdent, u"~      a\n\n  b\nc\n    d^", u"~   a\n\nb\nc\n d^"},
           {Op::Outdent, u" ^     a\n    ~b", u"^   a\n ~b"},
           {Op::Outdent, u"   ~   a\n    b\n^   c", u"~   a\n b\n^   c"}});
}

TEST(BlockOpsTest, TheAmountIsTheTabSize)
{
    MarkedEditor editor(u"^a");
    editor.view.SetTabSize(5);
    Execute(editor, Op::Indent);
    EXPECT_EQ(editor.Marked(), u"^     a");
    editor.view.SetTabSize(2);
    editor.buffer.Undo();
    EXPECT_EQ(editor.Marked(), u"^a");
}

TEST(BlockOpsTest, Comment)
{
    MvEdit settings;
    Check({{Op::Comment, u"^  a", u"^  *a"},
           {Op::Comment, u"~  a\n\n   \nb^", u"~  *a\n*\n   *\n*b^"},
           {Op::Comment, u"  a^\n b~", u"  *a^\n *b~"},
           {Op::Uncomment, u"^  *a", u"^  a"},
           {Op::Uncomment, u"   *a~\n *b^\nREM c", u"   a~\n b^\nREM c"},
           {Op::Uncomment, u"~\n  \na\nREM b\n^", u"~\n  \na\nREM b\n^"}},
          settings);
    settings.IndentStar = 2;
    Check({{Op::Comment, u"~  a\n b^", u"~*  a\n* b^"}, {Op::Uncomment, u"~*  a\n* b\n^", u"~  a\n b\n^"}}, settings);
    settings.IndentStar = 0;
    Check({{Op::Comment, u"^   X = 1", u"^      *   X = 1"}, {Op::Uncomment, u"^*  a", u"^  a"}}, settings);
    settings.IndentBang = 1;
    Check({{Op::Uncomment, u"  ! a^", u"   a^"}}, settings);
}

/// A comment of the margin kind takes as many blanks off as stand before it, and nothing but blanks.
TEST(BlockOpsTest, UncommentAtTheMargin)
{
    MvEdit settings;
    settings.IndentStar = 0;
    settings.IndentBang = 0;
    Check({{Op::Uncomment, u"^      *         X", u"^         X"},
           {Op::Uncomment, u"^      *   X = 1", u"^      X = 1"},
           {Op::Uncomment, u"^   ! note on A", u"^   note on A"},
           {Op::Uncomment, u"^   !x", u"^   x"},
           {Op::Uncomment, u"^   ! ", u"^   "},
           {Op::Uncomment, u"^  !   b", u"^   b"}},
          settings);
}

TEST(BlockOpsTest, CaseConversion)
{
    const std::pair<Text, std::optional<Text>> rows[] = {{u"", {}},
                                                         {u"123 'abc'", {}},
                                                         {u"Ab cd", u"AB CD"},
                                                         {u"AB CD", u"ab cd"},
                                                         {u"ab cD.eF", u"AB CD.EF"},
                                                         {u"ab cd.ef x1y 2nd", u"Ab Cd.Ef X1y 2nd"},
                                                         {u"\"Hello\" world", u"\"Hello\" World"},
                                                         {u"1 'x' AB \"y\" Cd \\Z\\ E", u"1 'x' ab \"y\" cd \\Z\\ e"},
                                                         {u"A 'b\"' C", u"a 'b\"' c"},
                                                         {u"A 'b\r\nC 'd", u"a 'b\r\nc 'd"},
                                                         {u"straße É", u"STRASSE É"},
                                                         {Text(80, u'1') + u"a", {}},
                                                         {Text(79, u'1') + u"A", Text(79, u'1') + u"a"}};
    for (const auto& [before, after] : rows) EXPECT_EQ(WithToggledCase(before), after) << ToUtf8(before);
    Text text = u"Mixed";
    for (TextView next : {u"MIXED", u"mixed", u"Mixed", u"MIXED"}) EXPECT_EQ(text = *WithToggledCase(text), next);
}

TEST(BlockOpsTest, ToggleCase)
{
    Check({{Op::Toggle, u"a~bc\nde^f", u"a~Bc\nDe^f"},
           {Op::Toggle, u"A^B 'x'\n~C", u"A^b 'x'\n~C"},
           {Op::Toggle, u"~aß^b", u"~Aß^b"},
           {Op::Toggle, u"~Aß^b", u"~ASS^b"},
           {Op::Toggle, u"x^Aß~b", u"x^ASS~b"}});
    for (Text unchanged : {u"ab^c", u"~12\n'a'^"}) {
        MarkedEditor editor(unchanged);
        Execute(editor, Op::Toggle);
        EXPECT_EQ(editor.Marked(), unchanged);
        editor.buffer.Undo();
        EXPECT_EQ(editor.Marked(), unchanged);
    }
}

TEST(BlockOpsTest, EachLineIsScannedOnce)
{
    MarkedEditor editor(u"~aB\n  *b\nc\nD^");
    WordLexer counting;
    editor.buffer.SetLexer(&counting);
    editor.buffer.EnsureScanned();
    for (Op op : {Op::Indent, Op::Outdent, Op::Comment, Op::Uncomment, Op::Toggle}) {
        for (bool undo : {false, true}) {
            counting.scans = 0;
            if (undo)
                editor.buffer.Undo();
            else
                Execute(editor, op);
            EXPECT_EQ(counting.scans, 4) << static_cast<int>(op) << undo;
        }
    }
}

TEST(BlockOpsTest, AnyText)
{
    std::mt19937 random(36);
    auto pick = [&](size_t below) { return random() % below; };
    MarkedEditor editor;
    for (int round = 0; round < 200; ++round) {
        Text text;
        const Text pieces[] = {u" ", u"  ", u"a",  u"B", u"*",           u"   ! note",
                               u"'", u"\n", u"\n", u"é", u"IF A THEN\n", u"END\n"};
        for (size_t i = pick(60); i > 0; --i) text += pieces[pick(std::size(pieces))];
        editor.Load(text);
        editor.settings.IndentStar = static_cast<int16_t>(pick(3));
        editor.settings.IndentBang = static_cast<int16_t>(pick(3));
        for (int32_t line = 0; line < editor.buffer.LineCount(); ++line) {
            if (pick(3) == 0) editor.buffer.ToggleBookmark(line);
            editor.buffer.SetLineData(line, LineWord::Identity, static_cast<uint32_t>(pick(9)));
        }
        std::vector<EditorState> states{editor.State()};
        for (int step = 0; step < 12; ++step) {
            auto place = [&] {
                auto line = static_cast<int32_t>(pick(static_cast<size_t>(editor.buffer.LineCount())));
                return Position{static_cast<int32_t>(pick(5)), line};
            };
            editor.view.SetSelection(place(), place());
            Execute(editor, static_cast<Op>(pick(7)));
            states.push_back(editor.State());
        }
        for (size_t i = states.size(); i-- > 1;) {
            ASSERT_EQ(editor.State(), states[i]);
            editor.buffer.Undo();
            ASSERT_TRUE(editor.HasSafeCaret());
        }
        ASSERT_EQ(editor.State(), states[0]);
        for (size_t i = 1; i < states.size(); ++i) {
            editor.view.SetCaret({0, 0});
            editor.buffer.Redo();
            ASSERT_EQ(editor.State(), states[i]);
            ASSERT_TRUE(editor.HasSafeCaret());
        }
    }
}

} // namespace nib::test::block_ops_test
