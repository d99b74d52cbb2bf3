// The add-in as COM sees it, and the ports of the lower floors plugged to what fills them.
#include <memory>

#include "addin/Connect.h"
#include "addin/DebugSetup.h"
#include "config/InifileCV.h"
#include "config/Paths.h"
#include "language/Language.h"
#include "platform/Locale.h"
#include "platform/Text.h"
#include "platform/com/ComServer.h"
#include "question/QuestionBox.h"
#include "shell/WindowsMiscHelp.h"
#include "shell/WindowsMiscLaunch.h"
#include "support/AddInNames.h"
#include "support/Debug.h"
#include "support/Files.h"
#include "support/Prompt.h"

namespace {

// What a lower floor asks of one above it.
void PlugPorts() {
    platform::TellLeadBytes(platform::IsLeadByte);
    Debug::Plug(DebugSetup::PortsOfDebug());
    DebugSetup::Plug({.findSettings = InifileCV::GetIniFile});
    WindowsMisc::Plug({.findSettings = InifileCV::GetIniFile});
    InifileCV::Plug({.setUpLanguage = Language::SetUp});
    Prompt::Plug(&QuestionBox::PortOfPrompt());
    QuestionBox::Plug({.execApp = WindowsMisc::ExecApp, .callHelp = WindowsMisc::CallHelp});
}

std::unique_ptr<platform::AddinInstance> MakeConnect() {
    PlugPorts();
    return std::make_unique<Connect>();
}

}  // namespace

const platform::ServerDescription& platform::Server() {
    static constexpr ServerDescription description{
        .clsid = AddInNames::ClassId,
        .progId = AddInNames::ProgId,
        .className = AddInNames::ProgId,
        .friendlyName = AddInNames::FriendlyName,
        .description = AddInNames::Description,
        .loadBehavior = AddInNames::LoadBehavior,
        .factory = MakeConnect,
        .letGo = Files::LetGo,
    };
    return description;
}
