#include "bridge/ChangedItems.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <vector>

#include "platform/Text.h"

namespace ChangedItems {
namespace {

template <class See>
void ForEachEntry(std::string_view list, See&& see) {
    for (std::size_t start = 0; start <= list.size();) {
        const std::size_t end = std::min(list.find(';', start), list.size());
        see(list.substr(start, end - start));
        start = end + 1;
    }
}

std::size_t EntriesIn(std::string_view list) {
    return 1 + static_cast<std::size_t>(std::count(list.begin(), list.end(), ';'));
}

// What is listed, in one block of memory: a node for each entry would take as long as all the rest.
class Entries {
  public:
    // `most`: how many will come, at most.
    explicit Entries(std::size_t most) : slots_(std::bit_ceil(2 * most + 1)) {}

    void AddAllOf(std::string_view list) {
        ForEachEntry(list, [this](std::string_view entry) { *Slot(entry) = entry; });
    }
    [[nodiscard]] bool Contains(std::string_view entry) { return Slot(entry)->data() != nullptr; }

  private:
    // Where it is, or the free place where it belongs.
    std::string_view* Slot(std::string_view entry) {
        const std::size_t mask = slots_.size() - 1;
        std::size_t at = std::hash<std::string_view>()(entry) & mask;
        while (slots_[at].data() != nullptr && slots_[at] != entry) at = (at + 1) & mask;
        return &slots_[at];
    }

    std::vector<std::string_view> slots_;  // a power of two; those without data are free
};

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
    std::size_t letters = list.size(), entries = EntriesIn(list);
    for (const std::string& entryId : entryIds) {
        letters += 1 + entryId.size();
        entries += EntriesIn(entryId);
    }
    std::string longer;
    longer.reserve(letters);  // so that what is listed does not move
    longer.append(list);
    Entries listed(entries);
    listed.AddAllOf(longer);
    for (const std::string& entryId : entryIds) {
        const bool isEntry = EntriesIn(entryId) == 1;  // else it may stand there as several
        if (entryId.empty() || (isEntry ? listed.Contains(entryId) : IsListed(longer, entryId))) continue;
        longer.append(";").append(entryId);
        listed.AddAllOf(std::string_view(longer).substr(longer.size() - entryId.size()));
    }
    return longer;
}

void Split(std::string_view list, std::vector<std::string>& entryIds) {
    ForEachEntry(list, [&](std::string_view entry) {
        if (!entry.empty()) entryIds.emplace_back(entry);
    });
}

std::optional<std::int32_t> IntervalOf(std::string_view delay) {
    const std::int32_t milliseconds = platform::RoundHalfEven(platform::Val(delay) * 1000);
    if (milliseconds < 0 || milliseconds > longestInterval) return std::nullopt;
    return milliseconds;
}

}  // namespace ChangedItems
