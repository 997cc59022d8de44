#include "language/server/Server.h"

#include "diagnostics/Guarded.h"
#include "language/server/Handlers.h"

#include <algorithm>
#include <iterator>

namespace nib {

namespace {

using namespace std::chrono_literals;

constexpr auto kBetweenLooks = 300ms;
constexpr const char* kProgress = "nib/index"; ///< a token

/// The client asks anew after each change by itself, so that an answer for the text before it is worth nothing.
constexpr bool kAskedAnew = true;
/// Half of an account is no answer; who asks for all of it waits until it has been read.
constexpr bool kOfAccount = true;
constexpr auto kLongestWait = 10s;

struct Question {
    std::string_view method;
    handlers::Handler answer;
    bool askedAnew = false;
    bool ofAccount = false;
};
constexpr Question kQuestions[] = {
    {"textDocument/completion", handlers::Complete},
    {"completionItem/resolve", handlers::ResolveCompletion},
    {"textDocument/hover", handlers::Hover, kAskedAnew},
    {"textDocument/signatureHelp", handlers::SignatureHelp},
    {"textDocument/definition", handlers::Definition, !kAskedAnew, kOfAccount},
    {"textDocument/declaration", handlers::Definition, !kAskedAnew, kOfAccount},
    {"textDocument/references", handlers::References, !kAskedAnew, kOfAccount},
    {"textDocument/documentHighlight", handlers::Highlight, kAskedAnew},
    {"textDocument/documentSymbol", handlers::DocumentSymbols, kAskedAnew},
    {"workspace/symbol", handlers::WorkspaceSymbols, !kAskedAnew, kOfAccount},
    {"textDocument/foldingRange", handlers::FoldingRanges, kAskedAnew},
    {"textDocument/formatting", handlers::Format},
    {"textDocument/rangeFormatting", handlers::FormatRange},
    {"textDocument/prepareRename", handlers::PrepareRename, !kAskedAnew, kOfAccount},
    {"textDocument/rename", handlers::Rename, !kAskedAnew, kOfAccount},
    {"textDocument/codeAction", handlers::CodeActions, kAskedAnew},
    {"textDocument/semanticTokens/full", handlers::Tokens, kAskedAnew},
    {"textDocument/semanticTokens/full/delta", handlers::TokenChanges, kAskedAnew},
    {"textDocument/semanticTokens/range", handlers::TokensInRange, kAskedAnew},
};

template <typename Row, size_t N>
const Row* FindRow(const Row (&rows)[N], std::string_view method)
{
    const auto found =
        std::find_if(std::begin(rows), std::end(rows), [&](const Row& row) { return row.method == method; });
    return found == std::end(rows) ? nullptr : found;
}

/// A library's complaint is about what the client sent.
int32_t ErrorNumber(const Error& error)
{
    const bool ofProtocol = error.number <= lsp_error::kNotInitialized && error.number >= lsp_error::kRequestFailed;
    const bool known = ofProtocol || error.number == lsp_error::kParse || error.number == lsp_error::kInvalidParams ||
                       error.number == lsp_error::kInvalidRequest || error.number == lsp_error::kUnknownMethod;
    if (known) return error.number;
    return error.number == error_number::kInvalidCall ? lsp_error::kInvalidParams : lsp_error::kInternal;
}

} // namespace

/// What concerns the session as a whole, or changes what is known.
struct Server::Method {
    std::string_view method;
    Json (Server::*run)(const Json& params);
};
constexpr Server::Method Server::kMethods[] = {
    {"initialize", &Server::Initialize},
    {"shutdown", &Server::Shutdown},
    {"initialized", &Server::Ignore},
    {"$/setTrace", &Server::Ignore},
    {"$/progress", &Server::Ignore},
    {"window/workDoneProgress/cancel", &Server::Ignore},
    {"textDocument/didOpen", &Server::DidOpen},
    {"textDocument/didChange", &Server::DidChange},
    {"textDocument/didSave", &Server::Ignore},
    {"textDocument/didClose", &Server::DidClose},
    {"workspace/didChangeWorkspaceFolders", &Server::DidChangeFolders},
    {"workspace/didChangeConfiguration", &Server::DidChangeConfiguration},
    {"workspace/didChangeWatchedFiles", &Server::Ignore},
};

Server::Server(Outbox& out, RequestQueue& queue, ServerStart start)
    : out_(out), queue_(queue), start_(std::move(start)), workspace_(out), findings_(workspace_)
{
    if (!start_.dialectFolder.empty()) workspace_.dialects.AddFolder(start_.dialectFolder);
}

void Server::Run()
{
    auto next = RequestQueue::Time::min();
    while (!queue_.IsOver()) {
        if (auto message = queue_.Take(next)) {
            Handle(*message);
            next = RequestQueue::Time::min();
        } else {
            next = Idle(std::chrono::steady_clock::now());
        }
    }
}

void Server::Handle(const Message& message)
{
    switch (message.kind) {
    case Message::Kind::Answer: return;
    case Message::Kind::Refused: return out_.Refuse(message.id, message.error, message.method);
    default: break;
    }
    Json answer;
    const std::optional<Error> failure = FailureOf([&] { answer = Answer(message); });
    if (message.kind == Message::Kind::Notice) {
        if (failure) out_.Log(FromUtf8(message.method) + u": " + failure->description);
    } else if (queue_.IsCancelled()) {
        out_.Refuse(message.id, lsp_error::kCancelled, "The request was cancelled.");
    } else if (failure) {
        out_.Refuse(message.id, ErrorNumber(*failure), ToUtf8(failure->description));
    } else {
        out_.Answer(message.id, std::move(answer));
    }
}

Json Server::Answer(const Message& message)
{
    const bool isRequest = message.kind == Message::Kind::Request;
    const bool begins = message.method == "initialize";
    if (begins == (phase_ != Phase::New)) {
        if (!isRequest) return nullptr; // as the protocol has it
        if (phase_ == Phase::New) throw Error{lsp_error::kNotInitialized, u"The first request is initialize."};
        throw Error{lsp_error::kInvalidRequest, u"The session has begun."};
    }
    if (phase_ == Phase::Ended && isRequest) throw Error{lsp_error::kInvalidRequest, u"The session was shut down."};
    if (const Method* own = FindRow(kMethods, message.method)) return (this->*own->run)(message.params);
    const Question* question = FindRow(kQuestions, message.method);
    if (!question && !isRequest) return nullptr;
    if (!question) throw Error{lsp_error::kUnknownMethod, u"There is no method " + FromUtf8(message.method) + u"."};
    if (question->askedAnew && queue_.WillChange(Below(message.params, "/textDocument/uri")))
        throw Error{lsp_error::kContentModified, u"The text has changed meanwhile."};
    if (question->ofAccount) ReadAccounts();
    return question->answer(workspace_, message.params);
}

void Server::ReadAccounts()
{
    const auto end = std::chrono::steady_clock::now() + kLongestWait;
    while (workspace_.service->State().busy && !queue_.IsCancelled() && std::chrono::steady_clock::now() < end) {
        workspace_.service->Work();
        TellProgress();
    }
}

RequestQueue::Time Server::Idle(RequestQueue::Time now)
{
    if (phase_ != Phase::Running) return RequestQueue::Time::max();
    bool more = false;
    if (const auto failure = FailureOf([&] { more = workspace_.service->Work(); })) out_.Log(failure->description);
    TellProgress();
    auto told = RequestQueue::Time::max();
    if (const auto failure = FailureOf([&] { told = findings_.Step(now); })) out_.Log(failure->description);
    return std::min(told, more ? now : now + kBetweenLooks);
}

void Server::TellProgress()
{
    if (!workspace_.client.progress) return;
    const IndexState state = workspace_.service->State();
    const auto tell = [&](Json value) { out_.Tell("$/progress", {{"token", kProgress}, {"value", std::move(value)}}); };
    if (state.busy && !telling_) {
        out_.Ask("window/workDoneProgress/create", {{"token", kProgress}});
        tell({{"kind", "begin"}, {"title", "Reading programs"}, {"cancellable", false}, {"percentage", 0}});
    }
    const int64_t percentage = int64_t{100} * state.done / std::max(state.all, 1);
    if (telling_ && !state.busy) {
        tell({{"kind", "end"}});
    } else if (telling_ && percentage != percentage_) {
        tell({{"kind", "report"}, {"percentage", percentage}});
    }
    telling_ = state.busy;
    percentage_ = percentage;
}

} // namespace nib
