#include "platform/Err.h"

#include <utility>

namespace platform {

PendingError detail::pendingError;

void PendingError::Set(std::int32_t number, std::string_view description) noexcept {
    number_ = number;
    try {
        description_ = description;
    } catch (...) {
        description_.clear();
    }
}

void PendingError::Clear() noexcept {
    number_ = 0;
    description_.clear();
}

ErrorScope::ErrorScope() noexcept : earlier_(std::exchange(Err(), {})) {}

ErrorScope::~ErrorScope() { Err() = std::move(earlier_); }

}  // namespace platform
