#include "language/server/Message.h"

#include "diagnostics/Guarded.h"

namespace nib {

namespace {

constexpr int kDeepest = 100;

bool IsId(const Json& id)
{
    return id.is_string() || id.is_number_integer();
}

Message Refused(int32_t error, std::string why, Json id = nullptr)
{
    return {Message::Kind::Refused, std::move(id), std::move(why), nullptr, error};
}

} // namespace

Message ReadMessage(std::string_view body)
{
    const auto refuseDepth = [](int depth, Json::parse_event_t, Json&) {
        if (depth > kDeepest) throw Error{lsp_error::kInvalidRequest, u"The message is nested too deeply."};
        return true;
    };
    Json json;
    const auto failure = FailureOf([&] { json = Json::parse(body, refuseDepth, false); });
    if (failure) return Refused(failure->number, ToUtf8(failure->description));
    if (json.is_discarded()) return Refused(lsp_error::kParse, "The message is no JSON.");
    if (!json.is_object()) return Refused(lsp_error::kInvalidRequest, "The message is no object.");

    Json id = Member(json, "id");
    const Json& method = Member(json, "method");
    if (!id.is_null() && !IsId(id)) return Refused(lsp_error::kInvalidRequest, "The id is no number or string.");
    if (method.is_null() && !id.is_null()) return {Message::Kind::Answer, std::move(id), {}, Member(json, "result"), 0};
    if (!method.is_string()) return Refused(lsp_error::kInvalidRequest, "The message has no method.", std::move(id));
    const auto kind = id.is_null() ? Message::Kind::Notice : Message::Kind::Request;
    std::string name = method.get<std::string>();
    return {kind, std::move(id), std::move(name), Member(json, "params"), 0};
}

Text ToText(const Json& string)
{
    return FromUtf8(string.get_ref<const std::string&>());
}

const Json& Member(const Json& object, const char* name)
{
    static const Json kNull;
    if (!object.is_object()) return kNull;
    const auto found = object.find(name);
    return found == object.end() ? kNull : *found;
}

const Json& Below(const Json& object, const char* pointer)
{
    const Json* at = &object;
    std::string_view rest = pointer;
    while (!rest.empty()) {
        rest.remove_prefix(1);
        const size_t end = std::min(rest.find('/'), rest.size());
        at = &Member(*at, std::string(rest.substr(0, end)).c_str());
        rest.remove_prefix(end);
    }
    return *at;
}

} // namespace nib
