#include "config/IniCache.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/Err.h"
#include "platform/Profile.h"
#include "platform/Text.h"
#include "support/Debug.h"
#include "support/Files.h"

using Debug::WriteDebug;
using platform::FileStamp;

namespace IniFile {
namespace {

constexpr std::int32_t freeText = -1;

// Assigning or clearing would keep the memory of the longest text for ever.
void Release(std::string& text) noexcept { std::string().swap(text); }

void Drop(CacheEntry& entry) noexcept {
    Release(entry.text);
    entry.index.Forget();
    entry.changed = false;
}

void Free(CacheEntry& entry) noexcept {
    Drop(entry);
    entry.fileName.clear();
    entry.lastUse = 0;
    entry.stamp = {};
}

// The text to hold for a file of that stamp; none where there is a file that cannot be read.
// Logging may lead back into the cache: nobody holds an entry meanwhile.
std::optional<std::string> Load(const std::string& fileName, const FileStamp& stamp) {
    if (!stamp.exists) {
        WriteDebug("File not found4:" + fileName, freeText);
        return std::string(IniText::missingFile);
    }
    std::int32_t result = Files::noMark;
    std::string text = Files::GetFileContents(fileName, 0, &result);
    if (result == Files::unreadable) return std::nullopt;
    if (text.empty()) text = IniText::missingFile;
    return text;
}

// Logging may lead back into the cache and use the entry for something else; then it is left as it has become.
void Verify(CacheEntry& entry) {
    const std::uint64_t use = entry.lastUse;
    const std::string onDisk = Files::GetFileContents(std::string(entry.fileName));
    if (entry.lastUse != use || onDisk == entry.text) return;
    Files::WriteFileConents(std::string(entry.fileName), std::string(entry.text));
    if (entry.lastUse == use) entry.stamp = platform::StampOf(entry.fileName);
}

}  // namespace

std::string Cache::Read(const std::string& fileName, std::string_view section, std::string_view key,
                        std::string_view otherwise, IniText::Comparison comparison) {
    const FileStamp stamp = platform::StampOf(fileName);
    CacheEntry* entry = Known(fileName);
    if (entry != nullptr && entry->stamp != stamp) Drop(*entry);
    if (entry == nullptr || entry->text.empty()) {
        if (stamp.size > limit_) {
            if (entry != nullptr) Free(*entry);
            return ReadFromBigIniFile(fileName, section, key, otherwise);
        }
        entry = Loaded(fileName, stamp);
        if (entry == nullptr) return std::string(otherwise);
    }
    Used(*entry);
    return std::string(entry->index.Read(entry->text, section, key, comparison).value_or(otherwise));
}

bool Cache::Write(const std::string& fileName, std::string_view section, std::string_view key, std::string_view value,
                  bool flush) {
    CacheEntry* entry = Known(fileName);
    if (entry == nullptr || !entry->changed) {
        const FileStamp stamp = platform::StampOf(fileName);
        if (entry != nullptr && entry->stamp != stamp) Drop(*entry);
        if (entry == nullptr || entry->text.empty()) entry = Loaded(fileName, stamp);
        if (entry == nullptr) return false;
    }
    if (IniText::Write(entry->text, section, key, value)) {
        entry->changed = true;
        entry->index.Forget();
    }
    Used(*entry);
    const bool changed = entry->changed;
    if (flush && changed && !entry->text.empty() && !WriteIniFile(*entry, true) && entry->fileName == fileName) {
        Drop(*entry);
    }
    return changed;
}

void Cache::WriteBackAll() {
    for (CacheEntry& entry : entries_) {
        if (entry.changed) WriteIniFile(entry, false);
        Free(entry);
    }
}

void Cache::SetLimit(std::int32_t bytes) noexcept {
    const auto limit = static_cast<std::uint64_t>(std::max(bytes, 0));
    limit_ = limit < smallestLimit ? usualLimit : limit;
}

bool Cache::WriteIniFile(CacheEntry& entry, bool verify) {
    const platform::ErrorScope ownErrors;
    entry.text = IniText::OnDisk(std::move(entry.text));
    entry.index.Forget();
    const std::optional<FileStamp> written = platform::ReplaceWhole(entry.fileName, entry.text);
    if (!written) return false;
    entry.stamp = *written;
    entry.changed = false;
    if (verify) Verify(entry);
    return true;
}

CacheEntry* Cache::Known(const std::string& fileName) noexcept {
    for (std::size_t i = 0; i < places; ++i) {
        const std::size_t place = (latest_ + i) % places;
        const std::string& known = entries_[place].fileName;
        if (known == fileName || platform::SameIgnoringCase(known, fileName)) return &entries_[place];
    }
    return nullptr;
}

// The file's entry, or a free one, or that of the file used longest ago.
CacheEntry& Cache::Place(const std::string& fileName) {
    if (CacheEntry* entry = Known(fileName)) return *entry;
    const auto earlier = [](const CacheEntry& a, const CacheEntry& b) { return a.lastUse < b.lastUse; };
    CacheEntry& entry = *std::min_element(entries_.begin(), entries_.end(), earlier);
    if (entry.changed) WriteIniFile(entry, false);
    Free(entry);
    entry.fileName = fileName;
    return entry;
}

// The file's entry with its text loaded; none where the file cannot be read.
CacheEntry* Cache::Loaded(const std::string& fileName, const FileStamp& stamp) {
    std::optional<std::string> text = Load(fileName, stamp);
    if (!text) return nullptr;
    CacheEntry& entry = Place(fileName);
    entry.text = std::move(*text);
    entry.stamp = stamp;
    entry.index.Forget();
    entry.changed = false;
    return &entry;
}

void Cache::Used(CacheEntry& entry) noexcept {
    entry.lastUse = ++uses_;
    latest_ = static_cast<std::size_t>(&entry - entries_.data());
}

std::string ReadFromBigIniFile(const std::string& fileName, std::string_view section, std::string_view key,
                               std::string_view otherwise) {
    return platform::ProfileText(fileName, std::string(section), std::string(key), std::string(otherwise));
}

}  // namespace IniFile
