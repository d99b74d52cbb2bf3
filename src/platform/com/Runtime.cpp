// Parts of the C++ runtime that the library brings along in a smaller form of its own. The runtime's own would print an
// uncaught exception's name, with a decoder of names, and would build the exceptions of the standard containers with a
// second kind of strings: together a third of the whole library. Nothing is lost: an exception that gets as far as
// Guard.h ends there whatever its type, and none is meant to be told from another.
#include <cstdlib>
#include <exception>
#include <new>

namespace {

class LibraryFailure : public std::exception {
  public:
    explicit LibraryFailure(const char* what) noexcept : what_(what) {}
    [[nodiscard]] const char* what() const noexcept override { return what_; }

  private:
    const char* what_;  // a literal of the runtime
};

}  // namespace

// NOLINTBEGIN(bugprone-reserved-identifier): the runtime's own names

namespace __gnu_cxx {

void __verbose_terminate_handler() { std::abort(); }

}  // namespace __gnu_cxx

namespace std {

void __throw_bad_alloc() { throw bad_alloc(); }
void __throw_bad_array_new_length() { throw bad_alloc(); }
void __throw_bad_function_call() { throw LibraryFailure("an empty function was called"); }
void __throw_logic_error(const char* what) { throw LibraryFailure(what); }
void __throw_length_error(const char* what) { throw LibraryFailure(what); }
void __throw_out_of_range(const char* what) { throw LibraryFailure(what); }
void __throw_out_of_range_fmt(const char* what, ...) { throw LibraryFailure(what); }
void __throw_invalid_argument(const char* what) { throw LibraryFailure(what); }

}  // namespace std

// NOLINTEND(bugprone-reserved-identifier)
