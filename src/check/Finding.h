// check/Finding.h: what a check finds, and what would mend it. Pure.
//
// Shapes  A finding has a key, under which its two sentences stand in the language files (check/Texts.h), and what is
//         filled in there for "%a", "%b" and "%c". A change is one value of the registry.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "check/Snapshot.h"

namespace Check {

enum class Sign : std::uint8_t { Fine, Hint, Fault };

struct Change {
    Root root = Root::CurrentUser;
    RegistryView view = RegistryView::Own;
    std::string key, name;
    bool removes = false;
    std::uint32_t type = 0;  // of what is written
    std::string bytes;
};

[[nodiscard]] Change WriteText(Root root, RegistryView view, std::string key, std::string name, std::string_view text);
[[nodiscard]] Change WriteNumber(Root root, RegistryView view, std::string key, std::string name, std::uint32_t number);
[[nodiscard]] Change Remove(Root root, RegistryView view, std::string key, std::string name);

struct Finding {
    Sign sign = Sign::Fine;
    const char* key = "";
    std::vector<std::string> fill;
    std::vector<Change> mend;   // empty: nothing that this program could do
    bool chosenByUser = false;  // somebody may have wanted it so: it is mended only when asked for by itself
};

}  // namespace Check
