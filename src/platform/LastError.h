// platform/LastError.h: the thread's last error, kept over a stretch of code that must not change it.
#pragma once
#include <cstdint>

namespace platform {

class LastErrorScope {
  public:
    LastErrorScope() noexcept;
    ~LastErrorScope();
    LastErrorScope(const LastErrorScope&) = delete;
    LastErrorScope& operator=(const LastErrorScope&) = delete;

  private:
    std::uint32_t earlier_;
};

}  // namespace platform
