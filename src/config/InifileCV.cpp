#include "config/InifileCV.h"

#include <utility>

#include "config/IniFile.h"
#include "config/Paths.h"
#include "config/SettingsFiles.h"
#include "platform/Err.h"
#include "platform/File.h"
#include "platform/Text.h"
#include "support/Debug.h"
#include "support/Files.h"
#include "support/LogLine.h"
#include "support/Product.h"
#include "support/Prompt.h"
#include "support/RegEdit.h"
#include "support/RegistryKeys.h"

using Debug::WriteDebug;
using Files::FileExists;
using platform::Contains;
using platform::ToLower;
using platform::WithBackslash;
using RegEdit::Root;
using WindowsMisc::paths;

namespace InifileCV {

State state;

namespace {

constexpr std::string_view settingsFile = SettingsFiles::Base;
constexpr std::string_view configFile = "config.ini";
constexpr std::string_view configFileBegin = "#Corvella config file";

Ports plugged;

std::string In(const std::string& folder, std::string_view name) { return std::string(folder).append(name); }

std::int32_t ReadStorageMode() {
    const auto mode = RegEdit::ReadRegString(Root::CurrentUser, RegistryKeys::Settings, "SaveIn");
    if (mode && mode->empty()) {
        RegEdit::SaveRegValue(Root::CurrentUser, RegistryKeys::Settings, "SaveIn", "0", RegEdit::TypeText);
    }
    return platform::ValLong(mode.value_or("0"));
}

// An installer leaves a configuration for the product in the temporary folder.
void TakeOverConfigFile() {
    if (paths.TemporaryFolder.empty()) return;  // not known: there is no scripting object
    const std::string left = In(paths.TemporaryFolder, configFile);
    if (!FileExists(left) || !Files::GetFileContents(left).starts_with(configFileBegin)) return;
    bool everywhere = true;
    for (const std::string& folder : {paths.AddInFolder, paths.RoamingDataFolder}) {
        const std::string target = In(folder, configFile);
        if (platform::PathIsMissing(folder)) Files::MkDir_(folder);
        if (platform::PathIsMissing(target)) Files::CopyFileIfChanged(left, target, true);
        if (!FileExists(target)) everywhere = false;
    }
    if (everywhere) platform::RemoveFile(left);
}

std::string FindConfigFile() {
    for (const std::string& folder : {paths.AddInFolder, paths.RoamingDataFolder}) {
        std::string file = In(folder, configFile);
        if (FileExists(file)) return file;
    }
    return {};
}

std::string CurrentProfile() {
    std::string profile = IniFile::GetIniSetting("Settings", "CurProfile", {}, true, true);
    if (profile.empty()) profile = IniFile::GetIniSetting("Settings", "LastProfile", {}, true, true);
    return profile;
}

void TellMissingProfile(const std::string& file) {
    const std::string name(Files::GetFileNamePart(file));
    if (state.MissingProfileTold || ToLower(name) == settingsFile) return;
    state.MissingProfileTold = true;
    Prompt::Message(Prompt::Id::Plain, missingProfileMessage, Prompt::Style::Warning, "%f", name);
}

void ReadIniFilesOnce() {
    if (std::exchange(state.IniFilesRead, true)) return;
    const auto folder = RegEdit::ReadRegString(Root::CurrentUser, RegistryKeys::Product, "IniFiles");
    state.IniFilesUnreadable = !folder;
    if (folder && Contains(*folder, ":") && Contains(*folder, "\\")) state.IniFiles = *folder;
}

std::string DefaultFolder(std::int32_t storageMode) {
    const bool inAppData = storageMode == 0 || storageMode == IniFile::inRegistry;
    if (inAppData && !paths.AppData.empty()) return In(paths.AppData, Product::Folder);
    return WithBackslash(paths.SystemFolder.empty() ? paths.AddInFolder : paths.SystemFolder);
}

// Proven by adding nothing to the settings file: one that is there after all, unseen a moment ago, keeps its text.
bool CanHoldSettings(const std::string& folder) {
    const std::string file = In(folder, settingsFile);
    const bool written = Files::WriteFileConents(file, {}, true);
    return FileExists(file) || written;
}

class Asking {
  public:
    Asking() noexcept { state.Asking = true; }
    ~Asking() { state.Asking = false; }
    Asking(const Asking&) = delete;
    Asking& operator=(const Asking&) = delete;
};

// Empty where the user leaves the question unanswered.
std::string AskForFolder(const std::string& candidate) {
    // The box asks for its captions, and they for the settings: until there is an answer, the candidate has to do.
    if (state.PromptEnded || state.Asking) return {};
    const Asking asking;
    bool cancelled = false;
    const std::string answer = Prompt::Input(
        "Unable to write the file  '" + In(candidate, settingsFile) + "'.\r\n\r\nPlease enter an valid path:", {},
        candidate, cancelled);
    state.PromptEnded = cancelled || answer.empty();
    return state.PromptEnded ? std::string() : WithBackslash(answer);
}

void StoreFolder(const std::string& folder, bool isDefault) {
    if (state.IniFilesUnreadable) return;
    if (isDefault) {
        RegEdit::DeleteRegValue(Root::CurrentUser, RegistryKeys::Product, "IniFiles");
    } else {
        RegEdit::SaveRegValue(Root::CurrentUser, RegistryKeys::Product, "IniFiles", folder, RegEdit::TypeText);
    }
}

// The default folder, or the first of those that the user enters in which the settings file is or can be made.
std::string FolderThatHoldsSettings(std::int32_t storageMode) {
    std::string folder = DefaultFolder(storageMode);
    for (bool isDefault = true;; isDefault = false) {
        const bool isThere = FileExists(In(folder, settingsFile));
        if (isThere && isDefault) return folder;
        if (isThere || CanHoldSettings(folder)) {
            StoreFolder(folder, isDefault);
            return folder;
        }
        const std::string entered = AskForFolder(folder);
        if (entered.empty()) return folder;
        state.IniFiles = folder = entered;
    }
}

}  // namespace

void GetIniFile() {
    const platform::ErrorScope ownErrors;
    const Debug::Trace trace("GetIniFile");
    const std::int32_t mode = ReadStorageMode();
    IniFile::location.StorageMode = mode;
    WriteDebug(" SaveSettingIn:" + platform::Decimal(mode), LogLine::FreeText);
    IniFile::location.CurrentFile = GetMainIniFile(mode);
    if (Contains(IniFile::location.CurrentFile, "\\Kestrelbox")) {
        IniFile::location.CurrentFile = In(GetIniFilename_(mode), settingsFile);
    }
    TakeOverConfigFile();
    state.ConfigFile = FindConfigFile();
    WriteDebug(" : " + IniFile::location.CurrentFile, LogLine::FreeText);
    state.DefaultsFile = In(WithBackslash(paths.AddInFolder), "defaults.ini");
    if (plugged.setUpLanguage != nullptr) plugged.setUpLanguage();
}

std::string GetMainIniFile(std::int32_t storageMode) {
    const platform::ErrorScope ownErrors;
    const Debug::Trace trace("GetMainIniFile");
    state.SettingsFolder = GetIniFilename_(storageMode);
    IniFile::location.BaseFile = SettingsFiles::BaseFileIn(state.SettingsFolder);
    IniFile::location.CurrentFile = IniFile::location.BaseFile;
    const std::string profile = CurrentProfile();
    if (SettingsFiles::IsBaseProfile(profile, state.DefaultProfile)) return IniFile::location.CurrentFile;
    const std::string file = Files::GetFileFolderPath(SettingsFiles::ProfileFileIn(state.SettingsFolder, profile));
    if (platform::PathIsMissing(file)) {
        TellMissingProfile(file);
    } else {
        IniFile::location.CurrentFile = file;
    }
    return IniFile::location.CurrentFile;
}

std::string GetIniFilename_(std::int32_t storageMode) {
    const platform::ErrorScope ownErrors;
    const Debug::Trace trace("GetIniFilename_");
    if (paths.AddInFolder.empty()) paths.AddInFolder = Files::AppFolder();
    if (storageMode != IniFile::inRegistry) ReadIniFilesOnce();
    // PathsInit looks for the settings files too, and may have led to an entered folder already. It runs whatever
    // folder the registry names: what an installer has left, and the other folders, are found by it.
    if (paths.RoamingDataFolder.empty() && !std::exchange(state.PathsSought, true)) WindowsMisc::PathsInit();
    return WithBackslash(state.IniFiles.empty() ? FolderThatHoldsSettings(storageMode) : state.IniFiles);
}

Ports Plug(const Ports& ports) noexcept { return std::exchange(plugged, ports); }

}  // namespace InifileCV
