// Any calls of clients: each is answered, and those that are wrong by an error.
// Input: for each call a byte each for object, interface, member and arguments; an argument's text ends with NUL.

#include "Fuzz.h"
#include "automation/AutomationObjects.h"
#include "fakes/TestProgram.h"

using namespace nib;

namespace {

/// With its type in a signature.
std::pair<char, BusValue> Value(Input& input)
{
    switch (input.Byte() % 6) {
    case 0: return {'b', input.Byte() % 2 == 0};
    case 1: return {'i', static_cast<int32_t>(input.Byte()) - 3};
    case 2: return {'u', static_cast<int32_t>(0x7FFFFFFF - input.Byte())};
    case 3: return {'o', ObjectPath{std::string(input.Part())}};
    case 4: return {'d', BusValue()};
    default: return {'s', FromUtf8(input.Part())};
    }
}

struct Shell final : AutomationShell {
    void LoadHostConfiguration() override {}
    void AddCommand(TextView, TextView, int32_t) override {}
    void PrintText(mvDocument&) override {}
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    test::TestProgram test;
    Shell shell;
    Application application{test.program.Services(), shell, test.events, true};
    AutomationObjects objects{application};
    test.New();
    const BusInterface* const interfaces[] = {&ApplicationInterface(), &DocumentsInterface(), &DocumentInterface()};
    const std::string paths[] = {std::string(kApplicationPath), std::string(kDocumentsPath),
                                 std::string(kDocumentsPath) + "/1", "/"};
    for (Input input(data, size); !input.rest.empty();) {
        const size_t object = input.Byte() % 4;
        const BusInterface& interface = *interfaces[std::min<size_t>(object, 2)];
        const size_t number = input.Byte();
        BusRequest request{":1.1", paths[object], "", interface.members[number % interface.members.size()].name, "",
                           {}};
        for (size_t count = input.Byte() % 4; count > 0; --count) {
            auto [type, value] = Value(input);
            request.arguments.push_back(std::move(value));
            request.signature += input.Byte() % 4 == 0 ? 'v' : type;
        }
        if (number & 128) {
            request.interface = "org.freedesktop.DBus.Properties";
            request.arguments = {FromUtf8(interface.name), FromUtf8(request.member), Value(input).second};
            request.member = number & 64 ? "Get" : "Set";
            request.signature = number & 64 ? "ss" : "ssv";
            if (number & 64) request.arguments.pop_back();
        }
        objects.Arrived(request);
        const BusReply reply = objects.Handle(request);
        Require((reply.form == BusReply::Form::Error) == !reply.errorName.empty());
    }
    return 0;
}
