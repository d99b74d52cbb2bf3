// Memory for C++ exceptions, for a library in somebody else's process. The runtime puts some by when it is loaded, for
// the exception that says that there is no more, and never gives it back: every load of the library would leave it in
// the host. And where there is none at the load, that exception ends the host. Here it lies in the library itself, and
// is used first. One thread alone throws, as ExceptionList.cpp has it.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <exception>

namespace {

// The runtime keeps its own data right before what is thrown: 96 bytes with 32 bits, 160 with 64.
constexpr std::size_t runtimes = 32 * sizeof(void*);

// As many as are under way at once, one inside the other, and as large as they are.
struct Place {
    alignas(std::max_align_t) std::array<std::byte, runtimes + 64> bytes;
    bool isTaken;
};
std::array<Place, 8> places;

std::byte* Take(std::size_t size) noexcept {
    for (Place& place : places) {
        if (place.isTaken || size > place.bytes.size()) continue;
        place.isTaken = true;
        return place.bytes.data();
    }
    return static_cast<std::byte*>(std::malloc(size));
}

void Free(std::byte* block) noexcept {
    for (Place& place : places) {
        if (place.bytes.data() != block) continue;
        place.isTaken = false;
        return;
    }
    std::free(block);
}

}  // namespace

// NOLINTBEGIN(bugprone-reserved-identifier): the runtime's own names

namespace __cxxabiv1 {

extern "C" void* __cxa_allocate_exception(std::size_t size) noexcept {
    std::byte* const block = Take(runtimes + size);
    if (!block) std::terminate();
    std::fill_n(block, runtimes, std::byte{});
    return block + runtimes;
}

extern "C" void __cxa_free_exception(void* thrown) noexcept { Free(static_cast<std::byte*>(thrown) - runtimes); }

}  // namespace __cxxabiv1

// NOLINTEND(bugprone-reserved-identifier)
