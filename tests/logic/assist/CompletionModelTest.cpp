#include "shell/assist/CompletionModel.h"
#include "editing/LexClass.h"
#include "fakes/MemoryClipboard.h"
#include "shell/assist/OutlineModel.h"

#include <gtest/gtest.h>

namespace nib::completion_model_test {

struct CompletionModelTest : testing::Test {
    LexClass lexer;
    SourceDocument text;
    MemoryClipboard clipboard;
    SourceView view{text, clipboard};
    CompletionModel model{view};

    CompletionModelTest() { text.SetLexer(&lexer); }

    /// The caret is at "^".
    void Load(TextView marked)
    {
        Text plain(marked);
        const size_t at = plain.find(u'^');
        plain.erase(at, 1);
        view.SetText(plain);
        const auto line =
            static_cast<int32_t>(std::count(plain.begin(), plain.begin() + static_cast<int64_t>(at), u'\n'));
        const size_t start = line == 0 ? 0 : plain.rfind(u'\n', at - 1) + 1;
        view.SetCaret({static_cast<int32_t>(at - start), line});
    }
    bool Take(const std::vector<const char16_t*>& labels, int32_t letters)
    {
        Completions answer;
        answer.replaces = {{view.Caret().col - letters, view.Caret().line}, view.Caret()};
        for (const char16_t* label : labels) answer.best.push_back({label, Completion::Kind::Variable, label, {}, {}});
        return model.Take(std::move(answer), view.Caret());
    }
    Text Line(int32_t line) { return text.GetLine(line); }
};

TEST_F(CompletionModelTest, WhenItComesByItself)
{
    const struct {
        const char16_t* text;
        bool wanted;
    } rows[] = {{u"PR^", true},      {u"P^", false},          {u"^", false},       {u"X = TO^", true},
                {u"X = 12^", false}, {u"PRINT \"AB^", false}, {u"* AB^", false},   {u"X = \"A\":AB^", true},
                {u"X = A.^", true},  {u"X = A ^", false},     {u"X = A(^", false}, {u"X=1 ;* note^", false}};
    for (const auto& row : rows) {
        Load(row.text);
        EXPECT_EQ(model.Wants(true, true), row.wanted) << ToUtf8(row.text);
        EXPECT_FALSE(model.Wants(true, false)) << "switched off";
        EXPECT_TRUE(model.Wants(false, false)) << "asked for";
    }
    Load(u"PR^");
    view.AddCarets(false);
    text.InsertText(text.End(), u"\r\nPR");
    view.AddCarets(false);
    EXPECT_FALSE(model.Wants(false, true)) << "several carets";
}

TEST_F(CompletionModelTest, ReturnIsTheTextsUntilSomethingIsChosen)
{
    Load(u"  X = TO^ ;* x");
    ASSERT_TRUE(model.Wants(true, true));
    ASSERT_TRUE(Take({u"TODAY", u"TOTAL", u"TOP"}, 2));
    EXPECT_FALSE(model.TakesReturn());
    EXPECT_EQ(model.Start(), (Position{6, 0}));
    model.Step(1);
    EXPECT_TRUE(model.TakesReturn());
    model.Step(-1);
    EXPECT_EQ(model.Chosen(), 2) << "round the end";
    model.Step(-9);
    EXPECT_EQ(model.Chosen(), 0);
    model.Step(1);
    ASSERT_TRUE(Take({u"TOTAL", u"TOP"}, 2));
    EXPECT_EQ(model.Chosen(), 0) << "stays on the word";
    view.TypeText(u"T");
    model.Accept();
    EXPECT_EQ(Line(0), u"  X = TOTAL ;* x");
    EXPECT_EQ(view.Caret(), (Position{11, 0}));
    EXPECT_FALSE(model.IsOpen());
    view.Undo();
    EXPECT_EQ(Line(0), u"  X = TOT ;* x");
}

TEST_F(CompletionModelTest, AListThatWasAskedForHasAChoice)
{
    Load(u"T^");
    ASSERT_TRUE(model.Wants(false, false));
    ASSERT_TRUE(Take({u"TODAY", u"TOTAL"}, 1));
    EXPECT_TRUE(model.TakesReturn());
    model.Accept();
    EXPECT_EQ(Line(0), u"TODAY");
}

TEST_F(CompletionModelTest, AnswersThatComeTooLateOrSayNothingShowNothing)
{
    Load(u"TO^");
    ASSERT_TRUE(model.Wants(true, true));
    EXPECT_FALSE(Take({}, 2));
    EXPECT_FALSE(Take({u"to"}, 2)) << "it stands there already";
    Completions late;
    late.best.push_back({u"TOTAL", Completion::Kind::Variable, u"TOTAL", {}, {}});
    EXPECT_FALSE(model.Take(late, {1, 0}));
    EXPECT_FALSE(model.IsOpen());
    view.SetReadOnly(true);
    EXPECT_FALSE(model.Wants(false, true));
}

TEST_F(CompletionModelTest, TheCloserGoesBelowTheCaretsLine)
{
    Load(u"   IF A THEN\r\n      ^\r\nX");
    ASSERT_TRUE(model.TakeCloser(u"END", view.Caret()));
    EXPECT_FALSE(model.TakesReturn());
    const Position caret = view.Caret();
    model.Accept();
    EXPECT_EQ(Line(2), u"   END");
    EXPECT_EQ(Line(3), u"X");
    EXPECT_EQ(view.Caret(), caret);
    EXPECT_FALSE(model.TakeCloser(u"END", {0, 0})) << "the caret has moved";
}

TEST(OutlineModelTest, FilterAndPlace)
{
    OutlineModel model;
    const auto entry = [](const char16_t* name, int32_t first, int32_t last, int32_t level) {
        return OutlineEntry{name, SymbolKind::Label, {{0, first}, {1, first}}, last, level};
    };
    model.SetEntries({entry(u"MAIN", 2, 30, 0), entry(u"CHECK.ORDER", 5, 9, 1), entry(u"PRINT", 12, 20, 1)});
    const struct {
        const char16_t* filter;
        size_t shown;
        int32_t line;
        std::optional<size_t> at;
    } rows[] = {{u"", 3, 1, {}}, {u"", 3, 5, 1},    {u"", 3, 10, 0},    {u"", 3, 13, 2},
                {u"", 3, 99, 2}, {u"cor", 1, 6, 0}, {u"roc", 0, 6, {}}, {u"i", 2, 6, 0}};
    for (const auto& row : rows) {
        model.SetFilter(row.filter);
        EXPECT_EQ(model.Shown().size(), row.shown) << ToUtf8(row.filter);
        EXPECT_EQ(model.At(row.line), row.at) << ToUtf8(row.filter) << row.line;
    }
}

} // namespace nib::completion_model_test
