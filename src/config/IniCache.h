// config/IniCache.h: the settings files held in memory, twelve at most.
//
// Shapes  A file is known by its whole path, which is not case-sensitive. Texts and names as in IniText.h.
// Stale   Before every read the file's size and exact time are asked for, in one call. When they are not those of
//         the text held, it is dropped, unwritten changes and all, and the file is loaded again; where Windows does
//         not tell them, the text held is taken as it is. A write does the same, but to a text without unwritten
//         changes only. The stamp kept after a write of our own is that of the bytes written, so that this write is
//         not taken for a change from outside, and one that follows it at once is.
// Others  The main application writes the same files. A text is loaded between its writes where that can be waited
//         for; else a read takes what is there and a write is given up. Right before a text replaces the file, the
//         file's stamp is compared once more: when it changed, or is being written, the file is loaded again and the
//         changes that wait are made in that text. So what others write in other keys stays.
// Errors  A missing file reads as empty. One that is there and cannot be read yields defaults, is not written and
//         not remembered as empty. Where a flush fails, Write still tells whether there was anything to write; the
//         changes are lost with the next read.
// Effects A 13th file takes the place of the one used longest ago, which is written first if it was changed. What
//         is not flushed is written then, or by WriteBackAll. Before an empty or missing file is written, it is
//         watched for some tens of milliseconds: somebody may be just about to write it.
#pragma once
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "config/IniText.h"
#include "platform/WholeFile.h"

namespace IniFile {

struct Edit {
    std::string section;
    std::string key;
    std::string value;
};

struct CacheEntry {
    bool changed = false;       // the text differs from the file
    bool settled = true;        // nobody was writing the file when its text was loaded
    std::uint64_t lastUse = 0;  // counts reads and writes of all files, so no two entries share a number
    IniText::Index index;       // where the sections and keys asked for lie in the text
    std::string fileName;       // empty: the entry is free
    platform::FileStamp stamp;  // of the file when its text was loaded, or written
    std::string text;           // the whole file; IniText::missingFile if there is none; empty: to be loaded
    std::vector<Edit> edits;    // what makes the text differ from the file, in their order
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
    [[nodiscard]] CacheEntry* FindEntry(const std::string& fileName) noexcept;
    [[nodiscard]] CacheEntry& Place(const std::string& fileName);
    enum class For { Reading, Writing };
    [[nodiscard]] CacheEntry* Load(const std::string& fileName, const platform::FileStamp& stamp, For purpose);
    [[nodiscard]] std::string Contents(const std::string& fileName, For purpose, bool& settled, bool& readable);
    void Touch(CacheEntry& entry) noexcept;

    std::array<CacheEntry, places> entries_;
    std::string busyFile_;  // the one that somebody else kept writing: reads do not wait for it again
    std::size_t latest_ = 0;
    std::uint64_t uses_ = 0;
    std::uint64_t limit_ = usualLimit;
};

// Through GetPrivateProfileStringA, one value a call.
[[nodiscard]] std::string ReadFromBigIniFile(const std::string& fileName, std::string_view section,
                                             std::string_view key, std::string_view otherwise);

}  // namespace IniFile
