// platform/Guard.h: the one wrapper around everything that Outlook or Windows calls.
//
// Errors  Nothing passes: an exception ends the guarded call, sets the pending error and goes no further.
//         The call begins with no error pending.
#pragma once
#include <exception>
#include <new>

#include "platform/Err.h"

namespace platform {

// One step of a procedure that goes on whatever becomes of it; what was pending stays so, unless this step ends with an
// exception.
template <class Call>
void Attempt(Call&& call) noexcept {
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

template <class Call>
void RunGuarded(Call&& call) noexcept {
    Err().Clear();
    Attempt(call);
}

}  // namespace platform
