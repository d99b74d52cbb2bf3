#include "addin/cOlItem.h"

#include "addin/Members.h"
#include "addin/Names.h"
#include "addin/OlButtons.h"
#include "bridge/CVOutlAddIn.h"
#include "bridge/OlVersion.h"
#include "language/Language.h"
#include "platform/Guard.h"
#include "platform/Text.h"
#include "support/Debug.h"

using platform::Dispatch;

namespace {

constexpr std::int32_t saveOnClose = 0;

std::int32_t ButtonNumber(const Dispatch& inspector) {
    const std::string version = inspector.Object(Members::Application).Text(Members::Outlook::Version);
    return platform::Val(version) > Outlook2002 ? 102 : 101;
}

// Of what the window shows now; the wrapper's own where the host does not tell.
char TypeLetterOf(const Dispatch& item, char own) {
    switch (item.Long(Members::Class)) {
        case 26: return 'A';
        case 40: return 'C';
        case 48: return 'T';
        default: return own;
    }
}

}  // namespace

void cOlItem::OpenItem(const Dispatch& objInsp_, const Dispatch& objItem, const std::string& gstrProgID,
                       const std::string& param) {
    const Debug::Trace trace("OpenItem");
    IsUsed = true;
    inspector_ = objInsp_;
    item_ = objItem;
    progId_ = gstrProgID;
    parameter_ = param;
    if (!ribbon_->Offered()) AddButton();
}

void cOlItem::AddButton() {
    const Dispatch inspector = inspector_;
    const std::int32_t number = ButtonNumber(inspector);
    const std::string caption = Language::GetLanguageString(Names::LanguageSection, "ButtonUpdate");
    const Dispatch button =
        OlButtons::AddCommandBarButton(inspector, number, progId_, caption, parameter_, false, 3, 2);
    if (IsUsed) button_.Bind(button, shared_from_this(), &cOlItem::SaveAndSendToPhone_Click);
}

void cOlItem::WindowActivated() {
    if (IsUsed && !button_ && !ribbon_->Serves(kind_)) AddButton();
}

void cOlItem::WindowClosed() {
    IsUsed = false;
    button_.Release();
    item_.Reset();
    inspector_.Reset();
}

void cOlItem::SaveAndSendToPhone_Click(const Dispatch&) {
    const Debug::Trace trace("SaveAndSendToPhone_Click");
    const Dispatch inspector = inspector_;
    // The window may have gone on to another item since it was opened.
    Dispatch item = inspector.Object(Members::Window::CurrentItem);
    if (!item) item = item_;
    const char typeLetter = TypeLetterOf(item, typeLetter_);
    item.Call(Members::Item::Close, saveOnClose);
    platform::Attempt([&] { CVOutlAddIn::AddChangedItem(item.Text(Members::Item::EntryID), typeLetter, true, true); });
    WindowClosed();
}
