// addin/cOlRibbon.h: what the host asks of the add-in for its ribbon: the XML, and the callbacks that it names.
//
// A callback is given the control: its tag says which command it is, its Context in which window it was shown (an
// Explorer, an Inspector, or the Selection of an opened context menu).
//
// Errors  Where nothing is connected, the host has not taken that ribbon, there is no control, or its Context is
//         nothing that the command knows, a callback does nothing and returns false or no picture. Commands that need
//         no window run without a Context too (host quirk 19).
// Owns    nothing; the handler is the add-in's.
#pragma once
#include <memory>

#include "addin/cOutlookAddIn.h"
#include "platform/com/RibbonInstance.h"

class cOlRibbon final : public platform::RibbonInstance {
  public:
    // From now on, for as long as that handler lives.
    void Serve(std::weak_ptr<cOutlookAddIn> handler) { handler_ = std::move(handler); }

    std::string GetCustomUI(std::string_view ribbonId) override;
    [[nodiscard]] std::int32_t FindCallback(std::string_view name) const override;
    platform::Argument RunCallback(std::int32_t number, const platform::EventArguments& arguments) override;

  private:
    std::weak_ptr<cOutlookAddIn> handler_;
};
