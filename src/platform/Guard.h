// platform/Guard.h: the one wrapper around everything that Outlook or Windows calls.
//
// Errors  Nothing passes: an exception ends the guarded call, sets the pending error and goes no further.
//         The call begins with no error pending.
#pragma once
#include <exception>
#include <new>

#include "platform/Err.h"

namespace platform {

template <class Call>
void RunGuarded(Call&& call) noexcept {
    Err().Clear();
    try {
        call();
    } catch (const std::bad_alloc&) {
        Err().Set(OutOfMemory, "Out of memory");
    } catch (const std::exception& failure) {
        Err().Set(InvalidProcedureCall, failure.what());
    } catch (...) {
        Err().Set(InvalidProcedureCall, {});
    }
}

}  // namespace platform
