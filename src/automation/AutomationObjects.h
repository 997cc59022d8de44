#pragma once
// The object tree behind the bus name: finds object, interface and member of a call, checks its types and runs it.

#include "automation/MemberTables.h"

#include <utility>

namespace nib {

struct BusRequest {
    std::string client;
    std::string path;
    std::string interface; ///< may be empty
    std::string member;
    std::string signature;           ///< of the arguments as they came
    std::vector<BusValue> arguments; ///< variants unwrapped
};

struct BusReply {
    enum class Form : uint8_t { Value, Variant, Map, Error };

    Form form = Form::Value;
    BusValue value;
    std::vector<std::pair<std::string, BusValue>> map;
    std::string errorName;
    Text errorText;
};

class AutomationObjects {
public:
    /// Outlived by `application`.
    explicit AutomationObjects(Application& application) : application_(application) {}

    /// Every call as it comes in, run at once or not: its client holds the program from now on.
    void Arrived(const BusRequest& request);
    /// True for a call that must not run now: the user is being asked something, and the call could take away what
    /// for. It is tried again later.
    bool MustWait(const BusRequest& request) const;
    BusReply Handle(const BusRequest& request);

private:
    struct Object {
        const BusInterface* interface = nullptr;
        std::shared_ptr<mvDocument> document; ///< kept over the call, whoever closes it meanwhile
    };

    bool Find(const std::string& path, Object& object) const;
    std::string Introspect(const Object& object, const std::string& path) const;
    BusReply Properties(const Object& object, const BusRequest& request);
    BusReply Get(const Object& object, const BusRequest& request);
    BusReply Set(const Object& object, const BusRequest& request);
    BusReply GetAll(const Object& object, const BusRequest& request);
    /// The door of every member: a failure is the client's.
    BusReply Run(const Member& member, Member::Function function, const Object& object, const BusRequest& request,
                 std::span<const BusValue> arguments);

    Application& application_;
    int32_t waiting_ = 0; ///< members on the stack that may be asking the user
};

/// "com.orlin.NibPad71.Error.N<number>", the number unsigned: a minus sign is no part of a name on the bus.
std::string ErrorNameOf(int32_t number);

} // namespace nib
