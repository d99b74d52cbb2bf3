// bridge/CVOutlAddIn.h: handing work over to the main application.
//
// Shapes  Type letters of items: 'A' appointment, 'C' contact, 'T' task. The lists are those of ChangedItems.h.
// Errors  every one is ignored, and the next step is taken.
// Effects registry values, the change-watch timer, processes. An automatic hand-off may ask the user once for each
//         kind of item; a message is shown where no folder of the main application is known. Both may pump messages.
#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace CVOutlAddIn {

// Lists one item for the main application and arms the timer that starts it. `explicitly`: by a command of the user,
// not by an automatic hand-off, which the user may have switched off. Without `startTimer` the timer is only stopped.
void AddChangedItem(std::string_view entryId, char typeLetter, bool explicitly, bool startTimer);

// Many items of one kind, by a command of the user: what AddChangedItem makes of one after the other, the timer started
// with the last, except that the list is written once for `itemsAWrite` of them. What could not be written is tried
// again with the next ones. The list is read anew for each write, so that what the main application has taken from it
// meanwhile stays taken.
class HandOff {
  public:
    static constexpr std::size_t itemsAWrite = 256;

    explicit HandOff(char typeLetter) : typeLetter_(typeLetter) {}
    void Add(std::string entryId);
    void Finish();

  private:
    char typeLetter_;
    std::vector<std::string> waiting_;
};

// Starts the main application with one argument and does not wait for it. Writes nothing to the debug log.
void CallMainApp(std::string_view argument);

}  // namespace CVOutlAddIn
