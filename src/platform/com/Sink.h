// platform/com/Sink.h: events of the host, brought to members of a class.
//
//     const EventHandler<cOlExplorer> explorerEvents[] = {{0xF002, &cOlExplorer::objExplorer_FolderSwitch}};
//     connection = ConnectEvents(explorer, ExplorerEvents, shared_from_this(), explorerEvents);
//
// Shapes  A source interface is named by its id, an event by its dispatch id; arguments are counted from 0 in
//         their declared order.
// Errors  A source that cannot be connected leaves the connection empty and the pending error set. What an
//         event's procedure does wrong goes no further: the host always gets S_OK.
// Owns    The connection ends when it is destroyed, or by End(), twice is harmless. It cuts the way back first,
//         so a late event falls on nothing. The listener is held weakly between events and kept alive during
//         one, so a procedure may end its own connection and let go of its own object.
#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

#include "platform/com/Dispatch.h"

struct tagDISPPARAMS;

namespace platform {

// Laid out as Windows' GUID.
struct InterfaceId {
    std::uint32_t data1;
    std::uint16_t data2;
    std::uint16_t data3;
    std::uint8_t data4[8];
};

// The ids of Outlook's and Office's interfaces differ in their first number only.
[[nodiscard]] constexpr InterfaceId OfficeInterface(std::uint32_t number) {
    return {number, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
}

// What an event brought. Reading another type or number of arguments than there are gives the neutral value:
// another version of the host may send other things.
class EventArguments {
  public:
    explicit EventArguments(const tagDISPPARAMS& parameters) noexcept : parameters_(parameters) {}
    // How many there are, and one of them: an object, or the empty one.
    [[nodiscard]] std::size_t Count() const noexcept;
    [[nodiscard]] Dispatch Object(std::size_t number) const noexcept;

  private:
    const tagDISPPARAMS& parameters_;
};

template <class Listener>
struct EventHandler {
    std::int32_t event;
    void (Listener::*procedure)(const EventArguments&);
};

class EventSink;

class Connection {
  public:
    using Receiver = std::function<void(std::int32_t event, const EventArguments& arguments)>;

    Connection() noexcept = default;
    // From now on each event of that interface calls the receiver.
    Connection(const Dispatch& source, const InterfaceId& events, Receiver receiver);
    Connection(Connection&& other) noexcept;
    Connection& operator=(Connection&& other) noexcept;
    ~Connection();

    // False where the source refused, and after End().
    explicit operator bool() const noexcept { return sink_ != nullptr; }
    void End() noexcept;

  private:
    void* point_ = nullptr;  // IConnectionPoint
    EventSink* sink_ = nullptr;
    std::uint32_t cookie_ = 0;
};

// Calls the member that the table names for an event; other events are nobody's. The table must outlive the connection.
template <class Listener, std::size_t count>
[[nodiscard]] Connection ConnectEvents(const Dispatch& source, const InterfaceId& events,
                                       const std::shared_ptr<Listener>& listener,
                                       const EventHandler<Listener> (&handlers)[count]) {
    return Connection(
        source, events,
        [weak = std::weak_ptr<Listener>(listener), &handlers](std::int32_t event, const EventArguments& arguments) {
            const std::shared_ptr<Listener> kept = weak.lock();
            if (!kept) return;
            for (const EventHandler<Listener>& handler : handlers) {
                if (handler.event == event) return ((*kept).*handler.procedure)(arguments);
            }
        });
}

}  // namespace platform
