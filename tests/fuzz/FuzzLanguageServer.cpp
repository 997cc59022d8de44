// Any messages in any order: each request has one answer, and what is sent is well formed.

#include "Fuzz.h"
#include "language/server/FrameReader.h"
#include "language/server/Server.h"

using namespace nib;

namespace {

constexpr const char* kUri = "file:///nowhere/BP/MAIN";
constexpr const char* kMethods[] = {
    "textDocument/didChange",
    "textDocument/completion",
    "completionItem/resolve",
    "textDocument/hover",
    "textDocument/signatureHelp",
    "textDocument/definition",
    "textDocument/references",
    "textDocument/documentHighlight",
    "textDocument/documentSymbol",
    "workspace/symbol",
    "textDocument/foldingRange",
    "textDocument/formatting",
    "textDocument/rangeFormatting",
    "textDocument/prepareRename",
    "textDocument/rename",
    "textDocument/codeAction",
    "textDocument/semanticTokens/full",
    "textDocument/semanticTokens/range",
    "textDocument/didOpen",
    "textDocument/didClose",
};

/// What all of the methods want, from the input.
Json Params(Input& input)
{
    const auto place = [&] { return Json{{"line", input.Byte() % 64}, {"character", input.Byte() % 128}}; };
    const std::string text = ToUtf8(FromUtf8(input.Part()));
    const Json range{{"start", place()}, {"end", place()}};
    return {{"textDocument", {{"uri", kUri}, {"version", 1}, {"text", text}}},
            {"position", place()},
            {"range", range},
            {"contentChanges", {{{"range", range}, {"text", text}}}},
            {"newName", text},
            {"query", text},
            {"data", {1, input.Byte()}},
            {"options", {{"tabSize", input.Byte()}}}};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    Input input(data, size);
    size_t answers = 0;
    Outbox out([&](std::string_view bytes) {
        FrameReader frames;
        frames.Add(bytes);
        const Json message = Json::parse(*frames.Next());
        Require(!frames.IsCut());
        answers += !message.contains("method");
    });
    RequestQueue queue;
    static Dialects dialects; // read once
    Server server(out, queue, dialects, {u"common", {}, {}});
    size_t requests = 0;
    const auto send = [&](const char* method, Json params) {
        server.Handle({Message::Kind::Request, ++requests, method, std::move(params), 0});
    };
    const bool bytes = input.Byte() % 2 > 0;
    send("initialize", {{"capabilities", {{"general", {{"positionEncodings", {bytes ? "utf-8" : "utf-16"}}}}}}});
    send("textDocument/didOpen", Params(input));
    while (!input.rest.empty()) {
        const char* method = kMethods[input.Byte() % std::size(kMethods)];
        if (input.Byte() % 8 == 0)
            server.Handle(ReadMessage(input.Part()));
        else
            send(method, Params(input));
        server.Idle(RequestQueue::Time::max() - std::chrono::hours(1)); // all that waits is due
    }
    Require(answers >= requests);

    FrameReader frames;
    frames.Add({reinterpret_cast<const char*>(data), size});
    try {
        while (frames.Next()) continue;
    } catch (const Error& error) {
        Require(error.number == lsp_error::kInvalidRequest);
    }
    return 0;
}
