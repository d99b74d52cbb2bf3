#include "check/SettingsRules.h"

#include <algorithm>

#include "config/IniText.h"
#include "config/SettingsFiles.h"
#include "language/LanguageText.h"
#include "platform/Text.h"
#include "support/Product.h"

using platform::Contains;
using platform::WithBackslash;

namespace Check {
namespace {

constexpr const char* forms[] = {"FormOlAddInOptions", "FormQuestion"};

std::string Setting(std::string_view text, std::string_view section, std::string_view key) {
    return std::string(IniText::Read(text, section, key, IniText::Comparison::IgnoringCase).value_or(""));
}

}  // namespace

std::string SettingsFolder(std::int32_t storageMode, std::string_view iniFiles, std::string_view appData,
                           const std::string& otherwise) {
    constexpr std::int32_t inRegistry = 2;
    if (storageMode != inRegistry && Contains(iniFiles, ":") && Contains(iniFiles, "\\"))
        return WithBackslash(iniFiles);
    const bool inAppData = storageMode == 0 || storageMode == inRegistry;
    if (inAppData && !appData.empty()) return WithBackslash(appData) + Product::Folder;
    return WithBackslash(otherwise);
}

std::string ProfileFile(std::string_view baseText, const std::string& folder) {
    std::string profile = Setting(baseText, "Settings", "CurProfile");
    if (profile.empty()) profile = Setting(baseText, "Settings", "LastProfile");
    if (SettingsFiles::IsBaseProfile(profile, Product::Name)) return {};
    return SettingsFiles::ProfileFileIn(folder, profile);
}

std::vector<std::string> RestrictedControls(std::string_view baseText, std::string_view key) {
    std::vector<std::string> names;
    for (const char* form : forms) {
        const std::string list = Setting(baseText, form, key);
        for (const std::string_view entry : LanguageText::Entries(list)) names.emplace_back(entry);
    }
    return names;
}

int MissingKeys(std::string_view english, std::string_view other) {
    int missing = 0;
    std::string section;
    for (std::size_t at = 0; at < english.size();) {
        const std::size_t end = std::min(english.find('\n', at), english.size());
        std::string_view line = english.substr(at, end - at);
        at = end + 1;
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (line.starts_with('[') && line.ends_with(']')) {
            section = line.substr(1, line.size() - 2);
            continue;
        }
        const std::size_t equals = line.find('=');
        if (section.empty() || equals == std::string_view::npos) continue;
        if (!IniText::Read(other, section, line.substr(0, equals))) ++missing;
    }
    return missing;
}

std::uint32_t CodePageOf(std::string_view languageFile) {
    const bool plain = std::all_of(languageFile.begin(), languageFile.end(),
                                   [](char letter) { return static_cast<unsigned char>(letter) < 0x80; });
    if (plain) return 0;
    struct Page {
        std::int32_t charSet;
        std::uint32_t page;
    };
    constexpr Page pages[] = {{0, 1252}, {238, 1250}, {204, 1251}, {161, 1253}, {162, 1254}, {186, 1257}};
    const std::string text = Setting(languageFile, "Info", "CharSet");
    for (const Page& page : pages) {
        if (!text.empty() && platform::ValLong(text) == page.charSet) return page.page;
    }
    return 0;
}

}  // namespace Check
