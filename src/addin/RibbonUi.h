// addin/RibbonUi.h: what the host has taken of our ribbon, and the way to have parts of it asked for again.
//
// The host asks for each ribbon's XML once a session and, where it takes it, tells so by a callback of its own (host
// quirk 17). Until then, and where it never does, a window gets command bars instead.
//
// Owns    the host's ribbon objects, until Release().
#pragma once
#include <array>

#include "addin/RibbonXml.h"
#include "platform/com/Dispatch.h"

class RibbonUi {
  public:
    // Offers a ribbon to Outlook 2010 and later, of that major version.
    explicit RibbonUi(std::int32_t outlookVersion);

    // Whether this host may ask for a ribbon at all, and whether it has taken the one of such windows.
    [[nodiscard]] bool Offered() const { return offered_; }
    [[nodiscard]] bool Serves(RibbonXml::Kind kind) const { return static_cast<bool>(UiOf(kind)); }
    // The host has been given the XML, but has not taken it.
    [[nodiscard]] bool Refused(RibbonXml::Kind kind) const;

    // The host has asked for the XML; it has taken it and hands us its object for it.
    void Given(RibbonXml::Kind kind);
    void Loaded(RibbonXml::Kind kind, const platform::Dispatch& ui);
    // The host asks anew whether the selection can be sent to the phone, in every Explorer.
    void InvalidateSendToPhone() const;
    // No more is offered, and nothing held.
    void Release();

  private:
    [[nodiscard]] const platform::Dispatch& UiOf(RibbonXml::Kind kind) const;

    bool offered_;
    std::array<bool, RibbonXml::kindCount> given_{};
    std::array<platform::Dispatch, RibbonXml::kindCount> uis_;
};
