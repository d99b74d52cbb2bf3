#include "shell/WindowsMiscMetrics.h"

#include <string>

#include "config/IniFile.h"
#include "platform/Instance.h"
#include "platform/Text.h"
#include "support/Debug.h"
#include "support/RegEdit.h"
#include "support/RegistryKeys.h"

namespace WindowsMisc {
namespace {

using Debug::Trace;

constexpr std::string_view metricsKey = "Control Panel\\Desktop\\WindowMetrics";
constexpr std::string_view settingsSubkey = "\\Settings";
constexpr std::string_view section = "Misc";
constexpr std::string_view handleName = "hWnd";

float Metric(std::string_view name, float whenMissing) {
    const std::string text = RegEdit::GetRegString(RegEdit::Root::CurrentUser, metricsKey, name);
    return text.empty() ? whenMissing : static_cast<float>(platform::Val(text));
}

std::string EntryKey(bool keepKey) {
    std::string key(RegistryKeys::AddIn);
    if (!keepKey && !key.ends_with(settingsSubkey)) key += settingsSubkey;
    return key;
}

bool SetInRegistry(std::string_view name, std::int32_t value, bool keepKey) {
    const std::string key = EntryKey(keepKey);
    if (value == 0) return RegEdit::DeleteRegValue(RegEdit::Root::CurrentUser, key, name);
    return RegEdit::SaveRegValue(RegEdit::Root::CurrentUser, std::string_view(key), name, platform::Decimal(value),
                                 RegEdit::TypeText);
}

}  // namespace

MetricsState metricsState;

void ReadWindowMetrics() {
    const Trace trace("ReadWindowMetrics");
    const WindowMetrics missing;
    WindowMetrics& metrics = metricsState.Metrics;
    metrics.ScrollBarWidth = Metric("ScrollWidth", missing.ScrollBarWidth);
    metrics.MenuHeight = Metric("MenuHeight", missing.MenuHeight);
    metrics.CaptionHeight = Metric("CaptionHeight", missing.CaptionHeight);
    metrics.SmallCaptionHeight = Metric("SmCaptionHeight", missing.SmallCaptionHeight);
    metrics.BorderWidth = Metric("BorderWidth", missing.BorderWidth);
    metrics.BorderHeight = Metric("BorderWidth", missing.BorderHeight);
    metrics.FixedWidth = missing.FixedWidth;
    metrics.FrameHeight = metrics.BorderWidth + metrics.CaptionHeight;
}

void PublishWindowHandle(std::int32_t handle, bool& keepKey) {
    const Trace trace("PublishWindowHandle");
    if (platform::AnotherInstanceRuns()) return;
    metricsState.WindowHandle = handle;
    SetRegEntry(handleName, handle, keepKey);
}

void SetRegEntry(std::string_view name, std::int32_t value, bool& keepKey) {
    const Trace trace("SetRegEntry");
    if (platform::AnotherInstanceRuns()) return;
    bool done = false;
    if ((keepKey && name == handleName) || metricsState.RegOk) {
        done = SetInRegistry(name, value, keepKey);
        if (!done) {
            metricsState.RegOk = false;
            IniFile::SetIniSetting(section, "RegOk", "-1", true);
        }
    }
    if (!done) IniFile::SetIniSetting(section, name, platform::Decimal(value), true);
}

}  // namespace WindowsMisc
