# What every target of this project is compiled with. One place, errors all of them.
add_library(cv_warnings INTERFACE)
target_compile_options(cv_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
    -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual -Wnull-dereference -Wimplicit-fallthrough)
if(WIN32)
    # COM interfaces have no virtual destructors by design; GetProcAddress returns a type to be cast.
    target_compile_options(cv_warnings INTERFACE -Wno-non-virtual-dtor -Wno-cast-function-type)
endif()
if(NOT WIN32 AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # At -O3 it sees overlapping copies in `"text" + std::string` where there are none (GCC bug 105651).
    target_compile_options(cv_warnings INTERFACE -Wno-restrict)
endif()
