// An add-in class that does nothing, behind the plumbing of the product.
#include <memory>

#include "platform/ComServer.h"

namespace {

class ProbeAddin final : public platform::AddinInstance {
  public:
    void AddinInstance_OnConnection(const platform::Dispatch&, std::int32_t, const platform::Dispatch&) override {}
    void AddinInstance_OnDisconnection(std::int32_t) override {}
    void AddinInstance_OnAddInsUpdate() override {}
    void AddinInstance_OnBeginShutdown() override {}
    void AddinInstance_Terminate() override {}
};

constexpr platform::ServerDescription description{
    "{5D6B9C0E-7F21-4E0B-9A5C-2C1A6E3B84F7}",
    "CVProbeAddIn.Connect",
    "CVProbeAddIn.Connect",
    "Corvella probe",
    "An add-in that only tests load",
    3,
    []() -> std::unique_ptr<platform::AddinInstance> { return std::make_unique<ProbeAddin>(); },
};

}  // namespace

const platform::ServerDescription& platform::Server() { return description; }
