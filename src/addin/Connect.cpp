#include "addin/Connect.h"

#include "addin/DebugSetup.h"
#include "addin/Members.h"
#include "addin/Names.h"
#include "bridge/CVOutlAddIn.h"
#include "bridge/OlVersion.h"
#include "support/Debug.h"
#include "support/RegEdit.h"
#include "support/RegistryKeys.h"

using Debug::WriteDebug;
using platform::Dispatch;

namespace {

constexpr std::int32_t textValue = 1;
constexpr std::int32_t closedByUser = 1;

bool HasWindows(const Dispatch& application) {
    const std::int32_t explorers = application.Object(Members::Outlook::Explorers).Long(Members::Collection::Count);
    const std::int32_t inspectors = application.Object(Members::Outlook::Inspectors).Long(Members::Collection::Count);
    return explorers != 0 || inspectors != 0;
}

// The name under which the host knows the add-in; its own where the host does not tell.
std::string ProgIdOf(const Dispatch& addInInst) {
    const std::string progId = addInInst.Text(Members::AddIn::ProgId);
    return progId.empty() ? Names::ProgId : progId;
}

}  // namespace

void Connect::AddinInstance_OnConnection(const Dispatch& application, std::int32_t, const Dispatch& addInInst) {
    const Debug::Trace trace("AddinInstance_OnConnection");
    const std::uint32_t turn = ++turn_;
    if (DebugSetup::IsInIde()) RegEdit::DeleteRegValue(platform::Root::CurrentUser, RegistryKeys::AddIn, Names::Active);
    DebugSetup::InitDebug(false, false);
    if (turn != turn_) return;  // disconnected while a question of the log's was open
    RegEdit::SaveRegValue(platform::Root::CurrentUser, RegistryKeys::AddIn, Names::Active, "1", textValue);
    CVOutlAddIn::ListNotedItems('C');  // of a sending that ended with the host
    const bool windows = HasWindows(application);
    // From 2010 on Outlook tells of its end by Quit only, also where it has no window (host quirk 2).
    if (!windows && cOutlookAddIn::VersionOf(application) < Outlook2010) return;
    const std::string progId = ProgIdOf(addInInst);
    if (turn != turn_) return;  // each call of the host may bring the disconnection, which lets go of the handler
    const std::shared_ptr<cOutlookAddIn> handler = Handler();
    if (windows) {
        handler->InitHandler(application, progId);
    } else {
        handler->InitWithoutWindows(application);
    }
    if (turn != turn_) handler->ReleaseEverything();
}

void Connect::AddinInstance_OnDisconnection(std::int32_t removeMode) {
    {
        const Debug::Trace trace("AddinInstance_OnDisconnection");
        ++turn_;
        const std::shared_ptr<cOutlookAddIn> handler = Handler();
        handler->CloseExplorerWrappers();
        if (removeMode != closedByUser) handler->UnInitHandler({});
        handler_.reset();
    }
    RegEdit::DeleteRegValue(platform::Root::CurrentUser, RegistryKeys::AddIn, Names::Active);
}

void Connect::AddinInstance_OnBeginShutdown() { const Debug::Trace trace("AddinInstance_OnBeginShutdown"); }

const std::shared_ptr<cOutlookAddIn>& Connect::Handler() {
    if (handler_) return handler_;
    handler_ = std::make_shared<cOutlookAddIn>();
    ribbon_.Serve(handler_);
    return handler_;
}
