// platform/com/Com.h: ownership of COM objects and BSTRs. Only for platform/: needs the OLE headers.
//
// Owns    ComPtr one reference, Bstr one string, Variant what its VARIANT holds; each gives it back quietly:
//         neither the thread's last error nor the pending error changes.
// Errors  text that cannot be converted, or for which there is no memory, is the empty text.
#pragma once
#include <windows.h>
// ole2 after windows.h
#include <ole2.h>
#include <olectl.h>

#include <string>
#include <string_view>
#include <utility>

#include "platform/Unicode.h"

namespace platform {

template <class Interface>
class ComPtr {
  public:
    ComPtr() noexcept = default;
    // Attach takes the caller's reference over; Copy adds one of its own.
    static ComPtr Attach(Interface* object) noexcept { return ComPtr(object); }
    static ComPtr Copy(Interface* object) noexcept {
        if (object) object->AddRef();
        return ComPtr(object);
    }
    // Copies add a reference, moves take it along.
    ComPtr(const ComPtr& other) noexcept : ComPtr(Copy(other.object_)) {}
    ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~ComPtr() { Reset(); }

    // Gives the reference back; empty from the first moment, so that a call back finds nothing.
    void Reset() noexcept {
        if (Interface* object = std::exchange(object_, nullptr)) object->Release();
    }
    // Get() and -> keep the reference here; Detach() hands it to the caller.
    [[nodiscard]] Interface* Get() const noexcept { return object_; }
    Interface* operator->() const noexcept { return object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }
    [[nodiscard]] Interface* Detach() noexcept { return std::exchange(object_, nullptr); }

    // For an out argument; what was held is released first.
    [[nodiscard]] Interface** Put() noexcept {
        Reset();
        return &object_;
    }
    [[nodiscard]] void** PutVoid() noexcept { return reinterpret_cast<void**>(Put()); }

    // The same object by another interface, or empty where it has none.
    template <class Other>
    [[nodiscard]] ComPtr<Other> As(REFIID id) const noexcept {
        ComPtr<Other> other;
        if (object_ && FAILED(object_->QueryInterface(id, other.PutVoid()))) (void)other.Detach();
        return other;
    }

  private:
    explicit ComPtr(Interface* object) noexcept : object_(object) {}
    Interface* object_ = nullptr;
};

class Bstr {
  public:
    Bstr() noexcept = default;
    // A copy of the text, in Unicode.
    explicit Bstr(std::string_view text);
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;
    ~Bstr() { SysFreeString(text_); }

    // Get() keeps the string here, Detach() hands it to the caller, Put() frees it and takes another one in.
    [[nodiscard]] BSTR Get() const noexcept { return text_; }
    [[nodiscard]] BSTR Detach() noexcept { return std::exchange(text_, nullptr); }
    [[nodiscard]] BSTR* Put() noexcept;
    [[nodiscard]] std::string Text() const;

  private:
    BSTR text_ = nullptr;
};

// A null string is the empty text; a null letter within it stays.
[[nodiscard]] std::string TextOf(BSTR text);

class Variant : public VARIANT {
  public:
    Variant() noexcept { VariantInit(this); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(this); }
};

}  // namespace platform
