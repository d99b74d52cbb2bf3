// platform/Drawn.h: an object of Windows' drawing that ends with its owner. Only for platform/: needs windows.h.
#pragma once
#include <windows.h>

#include <utility>

namespace platform {

// A font, brush or other object that DeleteObject ends.
template <class Handle>
class Drawn {
  public:
    Drawn() = default;
    // Takes the object over. Moving leaves the other one with what this one had.
    explicit Drawn(Handle handle) : handle_(handle) {}
    Drawn(Drawn&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Drawn& operator=(Drawn&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~Drawn() {
        if (handle_) DeleteObject(handle_);
    }
    [[nodiscard]] Handle Get() const { return handle_; }
    // Somebody else ends it.
    void LetGo() { handle_ = nullptr; }

  private:
    Handle handle_ = nullptr;
};

}  // namespace platform
