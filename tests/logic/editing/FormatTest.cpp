#include "MarkedEditor.h"
#include "editing/BlockEffect.h"
#include "editing/operations/OpFormat.h"
#include "language/Dialects.h"

#include <gtest/gtest.h>

#include <random>

namespace nib::test::format_test {

void Format(MarkedEditor& editor)
{
    editor.buffer.ExecuteOp(std::make_unique<OpFormat>(editor.view, editor.settings, OpFormat::ShowWait()));
}

Text Formatted(TextView program, const MvEdit& settings = {}, TextView userPrefixes = u"")
{
    MarkedEditor editor;
    clsKeywords keywords;
    keywords.SetCommentPrefixes(userPrefixes);
    keywords.SetKeywordList(4, u" ", u"OPEN.IT+ CLOSE.IT- BETWEEN= FIRST[ LAST]");
    editor.lexer.SetKeywords(keywords);
    editor.settings = settings.Clone();
    editor.Load(Text(program));
    Format(editor);
    return editor.Plain();
}

const std::tuple<const char*, TextView, TextView> kPrograms[] = {
    {"empty", u"", u""},
    {"statement", u"X = 1", u"      X = 1"},
    {"blanks only", u"   \n\n ", u"\n\n"},
    {"trailing", u"  X = 1  \n      Y", u"      X = 1\n      Y"},
    {"if", u"IF A THEN\nX\nEND ELSE\nY\nEND\nZ",
     u"      IF A THEN\n         X\n      END ELSE\n         Y\n      END\n      Z"},
    {"then inside a line", u"IF A THEN B\nC", u"      IF A THEN B\n      C"},
    {"for", u"FOR I = 1 TO 3\nX\nNEXT I\nFOR J = 1 TO 3 ; X ; NEXT J\nY",
     u"      FOR I = 1 TO 3\n         X\n      NEXT I\n      FOR J = 1 TO 3 ; X ; NEXT J\n      Y"},
    {"loop", u"LOOP\nX\nWHILE A DO\nY\nREPEAT\nZ",
     u"      LOOP\n         X\n      WHILE A DO\n         Y\n      REPEAT\n      Z"},
    {"loop in a line", u"LOOP X UNTIL A DO REPEAT\nY", u"      LOOP X UNTIL A DO REPEAT\n      Y"},
    {"for while", u"FOR I = 1 TO 9 WHILE A\nX\nNEXT I", u"      FOR I = 1 TO 9 WHILE A\n         X\n      NEXT I"},
    {"case", u"BEGIN CASE\nCASE A\nX\nCASE 1\nY\nEND CASE\nZ",
     u"      BEGIN CASE\n         CASE A\n            X\n         CASE 1\n            Y\n      END CASE\n      Z"},
    {"locked", u"READU R FROM F, I LOCKED\nX\nEND THEN\nY\nEND",
     u"      READU R FROM F, I LOCKED\n         X\n      END THEN\n         Y\n      END"},
    {"stray end", u"END\nEND CASE\nNEXT I\nX", u"      END\n      END CASE\n      NEXT I\n      X"},
    {"labels", u" LAB1: X = 1\nLABEL: X\nLONG.LABEL:   X\n  10 X\n10:X\n10.5:\n  L:  ",
     u"LAB1: X = 1\nLABEL: X\nLONG.LABEL: X\n10    X\n10:   X\n10.5:\nL:"},
    {"label in a block", u"LOOP\nLAB1: X\nREPEAT", u"      LOOP\nLAB1:    X\n      REPEAT"},
    {"no label", u"LAB1 := 2", u"      LAB1 := 2"},
    {"user words", u"OPEN.IT\nX\nBETWEEN\nX\nCLOSE.IT\nFIRST\nX\nX LAST\nX",
     u"      OPEN.IT\n         X\n      BETWEEN\n         X\n      CLOSE.IT\n      FIRST\n         X\n"
     u"         X LAST\n            X"},
    {"mark first", u"  \uF8FDX:  Y", u"      \uF8FDX:  Y"}};

/// As their writer put them, and as they stand formatted in a dialect.
const std::tuple<const char*, TextView, TextView> kInDialect[] = {
    {"hanging indents", u"  CALL X(A, ;* one\n         B,\n* note\n    C)\nY = ~\n1",
     u"      CALL X(A, ;* one\n             B,\n      * note\n        C)\n      Y = ~\n      1"},
    {"behind a label", u"L:  X = ~\n      1", u"L:    X = ~\n        1"},
    {"no further than the edge", u"             X = ~\n  1", u"      X = ~\n1"},
    {"a block that opens behind", u"IF A, ~\n    B THEN\nX\nEND",
     u"      IF A, ~\n          B THEN\n         X\n      END"},
    {"directives", u"$IFDEF A\nX\n$ELSE  \n  $B\n$ENDIF", u"$IFDEF A\n      X\n$ELSE\n      $B\n$ENDIF"},
    {"label with its colon apart", u"  LAB   :   X", u"LAB   : X"},
    {"on error", u"READ A FROM B ON ERROR\nX\nEND ELSE\nY\nEND",
     u"      READ A FROM B ON ERROR\n         X\n      END ELSE\n         Y\n      END"},
    {"try", u"TRY\nX\nCATCH E\nY\nEND", u"      TRY\n         X\n      CATCH E\n         Y\n      END"},
    {"local", u"LOCAL FUNCTION A(B)\nX\nEND\nY", u"      LOCAL FUNCTION A(B)\n         X\n      END\n      Y"}};

TEST(FormatTest, InADialect)
{
    Dialects dialects;
    MarkedEditor editor;
    clsKeywords keywords;
    keywords.SetRules(dialects.Rules(u"common"));
    editor.lexer.SetKeywords(keywords);
    for (const auto& [name, before, after] : kInDialect) {
        // Twice, and there and back again.
        editor.Load(Replace(before, u"~", u"|"));
        Format(editor);
        EXPECT_EQ(ToUtf8(editor.Plain()), ToUtf8(Replace(after, u"~", u"|"))) << name;
        editor.buffer.Undo();
        EXPECT_EQ(ToUtf8(editor.Plain()), ToUtf8(Replace(before, u"~", u"|"))) << name;
        editor.buffer.Redo();
        Format(editor);
        EXPECT_EQ(ToUtf8(editor.Plain()), ToUtf8(Replace(after, u"~", u"|"))) << name;
    }
}

TEST(FormatTest, BreaksInADialect)
{
    const std::pair<TextView, TextView> rows[] = {
        {u"   CALL X(A,^", u"   CALL X(A,\n      ^"},
        {u"   CALL X(A,\n          B,^", u"   CALL X(A,\n          B,\n          ^"},
        {u"   CALL X(A,\n          B)^", u"   CALL X(A,\n          B)\n   ^"},
        {u"   IF A,\n          B THEN^", u"   IF A,\n          B THEN\n      ^"},
        {u"   LOOP\n$IFDEF A\n^", u"   LOOP\n$IFDEF A\n\n^"},
        {u"   LOOP\n$IFDEF A^", u"   LOOP\n$IFDEF A\n^"}};
    Dialects dialects;
    clsKeywords keywords;
    keywords.SetRules(dialects.Rules(u"common"));
    for (const auto& [before, after] : rows) {
        MarkedEditor editor;
        editor.lexer.SetKeywords(keywords);
        editor.Load(Text(before));
        editor.view.NewLine();
        EXPECT_EQ(ToUtf8(editor.Marked()), ToUtf8(after));
    }
}

TEST(FormatTest, Programs)
{
    for (const auto& [name, before, after] : kPrograms) {
        EXPECT_EQ(ToUtf8(Formatted(before)), ToUtf8(after)) << name;
        EXPECT_EQ(ToUtf8(Formatted(after)), ToUtf8(after)) << name;
    }
}

/// What the keys make of a program whose indents nobody types.
Text Typed(TextView program)
{
    MarkedEditor editor;
    clsKeywords keywords;
    keywords.SetKeywordList(4, u" ", u"OPEN.IT+ CLOSE.IT- BETWEEN= FIRST[ LAST]");
    editor.lexer.SetKeywords(keywords);
    editor.Load(u"      ^");
    for (size_t i = 0; i < program.size(); ++i) {
        if (program[i] == u'\n')
            editor.view.NewLine();
        else
            editor.view.TypeText(program.substr(i, 1));
    }
    return editor.Plain();
}

TEST(FormatTest, IndentsThatAreTypedAreThoseOfTheFormatter)
{
    for (const auto& [name, before, after] : kPrograms) {
        if (TextView(before).find_first_of(u":\uF8FD") != TextView::npos || before != Trim(before)) continue;
        if (before.substr(0, 3) == u"END" || before.empty()) continue; // nothing is above it to step out of
        EXPECT_EQ(ToUtf8(Typed(before)), ToUtf8(after)) << name;
    }
    const std::tuple<const char*, TextView, TextView> rows[] = {
        {"a name that begins as a word does", u"LOOP\nEND.DATE = 1", u"      LOOP\n         END.DATE = 1"},
        {"a comment says nothing", u"LOOP\n* END\nX", u"      LOOP\n         * END\n         X"},
        {"nor does a blank line", u"LOOP\n\nX", u"      LOOP\n         \n         X"}};
    for (const auto& [name, before, after] : rows) EXPECT_EQ(ToUtf8(Typed(before)), ToUtf8(after)) << name;
}

TEST(FormatTest, BreaksStandWhereTheBlocksSay)
{
    const std::tuple<const char*, TextView, TextView> rows[] = {
        {"before what closes", u"      LOOP^ REPEAT", u"      LOOP\n      ^REPEAT"},
        {"behind a label", u"LAB1: LOOP^", u"LAB1: LOOP\n         ^"},
        {"behind a label alone", u"         X\nLAB1:^", u"         X\nLAB1:\n         ^"},
        {"in front of the code", u"      ^LOOP", u"      \n      ^LOOP"},
        {"a line that stands elsewhere", u"  X = 1^ ; Y", u"  X = 1\n  ^; Y"}};
    for (const auto& [name, before, after] : rows) {
        MarkedEditor editor;
        editor.Load(Text(before));
        editor.view.NewLine();
        EXPECT_EQ(ToUtf8(editor.Marked()), ToUtf8(after)) << name;
        editor.buffer.Undo();
        EXPECT_FALSE(editor.buffer.CanUndo()) << name;
    }
    MarkedEditor copies;
    copies.view.SetIndentsByBlocks(false);
    copies.Load(u"   LOOP^");
    copies.view.NewLine();
    EXPECT_EQ(ToUtf8(copies.Marked()), "   LOOP\n   ^");
}

TEST(FormatTest, Comments)
{
    constexpr TextView kProgram = u"LOOP\n* star\n! bang\n# user\nREM x\nL: * star\nL: ! bang";
    const std::tuple<int16_t, int16_t, int16_t, TextView> rows[] = {
        {1, 0, 2, u"      LOOP\n         * star\n      ! bang\n# user\n         REM x\nL:       * star\nL:    ! bang"},
        {2, 1, 0, u"      LOOP\n* star\n         ! bang\n      # user\n         REM x\nL: * star\nL:       ! bang"},
        {0, 2, 1, u"      LOOP\n      * star\n! bang\n         # user\n         REM x\nL:    * star\nL: ! bang"}};
    for (const auto& [star, bang, user, after] : rows) {
        MvEdit settings;
        settings.IndentStar = star;
        settings.IndentBang = bang;
        settings.IndentUserComment = user;
        EXPECT_EQ(ToUtf8(Formatted(kProgram, settings, u"#")), ToUtf8(after));
    }
}

TEST(FormatTest, TabSizeAndMargin)
{
    MvEdit settings;
    for (auto [tab, margin] : {std::pair<int16_t, int16_t>{2, 0}, {8, 1}, {0, 3}, {-1, -1}}) {
        settings.TabSize = tab;
        settings.Margin = margin;
        Text out(static_cast<size_t>(std::max<int>(margin, 0)), u' ');
        Text in = out + Text(static_cast<size_t>(std::max<int>(tab, 0)), u' ');
        EXPECT_EQ(Formatted(u"LOOP\nX\nREPEAT", settings), out + u"LOOP\n" + in + u"X\n" + out + u"REPEAT") << tab;
    }
}

/// The flags decide alone, in groups that override one another.
TEST(FormatTest, BlockEffects)
{
    constexpr uint32_t FOR = 1, NEXT = 2, LOOP = 4, WHILE = 8, BEGIN = 16, CASE = 32, END = 64, THEN = 128;
    constexpr uint32_t ELSE = 256, LOCKED = 512, REPEAT = 1024, PLUS = 2048, MINUS = 4096, EQUAL = 8192;
    constexpr uint32_t OPEN = 16384, SHUT = 32768;
    const struct {
        int32_t increment, decrement;
        std::vector<uint32_t> flags;
    } rows[] = {{0, 0, {0, 0x70000, FOR | NEXT, LOOP | REPEAT, BEGIN}},
                {1, 0, {FOR, THEN, LOCKED, LOOP, WHILE | FOR, WHILE | LOOP, PLUS, OPEN, SHUT | MINUS}},
                {0, 1, {NEXT, END, REPEAT, MINUS, MINUS | EQUAL, END | CASE | MINUS, WHILE | REPEAT}},
                {1, 1, {ELSE | END, NEXT | THEN, WHILE, CASE, CASE | THEN, EQUAL}},
                {2, 0, {BEGIN | CASE, FOR | BEGIN | CASE, BEGIN | CASE | END}},
                {0, 2, {END | CASE}},
                {1, 2, {END | CASE | THEN}}};
    for (auto& row : rows) {
        for (uint32_t flags : row.flags) {
            BlockEffect effect = BlockEffectOf(flags);
            EXPECT_EQ(effect.increment, row.increment) << flags;
            EXPECT_EQ(effect.decrement, row.decrement) << flags;
        }
    }
}

TEST(FormatTest, CaretKeepsItsColumn)
{
    const std::pair<Text, Text> rows[] = {{u"X = ^1", u"    ^  X = 1"},
                                          {u"           X^\nY", u"      X^\n      Y"},
                                          {u"~X\n  ^\nY", u"      X\n^\n      Y"}};
    for (auto& [before, after] : rows) {
        MarkedEditor editor(before);
        Format(editor);
        EXPECT_EQ(ToUtf8(editor.Marked()), ToUtf8(after));
    }
}

TEST(FormatTest, RedoGivesTheSameTextUnderOtherSettings)
{
    MarkedEditor editor(u"LOOP\nX\nREPEAT");
    Format(editor);
    Text after = editor.Plain();
    editor.buffer.Undo();
    editor.settings.TabSize = 8;
    editor.settings.Margin = 0;
    editor.buffer.Redo();
    EXPECT_EQ(editor.Plain(), after);
}

TEST(FormatTest, WaitIsShownMeanwhile)
{
    MarkedEditor editor(u"X");
    std::vector<bool> shown;
    auto show = [&](bool wait) { shown.push_back(wait); };
    editor.buffer.ExecuteOp(std::make_unique<OpFormat>(editor.view, editor.settings, show));
    EXPECT_EQ(shown, (std::vector<bool>{true, false}));
}

TEST(FormatTest, EndlessNestingHasAnEnd)
{
    Text text;
    for (int i = 0; i < 5000; ++i) text += u"LOOP\n";
    MarkedEditor editor(text);
    Format(editor);
    EXPECT_LT(editor.buffer.LineLength(4999), 2000);
    editor.buffer.Undo();
    EXPECT_EQ(editor.Plain(), text);
}

Text RandomProgram(std::mt19937& random)
{
    static const std::vector<Text> kParts = Split(
        u"FOR I = 1 TO 3|NEXT I|LOOP|UNTIL A DO|REPEAT|BEGIN CASE|CASE 1|END CASE|END|END ELSE|THEN|ELSE|LOCKED|"
        u"IF A |X = 'a  b' |;|* note |! note|REM |REM x|10 |LAB: |L:=2|GOTO A,|GO |\"open|\uF8FD|\uF8FC|(|)|\u00E9|   |"
        u" |\\|LAB:X|99:",
        u'|');
    auto pick = [&](size_t below) { return random() % below; };
    Text text;
    for (size_t lines = pick(40); lines > 0; --lines) {
        text.append(pick(9), u' ');
        for (size_t parts = pick(4); parts > 0; --parts) text.append(kParts[pick(kParts.size())]).append(pick(3), u' ');
        text += u'\n';
    }
    return text;
}

Text WithoutBlanks(Text text)
{
    std::erase(text, u' ');
    return text;
}

TEST(FormatTest, AnyText)
{
    std::mt19937 random(71);
    for (int round = 0; round < 400; ++round) {
        struct Edits final : BufferListener {
            void TextChanged(const TextChange&) override { ++count; }
            int count = 0;
        } edits;
        MarkedEditor editor(RandomProgram(random));
        for (int16_t* way :
             {&editor.settings.IndentStar, &editor.settings.IndentBang, &editor.settings.IndentUserComment})
            *way = static_cast<int16_t>(random() % 3);
        editor.settings.TabSize = static_cast<int16_t>(random() % 5);
        editor.settings.Margin = static_cast<int16_t>(random() % 9);
        editor.view.SetCaret({static_cast<int32_t>(random() % 20), static_cast<int32_t>(random() % 40)});
        for (int32_t line = 0; line < editor.buffer.LineCount(); ++line) {
            if (random() % 3 == 0) editor.buffer.ToggleBookmark(line);
            editor.buffer.SetLineData(line, LineWord::Identity, static_cast<uint32_t>(random() % 9));
        }
        EditorState before = editor.State();
        Format(editor);
        ASSERT_TRUE(editor.HasSafeCaret());
        EditorState after = editor.State();
        ASSERT_EQ(WithoutBlanks(after.text), WithoutBlanks(before.text));
        auto oldLines = Split(before.text, u'\n');
        auto newLines = Split(after.text, u'\n');
        for (size_t i = 0; i < newLines.size(); ++i) {
            bool label = before.words[i * 3 + 1] & line_flag::kLabel;
            ASSERT_TRUE(label || Trim(oldLines[i]) == Trim(newLines[i]));
            ASSERT_TRUE(newLines[i].empty() || newLines[i].back() != u' ');
            ASSERT_EQ(before.words[i * 3 + 2], after.words[i * 3 + 2]);
        }
        editor.buffer.AddListener(&edits);
        Format(editor);
        ASSERT_EQ(editor.State(), after) << ToUtf8(before.text);
        editor.buffer.Undo();
        ASSERT_EQ(editor.State(), after);
        ASSERT_EQ(edits.count, 0) << "what is formatted is not touched";
        editor.buffer.RemoveListener(&edits);
        editor.buffer.Undo();
        ASSERT_EQ(editor.State(), before);
        ASSERT_TRUE(editor.HasSafeCaret());
        EXPECT_FALSE(editor.buffer.CanUndo());
        editor.buffer.Redo();
        ASSERT_EQ(editor.State(), after);
    }
}

} // namespace nib::test::format_test
