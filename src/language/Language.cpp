#include "language/Language.h"

#include <cstdio>
#include <memory>
#include <optional>

#include "config/IniText.h"
#include "language/LanguageText.h"
#include "platform/Text.h"
#include "support/Debug.h"
#include "support/Files.h"
#include "support/Prompt.h"

namespace Language {
namespace {

struct State {
    std::string LangFile;
    std::string LangText;
};

State state;

std::string Contents(const std::string& path) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
    std::string text;
    char block[4096];
    while (file) {
        const std::size_t count = std::fread(block, 1, sizeof block, file.get());
        text.append(block, count);
        if (count == 0) break;
    }
    return text;
}

void ReportMissing(std::string_view section, std::string_view key) {
    std::string message = "Missing '" + std::string(key) + "' in " + std::string(section) + " in the language file!";
    Prompt::Ask(-1, message, 0, {});
}

}  // namespace

void LangInit() {
    const Debug::Trace trace("LangInit");
    state.LangFile = Files::AppFolder() + "English.lng";
    state.LangText = LanguageText::WithLineEnds(Contents(state.LangFile));
}

std::string GetLanguageString(std::string_view section, std::string_view key, bool reportMissing) {
    std::optional<Debug::Trace> trace;
    if (Debug::state.DebugLevel != 0) {
        trace.emplace("GetLanguageString");
        std::string asked = std::string(" ").append(section).append(":").append(key);
        Debug::WriteDebug(asked, -1);
    }
    if (state.LangFile.empty()) LangInit();
    const std::string text =
        LanguageText::Unescaped(IniText::Read(state.LangText, section, key).value_or(std::string_view()));
    if (reportMissing && text.empty() && !state.LangText.empty()) ReportMissing(section, key);
    return text;
}

std::string GetLanguageStringReplaced(std::string_view section, std::string_view key, std::string_view placeholder,
                                      std::string_view replacement, bool reportMissing) {
    return platform::Replaced(GetLanguageString(section, key, reportMissing), placeholder, replacement);
}

}  // namespace Language
