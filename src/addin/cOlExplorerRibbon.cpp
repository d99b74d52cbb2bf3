// What an Explorer's wrapper has to do with the host's ribbon.
#include <algorithm>
#include <iterator>

#include "addin/Members.h"
#include "addin/cOlExplorer.h"

using platform::Dispatch;
using RibbonXml::Kind;

namespace {

constexpr std::int32_t contactItems = 2;

}  // namespace

bool cOlExplorer::ShowsContacts(const Dispatch& explorer) {
    return explorer.Object(Members::Window::CurrentFolder).Long(Members::Folder::DefaultItemType) == contactItems;
}

bool cOlExplorer::HasRibbon() const { return ribbon_->Serves(Kind::Explorer); }

void cOlExplorer::RibbonLoaded() {
    if (std::exchange(menusBuilt_, false)) RemoveControls(window_);
}

// In a context menu the host asks at every opening, so only the button counts.
void cOlExplorer::TellRibbon() {
    const Dispatch explorer = objExplorer_.Object();
    const bool visible = ShowsContacts(explorer);
    const bool enabled = explorer.Object(Members::Window::Selection).Long(Members::Collection::Count) != 0;
    const Shown now{visible, visible && enabled};
    if (std::exchange(shown_, now) != now) ribbon_->InvalidateSendToPhone();
}
