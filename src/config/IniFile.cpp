#include "config/IniFile.h"

#include <utility>

#include "config/IniCache.h"
#include "platform/Text.h"
#include "support/Debug.h"
#include "support/RegEdit.h"
#include "support/RegistryKeys.h"

using IniText::Comparison;
using RegEdit::Root;

namespace IniFile {

Location location;

namespace {

constexpr std::string_view legacyLocation = "Software\\Wexo\\Farrowlane";

Cache cache;
bool initialised = false;

// What fails inside (there is no memory) ends here.
template <class Neutral, class Procedure>
Neutral Quietly(Neutral neutral, const Procedure& procedure) noexcept {
    try {
        return procedure();
    } catch (...) {
        return neutral;
    }
}

// While it lives, the base settings file is the current one.
class BaseFileIsCurrent {
  public:
    BaseFileIsCurrent() : current_(std::exchange(location.CurrentFile, location.BaseFile)) {}
    ~BaseFileIsCurrent() { location.CurrentFile = std::move(current_); }
    BaseFileIsCurrent(const BaseFileIsCurrent&) = delete;
    BaseFileIsCurrent& operator=(const BaseFileIsCurrent&) = delete;

  private:
    std::string current_;
};

bool EndsInBackslash(std::string_view section) { return section.ends_with('\\'); }

std::string_view WithoutLast(std::string_view section) { return section.substr(0, section.size() - 1); }

std::string Below(std::string_view place, std::string_view section) {
    return std::string(place).append("\\").append(section);
}

std::string FromRegistry(std::string_view section, std::string_view key, std::string_view defaultText,
                         bool useLegacyLocation) {
    std::string value = RegEdit::GetRegString(Root::CurrentUser, Below(RegistryKeys::Product, section), key);
    if (useLegacyLocation && value == defaultText) {
        value = RegEdit::GetRegString(Root::CurrentUser, Below(legacyLocation, section), key);
    }
    return value;
}

std::string FromFile(std::string_view section, std::string_view key, Comparison comparison) {
    std::string value = ReadFromIniFile(location.CurrentFile, section, key, {}, comparison);
    if (value.empty() && EndsInBackslash(section)) {
        value = ReadFromIniFile(location.CurrentFile, WithoutLast(section), key, {}, comparison);
    }
    return value;
}

}  // namespace

void IniInit(bool onlyOnce) {
    const Debug::Trace trace("IniInit");
    if (onlyOnce && initialised) return;
    initialised = true;
    Quietly(0, [&] {
        cache.WriteBackAll();
        cache.SetLimit(platform::ValLong(
            GetIniSettingDefault("Files", "MaxSize", platform::Decimal(static_cast<std::int32_t>(Cache::usualLimit)))));
        return 0;
    });
}

std::string GetIniSetting(std::string_view section, std::string_view key, std::string_view defaultText,
                          bool useLegacyLocation, bool textComparison) {
    return Quietly(std::string(), [&] {
        std::string value = location.StorageMode == inRegistry
                                ? FromRegistry(section, key, defaultText, useLegacyLocation)
                                : FromFile(section, key, textComparison ? Comparison::IgnoringCase : Comparison::Exact);
        return value.empty() ? std::string(defaultText) : value;
    });
}

std::int32_t GetIniSettingLong(std::string_view section, std::string_view key, std::int32_t defaultNumber,
                               bool useLegacyLocation) {
    return platform::ValLong(GetIniSetting(section, key, platform::Decimal(defaultNumber), useLegacyLocation));
}

bool SetIniSetting(std::string_view section, std::string_view key, std::string_view value, bool flush,
                   std::int32_t option) {
    const Debug::Trace trace("SetIniSetting");
    return Quietly(false, [&] {
        if (location.StorageMode == inRegistry) {
            return RegEdit::SaveRegValue(Root::CurrentUser, std::string_view(Below(RegistryKeys::Product, section)),
                                         key, value, RegEdit::TypeText);
        }
        const std::string_view name = EndsInBackslash(section) ? WithoutLast(section) : section;
        return WriteToIniFile(location.CurrentFile, name, key, value, flush, option);
    });
}

bool SetIniSettingLong(std::string_view section, std::string_view key, std::int32_t number, bool flush,
                       std::int32_t option) {
    return SetIniSetting(section, key, platform::Decimal(number), flush, option);
}

std::string GetIniSettingDefault(std::string_view section, std::string_view key, std::string_view defaultText,
                                 bool useLegacyLocation, bool textComparison) {
    const BaseFileIsCurrent base;
    return GetIniSetting(section, key, defaultText, useLegacyLocation, textComparison);
}

bool SetIniSettingDefault(std::string_view section, std::string_view key, std::string_view value, bool flush,
                          std::int32_t option) {
    const BaseFileIsCurrent base;
    return SetIniSetting(section, key, value, flush, option);
}

std::string ReadFromIniFile(const std::string& fileName, std::string_view section, std::string_view key,
                            std::string_view defaultText, Comparison comparison) {
    if (fileName.empty()) return std::string(defaultText);
    return Quietly(std::string(), [&] { return cache.Read(fileName, section, key, defaultText, comparison); });
}

bool WriteToIniFile(const std::string& fileName, std::string_view section, std::string_view key, std::string_view value,
                    bool flush, std::int32_t /*option*/) {
    const Debug::Trace trace("WriteToIniFile");
    if (fileName.empty()) return false;
    return Quietly(false, [&] { return cache.Write(fileName, section, key, value, flush); });
}

}  // namespace IniFile
