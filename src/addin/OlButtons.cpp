#include "addin/OlButtons.h"

#include <string>

#include "addin/Members.h"
#include "addin/Names.h"
#include "bridge/OlVersion.h"
#include "platform/Err.h"
#include "platform/Text.h"
#include "support/RegEdit.h"
#include "support/RegistryKeys.h"

using platform::Dispatch;
using platform::Missing;

namespace {

constexpr std::int32_t buttonControl = 1;
constexpr std::int32_t bothOleUsages = 3;

// One placement value of a button; empty where the user set none.
std::string ReadPlacement(std::int32_t number, const char* word) {
    return RegEdit::GetRegString(platform::Root::CurrentUser, RegistryKeys::AddIn, platform::Decimal(number) + word);
}

std::int32_t PlacementNumber(std::int32_t number, const char* word, std::int32_t preset) {
    const std::string value = ReadPlacement(number, word);
    return value.empty() ? preset : platform::ValLong(value);
}

bool PlacementFlag(std::int32_t number, const char* word, bool preset) {
    const std::string value = ReadPlacement(number, word);
    return value.empty() ? preset : platform::Val(value) != 0;
}

Dispatch BarFor(const Dispatch& owner, std::int32_t number) {
    const Dispatch bars = owner.Object(Members::Window::CommandBars);
    const std::string name = ReadPlacement(number, "Bar");
    Dispatch bar;
    if (!name.empty()) bar = bars.Object(Members::Bars::Item, name);
    return bar ? bar : bars.Object(Members::Bars::Item, "Standard");
}

void DeleteStaleCopies(const Dispatch& controls, const std::string& tag, const std::string& onAction) {
    // Backwards: deleting moves the rest.
    for (std::int32_t place = controls.Long(Members::Controls::Count); place >= 1; --place) {
        const Dispatch control = controls.Object(Members::Controls::Item, place);
        if (!control || control.Flag(Members::Control::BuiltIn)) continue;
        if (control.Text(Members::Control::Tag) == tag && control.Text(Members::Control::OnAction) == onAction)
            control.Call(Members::Control::Delete);
    }
}

Dispatch AddButton(const Dispatch& controls, std::int32_t position) {
    if (position < 1) return controls.Object(Members::Controls::Add, buttonControl, Missing, Missing, Missing, true);
    return controls.Object(Members::Controls::Add, buttonControl, Missing, Missing, position, true);
}

platform::ColourMapping FaceColours(platform::SystemColour background) {
    return {platform::LightGrey, platform::ColourOf(background)};
}

// What the user has on the clipboard is there again afterwards.
void PasteFaceOn(const Dispatch& button, std::int32_t number, platform::SystemColour background) {
    const platform::BitmapHandle face = platform::LoadMappedBitmap(number, FaceColours(background));
    const platform::PictureOnClipboard onClipboard(OlButtons::BitmapToPicture(face, {}));
    if (onClipboard) button.Call(Members::Button::PasteFace);
}

void SetPictureAndMask(const Dispatch& button, std::int32_t number) {
    button.Put(Members::Button::Picture, OlButtons::BitmapToPicture(platform::LoadBitmapResource(number), {}));
    button.Put(Members::Button::Mask,
               OlButtons::BitmapToPicture(platform::LoadBitmapResource(number + Names::MaskOffset), {}));
}

// Earlier versions take only what is pasted. The version is that of the owner's
// application, which told it at connection.
bool TakesPictures(const Dispatch& owner) {
    if (OlVersion != 0) return OlVersion >= Outlook2003;
    return platform::Val(owner.Object("Application").Text(Members::Outlook::Version)) >= Outlook2003;
}

}  // namespace

Dispatch OlButtons::AddCommandBarButton(const Dispatch& owner, std::int32_t number, std::string_view progId,
                                        std::string_view caption, std::string_view parameter, bool defaultSeparator,
                                        std::int32_t defaultStyle, std::int32_t defaultPosition) {
    const std::string tag = platform::Decimal(number);
    const std::string onAction = Names::OnAction(progId);
    const Dispatch controls = BarFor(owner, number).Object(Members::Bar::Controls);
    DeleteStaleCopies(controls, tag, onAction);

    Dispatch button = AddButton(controls, PlacementNumber(number, "Pos", defaultPosition));
    button.Put(Members::Control::Parameter, parameter);
    button.Put(Members::Control::Caption, caption);
    button.Put(Members::Control::OLEUsage, bothOleUsages);
    button.Put(Members::Button::Style, PlacementNumber(number, "Style", defaultStyle));
    button.Put(Members::Control::BeginGroup, PlacementFlag(number, "Sep", defaultSeparator));
    button.Put(Members::Control::OnAction, onAction);
    button.Put(Members::Button::FaceId, 0);

    platform::Err().Clear();
    if (TakesPictures(owner)) {
        SetPictureAndMask(button, number);
    } else {
        PasteFaceOn(button, number, platform::SystemColour::Menu);
    }
    button.Put(Members::Control::Visible, true);
    button.Put(Members::Control::Tag, tag);
    return button;
}

Dispatch OlButtons::AddMenuItem(const Dispatch& controls, std::string_view, std::string_view progId,
                                std::string_view caption, std::int16_t faceId, std::string_view parameter,
                                std::int32_t pictureNumber, bool beginGroup) {
    Dispatch entry = controls.Object(Members::Controls::Add, Missing, Missing, Missing, Missing, true);
    entry.Put(Members::Control::Parameter, parameter);
    entry.Put(Members::Control::Caption, caption);
    entry.Put(Members::Control::OLEUsage, bothOleUsages);
    entry.Put(Members::Button::Style, Members::iconAndCaption);
    entry.Put(Members::Control::BeginGroup, beginGroup);
    entry.Put(Members::Control::OnAction, Names::OnAction(progId));
    if (faceId >= 0) entry.Put(Members::Button::FaceId, std::int32_t{faceId});
    if (pictureNumber == 0) return entry;

    if (TakesPictures(entry)) {
        SetPictureAndMask(entry, pictureNumber);
        const platform::ErrorScope expected;
        // Nothing there that the host could take: it refuses, and the picture stays.
        if (!platform::ClipboardHoldsPicture()) entry.Call(Members::Button::PasteFace);
    } else {
        PasteFaceOn(entry, pictureNumber, platform::SystemColour::ScrollBar);
    }
    return entry;
}

Dispatch OlButtons::BitmapToPicture(platform::BitmapHandle bitmap, platform::PaletteHandle palette) {
    return platform::PictureOf(bitmap, palette);
}
