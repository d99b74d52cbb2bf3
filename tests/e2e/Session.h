// tests/e2e/Session.h: one run of the Outlook stand-in with the real add-in, in a registry and folder of its own.
//
// The add-in is found in the registry and created through COM, as Outlook does it; nothing of it is linked.
// (regsvr32 registered the class before the tests started; its entry for Outlook is written here.)
#pragma once
#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "outlook/Outlook.h"
#include "testing/Keys.h"
#include "testing/PrivateRegistry.h"

namespace e2e {

inline constexpr const char* progId = "CVOutlookAddIn.Connect";
using keys::addInKey;
using keys::outlookKey;
using keys::productKey;
using keys::settingsKey;

// How a session ends in which nothing is held: from 2010 on add-ins are not told of it.
[[nodiscard]] inline standin::Ending OrderlyEnd(int version) {
    return version < 14 ? standin::Ending::AddInsTold : standin::Ending::AddInsNotTold;
}

// Text values under HKEY_CURRENT_USER, by Windows' own functions.
[[nodiscard]] std::optional<std::string> ReadValue(const std::string& key, const std::string& name);
void WriteValue(const std::string& key, const std::string& name, const std::string& text);

// Lets the thread's messages and timers run for that long.
void Pump(DWORD milliseconds);

// The library leaves the process, as it does with a process of the host's own: what it learnt from files and registry
// is forgotten. False where something still holds it.
[[nodiscard]] bool UnloadLibrary();

// The folder of the library, with a backslash at its end.
[[nodiscard]] std::string AddInFolder();

// The OnAction text of every control of the add-in.
[[nodiscard]] std::string OwnOnAction();

// Whether the host asks for the ribbon as it is documented, or never, as where the user gets command bars instead.
enum class RibbonIs { NeverAsked, Asked };

class Session {
  public:
    explicit Session(const standin::Options& options = {}, RibbonIs ribbon = RibbonIs::NeverAsked);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // The user ticks the add-in in a dialog, and so comes back to the window in front.
    bool LoadAddIn();
    // The user goes to another program and comes back.
    void GoAndComeBack();

    // The first window, which Start opened.
    [[nodiscard]] standin::Window FirstWindow();
    standin::Window OpenNew(standin::ItemClass itemClass, const standin::Fields& fields = {});
    // The controls of a window that carry the add-in's mark, in all bars and popups; with that tag, where one is given.
    [[nodiscard]] std::vector<standin::ControlView> OwnControls(standin::Window window, const std::string& tag = {});
    [[nodiscard]] std::vector<standin::ControlView> Popups(standin::Window window);
    // The entries of its one popup; none where it has no popup, or more than one.
    [[nodiscard]] std::vector<standin::ControlView> Entries(standin::Window window);
    // The save-and-send button of an item window, whatever its number.
    [[nodiscard]] standin::ControlView SendButton(standin::Window window);

  private:
    standin::Outlook& Begin(const standin::Options& options, RibbonIs ribbon);

    PrivateRegistry registry_;
    std::optional<standin::Outlook> outlook_;

  public:
    standin::Outlook& host;  // what Outlook itself can do; all else here is help for the tests
};

}  // namespace e2e
