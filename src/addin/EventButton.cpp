#include "addin/EventButton.h"

#include <utility>

#include "addin/Members.h"
#include "addin/Names.h"
#include "platform/Err.h"

using platform::Dispatch;

namespace {

bool IsSameControl(const Dispatch& own, const Dispatch& clicked) {
    const platform::Identity identity = platform::Compare(own, clicked);
    if (identity == platform::Identity::Same) return true;
    const platform::ErrorScope unasked;  // a host without InstanceId is no failure of the click
    const std::int32_t ownId = own.Long(Members::Control::InstanceId);
    const std::int32_t clickedId = clicked.Long(Members::Control::InstanceId);
    if (ownId != 0 && clickedId != 0) return ownId == clickedId;
    return identity == platform::Identity::Unknown;
}

}  // namespace

void EventButton::Connect(const Dispatch& button, Handler click) {
    connection_ = platform::Connection(
        button, Events::Button,
        [button, click = std::move(click)](std::int32_t event, const platform::EventArguments& arguments) {
            if (event != Events::Click) return;
            const Dispatch clicked = arguments.Object(0);
            if (IsSameControl(button, clicked)) click(clicked);
        });
    button_ = button;
}

void EventButton::Release() noexcept {
    connection_.End();
    button_.Reset();
}

void EventButton::Delete() {
    const Dispatch button = button_;
    Release();
    button.Call(Members::Control::Delete);
}
