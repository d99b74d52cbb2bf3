// outlook/Member.h: the tables that say what an object has: names, dispids, kinds, parameters, since which version.
//
// Shapes  `parameters` are names separated by ","; one that may be omitted ends in "?". A put has one value.
#pragma once
#include <windows.h>

#include <oaidl.h>

#include <span>
#include <string>
#include <type_traits>
#include <vector>

#include "outlook/Call.h"

namespace standin {

struct Member {
    const char* name;
    DISPID id;
    WORD kinds;  // DISPATCH_METHOD, _PROPERTYGET, _PROPERTYPUT, _PROPERTYPUTREF
    void (*handler)(Object&, Call&);
    const char* parameters = "";
    int since = 9;
};

using Members = std::span<const Member>;

// {"Type?", "Id?"} of "Type?,Id?".
[[nodiscard]] std::vector<std::string> ParameterNames(const Member& member);

struct Event {
    const char* name;
    DISPID id;
    int level = 0;  // raised at the event sets of this level and above
};

struct EventSet {
    const char* name;
    GUID diid;
    int since = 9;
    int level = 0;  // 0 the first set, 1 its `_10`, 2 its `_11`
};

// What one kind of object is to the outside.
struct TypeDescription {
    const char* interfaceName;  // "_Explorer", as type information calls it
    GUID iid;
    std::vector<Members> tables;
    std::span<const EventSet> events = {};

    [[nodiscard]] std::string PlainName() const;                                 // without "_"
    [[nodiscard]] const Member* Find(std::string_view name, int version) const;  // any kind
    [[nodiscard]] const Member* Find(DISPID id, WORD flags, int version) const;
    [[nodiscard]] const Member* Find(DISPID id, int version) const;
};

// {xxxxxxxx-0000-0000-C000-000000000046}
constexpr GUID OfficeGuid(unsigned long first) { return {first, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}}; }

namespace detail {

template <class C, class R, class... A>
C ClassOf(R (C::*)(A...));
template <class C, class R, class... A>
C ClassOf(R (C::*)(A...) const);
template <class C, class R, class A>
std::decay_t<A> ArgumentOf(R (C::*)(A));

template <auto F>
void Run(Object& object, Call& call) {
    using C = decltype(ClassOf(F));
    C& self = static_cast<C&>(object);
    if constexpr (std::is_invocable_v<decltype(F), C&, Call&>) {
        if constexpr (std::is_void_v<std::invoke_result_t<decltype(F), C&, Call&>>)
            (self.*F)(call);
        else
            call.Return((self.*F)(call));
    } else {
        if constexpr (std::is_void_v<std::invoke_result_t<decltype(F), C&>>)
            (self.*F)();
        else
            call.Return((self.*F)());
    }
}

template <auto F>
void RunPut(Object& object, Call& call) {
    using C = decltype(ClassOf(F));
    decltype(ArgumentOf(F)) value{};
    call.Read(value);
    (static_cast<C&>(object).*F)(value);
}

}  // namespace detail

// F is a member function: of no argument, or of the Call.
template <auto F>
constexpr Member Get(const char* name, DISPID id, const char* parameters = "", int since = 9) {
    return {name, id, DISPATCH_PROPERTYGET, &detail::Run<F>, parameters, since};
}
template <auto F>
constexpr Member Method(const char* name, DISPID id, const char* parameters = "", int since = 9) {
    return {name, id, DISPATCH_METHOD, &detail::Run<F>, parameters, since};
}
// F takes the value.
template <auto F>
constexpr Member Put(const char* name, DISPID id, int since = 9) {
    return {name, id, DISPATCH_PROPERTYPUT, &detail::RunPut<F>, "", since};
}
template <auto F>
constexpr Member PutRef(const char* name, DISPID id, int since = 9) {
    return {name, id, DISPATCH_PROPERTYPUTREF, &detail::RunPut<F>, "", since};
}

}  // namespace standin
