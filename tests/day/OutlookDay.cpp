// OutlookDay.exe: the windowed stand-in for Outlook, with a working day in it (option /play day).
#include <windows.h>

#include "day/Day.h"
#include "outlook/program/Main.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    constexpr program::Scenario scenarios[] = {{"day", program::day::Play}};
    return program::Main(scenarios);
}
