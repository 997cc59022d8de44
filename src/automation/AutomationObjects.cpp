#include "automation/AutomationObjects.h"

#include "automation/MemberTables.h"
#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"

#include <algorithm>
#include <charconv>

namespace nib {

namespace {

constexpr std::string_view kErrors = "org.freedesktop.DBus.Error.";
constexpr std::string_view kProperties = "org.freedesktop.DBus.Properties";
constexpr std::string_view kIntrospectable = "org.freedesktop.DBus.Introspectable";

BusReply Refusal(std::string_view name, const std::string& text)
{
    BusReply reply;
    reply.form = BusReply::Form::Error;
    reply.errorName = std::string(kErrors) + std::string(name);
    reply.errorText = FromUtf8(text);
    return reply;
}

BusReply Answer(BusReply::Form form, BusValue value)
{
    BusReply reply;
    reply.form = form;
    reply.value = std::move(value);
    return reply;
}

bool Takes(const Member& member, std::string_view signature)
{
    for (size_t i = 0; i < member.argumentCount; ++i) {
        if (!signature.starts_with(member.arguments[i].type)) return false;
        signature.remove_prefix(std::string_view(member.arguments[i].type).size());
    }
    return signature.empty();
}

/// The method of that name and signature, or one of that name, or none.
const Member* FindMethod(const BusInterface& interface, const BusRequest& request)
{
    const Member* byName = nullptr;
    for (const Member& member : interface.members) {
        if (member.kind != MemberKind::Method || member.name != request.member) continue;
        if (Takes(member, request.signature)) return &member;
        byName = &member;
    }
    return byName;
}

const Member* FindProperty(const BusInterface& interface, TextView name)
{
    std::string wanted = ToUtf8(name);
    auto found = std::find_if(interface.members.begin(), interface.members.end(), [&](const Member& member) {
        return member.kind == MemberKind::Property && member.name == wanted;
    });
    return found == interface.members.end() ? nullptr : &*found;
}

bool IsOf(const BusInterface& interface, TextView name)
{
    return name.empty() || ToUtf8(name) == interface.name;
}

/// Its length as UTF-8.
int64_t BytesOf(TextView text)
{
    int64_t bytes = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool pair = (text[i] & 0xFC00) == 0xD800 && i + 1 < text.size() && (text[i + 1] & 0xFC00) == 0xDC00;
        bytes += text[i] < 0x80 ? 1 : text[i] < 0x800 ? 2 : pair ? 4 : 3;
        if (pair) ++i;
    }
    return bytes;
}

void CheckCrosses(const BusValue& value)
{
    // A message holds 128 MiB at most; a longer one would cost the connection.
    constexpr int64_t kLongestText = int64_t{127} * 1024 * 1024;
    const Text* text = std::get_if<Text>(&value);
    if (!text) return;
    if (text->find(u'\0') != Text::npos)
        throw Error{error_number::kInvalidCall, u"The text holds a null character, which the bus cannot carry."};
    if (BytesOf(*text) > kLongestText)
        throw Error{error_number::kOutOfMemory, u"The text is too long for one message."};
}

/// 0 when `digits` is no DocumentID as it is written on the bus.
int32_t DocumentIdOf(std::string_view digits)
{
    int32_t id = 0;
    auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), id);
    bool whole = error == std::errc() && end == digits.data() + digits.size() && id > 0;
    return whole && std::to_string(id) == digits ? id : 0;
}

/// As the debug log calls it: the last part of the interface's name, and the member's.
Text DoorOf(const BusInterface& interface, const Member& member)
{
    const std::string_view name = interface.name;
    return FromUtf8(std::string(name.substr(name.rfind('.') + 1)) + "." + member.name);
}

/// One more while it lives.
class Counted {
public:
    Counted(int32_t& count, bool counts) : count_(count), by_(counts ? 1 : 0) { count_ += by_; }
    ~Counted() { count_ -= by_; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

private:
    int32_t& count_;
    int32_t by_;
};

} // namespace

std::string ErrorNameOf(int32_t number)
{
    return "com.orlin.NibPad71.Error.N" + std::to_string(static_cast<uint32_t>(number));
}

bool AutomationObjects::Find(const std::string& path, Object& object) const
{
    if (path == kApplicationPath) {
        object.interface = &ApplicationInterface();
    } else if (path == kDocumentsPath) {
        object.interface = &DocumentsInterface();
    } else if (std::string_view(path).substr(0, kDocumentsPath.size() + 1) == std::string(kDocumentsPath) + "/") {
        int32_t id = DocumentIdOf(std::string_view(path).substr(kDocumentsPath.size() + 1));
        object.document = id > 0 ? application_.Document(id) : nullptr;
        if (object.document) object.interface = &DocumentInterface();
    }
    return object.interface != nullptr;
}

void AutomationObjects::Arrived(const BusRequest& request)
{
    // Letting go is not taking hold.
    if (request.path != kApplicationPath || request.member != "Release") application_.Touch(request.client);
}

bool AutomationObjects::MustWait(const BusRequest& request) const
{
    if (waiting_ == 0 && !application_.IsModal()) return false;
    Object object;
    if (!Find(request.path, object)) return false;
    const Member* member = FindMethod(*object.interface, request);
    return member && member->waits;
}

BusReply AutomationObjects::Handle(const BusRequest& request)
{
    Object object;
    if (!Find(request.path, object)) return Refusal("UnknownObject", "No such object path '" + request.path + "'");
    if (request.interface == kProperties) return Properties(object, request);
    if (request.interface == kIntrospectable && request.member == "Introspect")
        return Answer(BusReply::Form::Value, FromUtf8(Introspect(object, request.path)));
    if (!request.interface.empty() && request.interface != object.interface->name)
        return Refusal("UnknownInterface", "No such interface '" + request.interface + "' on " + request.path);
    const Member* member = FindMethod(*object.interface, request);
    if (!member) return Refusal("UnknownMethod", "No such method '" + request.member + "'");
    if (!Takes(*member, request.signature))
        return Refusal("InvalidArgs",
                       request.member + " does not take arguments of the types '" + request.signature + "'");
    return Run(*member, member->run, object, request, request.arguments);
}

BusReply AutomationObjects::Run(const Member& member, Member::Function function, const Object& object,
                                const BusRequest& request, std::span<const BusValue> arguments)
{
    Counted counted(waiting_, member.waits);
    const auto run = [&] {
        BusReply reply;
        reply.value = function({application_, object.document.get(), arguments, request.client});
        CheckCrosses(reply.value);
        return reply;
    };
    return Guarded(application_.Log(), DoorOf(*object.interface, member), run, [](const Error& error) {
        BusReply reply;
        reply.form = BusReply::Form::Error;
        reply.errorName = ErrorNameOf(error.number);
        reply.errorText = error.description;
        return reply;
    });
}

// Properties

BusReply AutomationObjects::Properties(const Object& object, const BusRequest& request)
{
    struct Row {
        std::string_view name;
        std::string_view signature;
        BusReply (AutomationObjects::*run)(const Object&, const BusRequest&);
    };
    static constexpr Row kRows[] = {{"Get", "ss", &AutomationObjects::Get},
                                    {"Set", "ssv", &AutomationObjects::Set},
                                    {"GetAll", "s", &AutomationObjects::GetAll}};
    for (const Row& row : kRows) {
        if (request.member != row.name) continue;
        if (request.signature != row.signature)
            return Refusal("InvalidArgs",
                           request.member + " takes arguments of the types '" + std::string(row.signature) + "'");
        TextView interface = std::get<Text>(request.arguments[0]);
        if (!IsOf(*object.interface, interface))
            return Refusal("UnknownInterface", "No such interface '" + ToUtf8(interface) + "' on " + request.path);
        return (this->*row.run)(object, request);
    }
    return Refusal("UnknownMethod", "No such method '" + request.member + "'");
}

BusReply AutomationObjects::Get(const Object& object, const BusRequest& request)
{
    const Text& name = std::get<Text>(request.arguments[1]);
    const Member* member = FindProperty(*object.interface, name);
    if (!member) return Refusal("UnknownProperty", "No such property '" + ToUtf8(name) + "'");
    BusReply reply = Run(*member, member->run, object, request, {});
    if (reply.form == BusReply::Form::Value) reply.form = BusReply::Form::Variant;
    return reply;
}

BusReply AutomationObjects::Set(const Object& object, const BusRequest& request)
{
    const Text& name = std::get<Text>(request.arguments[1]);
    const Member* member = FindProperty(*object.interface, name);
    if (!member) return Refusal("UnknownProperty", "No such property '" + ToUtf8(name) + "'");
    if (!member->put) return Refusal("PropertyReadOnly", "The property '" + ToUtf8(name) + "' is read-only");
    if (std::string_view(SignatureOf(request.arguments[2])) != member->result)
        return Refusal("InvalidArgs", "The property '" + ToUtf8(name) + "' is of the type '" + member->result + "'");
    return Run(*member, member->put, object, request, std::span(request.arguments).subspan(2));
}

BusReply AutomationObjects::GetAll(const Object& object, const BusRequest& request)
{
    BusReply all;
    all.form = BusReply::Form::Map;
    for (const Member& member : object.interface->members) {
        if (member.kind != MemberKind::Property) continue;
        BusReply one = Run(member, member.run, object, request, {});
        // One that fails must not take the others away.
        if (one.form == BusReply::Form::Value) all.map.emplace_back(member.name, std::move(one.value));
    }
    return all;
}

std::string AutomationObjects::Introspect(const Object& object, const std::string& path) const
{
    std::vector<std::string> children;
    if (path == kApplicationPath) children = {"Documents"};
    if (path == kDocumentsPath)
        for (const ObjectPath& document : application_.NewEnum())
            children.push_back(document.path.substr(kDocumentsPath.size() + 1));
    return IntrospectionXml(object.interface, children);
}

} // namespace nib
