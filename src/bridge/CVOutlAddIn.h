// bridge/CVOutlAddIn.h: handing work over to the main application.
//
// Shapes  Type letters of items: 'A' appointment, 'C' contact, 'T' task. The lists are those of ChangedItems.h.
// Errors  every one is ignored, and the next step is taken.
// Effects registry values, the change-watch timer, processes. An automatic hand-off may ask the user once for each
//         kind of item; a message is shown where no folder of the main application is known. Both may pump messages.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace CVOutlAddIn {

// Lists one item for the main application and arms the timer that starts it. `explicitly`: by a command of the user,
// not by an automatic hand-off, which the user may have switched off. Without `startTimer` the timer is only stopped.
void AddChangedItem(std::string_view entryId, char typeLetter, bool explicitly, bool startTimer);

// Many items of one kind, by a command of the user: what AddChangedItem makes of one after the other, the timer started
// with the last, except that the list is written once, at the end. Until then each `itemsABlock` of them are noted in
// the registry beside it, so that the cost grows with their number only, and no more than so many are lost with the
// host. What is noted stays there where the list cannot be written.
class HandOff {
  public:
    static constexpr std::size_t itemsABlock = 256;

    explicit HandOff(char typeLetter) : typeLetter_(typeLetter) {}
    void Add(std::string entryId);
    void Finish();

  private:
    void Note();

    char typeLetter_;
    std::vector<std::string> entryIds_;
    std::size_t noted_ = 0;  // the first so many of them
    std::int32_t blocks_ = 0;
    bool mayHaveNoted_ = false;  // a note that could not be read back may be there
};

// Lists what an interrupted sending of such items has noted, and forgets it. False where some of it is still noted.
bool ListNotedItems(char typeLetter);

// Starts the main application with one argument and does not wait for it. Writes nothing to the debug log.
void CallMainApp(std::string_view argument);

}  // namespace CVOutlAddIn
