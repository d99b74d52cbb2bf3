// The main function of every test program. Under Windows the tests run as in the host: on a
// thread whose COM apartment is its own.
#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest.h>

#ifdef _WIN32
#include <windows.h>
// Needs windows.h before it.
#include <ole2.h>
#endif

int main(int argc, char** argv) {
#ifdef _WIN32
    OleInitialize(nullptr);
#endif
    const int result = doctest::Context(argc, argv).run();
#ifdef _WIN32
    OleUninitialize();
#endif
    return result;
}
