// platform/com/Dispatch.h: a late-bound object of the host, which may be empty and never throws for it.
//
// Shapes  Members are called by name, or by the id that a Member knows; text is ANSI; arguments stand in their
//         declared order, Missing for one left out. Numbers are 32-bit. What the host returns is converted where
//         Windows can convert it.
// Errors  A call on an empty object does nothing and sets nothing. A failing call sets the pending error
//         (its number: the HRESULT, or what the host's own error information says; its description begins
//         with the member's name) and yields the neutral value: an empty object, "", 0, false. Nothing where
//         something was asked for is no failure: no object, "", 0, false - only Object() on an answer that
//         holds something else than an object sets ObjectRequired.
// Owns    one reference; copies share the object.
// Effects Every call may pump messages and re-enter this system: hold nothing half-made across one.
#pragma once
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

struct IDispatch;

namespace platform {

// A member of the host's objects: its name, and the id by which every version of the host has it, where that is known.
// By a known id it costs the host one call instead of two; an object that has it by another id is asked for that.
class Member {
  public:
    static constexpr std::int32_t unknownId = -1;
    // The name is kept as it is: a text that lives as long as the program.
    constexpr Member(const char* name, std::int32_t id = unknownId) noexcept : name_(name), id_(id) {}

    // As they were given; unknownId where only the name is known.
    [[nodiscard]] constexpr const char* Name() const noexcept { return name_; }
    [[nodiscard]] constexpr std::int32_t Id() const noexcept { return id_; }

  private:
    const char* name_;
    std::int32_t id_;
};

class Argument;
struct MissingArgument {};
inline constexpr MissingArgument Missing{};

class Dispatch {
  public:
    Dispatch() noexcept = default;
    static Dispatch Attach(IDispatch* object) noexcept;  // takes the caller's reference
    static Dispatch Copy(IDispatch* object) noexcept;    // adds one
    // Copies add a reference, the end gives one back; none of them touches an error that is pending.
    Dispatch(const Dispatch& other) noexcept;
    Dispatch(Dispatch&& other) noexcept;
    Dispatch& operator=(Dispatch other) noexcept;
    ~Dispatch();

    // Get() stays this object's own reference; Reset() gives it back and leaves the object empty.
    explicit operator bool() const noexcept { return object_ != nullptr; }
    [[nodiscard]] IDispatch* Get() const noexcept { return object_; }
    void Reset() noexcept;

    // A property or the result of a method.
    template <class... Arguments>
    [[nodiscard]] Dispatch Object(const Member& member, Arguments&&... arguments) const;
    template <class... Arguments>
    [[nodiscard]] std::string Text(const Member& member, Arguments&&... arguments) const;
    template <class... Arguments>
    [[nodiscard]] std::int32_t Long(const Member& member, Arguments&&... arguments) const;
    template <class... Arguments>
    [[nodiscard]] bool Flag(const Member& member, Arguments&&... arguments) const;

    // True when the host did it.
    template <class... Arguments>
    bool Call(const Member& member, Arguments&&... arguments) const;
    bool Put(const Member& member, const Argument& value) const;

  private:
    using ArgumentList = std::initializer_list<Argument>;
    explicit Dispatch(IDispatch* object) noexcept : object_(object) {}
    [[nodiscard]] Dispatch GetObjectMember(const Member& member, ArgumentList arguments) const;
    [[nodiscard]] std::string GetTextMember(const Member& member, ArgumentList arguments) const;
    [[nodiscard]] std::int32_t GetLongMember(const Member& member, ArgumentList arguments) const;
    [[nodiscard]] bool GetFlagMember(const Member& member, ArgumentList arguments) const;
    bool CallMember(const Member& member, ArgumentList arguments) const;

    IDispatch* object_ = nullptr;
};

// Whether two objects are known to be the same one or different ones.
enum class Identity { Same, Different, Unknown };
[[nodiscard]] Identity Compare(const Dispatch& left, const Dispatch& right) noexcept;

// A new object of a registered class; empty, with the pending error set, where there is none.
[[nodiscard]] Dispatch CreateObject(std::string_view programId);

// One argument: nothing given, a number, a flag, a text, or an object.
class Argument {
  public:
    enum class Kind { None, Number, Flag, Text, Object };

    // Implicit, so that a call reads like one of the host's own language.
    Argument(MissingArgument) noexcept : kind_(Kind::None) {}
    Argument(std::int32_t number) noexcept : kind_(Kind::Number), number_(number) {}
    Argument(bool flag) noexcept : kind_(Kind::Flag), number_(flag ? 1 : 0) {}
    Argument(const char* text) : kind_(Kind::Text), text_(text) {}
    Argument(std::string_view text) : kind_(Kind::Text), text_(text) {}
    Argument(const std::string& text) : kind_(Kind::Text), text_(text) {}
    Argument(Dispatch object) noexcept : kind_(Kind::Object), object_(std::move(object)) {}

    // What it holds; the others then return 0, false, "" and the empty object.
    [[nodiscard]] Kind Holds() const noexcept { return kind_; }
    [[nodiscard]] std::int32_t Number() const noexcept { return number_; }
    [[nodiscard]] bool Flag() const noexcept { return number_ != 0; }
    [[nodiscard]] const std::string& Text() const noexcept { return text_; }
    [[nodiscard]] const Dispatch& Object() const noexcept { return object_; }

  private:
    Kind kind_;
    std::int32_t number_ = 0;
    std::string text_;
    Dispatch object_;
};

template <class... Arguments>
Dispatch Dispatch::Object(const Member& member, Arguments&&... arguments) const {
    return object_ ? GetObjectMember(member, {Argument(std::forward<Arguments>(arguments))...}) : Dispatch();
}
template <class... Arguments>
std::string Dispatch::Text(const Member& member, Arguments&&... arguments) const {
    return object_ ? GetTextMember(member, {Argument(std::forward<Arguments>(arguments))...}) : std::string();
}
template <class... Arguments>
std::int32_t Dispatch::Long(const Member& member, Arguments&&... arguments) const {
    return object_ ? GetLongMember(member, {Argument(std::forward<Arguments>(arguments))...}) : 0;
}
template <class... Arguments>
bool Dispatch::Flag(const Member& member, Arguments&&... arguments) const {
    return object_ && GetFlagMember(member, {Argument(std::forward<Arguments>(arguments))...});
}
template <class... Arguments>
bool Dispatch::Call(const Member& member, Arguments&&... arguments) const {
    return object_ && CallMember(member, {Argument(std::forward<Arguments>(arguments))...});
}

}  // namespace platform
