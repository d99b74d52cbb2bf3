// program/Main.h: the windowed stand-in as a whole. A program is this and the scenarios that it knows.
//
//     program.exe [/version 2000|2002|2003|2007|2010|2013|2016] [/record file] [/play scenario] [/report]
//     program.exe /regserver | /unregserver
//
// Without /play it runs until its last window is closed or a client quits it; meanwhile clients in other processes
// reach it (ClassServer.h), once the class has been registered with /regserver. With /play the scenario is played and
// the session ended. /record names a file in which started programs note themselves (StartRecord.h): the log window
// shows what is new in it. /report writes to the standard output "ready" when clients can reach it, and at the end what
// they and the add-ins left behind.
#pragma once
#include <span>

#include "outlook/program/Stage.h"

namespace program {

struct Scenario {
    const char* name;
    void (*play)(const Stage& stage);
};

// Does what the command line says. The exit code: 0; 1 when a Check of the scenario was wrong, or Windows refused; 2 for
// arguments that are not known.
int Main(std::span<const Scenario> scenarios);

}  // namespace program
