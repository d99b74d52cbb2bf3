// bench/replay/Tape.h: what an add-in did in a session, as steps that a bare loop can make again.
//
// Shapes  A step belongs to the call by which the host entered the add-in: an Enter, what was done, a Leave; entries
//         nest as calls do. Objects, keys and other handles are numbered in the order in which they came (slots); each
//         reference that the add-in got has a slot of its own and one LetGo.
// Errors  A step returns false where it did not end as it did when it was recorded.
#pragma once
#include <windows.h>

#include <oaidl.h>

#include <array>
#include <functional>
#include <vector>

namespace Bench {

inline constexpr int noSlot = -1;

// What a replay has in its hands.
struct Slots {
    std::vector<IUnknown*> objects;
    std::vector<HKEY> keys;
    std::vector<HANDLE> handles;  // bitmaps, windows and files
    std::vector<DWORD> cookies;
    std::vector<IDispatch*> sinks;  // made beforehand

    [[nodiscard]] IDispatch* Object(int slot) const {
        return static_cast<IDispatch*>(objects[static_cast<std::size_t>(slot)]);
    }
};

// Puts `value` into that slot.
template <class Value>
void Keep(std::vector<Value>& slots, int slot, Value value) {
    const auto place = static_cast<std::size_t>(slot);
    if (slots.size() <= place) slots.resize(place + 1);
    slots[place] = value;
}

// One of the add-in's methods, or an event at one of its sinks.
struct Door {
    enum class Kind { Connection, Disconnection, AddInsUpdate, StartupComplete, BeginShutdown, CustomUI, End, Event };
    Kind kind = Kind::Event;
    int sink = 0;  // counted in the order of the advises
    DISPID event = 0;
    bool operator==(const Door&) const = default;
};

struct Step {
    enum class Kind { Enter, Leave, LetGo, HostCall, RegistryCall, PictureCall, FileCall, ProgramStart, count };
    Kind kind = Kind::Leave;
    std::function<bool(Slots&)> play = {};  // none of Enter and Leave
    Door door = {};                         // of Enter
    std::vector<int> objects = {};          // of Enter: slots of the objects that the host handed over, in their order
    std::wstring text = {};                 // of Leave: what GetCustomUI returned
    std::vector<int> letGo = {};            // slots of pictures that this step used for the last time
};

struct Tape {
    std::vector<Step> steps;
    int sinks = 0;

    [[nodiscard]] int Count(Step::Kind kind) const {
        int count = 0;
        for (const Step& step : steps) count += step.kind == kind ? 1 : 0;
        return count;
    }
};

}  // namespace Bench
