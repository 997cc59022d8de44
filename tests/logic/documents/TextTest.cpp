#include "base/Text.h"
#include "editing/LexClass.h"
#include "fakes/TestProgram.h"
#include "logic/storage/HostFixture.h"
#include "text/LineDiff.h"

#include <random>

namespace nib::test::text_test {

TEST(TextFormsTest, Tabs)
{
    const std::tuple<Text, int32_t, Text> rows[] = {{u"", 3, u""},        {u"a\tb", 3, u"a   b"}, {u"\t\t", 2, u"    "},
                                                    {u"a\tb", 1, u"a b"}, {u"a\tb", 0, u"a b"},   {u"a\tb", -4, u"a b"},
                                                    {u"ab", 8, u"ab"}};
    for (const auto& [text, width, expanded] : rows)
        EXPECT_EQ(ExpandTabs(text, width), expanded) << ToUtf8(text) << width;
}

TEST(TextFormsTest, LineEnds)
{
    const std::pair<Text, Text> rows[] = {{u"", u""},
                                          {u"a", u"a"},
                                          {u"a\r\nb", u"a\r\nb"},
                                          {u"a\nb\n", u"a\r\nb\r\n"},
                                          {u"a\rb", u"a\r\nb"},
                                          {u"a\r\nb\nc\rd\n", u"a\r\nb\r\nc\r\nd\r\n"},
                                          {u"a\nb\rc", u"a\nb\rc"}, // as many of each: left alone
                                          {u"\n\r", u"\n\r"}};
    for (auto& [text, wanted] : rows) {
        EXPECT_EQ(NormalizeLineEnds(text), wanted) << ToUtf8(wanted);
        EXPECT_EQ(NormalizeLineEnds(NormalizeLineEnds(text)), wanted);
    }
}

TEST(LabelTest, ScanLabel)
{
    const std::tuple<Text, Text, int32_t> rows[] = {
        {u"  9 X", u"9", 2}, {u"A.$_1:", u"A.$_1", 0}, {u"100A:", u"100", 0}, {u"   ", u"", 0}, {u"", u"", 0},
        {u"\tA:", u"", 0},   {u"*A:", u"", 0},         {u"_A:", u"", 0},      {u"é:", u"", 0},  {u"z9", u"z9", 0}};
    for (const auto& [line, name, column] : rows) {
        Label label = ScanLabel(line, 0);
        EXPECT_EQ(label.name, name) << ToUtf8(line);
        EXPECT_EQ(label.column, column) << ToUtf8(line);
    }
}

struct TextTest : testing::Test {
    TestProgram t;
    std::shared_ptr<mvDocument> document = t.New();
    FakeDocView& window = t.View(*document);
    SourceView& view = window.txtText();
    SourceDocument& text = view.Document();

    void Load(TextView lines)
    {
        document->SetText(lines);
        text.SetModified(false);
    }
    void LoadLines(int32_t count)
    {
        Text lines;
        for (int32_t i = 1; i < count; ++i) lines += u"\r\n";
        Load(lines);
    }
    void MarkLabel(int32_t line) { text.SetLineData(line, LineWord::Lexer, line_flag::kLabel); }
};

TEST_F(TextTest, LabelTableAndGotoLabel)
{
    Load(u"  100 X = 1\r\nA.B$_1: X\r\nNOT: marked\r\n* marked, but none\r\nLAST:");
    for (int32_t line : {0, 1, 3, 4}) MarkLabel(line);
    EXPECT_EQ(document->Labels(), (std::vector<Label>{{u"100", 0, 2}, {u"A.B$_1", 1, 0}, {u"LAST", 4, 0}}));
    document->GotoLabel(u"LAST");
    EXPECT_EQ(view.Caret(), (Position{0, 4}));
    document->GotoLabel(u"100");
    EXPECT_EQ(view.Caret(), (Position{2, 0}));
    for (TextView absent : {u"NOT", u"last", u""}) {
        const Error error = ErrorOf([&] { document->GotoLabel(absent); });
        EXPECT_EQ(error.number, 32767) << ToUtf8(absent);
        EXPECT_EQ(error.description, u"Target label not found!");
        EXPECT_EQ(view.Caret(), (Position{2, 0}));
    }
}

TEST_F(TextTest, LabelTableKeepsUpWithTheText)
{
    Load(u"A:\r\nB:");
    MarkLabel(0);
    EXPECT_EQ(document->Labels().at(0).name, u"A");
    text.InsertText({0, 0}, u"Z");
    EXPECT_EQ(document->Labels().at(0).name, u"ZA");
    document->Undo();
    EXPECT_FALSE(document->IsDirty());
    EXPECT_EQ(document->Labels().at(0).name, u"A") << "undone back to the saved text";
    text.InsertText({0, 0}, u"Y");
    EXPECT_TRUE(document->ItemSaveAs(t.Item(kMain)));
    EXPECT_EQ(document->Labels().at(0).name, u"YA") << "saved under another name meanwhile";
    EXPECT_TRUE(document->FileSave());
    Load(u"");
    EXPECT_TRUE(document->Labels().empty());
}

TEST_F(TextTest, ShowLineCentres)
{
    LoadLines(100);
    window.pane.pageLines = 20;
    const std::tuple<int32_t, bool, int32_t, int32_t> rows[] = {
        {50, true, 0, 40}, {50, false, 0, 0},  {10, true, 0, 0},   {11, true, 0, 1},  {95, true, 0, 80},
        {5, true, 60, 60}, {70, true, 60, 60}, {71, true, 60, 61}, {99, true, 85, 80}};
    for (const auto& [line, centre, before, after] : rows) {
        window.pane.firstLine = before;
        document->ShowLine(0, line, centre);
        EXPECT_EQ(window.pane.firstLine, after) << line << " from " << before;
        EXPECT_EQ(view.CaretLine(), line);
    }
    window.pane.firstLine = 0;
    LoadLines(15);
    document->ShowLine(0, 14, true);
    EXPECT_EQ(window.pane.firstLine, 0) << "a text shorter than the page never scrolls";
}

TEST_F(TextTest, LineIdentities)
{
    LoadLines(5);
    EXPECT_EQ(document->LineIdFromLine(-1), -1);
    int32_t second = document->LineIdFromLine(1);
    int32_t last = document->LineIdFromLine(4);
    EXPECT_EQ(document->LineIdFromLine(1), second);
    EXPECT_NE(second, last);
    text.InsertText({0, 0}, u"x\r\ny\r\n");
    text.InsertText({0, 3}, u"in front: ");
    EXPECT_EQ(document->LineFromLineId(second), 3);
    EXPECT_EQ(document->LineFromLineId(last), 6);
    text.DeleteRange({0, 2}, {0, 5});
    EXPECT_EQ(document->LineFromLineId(second), -1);
    EXPECT_EQ(document->LineFromLineId(last), 3);
    document->Undo();
    EXPECT_EQ(document->LineFromLineId(second), 3) << "it comes back with its line";
    for (int32_t id : {0, -1, 4711}) EXPECT_EQ(document->LineFromLineId(id), -1);
    EXPECT_NE(t.New()->LineIdFromLine(0), document->LineIdFromLine(0)) << "unique among all documents";
}

TEST_F(TextTest, SettingTheTextOnlyWhenItDiffers)
{
    document->SetText(u"a\tb\r\nc");
    EXPECT_TRUE(document->IsDirty());
    EXPECT_FALSE(document->CanUndo());
    text.ToggleBookmark(1);
    text.InsertText({0, 0}, u"x");
    text.SetModified(false);
    document->SetText(u"xa\tb\r\nc");
    EXPECT_FALSE(document->IsDirty());
    EXPECT_TRUE(document->CanUndo());
    EXPECT_EQ(text.BookmarkCount(), 1);
    document->SetText(u"other");
    EXPECT_TRUE(document->IsDirty());
    EXPECT_FALSE(document->CanUndo());
    EXPECT_EQ(text.BookmarkCount(), 0);
}

TEST_F(TextTest, Selections)
{
    const Text all = u"first\r\nsecond\r\nlast";
    Load(all);
    EXPECT_EQ(document->SelText(), u"");
    const std::tuple<Position, Position, Text, bool> rows[] = {{{1, 0}, {3, 0}, u"ir", false},
                                                               {{3, 0}, {1, 0}, u"ir", false},
                                                               {{2, 0}, {3, 2}, u"rst\r\nsecond\r\nlas", true},
                                                               {{3, 2}, {2, 0}, u"rst\r\nsecond\r\nlas", true},
                                                               {{0, 1}, {0, 2}, u"second\r\n", true}};
    for (const auto& [anchor, caret, selected, lines] : rows) {
        view.SetSelection(anchor, caret);
        EXPECT_EQ(document->SelText(), selected);
        EXPECT_EQ(document->SelectionIsMultiLine(), lines);
        EXPECT_EQ(document->GetOrderedSelection().swapped, caret < anchor);
        document->SetSelText(u"<\t>");
        EXPECT_EQ(document->GetText(), Replace(all, selected, u"<   >"));
        document->Undo();
        EXPECT_EQ(document->GetText(), all);
        EXPECT_FALSE(document->CanUndo()) << "one step";
        document->Redo();
        EXPECT_EQ(document->GetText(), Replace(all, selected, u"<   >"));
        document->Undo();
    }
}

using namespace std::string_literals;

// What nobody edited comes back byte for byte, whatever was edited around it.

/// A text in the bytes of some coding, a line each with its end.
class RandomFile {
public:
    RandomFile(std::mt19937& random, bool item) : wide_(!item && random() % 5 == 0), bigEndian_(random() % 2 == 0)
    {
        static const std::string kPieces[] = {"\t",   "\t\t", "    ", "x = 1", "\xC3\xA9",
                                              "\xE9", "!",    "\xFD", "END",   " "};
        static const std::string kEnds[] = {"\n", "\r\n", "\r"};
        const size_t ends = random() % 3 + 1;
        const size_t first = random() % 3;
        const bool ascii = random() % 2 == 0;
        const size_t count = random() % 9 + 3;
        for (size_t n = 0; n < count; ++n) {
            std::string line = n == 0 ? "first" : "";
            for (size_t pieces = random() % 5; pieces > 0; --pieces) {
                const std::string& piece = kPieces[random() % std::size(kPieces)];
                if (!ascii || piece.front() > 0) line += piece;
            }
            if (n + 1 == count) line += "last";
            if (line.empty() && lines_.back().ends_with('\r')) line = "x"; // or an LF would join that CR
            if (n + 1 < count || random() % 2 == 0) line += kEnds[(first + random() % ends) % 3];
            lines_.push_back(line);
        }
    }

    int32_t Some(std::mt19937& random) const { return static_cast<int32_t>(random() % (lines_.size() - 2) + 1); }
    std::string Bytes(size_t from, size_t to) const
    {
        std::string bytes;
        for (size_t n = from; n < to; ++n) bytes += Coded(lines_[n]);
        return bytes;
    }
    std::string Bytes() const { return Mark() + Bytes(0, lines_.size()); }
    std::string Mark() const { return !wide_ ? "" : bigEndian_ ? "\xFE\xFF" : "\xFF\xFE"; }
    std::string Coded(const std::string& text) const
    {
        if (!wide_) return text;
        std::string bytes;
        for (char c : text) bytes += bigEndian_ ? "\0"s + c : c + "\0"s;
        return bytes;
    }
    size_t Count() const { return lines_.size(); }

private:
    bool wide_;
    bool bigEndian_;
    std::vector<std::string> lines_;
};

Text WithZ(mvDocument& document, int32_t line)
{
    const SourceDocument& text = document.EnsureView().txtText().Document();
    return text.GetRange({}, {0, line}) + u"Z\r\n" + text.GetRange({0, line + 1}, text.End());
}

/// Changes line `line`, in one step of undo, to what holds a Z.
const std::function<void(mvDocument&, int32_t line)> kEdits[] = {
    [](mvDocument& d, int32_t line) {
        d.EnsureView().txtText().Document().InsertText({line % 3, line}, u"Z");
    },
    [](mvDocument& d, int32_t line) {
        d.EnsureView().txtText().SetSelection({0, line}, {0, line + 1});
        d.ReplaceSelection(u"Z\r\n");
    },
    [](mvDocument& d, int32_t line) { d.ReplaceText(WithZ(d, line)); },
    [](mvDocument& d, int32_t line) { d.SetText(WithZ(d, line)); },
    [](mvDocument& d, int32_t line) {
        const Text written = d.AsWritten().Whole();
        std::vector<TextView> lines = LinesOf(written);
        lines[static_cast<size_t>(line)] = u"Z";
        Text text;
        for (TextView each : lines) text.append(each).append(u"\r\n");
        d.BringBack(TextView(text).substr(0, text.size() - 2));
    }};

struct StoredLinesTest : HostFixture {
    StoredLinesTest() { std::filesystem::create_directory_symlink(fast_.Path(), folder / "accounts/DEMO/FAST"); }
    std::shared_ptr<mvDocument> OpenBytes(bool asItem, const std::string& bytes)
    {
        file_ = folder.File("accounts/DEMO/FAST/X", bytes);
        auto document = t.NewObject();
        EXPECT_TRUE(document->ItemOpen(Open(asItem ? Text(u"mvdb:*/DEMO/FAST/X") : FromUtf8(file_)), false));
        return document;
    }
    std::string Saved(mvDocument& document)
    {
        EXPECT_TRUE(document.FileSave());
        return BytesOf(file_);
    }

    TestProgram t;
    std::string file_;

private:
    TempFolder fast_{"/dev/shm"};
};

TEST_F(StoredLinesTest, OneEditLeavesAllOtherLinesAndItsUndoTheWholeFile)
{
    std::mt19937 random(12);
    for (int round = 0; round < 2000 && !HasFailure(); ++round) {
        const bool asItem = round % 2 == 0;
        const RandomFile file(random, asItem);
        SCOPED_TRACE(testing::PrintToString(file.Bytes()) + " in round " + std::to_string(round));
        auto document = OpenBytes(asItem, file.Bytes());
        SourceDocument& text = document->EnsureView().txtText().Document();
        const int32_t line = file.Some(random);
        const auto at = static_cast<size_t>(line);
        const size_t kind = random() % std::size(kEdits);
        kEdits[kind](*document, line);
        const std::string head = file.Mark() + file.Bytes(0, at);
        const std::string saved = Saved(*document);
        EXPECT_TRUE(saved.starts_with(head) && saved.ends_with(file.Bytes(at + 1, file.Count())))
            << testing::PrintToString(saved) << " by way " << kind;
        EXPECT_NE(saved.find('Z', head.size()), std::string::npos);
        if (text.CanUndo()) {
            document->Undo();
            EXPECT_EQ(Saved(*document), file.Bytes()) << "by way " << kind;
        }
        document->FileClose(false);
    }
}

TEST_F(StoredLinesTest, UnderAnotherNameTheyStayToo)
{
    const std::string bytes = "a\tb\r\nc\n\td\xE9\n";
    auto document = OpenBytes(false, bytes);
    EXPECT_EQ(document->GetText(), u"a   b\r\nc\r\n   d\u00E9\r\n");
    EXPECT_TRUE(document->ItemSaveAs(Open(FromUtf8(folder / "copy"))));
    EXPECT_EQ(BytesOf(folder / "copy"), bytes);
    document->EnsureView().txtText().Document().InsertText({0, 0}, u"new\r\n");
    EXPECT_TRUE(document->FileSave());
    EXPECT_EQ(BytesOf(folder / "copy"), "new\n" + bytes) << "a new line ends as most do";
    document->Undo();
    document->EnsureView().txtText().Document().InsertText({0, 1}, u"\u20AC");
    EXPECT_FALSE(document->FileSave()) << "Latin-1 holds no such character";
    EXPECT_EQ(t.boxes.Take().size(), 1U);
    EXPECT_TRUE(document->ItemSaveAs(Open(FromUtf8(folder / "other"))));
    EXPECT_EQ(BytesOf(folder / "other"), "a\tb\r\n\xE2\x82\xAC"
                                         "c\n\td\xC3\xA9\n")
        << "a new name may bring another coding";
    EXPECT_TRUE(document->ItemSaveAs(Open(u"mvdb:*/DEMO/FAST/COPY")));
    EXPECT_EQ(BytesOf(folder / "accounts/DEMO/FAST/COPY"), "a\tb\n\xE2\x82\xAC"
                                                           "c\n\td\xC3\xA9\n\n");
}

} // namespace nib::test::text_test
