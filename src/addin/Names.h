// addin/Names.h: the fixed texts and numbers by which Outlook, Corvella and this add-in know each other.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/com/Sink.h"
#include "support/AddInNames.h"

namespace Names {

inline constexpr const char* ProgId = AddInNames::ProgId;
inline constexpr const char* MakersNotice = "(c) 2026 the Corvella developers";
inline constexpr std::int32_t MaskOffset = 100;  // from the number of a picture to that of its mask
inline constexpr const char* Active = "Active";
inline constexpr const char* LanguageSection = "OutlookAddIn";

// What every wrapper gets as parameter, and what every menu entry carries: its end tells that the entries exist.
inline constexpr const char* WrapperParameter = "CorvellaAddIn.Main";
inline constexpr const char* Identification = "CVOutlookAddIn.Main";

// The mark on every control of the add-in.
[[nodiscard]] inline std::string OnAction(std::string_view progId) { return "<!" + std::string(progId) + ">"; }

}  // namespace Names

// Source interfaces of Outlook and Office, and their events. Outlook's are those of 2000, which all versions keep, but
// for the application's: that one came with 2002, so that its absence tells Outlook 2000 (host quirk 7).
namespace Events {

inline constexpr platform::InterfaceId Application = platform::OfficeInterface(0x0006300E);  // ApplicationEvents_10
inline constexpr std::int32_t Quit = 0xF007;

inline constexpr platform::InterfaceId Explorers = platform::OfficeInterface(0x00063078);
inline constexpr std::int32_t NewExplorer = 0xF001;

inline constexpr platform::InterfaceId Inspectors = platform::OfficeInterface(0x00063079);
inline constexpr std::int32_t NewInspector = 0xF001;

inline constexpr platform::InterfaceId Explorer = platform::OfficeInterface(0x0006304F);
inline constexpr platform::InterfaceId Inspector = platform::OfficeInterface(0x0006307D);
inline constexpr std::int32_t Activate = 0xF001;
inline constexpr std::int32_t FolderSwitch = 0xF002;
inline constexpr std::int32_t SelectionChange = 0xF007;
inline constexpr std::int32_t Close = 0xF008;

inline constexpr platform::InterfaceId Button = platform::OfficeInterface(0x000C0351);
inline constexpr std::int32_t Click = 1;

}  // namespace Events
