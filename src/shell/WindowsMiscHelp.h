// shell/WindowsMiscHelp.h: the help in the user's language.
//
// Shapes  `page` is the name of a page in the compiled help, such as "AddInOutl.htm", `htmlPage` that of a page of the
//         HTML manual, empty for its folder.
// Errors  swallowed, after they were logged. The user is told only that the help of another language is shown, and
//         that no help could be started. The caller's pending error stays as it was.
// Effects a viewer that is open is closed; a new one is started, and sized the first time, for which it is waited for
//         a second at most. The setting "Help" of the settings file records that. May pump messages.
#pragma once
#include <cstdint>
#include <string>

namespace WindowsMisc {

// `flags` has no effect.
void CallHelp(const std::string& page, const std::string& htmlPage = {}, std::int32_t flags = 0);

}  // namespace WindowsMisc
