#include "check/Snapshot.h"

#include <algorithm>

#include "platform/Text.h"
#include "support/AddInNames.h"

using platform::WithBackslash;

namespace Check {
namespace {

constexpr std::uint32_t number32 = platform::RegistryNumber;

bool IsText(const Value& value) {
    return value.type == platform::RegistryText || value.type == platform::RegistryExpandText;
}

}  // namespace

Program Snapshot::FileAt(std::string_view path) const {
    for (const auto& [name, program] : files) {
        if (platform::SameIgnoringCase(name, path)) return program;
    }
    return {};
}

Program& Snapshot::FileToFill(std::string_view path) {
    for (auto& [name, program] : files) {
        if (platform::SameIgnoringCase(name, path)) return program;
    }
    return files.emplace_back(path, Program()).second;
}

std::optional<std::string> TextOf(const Value& value) {
    if (value.found != Found::There || value.tooLong || !IsText(value)) return std::nullopt;
    return value.bytes.substr(0, value.bytes.find('\0'));
}

std::optional<std::uint32_t> NumberOf(const Value& value) {
    if (value.found != Found::There || value.type != number32 || value.bytes.size() != 4) return std::nullopt;
    std::uint32_t number = 0;
    for (std::size_t i = 4; i-- > 0;) number = number << 8 | static_cast<unsigned char>(value.bytes[i]);
    return number;
}

std::string AddInText(const Value& value) {
    if (value.found != Found::There) return {};
    if (const auto number = NumberOf(value)) return platform::Decimal(static_cast<std::int32_t>(*number));
    if (!IsText(value) && value.type != platform::RegistryBinary) return {};
    std::string text = value.bytes;
    if (text.ends_with('\0')) text.pop_back();
    return text;
}

bool IsUnreadable(const Value& value) {
    if (value.found == Found::Unreadable || value.tooLong) return true;
    return value.found == Found::There && !IsText(value) && value.type != platform::RegistryBinary && !NumberOf(value);
}

const Outlook* MainOutlook(const Snapshot& snapshot) {
    const Outlook* best = nullptr;
    const auto rank = [&](const Outlook& outlook) {
        const bool there = snapshot.FileAt(outlook.program).found == Found::There;
        return (there ? 100 : 0) + outlook.version;
    };
    for (const Outlook& outlook : snapshot.outlooks) {
        if (!best || rank(outlook) > rank(*best)) best = &outlook;
    }
    return best;
}

int BitsOf(const Snapshot& snapshot, const Outlook& outlook) {
    constexpr int firstOf64Bits = 14;
    const int ofFile = snapshot.FileAt(outlook.program).bits;
    if (ofFile != 0) return ofFile;
    if (outlook.version < firstOf64Bits) return 32;
    return outlook.statedBits != 0 ? outlook.statedBits : outlook.view;
}

const ClassEntry* ClassFor(const Snapshot& snapshot, int bits) {
    const ClassEntry* machine = nullptr;
    for (const ClassEntry& entry : snapshot.classes) {
        if (entry.view != bits || entry.library.found == Found::Missing) continue;
        if (entry.scope == Scope::User) return &entry;
        machine = &entry;
    }
    return machine;
}

std::string LibraryBeside(const std::string& folder, int bits) {
    return folder + (bits == 64 ? "x64\\" : "") + AddInNames::Library;
}

std::string FolderOf(const std::string& path) { return path.substr(0, path.rfind('\\') + 1); }

// The add-in's own folder stands for a path that nobody has written.
std::string FolderOfCommands(const Snapshot& snapshot, int bits) {
    const std::string path = AddInText(snapshot.userPath);
    if (!path.empty()) return WithBackslash(path);
    const ClassEntry* const entry = ClassFor(snapshot, bits);
    return entry ? FolderOf(entry->path) : std::string();
}

std::string FolderOfSending(const Snapshot& snapshot, int bits) {
    const std::string path = AddInText(snapshot.machinePath[bits == 64 ? 1 : 0]);
    return WithBackslash(path.empty() ? AddInText(snapshot.userPath) : path);
}

std::vector<std::string> FoldersOfCorvella(const Snapshot& snapshot, int bits) {
    return {WithBackslash(AddInText(snapshot.userPath)), WithBackslash(AddInText(snapshot.machinePath[0])),
            WithBackslash(AddInText(snapshot.machinePath[1])), FolderOfCommands(snapshot, bits), snapshot.ownFolder};
}

std::int32_t EntriesIn(const Value& list) {
    const std::string text = AddInText(list);
    std::int32_t entries = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(';', at), text.size());
        if (end > at) ++entries;
        at = end + 1;
    }
    return entries;
}

}  // namespace Check
