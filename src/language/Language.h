// language/Language.h: the language file beside the add-in, and every text looked up in it.
//
// Shapes  Texts stand in the file by section and key (language/LanguageText.h).
// Errors  A key that is missing, and a file that is, yields the empty text: callers keep or bring their own.
// Owns    The text of the file, loaded by the first lookup.
#pragma once
#include <string>
#include <string_view>

namespace Language {

// Loads the language file, whatever was loaded before.
void LangInit();

// `reportMissing` tells the user when a file that was loaded lacks the text.
[[nodiscard]] std::string GetLanguageString(std::string_view section, std::string_view key, bool reportMissing = false);

// The same with every `placeholder` replaced.
[[nodiscard]] std::string GetLanguageStringReplaced(std::string_view section, std::string_view key,
                                                    std::string_view placeholder, std::string_view replacement,
                                                    bool reportMissing = false);

}  // namespace Language
