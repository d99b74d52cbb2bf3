// program/Versions.h: the names by which people call the versions.
#pragma once
#include <string>

namespace program {

struct KnownVersion {
    const char* name;
    int number;  // Options::version
};
inline constexpr KnownVersion versions[] = {{"2000", 9},  {"2002", 10}, {"2003", 11}, {"2007", 12},
                                            {"2010", 14}, {"2013", 15}, {"2016", 16}};

// "2003" of 11; empty for a number that is none.
[[nodiscard]] inline std::string VersionName(int number) {
    for (const KnownVersion& version : versions)
        if (version.number == number) return version.name;
    return {};
}

}  // namespace program
