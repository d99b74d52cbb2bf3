// outlook/Pointers.h: the two kinds of reference that the stand-in holds.
//
// Ref<T>    to one of its own objects; not counted in the ledger.
// Theirs<T> to a COM object of the outside (a sink, an add-in, a picture).
#pragma once
#include <utility>

namespace standin {

template <class T>
class Ref {
  public:
    Ref() = default;
    Ref(T* object) : object_(object) {
        if (object_) object_->Hold();
    }  // NOLINT: meant to convert
    Ref(const Ref& other) : Ref(other.object_) {}
    template <class Derived>
    Ref(const Ref<Derived>& other) : Ref(other.get()) {}
    Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    Ref& operator=(Ref other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Ref() {
        if (object_) object_->Drop();
    }
    [[nodiscard]] T* get() const { return object_; }
    T* operator->() const { return object_; }
    T& operator*() const { return *object_; }
    explicit operator bool() const { return object_ != nullptr; }

  private:
    T* object_ = nullptr;
};

template <class T, class... Arguments>
Ref<T> Make(Arguments&&... arguments) {
    return Ref<T>(new T(std::forward<Arguments>(arguments)...));
}

template <class T>
class Theirs {
  public:
    Theirs() = default;
    explicit Theirs(T* object) : object_(object) {
        if (object_) object_->AddRef();
    }
    Theirs(const Theirs& other) : Theirs(other.object_) {}
    Theirs(Theirs&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    Theirs& operator=(Theirs other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Theirs() {
        if (object_) object_->Release();
    }
    [[nodiscard]] T* get() const { return object_; }
    T* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }
    [[nodiscard]] void** put() {
        *this = Theirs();
        return reinterpret_cast<void**>(&object_);
    }

  private:
    T* object_ = nullptr;
};

class Object;
using Result = Ref<Object>;  // what a member returns as VT_DISPATCH, NULL when empty

}  // namespace standin
