// What the C++ runtime does when an exception finds nobody: it ends the process. The runtime's own handler would print
// the exception's name first, for which it brings along a decoder of names larger than any room of the add-in.
#include <cstdlib>

namespace __gnu_cxx {

void __verbose_terminate_handler();                   // NOLINT(bugprone-reserved-identifier): the runtime's own name
void __verbose_terminate_handler() { std::abort(); }  // NOLINT(bugprone-reserved-identifier)

}  // namespace __gnu_cxx
