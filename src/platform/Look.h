// platform/Look.h: registry, files and programs looked at without changing anything: for a program that reports what
// it finds. What is missing, what cannot be read and what is empty are three things here.
//
// Shapes  ANSI text. Times are local, "2026-11-22 03:30". A registry view is that of programs of 32 or of 64 bits; a
//         Windows without views has one for all.
// Errors  returned; the pending error is not touched, so that a thread beside the user interface's may look too.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Registry.h"

namespace platform {

enum class Found : std::uint8_t { Missing, Unreadable, There };

// --- registry

enum class RegistryView : std::uint8_t { Own, Bits32, Bits64 };

// True on a Windows of 64 bits, which keeps some keys twice.
[[nodiscard]] bool HasRegistryViews() noexcept;

struct StoredValue {
    Found found = Found::Missing;
    std::uint32_t type = 0;
    std::string bytes;     // as stored; empty where there are more than were asked for
    bool tooLong = false;  // there are more
};

class LookedAtKey {
  public:
    static constexpr std::uint32_t longest = 64 * 1024;  // bytes of a value

    LookedAtKey(Root root, const std::string& subkey, RegistryView view) noexcept;
    ~LookedAtKey();
    LookedAtKey(const LookedAtKey&) = delete;
    LookedAtKey& operator=(const LookedAtKey&) = delete;

    [[nodiscard]] Found IsThere() const noexcept { return found_; }
    [[nodiscard]] StoredValue Value(const std::string& name) const;
    [[nodiscard]] std::vector<std::string> ValueNames() const;
    // In units of 100 nanoseconds since 1601, as Windows counts; 0 where it does not tell.
    [[nodiscard]] std::uint64_t LastWritten() const noexcept;

  private:
    HKEY__* key_ = nullptr;
    Found found_ = Found::Missing;
};

// Writes the value, and makes the keys above it; a status as in Registry.h.
[[nodiscard]] std::int32_t StoreValue(Root root, const std::string& subkey, RegistryView view, const std::string& name,
                                      std::uint32_t type, std::string_view bytes);
[[nodiscard]] std::int32_t DropValue(Root root, const std::string& subkey, RegistryView view, const std::string& name);

// --- files

struct SeenFile {
    Found found = Found::Missing;
    bool isFolder = false;
    bool readOnly = false;
    std::uint64_t size = 0;
    std::uint64_t modified = 0;  // as LastWritten
};
[[nodiscard]] SeenFile LookAtFile(const std::string& path) noexcept;

struct SeenText {
    Found found = Found::Missing;
    std::string bytes;  // the first ones, as many as were asked for
};
[[nodiscard]] SeenText LookInto(const std::string& path, std::uint32_t count);

// Whether Windows would let this user write the file, or make one in the folder. Neither is opened for longer than
// the question takes, and nothing is written.
[[nodiscard]] bool MayWriteFile(const std::string& path) noexcept;
[[nodiscard]] bool MayAddFile(const std::string& folder) noexcept;

// What a program that looks has to write: a file of its own, whole or not at all, in place of an older one of that name.
[[nodiscard]] bool WriteReportFile(const std::string& path, std::string_view bytes) noexcept;
[[nodiscard]] bool MakeReportFolder(const std::string& folder) noexcept;  // true where it is there already, too

// "11.0.5510.0" of the version record; empty where the file has none.
[[nodiscard]] std::string FileVersion(const std::string& path);

// With the variables between "%" replaced.
[[nodiscard]] std::string Expanded(const std::string& text);

// --- the rest

[[nodiscard]] bool ProgramRuns(std::string_view fileName);
// "5.1.2600", and the service pack where there is one.
[[nodiscard]] std::string WindowsVersionText();

[[nodiscard]] std::uint64_t Now() noexcept;  // as LastWritten
[[nodiscard]] std::string TimeText(std::uint64_t time);

// UTF-16 of the ANSI text, in small letters by Windows' own rules.
[[nodiscard]] std::u16string LowerUtf16(std::string_view text);

}  // namespace platform
