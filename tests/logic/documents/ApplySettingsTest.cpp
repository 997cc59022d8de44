#include "documents/DocumentSettings.h"
#include "editing/LexClass.h"
#include "fakes/MemoryClipboard.h"
#include "text/SourceView.h"

#include <gtest/gtest.h>

namespace nib {
namespace {

struct Window {
    MemoryClipboard clipboard;
    LexClass lexer;
    SourceDocument buffer;
    SourceView view{buffer, clipboard};
    MvEdit settings;

    Window()
    {
        buffer.SetLexer(&lexer);
        view.SetText(u"MYWORD");
    }
    void Apply() { ApplyViewSettings(view, settings, &lexer); }
    int32_t TypeOfWord()
    {
        Token token;
        return view.NextToken(0, 0, token) ? token.type : 0;
    }
};

TEST(ApplySettings, PrintsInBlackUnlessColoursAreWanted)
{
    Window window;
    const std::pair<int32_t, int32_t MvEdit::*> kRows[] = {
        {6, &MvEdit::CommentColor}, {10, &MvEdit::ReservedColor}, {7, &MvEdit::StringColor}, {8, &MvEdit::NormalColor},
        {5, &MvEdit::NormalColor},  {2, &MvEdit::LabelColor},     {4, &MvEdit::KeywordColor}};
    constexpr int32_t kGrey = 0x969696;
    window.settings.CommentStyle = token_style::kBold | token_style::kItalic;
    for (bool coloured : {false, true}) {
        window.settings.ColorPrinting = coloured;
        window.Apply();
        for (auto [type, color] : kRows) {
            EXPECT_EQ(window.view.TokenStyles().Get(type).color, window.settings.*color) << type;
            EXPECT_EQ(window.view.PrintTokenStyles().Get(type).color, coloured ? window.settings.*color : 0) << type;
        }
        EXPECT_EQ(window.view.PrintTokenStyles().Get(6).style, 3);
        EXPECT_EQ(window.view.PrintTokenStyles().Get(1001).color, kGrey);
        EXPECT_EQ(window.view.TokenStyles().Get(1002).color, kGrey);
    }
}

TEST(ApplySettings, TheLexerFollows)
{
    Window window;
    window.Apply();
    window.buffer.EnsureScanned();
    EXPECT_EQ(window.TypeOfWord(), token_type::kNormal);
    window.settings.Keywords.SetKeywordList(keyword_class::kUser, u" ", u"MYWORD+");
    window.Apply();
    EXPECT_EQ(window.TypeOfWord(), token_type::kUserKeyword);
    EXPECT_EQ(window.buffer.GetLineData(0, LineWord::Lexer), 2048U) << "scanned again: the word begins a block";
    window.settings.Highlight = false;
    window.Apply();
    EXPECT_EQ(window.TypeOfWord(), token_type::kBlank);
}

} // namespace
} // namespace nib
