#include "bridge/ChangedItems.h"

#include <algorithm>
#include <unordered_set>

#include "platform/Text.h"

namespace ChangedItems {
namespace {

using Entries = std::unordered_set<std::string_view>;

void Insert(std::string_view list, Entries& entries) {
    for (std::size_t start = 0; start <= list.size();) {
        const std::size_t end = std::min(list.find(';', start), list.size());
        entries.insert(list.substr(start, end - start));
        start = end + 1;
    }
}

}  // namespace

bool IsListed(std::string_view list, std::string_view entryId) {
    const auto separated = [](std::string_view text) { return ";" + std::string(text) + ";"; };
    return platform::Contains(separated(list), separated(entryId));
}

std::string Add(std::string_view list, std::string_view entryId) {
    std::string longer;
    longer.reserve(list.size() + 1 + entryId.size());
    return longer.append(list).append(";").append(entryId);
}

std::string AddAll(std::string_view list, std::span<const std::string> entryIds) {
    std::size_t letters = list.size();
    for (const std::string& entryId : entryIds) letters += 1 + entryId.size();
    std::string longer;
    longer.reserve(letters);  // so that what is listed does not move
    longer.append(list);
    Entries listed;
    Insert(longer, listed);
    for (const std::string& entryId : entryIds) {
        const bool isEntry = entryId.find(';') == std::string::npos;  // else it may stand there as several
        if (entryId.empty() || (isEntry ? listed.contains(entryId) : IsListed(longer, entryId))) continue;
        longer.append(";").append(entryId);
        Insert(std::string_view(longer).substr(longer.size() - entryId.size()), listed);
    }
    return longer;
}

std::optional<std::int32_t> IntervalOf(std::string_view delay) {
    const std::int32_t milliseconds = platform::RoundHalfEven(platform::Val(delay) * 1000);
    if (milliseconds < 0 || milliseconds > longestInterval) return std::nullopt;
    return milliseconds;
}

}  // namespace ChangedItems
