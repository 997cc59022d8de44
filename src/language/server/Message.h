#pragma once
// Messages of the language server protocol. What strangers nest deeply is refused when it is read, so that values can
// be copied and written without a look at their depth.

#include "base/Error.h"
#include "base/Text.h"

#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace nib {

using Json = nlohmann::json;

/// Numbers of the errors that a client is told.
namespace lsp_error {
inline constexpr int32_t kParse = -32700;
inline constexpr int32_t kInvalidRequest = -32600;
inline constexpr int32_t kUnknownMethod = -32601;
inline constexpr int32_t kInvalidParams = -32602;
inline constexpr int32_t kInternal = -32603;
inline constexpr int32_t kNotInitialized = -32002;
inline constexpr int32_t kRequestFailed = -32803;
inline constexpr int32_t kContentModified = -32801;
inline constexpr int32_t kCancelled = -32800;
} // namespace lsp_error

struct Message {
    enum class Kind : uint8_t {
        Request,
        Notice,
        Answer, ///< to what the server asked
        Refused ///< is none; the method is the reason
    };
    Kind kind = Kind::Refused;
    Json id; ///< a number or a string; null: none
    std::string method;
    Json params;
    int32_t error = 0;
};

Message ReadMessage(std::string_view body);

Text ToText(const Json& string); ///< throws for what is no string
inline Json ToJson(TextView text)
{
    return ToUtf8(text);
}
/// The member of an object, or null.
const Json& Member(const Json& object, const char* name);
/// The same, down several levels with "/" between their names, beginning with one.
const Json& Below(const Json& object, const char* pointer);
inline bool IsTrue(const Json& value)
{
    return value.is_boolean() && value.get<bool>();
}

} // namespace nib
