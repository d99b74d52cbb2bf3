// The C++ runtime's list of exceptions under way, for a library in somebody else's process. The runtime's own takes a
// thread-local index of the process, which it never gives back, and ends the process where there is none or no memory
// for it. Here it is one list for all threads, because the add-in throws on the host's user-interface thread alone, as
// Err.h has it. A program with a second thread keeps the runtime's own.
#include <cxxabi.h>

// NOLINTBEGIN(bugprone-reserved-identifier): the runtime's own names

namespace __cxxabiv1 {

struct __cxa_eh_globals {
    void* caughtExceptions;
    unsigned int uncaughtExceptions;
};

static __cxa_eh_globals exceptions{};

extern "C" __cxa_eh_globals* __cxa_get_globals() noexcept { return &exceptions; }
extern "C" __cxa_eh_globals* __cxa_get_globals_fast() noexcept { return &exceptions; }

}  // namespace __cxxabiv1

// NOLINTEND(bugprone-reserved-identifier)
