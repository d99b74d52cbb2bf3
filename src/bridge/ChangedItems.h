// bridge/ChangedItems.h: the lists of changed items that the main application reads and clears. Pure text.
//
// Shapes  A list is entry ids separated by ";". What is added comes behind a separator of its own, so a list that
//         begins here begins with ";". One that the main application has left without keeps having none. None at the
//         end.
// Errors  none: every text is a list, the empty text an empty one.
#pragma once
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ChangedItems {

// Compared whole and with respect to case.
[[nodiscard]] bool IsListed(std::string_view list, std::string_view entryId);

[[nodiscard]] std::string Add(std::string_view list, std::string_view entryId);

// Adds each that is not empty and not listed yet, in their order: what IsListed and Add make of one after the other, in
// a time that grows with the letters only.
[[nodiscard]] std::string AddAll(std::string_view list, std::span<const std::string> entryIds);

// Adds the ids of a list to `entryIds`, in their order.
void Split(std::string_view list, std::vector<std::string>& entryIds);

// The longest interval of the change-watch timer, in milliseconds.
inline constexpr std::int32_t longestInterval = 65535;

// The milliseconds of a "Delay" in seconds, halves rounded to the even neighbour;
// none where the timer does not take them.
[[nodiscard]] std::optional<std::int32_t> IntervalOf(std::string_view delay);

}  // namespace ChangedItems
