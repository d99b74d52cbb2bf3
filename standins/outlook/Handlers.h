// outlook/Handlers.h: entries of the member tables, made of the member functions that carry them out.
#pragma once
#include <type_traits>

#include "outlook/Call.h"
#include "outlook/Member.h"
#include "outlook/Object.h"

namespace standin {

namespace detail {

template <class C, class R, class... A>
C ClassOf(R (C::*)(A...));
template <class C, class R, class... A>
C ClassOf(R (C::*)(A...) const);
template <class C, class R, class A>
std::decay_t<A> ArgumentOf(R (C::*)(A));

template <class T>
void Answer(Call& call, const T& value) {
    call.Return(value);
}
inline void Answer(Call& call, const Result& object) { call.Return(static_cast<IDispatch*>(object.get())); }

template <auto F>
void Run(Object& object, Call& call) {
    using C = decltype(ClassOf(F));
    C& self = static_cast<C&>(object);
    if constexpr (std::is_invocable_v<decltype(F), C&, Call&>) {
        if constexpr (std::is_void_v<std::invoke_result_t<decltype(F), C&, Call&>>)
            (self.*F)(call);
        else
            Answer(call, (self.*F)(call));
    } else {
        if constexpr (std::is_void_v<std::invoke_result_t<decltype(F), C&>>)
            (self.*F)();
        else
            Answer(call, (self.*F)());
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
