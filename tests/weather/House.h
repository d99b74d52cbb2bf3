// tests/weather/House.h: what surrounds the library while one scenario is played: its files and the user's, a registry
// and a clipboard in memory, starts of programs noted instead of done, waits passed over; and what the user had before.
//
// All else is Windows' own. One house at a time.
#pragma once
#include <windows.h>

#include <string>
#include <vector>

#include "testing/ImportPatch.h"
#include "testing/Keys.h"
#include "testing/MemoryClipboard.h"
#include "testing/MemoryRegistry.h"

namespace weather {

using keys::addInKey;
using keys::outlookKey;
using keys::productKey;
inline constexpr const char* earlierEntries[] = {"EARLIER1", "EARLIER2"};

// A file as it is; empty where it is missing.
[[nodiscard]] std::string ReadFileWhole(const std::string& path);
void WriteFileWhole(const std::string& path, const std::string& bytes);

class House {
  public:
    House();
    ~House();
    House(const House&) = delete;
    House& operator=(const House&) = delete;

    // Puts this world between the library and Windows.
    void Surround(HMODULE library);
    // Takes it away again, before the library goes.
    void Leave();

    static void SetValue(const char* path, const char* name, const std::string& text, HKEY root = HKEY_CURRENT_USER);
    [[nodiscard]] static std::string Value(const char* path, const char* name);

    [[nodiscard]] std::string SettingsFolder() const;
    [[nodiscard]] std::string SettingsFile() const;
    [[nodiscard]] static std::string LogFile();
    // The settings as the user left them, and a profile, "Work".
    void Furnish() const;
    // No settings yet, and no folder for them.
    void Empty() const;

    // What is wrong with what the user had: settings, log, lists, clipboard; nothing where all is as it should be.
    [[nodiscard]] std::vector<std::string> Losses(bool keepsClipboard) const;

    // What the last play left behind in the files although its house is gone: what somebody holds open. Empty: nothing.
    [[nodiscard]] static std::string Remains();

    [[nodiscard]] const std::vector<std::string>& Started() const;  // command lines and documents
    [[nodiscard]] static DWORD Slept();                             // milliseconds that the library wanted to wait

  private:
    MemoryRegistry registry_;
    MemoryClipboard clipboard_;
    ImportPatch program_;
    ImportPatch* library_ = nullptr;
};

}  // namespace weather
