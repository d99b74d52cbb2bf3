// testing/Versions.h: a test case that is run once in each version of Outlook. Its body knows `version`, which a
// failure also shows.
//
//     IN_EVERY_VERSION("the menu stands before Help") { ... version ... }
//     IN_VERSIONS("a bar can be moved", 11, 12) { ... }
#pragma once
#include <doctest.h>

// The body becomes a function of its own. The line's number makes its name unique in a file.
#define CV_VERSIONS(body, name, ...)              \
    static void body(int version);                \
    TEST_CASE(name) {                             \
        for (const int version : {__VA_ARGS__}) { \
            CAPTURE(version);                     \
            body(version);                        \
        }                                         \
    }                                             \
    static void body([[maybe_unused]] int version)
#define CV_VERSIONS_AT(line, name, ...) CV_VERSIONS(DOCTEST_CAT(InVersionsAt, line), name, __VA_ARGS__)

#define IN_VERSIONS(name, ...) CV_VERSIONS_AT(__LINE__, name, __VA_ARGS__)
#define IN_EVERY_VERSION(name) IN_VERSIONS(name, 9, 10, 11, 12)
