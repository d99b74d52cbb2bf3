// check/Texts.h: the texts of the check program, in English; the language files have them in section "FormCheck". Pure.
//
// Shapes  A finding's text is two sentences with "|" between: what was found, and what it means. "%a", "%b" and "%c"
//         are filled in; "\n" stands for a line break as in every language file.
// Errors  A key that no file has yields the English text, an unknown one the key.
#pragma once
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "check/Finding.h"

namespace Check {

// The text that the language file has for a key of section "FormCheck"; empty: none.
using Lookup = std::function<std::string(std::string_view key)>;

[[nodiscard]] std::string TextFor(const Lookup& lookup, std::string_view key,
                                  const std::vector<std::string>& fill = {});

struct Sentences {
    std::string found, meaning;
};
[[nodiscard]] Sentences SentencesOf(const Lookup& lookup, const Finding& finding);

// Every key, in the order of the table: for tests that each finding has its texts.
[[nodiscard]] std::vector<std::string_view> AllKeys();

}  // namespace Check
