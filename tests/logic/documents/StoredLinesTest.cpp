// What nobody edited comes back byte for byte, whatever was edited around it.

#include "../storage/HostFixture.h"
#include "fakes/TestProgram.h"
#include "hosts/StoredText.h"

#include <random>

namespace nib::test {
namespace {

using namespace std::string_literals;

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
    [](mvDocument& d, int32_t line) { d.SetText(WithZ(d, line)); }};

class StoredLinesTest : public HostFixture {
protected:
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

} // namespace
} // namespace nib::test
