#include "documents/DocumentSettings.h"
#include "editing/LexClass.h"
#include "fakes/TestProgram.h"
#include "language/Dialects.h"

#include <array>

namespace nib::test::document_settings_test {

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

using Lines = std::vector<Text>;

struct HostConfigurationTest : testing::Test {
    MvEdit& Settings() { return t.program.EditorSettings(); }
    std::map<int32_t, Text>& Record() { return t.Store().session.configuration; }
    bool IsUntouched()
    {
        const MvEdit& s = Settings();
        return !s.HostKeywords && !s.HostCompile && !s.HostFormat && !s.HostComment;
    }
    void Load() { host.LoadHostConfiguration(); }

    TestProgram t;
    Location& location = t.program.Place().host;
    HostConfiguration host{t.program.Services()};

    HostConfigurationTest()
    {
        location.Database = u"DEMO";
        t.Store().session.account = u"DEMO";
    }
};

TEST_F(HostConfigurationTest, WaitsForServerAndAccount)
{
    Record()[4] = u"CATALOG";
    location = {u"file", u"*", u"DEMO", {}};
    Load();
    location = {u"MVDB", {}, u"DEMO", {}};
    Load();
    location = {u"MVDB", u"*", {}, {}};
    Load();
    EXPECT_FALSE(host.HostConfigLoaded());
    EXPECT_TRUE(t.connection.opens.empty());
    location.Database = u"DEMO";
    Load();
    EXPECT_TRUE(host.HostConfigLoaded());
    EXPECT_EQ(Settings().CompileCommand, u"CATALOG");
    EXPECT_EQ(t.connection.opens,
              (std::vector<OpenCall>{{t.connection.ComposeHostPath({u"MVDB", u"*", {}, {}, {}}), false, false}}));
    EXPECT_EQ(t.Store().session.asked, (Lines{u"NIB 2", u"NIB 3", u"NIB 4", u"NIB 5", u"NIB 6", u"NIB 7"}));
    Record()[4] = u"OTHER";
    Load();
    EXPECT_EQ(Settings().CompileCommand, u"CATALOG") << "once in a run";
    EXPECT_EQ(t.Store().liveItems, 0);
}

TEST_F(HostConfigurationTest, TheRecordIsThatOfTheAccountThatIsMeant)
{
    const auto opened = [&](TextView account) {
        return OpenCall{t.connection.ComposeHostPath({u"mvdb", u"*", Text(account), {}, {}}), false, false};
    };
    for (const auto& [present, opens] : {std::pair(u"", 2), {u"OTHER", 2}, {u"demo", 1}}) {
        t.Store().session.account = present;
        t.connection.opens.clear();
        HostConfiguration fresh(t.program.Services());
        fresh.LoadHostConfiguration();
        std::vector<OpenCall> expected{opened(u"")};
        if (opens == 2) expected.push_back(opened(u"DEMO"));
        EXPECT_EQ(t.connection.opens, expected);
    }
    t.Store().session.account = u"";
    t.connection.openFailures = {std::nullopt, Error{error_number::kPathNotFound, u"no such account"}};
    EXPECT_NO_THROW(Load()) << "the open that follows tells of it";
}

TEST_F(HostConfigurationTest, NothingComesFromAHostThatMayNotOrCannotTell)
{
    Record()[4] = u"CATALOG";
    const std::pair<const char*, std::function<void()>> rows[] = {
        {"not wanted", [&] { Settings().DisableHostConfig = true; }},
        {"not supported", [&] { t.Store().unsupported = {kSupportsConfiguration}; }},
        {"no session", [&] { t.Store().hasSession = false; }}};
    for (const auto& [name, prepare] : rows) {
        SCOPED_TRACE(name);
        t.Store().unsupported.clear();
        t.Store().hasSession = true;
        Settings().DisableHostConfig = false;
        t.connection.opens.clear();
        prepare();
        HostConfiguration fresh(t.program.Services());
        fresh.LoadHostConfiguration();
        EXPECT_TRUE(fresh.HostConfigLoaded() && IsUntouched());
        EXPECT_EQ(t.connection.opens.empty(), Settings().DisableHostConfig);
    }
}

TEST_F(HostConfigurationTest, ErrorsOfTheConnectionGoToTheCallerOnce)
{
    t.connection.openFailures = {Error{error_number::kStorage, u"no line"}};
    EXPECT_THROW(Load(), Error);
    EXPECT_NO_THROW(Load());
    EXPECT_EQ(t.connection.opens.size(), 1U);
}

TEST_F(HostConfigurationTest, KeywordsComeFromItems)
{
    const auto path = [&](TextView file, TextView item) {
        return t.connection.ComposeHostPath({u"mvdb", u"*", u"DEMO", Text(file), Text(item)});
    };
    t.Store(path(u"CTL", u"WORDS"), u"ALPHA\r\nBETA+\r\n");
    t.Store(path(u"CTL", u"MORE"), u"GAMMA");
    t.Store(path(u"CTL", u"EMPTY"), u"");
    Settings().Keywords.SetKeywordList(keyword_class::kUser, u",", u"MINE");
    const std::tuple<const char*, Text, Text, bool, Text> rows[] = {
        {"nothing", u"", u"", false, u"MINE"},
        {"no backslash", u"CTL", u"CTL", false, u"MINE"},
        {"missing items", u"CTL\\NONE", u"GONE\\NONE", false, u"MINE"},
        {"empty items", u"CTL\\EMPTY", u"CTL\\EMPTY\\X", false, u"MINE"},
        {"user's alone", u"", u"CTL\\MORE\\ignored", true, u"GAMMA"},
        {"both", u"CTL\\WORDS", u"CTL\\MORE", true, u"GAMMA"}};
    for (const auto& [name, language, user, replaced, userWords] : rows) {
        SCOPED_TRACE(name);
        Settings().HostKeywords = false;
        Record() = {{2, language}, {3, user}};
        HostConfiguration fresh(t.program.Services());
        fresh.LoadHostConfiguration();
        EXPECT_EQ(Settings().HostKeywords, replaced);
        EXPECT_EQ(Settings().Keywords.GetKeywordList(keyword_class::kUser, u","), userWords);
    }
    EXPECT_EQ(t.connection.opens.back(), (OpenCall{path(u"CTL", u"MORE"), true, false}));
    EXPECT_TRUE(Settings().Keywords.Item(u"BETA"));
    EXPECT_FALSE(Settings().Keywords.Item(u"MINE"));
    EXPECT_FALSE(Settings().HostCompile || Settings().HostFormat || Settings().HostComment);
}

TEST_F(HostConfigurationTest, KeywordsThatCannotBeReadLeaveTheRestOfTheRecord)
{
    Record() = {{2, u"CTL\\WORDS"}, {3, u"CTL\\WORDS"}, {4, u"CATALOG"}};
    t.Store(t.connection.ComposeHostPath({u"mvdb", u"*", u"DEMO", u"CTL", u"WORDS"}), u"ALPHA");
    t.connection.openFailures = {std::nullopt, Error{error_number::kPathNotFound, u"no such file"}};
    t.Store().readFailure = Error{error_number::kStorage, u"no text"};
    t.trace.wanted |= trace::kErrors;
    EXPECT_NO_THROW(Load());
    EXPECT_TRUE(Settings().HostCompile && !Settings().HostKeywords);
    EXPECT_EQ(Settings().CompileCommand, u"CATALOG");
    EXPECT_EQ(
        t.trace.lines,
        (TraceLines{
            {1, u"HostConfiguration.ReplaceKeywords: error=0x" + Hex(error_number::kPathNotFound) + u" no such file"},
            {1, u"HostConfiguration.ReplaceKeywords: error=0x" + Hex(error_number::kStorage) + u" no text"}}));
}

TEST_F(HostConfigurationTest, TheDialectIsThatOfTheAccountOrOfItsConnection)
{
    Dialects dialects;
    // Of the record and of the connection, and what becomes of the user's "common".
    const std::tuple<Text, Text, Text, bool> rows[] = {{u"", u"", u"common", false},
                                                       {u"NONE", u"server", u"NONE", true},
                                                       {u"", u"Server", u"Server", true},
                                                       {u"klingon", u"server", u"common", false}};
    for (const auto& [record, connection, dialect, fixed] : rows) {
        t.program.Services().dialects = &dialects;
        Settings().Dialect = u"common";
        Settings().HostDialect = false;
        UseDialect(Settings(), &dialects);
        Record() = {{7, record}};
        t.connection.dialect = connection;
        HostConfiguration(t.program.Services()).LoadHostConfiguration();
        EXPECT_EQ(Settings().Dialect, dialect);
        EXPECT_EQ(Settings().HostDialect, fixed);
        EXPECT_EQ(Settings().Keywords.Rules(), dialects.Rules(dialect));
    }
}

TEST_F(HostConfigurationTest, NumbersOfTheFormat)
{
    struct Row {
        Text value;
        std::array<int16_t, 5> numbers; ///< margin, tab size, indents
    };
    const Row rows[] = {{u"6,3,1,0,2", {6, 3, 1, 0, 2}},
                        {u"9", {9, 0, 0, 0, 0}},
                        {u" 4x , 2.9 ,,two,1,7,7", {4, 3, 0, 0, 1}},
                        {u"99999999999,-5,9,-1,32768", {32767, 0, 0, 1, 0}},
                        {u",", {0, 0, 0, 0, 0}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(ToUtf8(row.value));
        Record() = {{5, row.value}};
        HostConfiguration fresh(t.program.Services());
        fresh.LoadHostConfiguration();
        const MvEdit& s = Settings();
        EXPECT_EQ((std::array{s.Margin, s.TabSize, s.IndentStar, s.IndentBang, s.IndentUserComment}), row.numbers);
        EXPECT_TRUE(s.HostFormat && !s.HostCompile && !s.HostComment && !s.HostKeywords);
    }
}

TEST_F(HostConfigurationTest, CommandAndCommentPrefixes)
{
    Settings().CompileOptions = u"(L";
    Record() = {{4, Text(1 << 20, u'C')}, {6, u"#,%,ABC,7," + Text(100000, u',')}};
    auto document = t.New();
    document->SetHighlight(false);
    Load();
    EXPECT_FALSE(document->Highlight()) << "as a client has it";
    EXPECT_EQ(Settings().CompileCommand.size(), size_t{1} << 20);
    EXPECT_EQ(Settings().CompileOptions, u"");
    EXPECT_EQ(Settings().Keywords.CommentPrefixes(), u"*,!,#,%");
    EXPECT_TRUE(Settings().HostCompile && Settings().HostComment && !Settings().HostFormat);
}

} // namespace nib::test::document_settings_test
