// platform/Err.h: the pending error, which a failing call leaves behind and the debug log reports.
//
// Shapes  A number (0: none; else an HRESULT, a Windows status, or one of the ErrorNumber values) and a
//         description in ANSI text. One per process: everything runs on the host's user-interface thread.
// Rules   A failing platform call sets it; the last failure wins. A call that succeeds leaves it as it is.
//         A call on an empty object does nothing and sets nothing, so the failure that made the object
//         empty stays the one reported. RunGuarded (Guard.h) begins every call from outside with none pending.
//         Whoever asks "was it 0 or did it fail" clears it first.
// Errors  none: a description that cannot be stored is left out.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

// Numbers with a meaning of their own in this system.
enum ErrorNumber : std::int32_t {
    InvalidProcedureCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    PathNotFound = 76,
    ComponentNotRegistered = 339,
    ComponentNotLoaded = 372,
    ComponentTooOld = 374,
    ObjectRequired = 424,
};

class PendingError {
  public:
    // 0 and "" while none is pending.
    [[nodiscard]] std::int32_t Number() const noexcept { return number_; }
    [[nodiscard]] const std::string& Description() const noexcept { return description_; }
    explicit operator bool() const noexcept { return number_ != 0; }

    // In place of an earlier one.
    void Set(std::int32_t number, std::string_view description) noexcept;
    void Clear() noexcept;

  private:
    std::int32_t number_ = 0;
    std::string description_;
};

namespace detail {
extern PendingError pendingError;
}

// The one of this process.
[[nodiscard]] inline PendingError& Err() noexcept { return detail::pendingError; }

// Begins with no error pending and puts the earlier one back at its end, whatever failed meanwhile.
class ErrorScope {
  public:
    ErrorScope() noexcept;
    ~ErrorScope();
    ErrorScope(const ErrorScope&) = delete;
    ErrorScope& operator=(const ErrorScope&) = delete;

  private:
    PendingError earlier_;
};

}  // namespace platform
