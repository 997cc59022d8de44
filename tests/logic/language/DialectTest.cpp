#include "language/Dialects.h"
#include "logic/storage/TempFolder.h"

#include <gtest/gtest.h>

namespace nib::dialect_test {

using test::TempFolder;

TEST(Dialects, CommonKnowsItsWords)
{
    Dialects dialects;
    const Dialect* common = dialects.Find(u"Common");
    ASSERT_NE(common, nullptr);
    EXPECT_EQ(dialects.Find(u"none"), nullptr);
    EXPECT_GE(common->Words().size(), 250U);
    for (const DialectWord& word : common->Words()) {
        SCOPED_TRACE(ToUtf8(word.name));
        EXPECT_EQ(common->Find(ToLower(word.name), word.kind), &word);
        EXPECT_FALSE(word.form.empty() || word.help.empty());
    }
    EXPECT_EQ(common->Find(u"Delete").size(), 2U);
    EXPECT_TRUE(common->Find(u"DELET").empty());
    EXPECT_TRUE(common->Find(u"").empty());
    EXPECT_TRUE(common->FindBlock(u"on error")->last);
    const Dialect* server = dialects.Find(u"server");
    EXPECT_TRUE(server->Is(u"INHERITS", WordKind::Statement) && server->Is(u"READU", WordKind::Statement));
    EXPECT_EQ(server->inNames, common->inNames);
    EXPECT_TRUE(dialects.Notes().empty());
}

TEST(Dialects, FormsTellTheArguments)
{
    struct Row {
        TextView form;
        int32_t least, most;
    };
    const Row rows[] = {{u"A()", 0, 0},
                        {u"A(x)", 1, 1},
                        {u"A([x])", 0, 1},
                        {u"A(x, y [, z])", 2, 3},
                        {u"A(x [, y [, z]])", 1, 3},
                        {u"A(x [, y], z)", 2, 3},
                        {u"A(x, ...)", 1, -1},
                        {u"A(x [, y, ...])", 1, -1},
                        {u"A(B(x, y), z)", 2, 2},
                        {u"A(x) or A(x, y)", 1, 1}};
    for (const Row& row : rows) {
        SCOPED_TRACE(ToUtf8(row.form));
        Dialect dialect;
        std::vector<DialectNote> notes;
        ReadDialect(u"[words]\na|function|" + Text(row.form) + u"|", dialect, notes);
        const DialectWord* word = dialect.Find(u"A", WordKind::Function);
        ASSERT_NE(word, nullptr);
        EXPECT_EQ(std::pair(word->least, word->most), std::pair(row.least, row.most));
        EXPECT_TRUE(notes.empty());
    }
}

TEST(Dialects, EachBadLineIsTold)
{
    const std::pair<TextView, TextView> rows[] = {
        {u"[colours]\nred | green", u"1 There is no section [colours]; its lines are passed over."},
        {u"; remark\n\ntitle", u"3 \"=\" is missing."},
        {u"[lines]\nin name = .", u"2 There is no rule \"in name\"."},
        {u"[LINES]\r\nblank before colon = maybe\r\n", u"2 This is \"yes\" or \"no\"."},
        {u"[words]\nOPEN | statement | OPEN name", u"2 A word has 4 fields: name | kind | form | help."},
        {u"[words]\nOPEN | verb | OPEN | Opens.", u"2 There is no kind \"verb\"."},
        {u"[words]\n| function | A() | ", u"2 The name is one word."},
        {u"[words]\nON ERROR | clause | | ", u"2 The name is one word."},
        {u"[words]\nA | function | A(x, [y) | ", u"2 A function's form ends its arguments with \")\"."},
        {u"[words]\nA | function | A | ", u"2 A function's form ends its arguments with \")\"."},
        {u"[blocks]\nTRY | opens", u"2 A block has 3 or 4 fields: words | role | place | closer."},
        {u"[blocks]\nTRY | shuts | first", u"2 There is no role \"shuts\"."},
        {u"[blocks]\nTRY | opens | there", u"2 There is no place \"there\"."},
        {u"[blocks]\n| opens | first", u"2 The words are missing."}};
    for (const auto& [text, answer] : rows) {
        SCOPED_TRACE(ToUtf8(text));
        Dialect dialect;
        std::vector<DialectNote> notes;
        ReadDialect(Text(text) + u"\n[words]\nLAST | clause | LAST | ", dialect, notes);
        ASSERT_EQ(notes.size(), 1U);
        EXPECT_EQ(Decimal(notes[0].line) + u" " + notes[0].text, answer);
        EXPECT_TRUE(dialect.Is(u"LAST", WordKind::Clause));
    }
}

TEST(Dialects, OfTheUser)
{
    TempFolder folder;
    const auto write = [&](const char* name, std::string_view text) {
        std::ofstream(folder.Path() + "/" + name) << text;
    };
    write("ours.dialect", "base = common\n[lines]\nin names = # $\n[words]\nABS | function | ABS() | Ours.\n");
    write("ring.dialect", "base = ring2\n");
    write("ring2.dialect", "base = ring\n");
    write("notes.txt", "");
    Dialects dialects;
    dialects.AddFolder(folder.Path());
    dialects.AddFolder(folder.Path() + "/nowhere");
    EXPECT_EQ(dialects.Names(), (std::vector<Text>{u"common", u"server", u"ours", u"ring", u"ring2"}));
    const Dialect* ours = dialects.Find(u"ours");
    EXPECT_EQ(ours->Find(u"ABS", WordKind::Function)->most, 0);
    EXPECT_TRUE(ours->IsInName(u'#') && !ours->IsInName(u'.') && ours->Is(u"LEN", WordKind::Function));
    EXPECT_NE(dialects.Find(u"ring"), nullptr);
    ASSERT_EQ(dialects.Notes().size(), 1U);
    EXPECT_EQ(dialects.Notes()[0].text, u"There is no dialect ring to build on.");
}

} // namespace nib::dialect_test
