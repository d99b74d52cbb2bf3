// outlook/Scenarios.h: scenarios that have a file of their own; the table of all is in scenarios.cpp.
#pragma once
#include "outlook/program/Stage.h"

namespace program {

void PlayDemo(const Stage& stage);

}  // namespace program
