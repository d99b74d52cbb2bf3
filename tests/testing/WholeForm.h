// testing/WholeForm.h: checks that a person can see all of a form that is shown: it lies on the screen, each of its
// visible controls lies inside it and over no other, and no caption is larger than its control.
#pragma once
#include <doctest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "platform/forms/Form.h"

inline bool IsInside(const RECT& part, const RECT& whole) {
    return part.left >= whole.left && part.top >= whole.top && part.right <= whole.right && part.bottom <= whole.bottom;
}

inline void CheckFormIsWhole(platform::Form& form) {
    const auto edges = [](HWND window) {
        RECT area{};
        GetWindowRect(window, &area);
        return area;
    };
    RECT work{};
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    CHECK(IsInside(edges(form.Window()), work));
    std::vector<RECT> others;
    for (const platform::Control& control : form.Controls()) {
        const HWND window = form.Window(control);
        if (!window || !IsWindowVisible(window)) continue;
        CAPTURE(std::string(control.Name()));
        const RECT area = edges(window);
        CHECK(area.right > area.left);
        CHECK(area.bottom > area.top);
        CHECK(IsInside(area, edges(form.Window())));
        for (const RECT& other : others) {
            RECT shared{};
            CHECK_FALSE(IntersectRect(&shared, &area, &other));
        }
        if (control.Kind() != platform::ControlKind::Frame) others.push_back(area);
        if (!control.Has(platform::Property::Caption)) continue;
        const platform::Rect place = control.Position();
        const platform::Size needed = form.TextSize(control, control.Caption(), place.width);
        CHECK(needed.width <= place.width);
        CHECK(needed.height <= place.height);
    }
}
