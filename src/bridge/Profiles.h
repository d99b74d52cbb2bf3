// bridge/Profiles.h: the main application's profiles.
//
// Shapes  A profile is named by its file in the settings folder, without ".ini".
// Errors  ignored: a file that cannot be read is no profile. The caller's pending error stays as it was.
// Effects reads the front of every ini file in the settings folder.
#pragma once
#include <string>
#include <vector>

namespace Profiles {

// Fills the list with a name or the empty text for each ini file, in the order of the folder.
void GetProfiles(std::vector<std::string>& list);

}  // namespace Profiles
