#pragma once
// One member of an automation interface as a row. Argument and result types are read from the C++ function behind it,
// so that dispatch and introspection cannot tell different stories.

#include "automation/Application.h"
#include "documents/mvDocument.h"

#include <array>
#include <span>
#include <type_traits>

namespace nib {

struct MemberCall {
    Application& application;
    mvDocument* document; ///< null unless the object is a document
    std::span<const BusValue> arguments;
    const std::string& client;
};

enum class MemberKind : uint8_t { Method, Property, Signal };

struct MemberArgument {
    const char* name = "";
    const char* type = "";
};

struct Member {
    using Function = BusValue (*)(const MemberCall&);

    MemberKind kind = MemberKind::Method;
    const char* name = "";
    std::array<MemberArgument, 3> arguments{};
    size_t argumentCount = 0;
    const char* result = ""; ///< of a property its type
    Function run = nullptr;  ///< of a property its getter
    Function put = nullptr;
    /// May ask the user something or takes the document away: not while such a thing is going on already.
    bool waits = false;

    constexpr Member Waiting() const
    {
        Member copy = *this;
        copy.waits = true;
        return copy;
    }
};

namespace member_detail {

template <typename T>
struct Bus;
template <>
struct Bus<void> {
    static constexpr const char* kType = "";
};
template <>
struct Bus<ObjectPath> {
    static constexpr const char* kType = "o";
};
template <>
struct Bus<ObjectPaths> {
    static constexpr const char* kType = "ao";
};
template <>
struct Bus<bool> {
    static constexpr const char* kType = "b";
    static bool From(const BusValue& value) { return std::get<bool>(value); }
};
template <>
struct Bus<int32_t> {
    static constexpr const char* kType = "i";
    static int32_t From(const BusValue& value) { return std::get<int32_t>(value); }
};
template <>
struct Bus<Text> {
    static constexpr const char* kType = "s";
    static const Text& From(const BusValue& value) { return std::get<Text>(value); }
};
template <>
struct Bus<TextView> : Bus<Text> {
};
/// Any type; the member looks itself.
template <>
struct Bus<BusValue> {
    static constexpr const char* kType = "v";
    static const BusValue& From(const BusValue& value) { return value; }
};

template <typename T>
using Plain = std::remove_cvref_t<T>;

inline Application& Target(const MemberCall& call, const Application*)
{
    return call.application;
}
inline mvDocument& Target(const MemberCall& call, const mvDocument*)
{
    return *call.document;
}

template <typename F>
struct Traits;
template <typename C, typename R, typename... A>
struct Traits<R (C::*)(A...)> {
    using Result = Plain<R>;
    static constexpr size_t kCount = sizeof...(A);
    static constexpr std::array<const char*, kCount> kTypes{Bus<Plain<A>>::kType...};
    template <auto F, size_t... I>
    static BusValue Call(const MemberCall& call, std::index_sequence<I...>)
    {
        C& target = Target(call, static_cast<C*>(nullptr));
        if constexpr (std::is_void_v<R>) {
            (target.*F)(Bus<Plain<A>>::From(call.arguments[I])...);
            return {};
        } else {
            return BusValue(Result((target.*F)(Bus<Plain<A>>::From(call.arguments[I])...)));
        }
    }
};
template <typename C, typename R, typename... A>
struct Traits<R (C::*)(A...) const> : Traits<R (C::*)(A...)> {
};
/// A member that no class has as it is.
template <typename R, typename... A>
struct Traits<R (*)(const MemberCall&, A...)> {
    using Result = Plain<R>;
    static constexpr size_t kCount = sizeof...(A);
    static constexpr std::array<const char*, kCount> kTypes{Bus<Plain<A>>::kType...};
    template <auto F, size_t... I>
    static BusValue Call(const MemberCall& call, std::index_sequence<I...>)
    {
        if constexpr (std::is_void_v<R>) {
            F(call, Bus<Plain<A>>::From(call.arguments[I])...);
            return {};
        } else {
            return BusValue(Result(F(call, Bus<Plain<A>>::From(call.arguments[I])...)));
        }
    }
};

template <auto F>
BusValue Invoke(const MemberCall& call)
{
    using T = Traits<decltype(F)>;
    return T::template Call<F>(call, std::make_index_sequence<T::kCount>());
}

} // namespace member_detail

template <auto F, typename... Names>
constexpr Member Method(const char* name, Names... argumentNames)
{
    using T = member_detail::Traits<decltype(F)>;
    static_assert(sizeof...(Names) == T::kCount, "each argument has a name");
    Member member{MemberKind::Method, name};
    std::array<const char*, T::kCount> names{argumentNames...};
    for (size_t i = 0; i < T::kCount; ++i) member.arguments[i] = {names[i], T::kTypes[i]};
    member.argumentCount = T::kCount;
    member.result = member_detail::Bus<typename T::Result>::kType;
    member.run = &member_detail::Invoke<F>;
    return member;
}

template <auto Get>
constexpr Member Property(const char* name)
{
    Member member = Method<Get>(name);
    member.kind = MemberKind::Property;
    return member;
}

template <auto Get, auto Put>
constexpr Member Property(const char* name)
{
    Member member = Property<Get>(name);
    member.put = &member_detail::Invoke<Put>;
    return member;
}

template <typename... Arguments>
constexpr Member Signal(const char* name, Arguments... arguments)
{
    Member member{MemberKind::Signal, name};
    member.argumentCount = sizeof...(Arguments);
    size_t i = 0;
    ((member.arguments[i++] = arguments), ...);
    return member;
}

struct BusInterface {
    const char* name;
    std::span<const Member> members;
};

/// In the order in which they are published. Both dispatch and introspection read them.
const BusInterface& ApplicationInterface();
const BusInterface& DocumentsInterface();
const BusInterface& DocumentInterface();

/// The whole document, with the standard interfaces. `children` are names of objects below this one.
std::string IntrospectionXml(const BusInterface* interface, const std::vector<std::string>& children);

} // namespace nib
