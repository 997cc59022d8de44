#include "hosts/ItemText.h"
#include "fakes/Failure.h"
#include "text/SourceDocument.h"

#include <gtest/gtest.h>

#include <random>

namespace nib::test::item_text_test {

using namespace std::string_literals;

const ItemText kFiles = ItemText::ForFiles();
const ItemText kItems = ItemText::ForItems(Charset(), false);
const ItemText kWestern = ItemText::ForItems(Charset(u"windows-1252"), true);
const ItemText kJapanese = ItemText::ForItems(Charset(u"Shift_JIS"), true);

const std::tuple<const char*, const ItemText&, std::string, Text> kReads[] = {
    {"attributes", kItems, "A\nB\n", u"A\r\nB"},
    {"no last line feed", kItems, "A\nB", u"A\r\nB"},
    {"one last line feed only", kItems, "A\n\n", u"A\r\n"},
    {"empty", kItems, "", u""},
    {"line feed alone", kItems, "\n", u""},
    {"marks", kItems, "A\xFD\x42\xFC\xFE\xFB\xFF\n", u"A\xF8FD\x42\xF8FC\xF8FE\xF8FB\xF8FF"},
    {"UTF-8 and marks", kItems, "\xC3\xA9\xFD\xE2\x82\xAC\n", u"é\xF8FD€"},
    {"Latin-1 and marks", kItems, "\xE9\xFD\xE8\n", u"é\xF8FDè"},
    {"a mark inside a sequence", kItems, "\xC3\xFD\xA9\n", u"Ã\xF8FD©"},
    {"marks in UTF-8", kItems, "A\xEF\xA3\xBD\x42\n", u"A\xF8FD\x42"},
    {"marks in both forms", kItems, "\xEF\xA3\xBD\xFD\n", u"\u00EF\u00A3\u00BD\xF8FD"},
    {"CR LF item", kItems, "A\r\nB\r\n", u"A\r\nB"},
    {"other plane", kItems, "\xF0\x9F\x98\x80\n", u"😀"},
    {"charset", kWestern, "\x80 \xE9\xFD\n", u"€ é\xF8FD"},
    {"UTF-8 before the charset", kWestern, "\xC3\xA9\n", u"é"},
    {"two bytes a letter", kJapanese, "\x83\x65\xFE\x83\x58\n", u"テ\xF8FEス"},
    {"not of the charset", kJapanese, "\x83\x20\xE9\n", u"\x83 é"},
    {"file keeps its last break", kFiles, "A\nB\n", u"A\r\nB\r\n"},
    {"file in UTF-8 with mark", kFiles, "\xEF\xBB\xBF\xC3\xA9", u"é"},
    {"file in Latin-1", kFiles, "\xFB\xFC\xFD\xFE\xE9", u"ûüýþé"},
    {"file with marks in UTF-8", kFiles, "\xEF\xA3\xBD", u"\xF8FD"},
    {"file in UTF-16", kFiles, "\xFF\xFE"s + "A\0\r\0\n\0\xAC\x20"s, u"A\r\n€"},
    {"file in the other UTF-16", kFiles, "\xFE\xFF"s + "\0A\0\n\x20\xAC"s, u"A\r\n€"},
    {"file of CR", kFiles, "A\rB\r", u"A\r\nB\r\n"}};

std::string SaveError(const ItemText& rules, TextView text, const TextForm& form)
{
    return ErrorOf([&] { rules.Encode(text, form, u"BP X"); }).what();
}

TEST(ItemTextTest, ReadsAndWritesBackWhatStood)
{
    for (const auto& [name, rules, bytes, text] : kReads) {
        SCOPED_TRACE(name);
        TextForm form;
        EXPECT_EQ(rules.Decode(bytes, form, u"X"), text);
        EXPECT_EQ(rules.Encode(text, form, u"X"), bytes);
    }
}

TEST(ItemTextTest, EachLineHasItsEndAndNewOnesThatOfMost)
{
    TextForm form;
    std::vector<OddEnd> odd;
    for (const std::string& bytes : {"A\r\nB\nC\rD"s, "A\nB\n\r\n"s, "A\r\rB\r\n"s, "\n\r\n"s}) {
        for (const ItemText* rules : {&kItems, &kFiles}) {
            const Text text = rules->Decode(bytes, form, u"", &odd);
            EXPECT_EQ(rules->Encode(text, form, u"", odd), bytes) << testing::PrintToString(bytes);
        }
    }
    const Text text = kFiles.Decode("A\r\nB\nC\rD\r\n", form, u"", &odd);
    EXPECT_EQ(odd, (std::vector<OddEnd>{{1, LineEnd::Lf}, {2, LineEnd::Cr}}));
    EXPECT_EQ(kFiles.Encode(text, form, u""), "A\r\nB\r\nC\r\nD\r\n");
    // A break in the editor is one break whatever it is made of.
    EXPECT_EQ(kFiles.Encode(u"A\nB\rC\r\nD", kFiles.NewForm(), u""), "A\nB\nC\nD");
}

TEST(ItemTextTest, NewItems)
{
    EXPECT_EQ(kItems.Encode(u"é", kItems.NewForm(), u""), "\xC3\xA9\n");
    EXPECT_EQ(kItems.Encode(u"", kItems.NewForm(), u""), "");
    EXPECT_EQ(kWestern.Encode(u"é€", kWestern.NewForm(), u""), "\xE9\x80\n");
    EXPECT_EQ(kFiles.Encode(u"é", kFiles.NewForm(), u""), "\xC3\xA9");
    TextForm form;
    kItems.Decode("", form, u"");
    EXPECT_EQ(kItems.Encode(u"A", form, u""), "A\n");
    kItems.Decode("plain\n", form, u"");
    EXPECT_EQ(kItems.Encode(u"\xF8FD€", form, u""), "\xFD\xE2\x82\xAC\n");
}

TEST(ItemTextTest, WhatCannotBeHeldIsNamed)
{
    TextForm latin;
    kItems.Decode("\xE9\n", latin, u"");
    EXPECT_EQ(SaveError(kItems, u"a\r\nbü", latin),
              "BP X cannot be saved: the character ü (U+00FC) in line 2 would be read as a mark in ISO-8859-1.");
    EXPECT_EQ(SaveError(kItems, u"€", latin),
              "BP X cannot be saved: the character € (U+20AC) in line 1 cannot be held by ISO-8859-1.");
    TextForm file;
    kFiles.Decode("\xE9\n", file, u"");
    EXPECT_EQ(SaveError(kFiles, u"û\xF8FD", file).find("(U+F8FD) in line 1") != std::string::npos, true);
    EXPECT_EQ(SaveError(kWestern, u"aÿ", kWestern.NewForm()).find("ÿ (U+00FF) in line 1") != std::string::npos, true);
    EXPECT_NE(SaveError(kItems, Text(u"a\xD800"), kItems.NewForm()), "");
    EXPECT_NE(SaveError(kItems, Text(1, u'\0'), kItems.NewForm()), "");
    TextForm form;
    EXPECT_THROW(kItems.Decode("a\0b"s, form, u"X"), Error);
    EXPECT_THROW(kFiles.Decode("\xFF\xFE\0\0"s, form, u"X"), Error);
    for (TextView name : {u"UTF-7", u"ISO-2022-JP", u"UTF-16", u"ebcdic-cp-us", u"no such set"})
        EXPECT_THROW(Charset{name}, Error);
}

/// What is written or told of a text, whether it comes whole or line by line as a document stores it.
void ExpectWrittenAlike(const ItemText& rules, TextForm form, const std::vector<OddEnd>& odd, SourceDocument& document)
{
    const auto outcome = [&](const auto& text) {
        std::string bytes;
        const Error error = ErrorOf([&] { bytes = rules.Encode(text, form, u"BP X", odd); });
        return bytes + error.what();
    };
    for (TextCoding coding :
         {form.coding, TextCoding::Utf8, TextCoding::Latin1, TextCoding::Named, TextCoding::Utf16Be}) {
        form.coding = coding;
        EXPECT_EQ(outcome(AsLines(document.Snapshot())), outcome(document.GetText()));
    }
}

/// Bytes that are taken are the text that copied ones are, to their last TAB and odd end.
void ExpectReadAlike(const ItemText& rules, const std::string& bytes)
{
    constexpr int32_t kTabWidth = 3;
    TextForm form;
    std::vector<OddEnd> odd;
    const Text text = rules.Decode(bytes, form, u"", &odd);
    const auto owner = std::make_shared<std::string>(bytes);
    TextForm readForm;
    std::vector<OddEnd> readOdd;
    ReadText read = rules.Read({owner, owner->data(), owner->size(), nullptr}, readForm, u"", &readOdd);
    EXPECT_EQ(readOdd, odd);
    EXPECT_EQ(rules.Encode(text, readForm, u"", readOdd), rules.Encode(text, form, u"", odd));
    if (const Text* units = std::get_if<Text>(&read)) {
        EXPECT_EQ(*units, text);
        return;
    }
    SourceDocument document;
    EXPECT_EQ(document.SetText(std::move(std::get<ByteText>(read)), kTabWidth), TabsOf(text, kTabWidth));
    EXPECT_EQ(document.GetText(), ExpandTabs(text, kTabWidth));
    ExpectWrittenAlike(rules, form, odd, document);
}

TEST(ItemTextTest, TakenBytesReadAsCopiedOnes)
{
    static const std::string kPieces[] = {
        "\n",   "\n",       "\r\n",        "\r",           "\t",           "\t\tA",    "a line of sixteen or more",
        "\xFE", "\xFD",     "\xC3\xA9",    "\xE2\x82\xAC", "\xEF\xA3\xBD", "\x1F\x7F", "1234567\x1A",
        "\xE9", "\x83\x65", "\xEF\xBB\xBF"};
    const ItemText server = ItemText::ForServer(Charset(), false);
    std::mt19937 random(5);
    for (int round = 0; round < 20000; ++round) {
        // Most texts are plain or UTF-8.
        const size_t kinds = round % 4 == 0 ? std::size(kPieces) : round % 4 == 1 ? 7 : 14;
        std::string bytes;
        for (size_t n = random() % 16; n > 0; --n) bytes += kPieces[random() % kinds];
        SCOPED_TRACE(testing::PrintToString(bytes));
        for (const ItemText* rules : {&kFiles, &kItems, &kWestern, &kJapanese, &server}) ExpectReadAlike(*rules, bytes);
        if (testing::Test::HasFailure()) return;
    }
}

TEST(ItemTextTest, AnyBytesComeBack)
{
    // Bytes that make trouble more often than by chance.
    static const std::string kPieces[] = {
        "\n",   "\n",    "A",        "\xFE",     "\xFD",         "\xFB",         "\xC3",         "\x80",
        "\xE9", "x = 1", "\xFF\xFE", "\xC3\xA9", "\xE2\x82\xAC", "\xEF\xA3\xBD", "\xEF\xBB\xBF", "\xF0\x9F\x98\x80"};
    std::mt19937 random(11);
    for (int round = 0; round < 20000; ++round) {
        std::string bytes;
        for (size_t n = random() % 12; n > 0; --n) {
            const auto one = static_cast<char>(random() % 255 + 1);
            bytes +=
                random() % 4 == 0 ? std::string(1, one == '\r' ? 'r' : one) : kPieces[random() % std::size(kPieces)];
        }
        for (const ItemText* rules : {&kFiles, &kItems, &kWestern, &kJapanese}) {
            TextForm form;
            Text text;
            if (ErrorOf([&] { text = rules->Decode(bytes, form, u""); }).number) continue; // UTF-16 with NUL
            if (form.coding == TextCoding::Utf16Le || form.coding == TextCoding::Utf16Be) continue;
            ASSERT_EQ(rules->Encode(text, form, u""), bytes) << testing::PrintToString(bytes);
        }
    }
}

} // namespace nib::test::item_text_test
