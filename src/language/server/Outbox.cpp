#include "language/server/Outbox.h"

#include "language/server/FrameReader.h"

namespace nib {

namespace {

constexpr int kWarning = 2; // of window/logMessage

Json Of(const Json& id)
{
    return {{"jsonrpc", "2.0"}, {"id", id}};
}

} // namespace

void Outbox::Answer(const Json& id, Json result)
{
    Json message = Of(id);
    message["result"] = std::move(result);
    Send(message);
}

void Outbox::Refuse(const Json& id, int32_t error, std::string why)
{
    Json message = Of(id);
    message["error"] = {{"code", error}, {"message", std::move(why)}};
    Send(message);
}

void Outbox::Tell(const char* method, Json params)
{
    Send({{"jsonrpc", "2.0"}, {"method", method}, {"params", std::move(params)}});
}

int32_t Outbox::Ask(const char* method, Json params)
{
    const int32_t id = ++asked_;
    Json message = Of(id);
    message["method"] = method;
    message["params"] = std::move(params);
    Send(message);
    return id;
}

void Outbox::Log(TextView text)
{
    Tell("window/logMessage", {{"type", kWarning}, {"message", ToUtf8(text)}});
}

void Outbox::Send(const Json& message)
{
    const std::string frame = Framed(message.dump(-1, ' ', false, Json::error_handler_t::replace));
    const std::lock_guard lock(mutex_);
    sink_(frame);
}

} // namespace nib
