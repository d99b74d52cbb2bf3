// addin/DebugSetup.h: setting the debug log up when the add-in starts, or when it is switched on from outside.
//
// Shapes  The mode is the number of "DebugMode" in the registry, else of section "Debug" in the base settings file.
// Errors  Nothing reaches the caller; the pending error stays as it was. A value that is missing or no number is 0.
// Effects May ask the user, and pump messages meanwhile; may delete the log file and begin it anew. Nothing is logged
//         before the log file has its first line.
#pragma once
#include <cstdint>
#include <string>

#include "support/Debug.h"

namespace DebugSetup {

// `force`: without a question, and anew where the log is set up already. `keyOnly`: only the log's registry key is set.
void InitDebug(bool force, bool keyOnly) noexcept;

// Warns of an anti-virus product that slows the log down.
void CheckKaspersky();

// True only when the program runs inside its development environment: never in the product.
[[nodiscard]] bool IsInIde() noexcept;

// What the debug log needs of this floor: the registry and InitDebug.
[[nodiscard]] Debug::Ports PortsOfDebug() noexcept;

// Where the set-up looks around. What is not plugged in (null): the settings are where
// they are, the rest is the running host.
struct Ports {
    void (*findSettings)() = nullptr;  // called when no settings file is known yet
    bool (*anotherInstanceRuns)() = nullptr;
    std::string (*hostCommandLine)() = nullptr;
};

// Returns what was plugged in before.
Ports Plug(const Ports& ports) noexcept;

}  // namespace DebugSetup
