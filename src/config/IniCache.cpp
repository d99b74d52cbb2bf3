#include "config/IniCache.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/Clock.h"
#include "platform/Err.h"
#include "platform/Profile.h"
#include "platform/Text.h"
#include "support/Debug.h"
#include "support/Files.h"
#include "support/LogLine.h"

using Debug::WriteDebug;
using platform::FileStamp;

namespace IniFile {
namespace {

constexpr int mostStartOvers = 20;
constexpr int looksForText = 6;          // at an empty or missing file, before it is written
constexpr std::uint32_t shortWhile = 5;  // milliseconds, which Windows may make 16

// Assigning or clearing would keep the memory of the longest text for ever.
void Release(std::string& text) noexcept { std::string().swap(text); }

void Drop(CacheEntry& entry) noexcept {
    Release(entry.text);
    entry.index.Forget();
    entry.edits.clear();
    entry.changed = false;
}

void Free(CacheEntry& entry) noexcept {
    Drop(entry);
    entry.fileName.clear();
    entry.lastUse = 0;
    entry.stamp = {};
}

// One call that fails (a share reconnects) is not the end of a write.
FileStamp StampForWriting(const std::string& fileName) {
    FileStamp stamp = platform::StampOf(fileName);
    for (int looks = 0; stamp.unknown && looks < looksForText; ++looks) {
        platform::Pause(shortWhile);
        stamp = platform::StampOf(fileName);
    }
    return stamp;
}

// Somebody who saves a file may have emptied or removed it a moment ago.
void WaitForText(const CacheEntry& entry) {
    if (entry.stamp.size != 0 || !platform::FolderIsThere(std::string(Files::FolderPart(entry.fileName)))) return;
    for (int looks = 0; looks < looksForText; ++looks) {
        platform::Pause(shortWhile);
        if (platform::StampOf(entry.fileName) != entry.stamp) return;
    }
}

// The text and its stamp as they are between two writes of others. Logs nothing, which might lead back into the cache.
bool LoadAnew(CacheEntry& entry) {
    for (int tries = 0; tries < mostStartOvers; ++tries) {
        if (tries > 0) platform::Pause(shortWhile);
        const FileStamp stamp = platform::StampOf(entry.fileName);
        if (stamp.unknown || (stamp.size == 0 && tries < looksForText)) continue;
        std::optional<std::string> text(IniText::missingFile);
        if (stamp.exists) text = platform::ReadWhole(entry.fileName, platform::Others::MayNotWrite);
        if (!text) continue;
        Files::CheckByteOrderMark(*text);
        entry.text = text->empty() ? std::string(IniText::missingFile) : std::move(*text);
        entry.stamp = stamp;
        return true;
    }
    return false;
}

// The changes of the entry made in the file's text of this moment.
bool StartOver(CacheEntry& entry) {
    if (!LoadAnew(entry)) return false;
    entry.changed = false;
    for (const Edit& edit : entry.edits) {
        if (IniText::Write(entry.text, edit.section, edit.key, edit.value)) entry.changed = true;
    }
    return true;
}

// False, and the entry still changed, where that cannot be.
bool PutOnDisk(CacheEntry& entry) {
    WaitForText(entry);
    for (int tries = 0; entry.changed; ++tries) {
        entry.text = IniText::OnDisk(std::move(entry.text));
        entry.index.Forget();
        const platform::Replacement written = platform::ReplaceWhole(entry.fileName, entry.text, entry.stamp);
        if (written.outcome == platform::Replacing::Done) {
            entry.stamp = written.stamp;
            break;
        }
        if (written.outcome == platform::Replacing::Failed || tries == mostStartOvers) return false;
        if (tries > 0) platform::Pause(shortWhile);
        if (!StartOver(entry)) return false;
    }
    entry.changed = false;
    entry.edits.clear();
    return true;
}

// Logging may lead back into the cache and use the entry for something else; then it is left as it has become.
void Verify(CacheEntry& entry) {
    const std::uint64_t use = entry.lastUse;
    const std::string onDisk = Files::GetFileContents(std::string(entry.fileName));
    if (entry.lastUse != use || onDisk == entry.text) return;
    if (platform::StampOf(entry.fileName) != entry.stamp) return;  // somebody has written it since
    Files::WriteFileConents(std::string(entry.fileName), std::string(entry.text));
    if (entry.lastUse == use) entry.stamp = platform::StampOf(entry.fileName);
}

}  // namespace

std::string Cache::Read(const std::string& fileName, std::string_view section, std::string_view key,
                        std::string_view otherwise, IniText::Comparison comparison) {
    const FileStamp stamp = platform::StampOf(fileName);
    CacheEntry* entry = FindEntry(fileName);
    if (entry != nullptr && entry->stamp != stamp && !stamp.unknown) Drop(*entry);
    if (entry == nullptr || entry->text.empty()) {
        if (stamp.size > limit_) {
            if (entry != nullptr) Free(*entry);
            return ReadFromBigIniFile(fileName, section, key, otherwise);
        }
        entry = Load(fileName, stamp, For::Reading);
        if (entry == nullptr) return std::string(otherwise);
    }
    Touch(*entry);
    return std::string(entry->index.Read(entry->text, section, key, comparison).value_or(otherwise));
}

bool Cache::Write(const std::string& fileName, std::string_view section, std::string_view key, std::string_view value,
                  bool flush) {
    CacheEntry* entry = FindEntry(fileName);
    if (entry == nullptr || !entry->changed) {
        const FileStamp stamp = StampForWriting(fileName);
        if (entry != nullptr && (entry->stamp != stamp || !entry->settled)) Drop(*entry);
        if (entry == nullptr || entry->text.empty()) entry = Load(fileName, stamp, For::Writing);
        if (entry == nullptr) return false;
    }
    if (IniText::Write(entry->text, section, key, value)) {
        entry->changed = true;
        entry->edits.push_back({std::string(section), std::string(key), std::string(value)});
        entry->index.Forget();
    }
    Touch(*entry);
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
    entry.changed = true;
    if (!PutOnDisk(entry)) return false;
    if (verify) Verify(entry);
    return true;
}

CacheEntry* Cache::FindEntry(const std::string& fileName) noexcept {
    for (std::size_t i = 0; i < places; ++i) {
        const std::size_t place = (latest_ + i) % places;
        const std::string& known = entries_[place].fileName;
        if (known == fileName || platform::SameIgnoringCase(known, fileName)) return &entries_[place];
    }
    return nullptr;
}

// The file's entry, or a free one, or that of the file used longest ago.
CacheEntry& Cache::Place(const std::string& fileName) {
    if (CacheEntry* entry = FindEntry(fileName)) return *entry;
    const auto earlier = [](const CacheEntry& a, const CacheEntry& b) { return a.lastUse < b.lastUse; };
    CacheEntry& entry = *std::min_element(entries_.begin(), entries_.end(), earlier);
    if (entry.changed) WriteIniFile(entry, false);
    Free(entry);
    entry.fileName = fileName;
    return entry;
}

// Empty where it cannot be read. Not half of a text, where there is another way.
std::string Cache::Contents(const std::string& fileName, For purpose, bool& settled, bool& readable) {
    const bool waiting = purpose == For::Writing || fileName != busyFile_;
    std::int32_t result = Files::noMark;
    std::string text =
        Files::GetFileContents(fileName, Files::nobodyWriting | (waiting ? 0 : Files::notWaiting), &result);
    settled = result != Files::unreadable;
    if (settled && fileName == busyFile_) busyFile_.clear();
    if (!settled && purpose == For::Reading) {
        busyFile_ = fileName;
        text = Files::GetFileContents(fileName, 0, &result);
    }
    readable = result != Files::unreadable;
    return text;
}

// The file's entry with its text loaded; none where the file cannot be read.
// Logging may lead back into the cache: nobody holds an entry meanwhile.
CacheEntry* Cache::Load(const std::string& fileName, const FileStamp& stamp, For purpose) {
    if (stamp.unknown) return nullptr;
    bool settled = true;
    bool readable = true;
    std::string text;
    if (stamp.exists) {
        text = Contents(fileName, purpose, settled, readable);
    } else {
        WriteDebug("File not found4:" + fileName, LogLine::FreeText);
    }
    if (!readable) return nullptr;
    CacheEntry& entry = Place(fileName);
    Drop(entry);
    entry.text = text.empty() ? std::string(IniText::missingFile) : std::move(text);
    entry.stamp = stamp;
    entry.settled = settled;
    return &entry;
}

void Cache::Touch(CacheEntry& entry) noexcept {
    entry.lastUse = ++uses_;
    latest_ = static_cast<std::size_t>(&entry - entries_.data());
}

std::string ReadFromBigIniFile(const std::string& fileName, std::string_view section, std::string_view key,
                               std::string_view otherwise) {
    return platform::ProfileText(fileName, std::string(section), std::string(key), std::string(otherwise));
}

}  // namespace IniFile
