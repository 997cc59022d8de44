// What comes from a client of the language server, well formed and not.

#include "language/server/ClientPlaces.h"
#include "language/server/ClientText.h"
#include "language/server/FrameReader.h"
#include "language/server/RequestQueue.h"
#include "logic/storage/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace nib {
namespace {

/// The bodies with "|" behind each; "!" where the stream cannot be followed, "~" where it ends within a message.
std::string Bodies(std::string_view stream, size_t piece)
{
    FrameReader frames;
    std::string bodies;
    try {
        for (size_t at = 0; at < stream.size(); at += piece) {
            frames.Add(stream.substr(at, piece));
            while (const auto body = frames.Next()) bodies += *body + "|";
        }
    } catch (const Error& error) {
        EXPECT_EQ(error.number, lsp_error::kInvalidRequest);
        return bodies + "!";
    }
    return bodies + (frames.IsCut() ? "~" : "");
}

TEST(ServerMessages, AreCutByTheirLengths)
{
    const std::string longHeader = "X: " + std::string(FrameReader::kLongestHeaders, 'x') + "\r\n";
    const std::pair<std::string, const char*> cases[] = {
        {Framed("{}"), "{}|"},
        {Framed("{}") + Framed("") + Framed("ä"), "{}||ä|"},
        {"content-length:2\r\nContent-Type: x\r\n\r\n{}", "{}|"},
        {Framed("{}") + "Content-Length: 9\r\n\r\n{}", "{}|~"},
        {"Content-Le", "~"},
        {Framed("{}") + "Content-Length: 67108865\r\n\r\n{}", "{}|!"},
        {"Content-Length: 99999999999999999999999999\r\n\r\n", "!"},
        {"Content-Length: -1\r\n\r\n", "!"},
        {"Content-Length: 1x\r\n\r\n", "!"},
        {"Content-Length:\r\n\r\n", "!"},
        {"Content-Type: x\r\n\r\n{}", "!"},
        {"no header\r\n\r\n", "!"},
        {longHeader, "!"},
        {longHeader + "Content-Length: 2\r\n\r\n{}", "!"},
    };
    for (const auto& [stream, bodies] : cases)
        for (size_t piece : {1, 2, 7, 1 << 20}) EXPECT_EQ(Bodies(stream, piece), bodies) << stream.substr(0, 60);
}

TEST(ServerMessages, AreRequestsNoticesAnswersOrNothing)
{
    using enum Message::Kind;
    const std::string deep = R"({"method":"m","params":)" + std::string(200, '[') + std::string(200, ']') + "}";
    const std::tuple<std::string, Message::Kind, int32_t> cases[] = {
        {R"({"id":1,"method":"m"})", Request, 0},
        {R"({"id":"a","method":"m","params":[]})", Request, 0},
        {R"({"method":"m"})", Notice, 0},
        {R"({"id":1,"result":null})", Answer, 0},
        {R"({"id":1,"method":5})", Refused, lsp_error::kInvalidRequest},
        {R"({"id":1.5,"method":"m"})", Refused, lsp_error::kInvalidRequest},
        {R"({"id":[1],"method":"m"})", Refused, lsp_error::kInvalidRequest},
        {"[]", Refused, lsp_error::kInvalidRequest},
        {"{}", Refused, lsp_error::kInvalidRequest},
        {deep, Refused, lsp_error::kInvalidRequest},
        {std::string(1 << 20, '['), Refused, lsp_error::kInvalidRequest},
        {R"({"method":"\ud83d"})", Refused, lsp_error::kParse},
        {"{\"method\":\"\xff\"}", Refused, lsp_error::kParse},
        {"", Refused, lsp_error::kParse},
    };
    for (const auto& [body, kind, error] : cases) {
        const Message message = ReadMessage(body);
        EXPECT_EQ(message.kind, kind) << body.substr(0, 60);
        EXPECT_EQ(message.error, error) << body.substr(0, 60);
    }
}

TEST(ServerMessages, CountBytesOrUnits)
{
    const TextView line = u"aé€𝄞z";
    const std::tuple<Units, int64_t, int32_t> cases[] = {
        {Units::Utf16, 4, 3}, // never between the halves of a character
        {Units::Utf16, 5, 5}, {Units::Utf16, 99, 6}, {Units::Utf8, 1, 1},  {Units::Utf8, 2, 1},
        {Units::Utf8, 3, 2},  {Units::Utf8, 6, 3},   {Units::Utf8, 9, 3},  {Units::Utf8, 10, 5},
        {Units::Utf8, 11, 6}, {Units::Utf8, 99, 6},  {Units::Utf8, -1, 0},
    };
    for (const auto& [units, character, col] : cases) EXPECT_EQ(FromClient(line, character, units), col) << character;
    for (int32_t col : {0, 1, 2, 3, 5, 6})
        for (Units units : {Units::Utf16, Units::Utf8})
            EXPECT_EQ(FromClient(line, ToClient(line, col, units), units), col);
}

TEST(ServerMessages, EditOnlyWhatIsThere)
{
    const std::tuple<const char*, TextView, bool> cases[] = {
        {R"({"range":{"start":{"line":0,"character":1},"end":{"line":1,"character":1}},"text":"x\ny"})", u"ax\r\nyd",
         false},
        {R"({"range":{"start":{"line":1,"character":9},"end":{"line":2,"character":0}},"text":"!"})", u"ab\r\ncd!",
         false},
        {R"({"range":{"start":{"line":7,"character":0},"end":{"line":9,"character":0}},"text":"!"})", u"ab\r\ncd!",
         true},
        {R"({"range":{"start":{"line":1,"character":1},"end":{"line":0,"character":1}},"text":""})", u"ad", true},
        {R"({"range":{"start":{"line":0,"character":4294967297},"end":{"line":18446744073709551615,"character":0}},"text":""})",
         u"ab", true},
        {R"({"text":"n"})", u"n", false},
        // none
        {R"({"range":{"start":{"line":-1,"character":0},"end":{"line":0,"character":0}},"text":"!"})", u"ab\r\ncd",
         false},
        {R"({"range":{"start":{"line":0.5,"character":0},"end":{"line":0,"character":0}},"text":"!"})", u"ab\r\ncd",
         false},
        {R"({"range":{"start":{"line":0,"character":0}},"text":"!"})", u"ab\r\ncd", false},
        {R"({"range":[],"text":"!"})", u"ab\r\ncd", false},
        {R"({"text":5})", u"ab\r\ncd", false},
        {"7", u"ab\r\ncd", false},
    };
    for (const auto& [change, after, outside] : cases) {
        ClientText text(u"ab\ncd", 1, Units::Utf16);
        bool clamped = false;
        try {
            text.Change(Json::parse(change), clamped);
        } catch (const std::exception&) {
            EXPECT_EQ(after, u"ab\r\ncd") << change;
        }
        EXPECT_EQ(text.Document().GetText(), after) << change;
        EXPECT_EQ(clamped, outside) << change;
    }
}

TEST(ServerMessages, NameItemsOfAccountsAndFiles)
{
    const test::TempFolder folder;
    const std::string root = folder.Path();
    for (const char* file : {"/SHOP/BP", "/SHOP/VOC", "/NONE/BP"}) std::filesystem::create_directories(root + file);
    ClientPlaces places;
    EXPECT_EQ(places.AccountFolderOf(root + "/SHOP/BP/X"), root + "/SHOP");
    EXPECT_EQ(places.AccountFolderOf(root + "/NONE/BP/X"), "");
    const Text account = places.AddAccount(root + "/SHOP");
    EXPECT_TRUE(account.ends_with(u"/SHOP"));
    EXPECT_EQ(places.AddAccount(root + "/SHOP"), u"");
    const std::string shop = "file://" + root + "/SHOP/";
    const std::pair<std::string, Text> cases[] = {
        {shop + "BP/INVOICE", account + u"/BP/INVOICE"},
        {shop + "BP/A%252FB", account + u"/BP/A%2FB"},
        {shop + "BP/%C3%84%20%23", account + u"/BP/%C3%84%20%23"},
        {shop + "BP/SUB/X", FromUtf8("file:" + root + "/SHOP/BP/SUB/X")},
        {"file:///x/y%20z%23", u"file:/x/y z#"},
        {"file:///x/%FF", u"file:/x/\xDCFF"},
    };
    for (const auto& [uri, path] : cases) {
        EXPECT_EQ(places.PathOf(uri), path) << uri;
        EXPECT_EQ(places.UriOf(path), uri);
    }
    EXPECT_EQ(places.PathOf("file://localhost/x/../y?q#f"), u"file:/y");
    EXPECT_EQ(places.PathOf("file:///100%"), u"file:/100%");
    EXPECT_EQ(places.PathOf("untitled:X"), u"file:/untitled:X");
}

TEST(ServerMessages, ThatWaitCanBeCancelled)
{
    RequestQueue queue;
    const auto now = std::chrono::steady_clock::now();
    for (const char* id : {"1", "\"a\"", "2"})
        queue.Put(ReadMessage(std::string(R"({"method":"m","id":)") + id + "}"), 10);
    EXPECT_TRUE(queue.Cancel("a"));
    EXPECT_FALSE(queue.Cancel("a"));
    EXPECT_FALSE(queue.Cancel(nullptr));
    EXPECT_EQ(queue.Take(now)->id, 1);
    EXPECT_FALSE(queue.IsCancelled());
    EXPECT_FALSE(queue.Cancel(1));
    EXPECT_TRUE(queue.IsCancelled());
    queue.Close();
    EXPECT_EQ(queue.Take(now)->id, 2);
    EXPECT_FALSE(queue.IsCancelled());
    EXPECT_TRUE(queue.IsOver());
}

} // namespace
} // namespace nib
