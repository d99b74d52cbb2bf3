#include "addin/RibbonUi.h"

#include "addin/Members.h"
#include "bridge/OlVersion.h"

using platform::Dispatch;
using RibbonXml::Kind;

namespace {

std::size_t PlaceOf(Kind kind) { return static_cast<std::size_t>(kind); }

}  // namespace

RibbonUi::RibbonUi(std::int32_t outlookVersion) : offered_(outlookVersion >= Outlook2010) {}

bool RibbonUi::Refused(Kind kind) const { return given_[PlaceOf(kind)] && !Serves(kind); }

void RibbonUi::Given(Kind kind) { given_[PlaceOf(kind)] = true; }

void RibbonUi::Loaded(Kind kind, const Dispatch& ui) {
    if (offered_) uis_[PlaceOf(kind)] = ui;
}

void RibbonUi::InvalidateSendToPhone() const {
    const Dispatch ui = UiOf(Kind::Explorer);  // the call may release it
    ui.Call(Members::RibbonUi::InvalidateControl, RibbonXml::SendToPhoneId());
}

void RibbonUi::Release() {
    offered_ = false;
    for (Dispatch& ui : uis_) ui.Reset();
}

const Dispatch& RibbonUi::UiOf(Kind kind) const { return uis_[PlaceOf(kind)]; }
