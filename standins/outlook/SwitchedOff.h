// outlook/SwitchedOff.h: add-ins that Outlook does not load although their entry asks for it.
//
// What is obeyed: the user's lists of disabled items (from 2002 on), an AddinList that says "0", and policies of both
// roots: the same list, RestrictToList, DisableAllAddins, RequireAddinSig (no add-in here has a signature). The layout of a
// disabled item is that of two samples from Office 2013 and later; that earlier versions have the same is assumed.
#pragma once
#include <string>

namespace standin {

[[nodiscard]] bool IsSwitchedOff(int version, const std::string& progId);

}  // namespace standin
