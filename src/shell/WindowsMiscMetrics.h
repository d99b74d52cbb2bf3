// shell/WindowsMiscMetrics.h: the desktop's window metrics, and entries that the main application reads.
//
// Shapes  Metrics are in the registry's unit: twips (1440 an inch) as negative numbers, pixels as positive ones.
//         An entry is a name and a number in decimal text.
// Errors  A metric that is missing is its default. A registry that cannot be written is remembered (RegOk), in the
//         settings file too, and the entry goes there instead.
// Effects the add-in's registry key; section "Misc" of the settings file. Nothing is written while another instance
//         of the host runs.
#pragma once
#include <cstdint>
#include <string_view>

namespace WindowsMisc {

struct WindowMetrics {
    float ScrollBarWidth = -240;
    float MenuHeight = -300;
    float CaptionHeight = -300;
    float SmallCaptionHeight = -300;
    float BorderWidth = -15;
    float BorderHeight = -15;  // the same value again
    float FixedWidth = 350;    // twips: what a form is wider than its inside
    float FrameHeight = -315;  // border and caption
};

struct MetricsState {
    WindowMetrics Metrics;
    bool RegOk = false;             // entries other than "hWnd" go to the registry; nothing here sets it
    std::int32_t WindowHandle = 0;  // the one last published
};
extern MetricsState metricsState;

void ReadWindowMetrics();

// Nothing while another instance of the host runs.
void PublishWindowHandle(std::int32_t handle, bool& keepKey);

// `keepKey`: below the add-in's key itself, else below its "Settings". The number 0 removes a registry entry.
void SetRegEntry(std::string_view name, std::int32_t value, bool& keepKey);

}  // namespace WindowsMisc
