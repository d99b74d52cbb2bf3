// addin/Connect.h: the add-in as Outlook creates and drives it.
//
// Errors  every step runs on, whatever the one before did; nothing is shown and nothing passes to the host.
// Owns    the one handler, from the first connection with a window until the disconnection.
// Effects the registry switch "Active" tells Corvella that the add-in runs inside Outlook.
#pragma once
#include <cstdint>
#include <memory>

#include "addin/cOlRibbon.h"
#include "addin/cOutlookAddIn.h"
#include "platform/com/ComServer.h"

class Connect final : public platform::AddinInstance {
  public:
    void AddinInstance_OnConnection(const platform::Dispatch& application, std::int32_t connectMode,
                                    const platform::Dispatch& addInInst) override;
    void AddinInstance_OnDisconnection(std::int32_t removeMode) override;
    void AddinInstance_OnBeginShutdown() override;
    void AddinInstance_OnAddInsUpdate() override {}
    void AddinInstance_Terminate() override {}
    platform::RibbonInstance* Ribbon() noexcept override { return &ribbon_; }

  private:
    [[nodiscard]] const std::shared_ptr<cOutlookAddIn>& Handler();

    std::shared_ptr<cOutlookAddIn> handler_;
    cOlRibbon ribbon_;
    std::uint32_t turn_ = 0;  // counts connections and disconnections: which of them came last
};
