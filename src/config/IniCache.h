// config/IniCache.h: the settings files held in memory, twelve at most.
//
// Shapes  A file is known by its whole path, which is not case-sensitive. Texts and names as in IniText.h.
// Stale   Before every read the file's size and exact time are asked for, in one call. When they are not those of
//         the text held, it is dropped, unwritten changes and all, and the file is loaded again. A write does the
//         same, but to a text without unwritten changes only: else they overwrite what came from outside. The stamp
//         kept after a write of our own is that of the bytes written, so that this write is not taken for a
//         change from outside, and one that follows it at once is.
// Errors  A missing file reads as empty. One that is there and cannot be read returns defaults, is not written and
//         not remembered as empty. A write that fails returns false; the changes are lost with the next read.
// Effects A 13th file takes the place of the one used longest ago, which is written first if it was changed. What
//         is not flushed is written then, or by WriteBackAll.
#pragma once
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "config/IniText.h"
#include "platform/WholeFile.h"

namespace IniFile {

struct CacheEntry {
    bool changed = false;       // the text differs from the file
    std::uint64_t lastUse = 0;  // counts reads and writes of all files, so no two entries share a number
    IniText::Index index;       // where the sections and keys asked for lie in the text
    std::string fileName;       // empty: the entry is free
    platform::FileStamp stamp;  // of the file when its text was loaded, or written
    std::string text;           // the whole file; IniText::missingFile if there is none; empty: to be loaded
};

class Cache {
  public:
    static constexpr std::size_t places = 12;
    static constexpr std::uint64_t usualLimit = 512000;
    static constexpr std::uint64_t smallestLimit = 10240;

    // The value, or `otherwise`. A file above the limit is left to Windows' own reader and not held.
    [[nodiscard]] std::string Read(const std::string& fileName, std::string_view section, std::string_view key,
                                   std::string_view otherwise, IniText::Comparison comparison);

    // True when the text, now or from an earlier write, is not what was on disk before.
    bool Write(const std::string& fileName, std::string_view section, std::string_view key, std::string_view value,
               bool flush);

    // Writes what was changed, and holds nothing afterwards.
    void WriteBackAll();

    // Bytes; below the smallest limit the usual one counts.
    void SetLimit(std::int32_t bytes) noexcept;
    [[nodiscard]] std::uint64_t Limit() const noexcept { return limit_; }

    // Puts the entry's text on disk, in the form it has there. With `verify` the file is read back, and written once
    // more if it holds something else. False: the file could not be written, and the entry is still changed.
    static bool WriteIniFile(CacheEntry& entry, bool verify);

  private:
    [[nodiscard]] CacheEntry* Known(const std::string& fileName) noexcept;
    [[nodiscard]] CacheEntry& Place(const std::string& fileName);
    [[nodiscard]] CacheEntry* Loaded(const std::string& fileName, const platform::FileStamp& stamp);
    void Used(CacheEntry& entry) noexcept;

    std::array<CacheEntry, places> entries_;
    std::size_t latest_ = 0;
    std::uint64_t uses_ = 0;
    std::uint64_t limit_ = usualLimit;
};

// Through GetPrivateProfileStringA, one value a call.
[[nodiscard]] std::string ReadFromBigIniFile(const std::string& fileName, std::string_view section,
                                             std::string_view key, std::string_view otherwise);

}  // namespace IniFile
