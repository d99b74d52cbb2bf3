// The add-in as COM sees it, and the ports of the lower floors plugged to what fills them.
#include <memory>

#include "addin/Connect.h"
#include "addin/Names.h"
#include "platform/ComServer.h"

const platform::ServerDescription& platform::Server() {
    static const ServerDescription description{
        .clsid = "{6B0C1E52-3D8F-4C0A-9A5E-7F21C7B4D913}",
        .progId = Names::ProgId,
        .className = "CVOutlookAddIn.Connect",
        .friendlyName = "Corvella",
        .description = "Corvella Add-In for Outlook 2000, 2002 (XP), 2003",
        .loadBehavior = 3,
        .factory = []() -> std::unique_ptr<AddinInstance> { return std::make_unique<Connect>(); },
    };
    return description;
}
