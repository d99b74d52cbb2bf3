#include "bridge/ChangedItems.h"

#include "platform/Text.h"

namespace ChangedItems {

bool IsListed(std::string_view list, std::string_view entryId) {
    const auto separated = [](std::string_view text) { return ";" + std::string(text) + ";"; };
    return platform::Contains(separated(list), separated(entryId));
}

std::string Add(std::string_view list, std::string_view entryId) {
    std::string longer;
    longer.reserve(list.size() + 1 + entryId.size());
    return longer.append(list).append(";").append(entryId);
}

std::optional<std::int32_t> IntervalOf(std::string_view delay) {
    const std::int32_t milliseconds = platform::RoundHalfEven(platform::Val(delay) * 1000);
    if (milliseconds < 0 || milliseconds > longestInterval) return std::nullopt;
    return milliseconds;
}

}  // namespace ChangedItems
