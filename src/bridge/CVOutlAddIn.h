// bridge/CVOutlAddIn.h: handing work over to the main application.
//
// Shapes  Type letters of items: 'A' appointment, 'C' contact, 'T' task. The lists are those of ChangedItems.h.
// Errors  every one is ignored, and the next step is taken.
// Effects registry values, the change-watch timer, processes. An automatic hand-off may ask the user once for each
//         kind of item; a message is shown where no folder of the main application is known. Both may pump messages.
#pragma once
#include <string>
#include <string_view>

namespace CVOutlAddIn {

// Lists one item for the main application and arms the timer that starts it. `explicitly`: by a command of the user,
// not by an automatic hand-off, which the user may have switched off. Without `startTimer` the timer is only stopped.
void AddChangedItem(std::string_view entryId, char typeLetter, bool explicitly, bool startTimer);

// Starts the main application with one argument and does not wait for it. Writes nothing to the debug log.
void CallMainApp(std::string_view argument);

}  // namespace CVOutlAddIn
