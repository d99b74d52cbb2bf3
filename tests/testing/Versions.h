// testing/Versions.h: a test case that is run once in each version of Outlook. Its body knows `version`, which a
// failure also shows.
//
//     IN_EVERY_VERSION("the menu stands before Help") { ... version ... }
//     IN_VERSIONS("a bar can be moved", 11, 12) { ... }
//     FROM_VERSION("the first window has its menu", 10) { ... }
//
// With 64 bits there are 2010 (14) and later only. These differ little, so 2016 (16) stands for them, with 32 bits where
// CV_LATER=1 is in the environment; with CV_WHOLE=1 all are played. What IN_VERSIONS names is played in any case.
#pragma once
#include <doctest.h>

#include <cstdlib>
#include <initializer_list>
#include <string_view>
#include <vector>

namespace versions {

inline bool IsSet(const char* name) {
    const char* const value = std::getenv(name);
    return value && std::string_view(value) == "1";
}

inline bool Whole() { return IsSet("CV_WHOLE"); }
inline bool Later() { return sizeof(void*) == 8 || IsSet("CV_LATER"); }

inline std::vector<int> From(int first) {
    std::vector<int> found;
    for (const int version : {9, 10, 11, 12, 14, 15, 16}) {
        const bool there = version >= 14 || sizeof(void*) == 4;
        const bool played = version < 14 || (version == 16 && Later()) || Whole();
        if (version >= first && there && played) found.push_back(version);
    }
    return found;
}

}  // namespace versions

// The body becomes a function of its own. The line's number makes its name unique in a file.
#define CV_VERSIONS(body, name, ...)            \
    static void body(int version);              \
    TEST_CASE(name) {                           \
        for (const int version : __VA_ARGS__) { \
            CAPTURE(version);                   \
            body(version);                      \
        }                                       \
    }                                           \
    static void body([[maybe_unused]] int version)
#define CV_VERSIONS_AT(line, name, ...) CV_VERSIONS(DOCTEST_CAT(InVersionsAt, line), name, __VA_ARGS__)

#define IN_VERSIONS(name, ...) CV_VERSIONS_AT(__LINE__, name, std::initializer_list<int>{__VA_ARGS__})
#define FROM_VERSION(name, first) CV_VERSIONS_AT(__LINE__, name, versions::From(first))
#define IN_EVERY_VERSION(name) FROM_VERSION(name, 9)
