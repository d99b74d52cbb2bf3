// outlook/BuiltInBars.h: the bars that a new window brings with it, before any add-in.
#pragma once
#include <functional>

#include "outlook/Bars.h"

namespace standin {

// Ids of built-in controls that a program may want to carry out.
enum BuiltInId {
    IdSave = 3,
    IdPrint = 4,
    IdCut = 21,
    IdCopy = 19,
    IdPaste = 22,
    IdClose = 106,
    IdExit = 752,
    IdDelete = 478,
    IdFind = 141,
    IdSaveAndClose = 3103,
    IdSend = 2617,
    IdReply = 354,
    IdReplyAll = 355,
    IdForward = 356,
    IdSendReceive = 5488,
    IdNewMail = 1757,
    IdNewAppointment = 1106,
    IdNewContact = 1099,
    IdNewTask = 1100,
    IdNewNote = 1102,
    IdOpen = 23,
    IdNewWindow = 303,
    IdAddIns = 3754,
    IdOptions = 522,
    IdAbout = 927,
    IdHelp = 984,
    IdMoveToFolder = 1679,
    IdAddressBook = 353,
    IdOrganize = 2949,
    IdFlag = 2950,
    IdInsertFile = 1079,
    IdFile = 30002,
    IdEdit = 30003,
    IdView = 30004,
    IdInsert = 30005,
    IdFormat = 30006,
    IdTools = 30007,
    IdHelpMenu = 30010,
    IdFavorites = 31128,
    IdGo = 30489,
    IdActions = 31132
};

[[nodiscard]] std::vector<BarPointer> ExplorerBars(int version, const std::function<int()>& nextInstance);
// Empty for a note.
[[nodiscard]] std::vector<BarPointer> InspectorBars(ItemClass itemClass, const std::function<int()>& nextInstance);

}  // namespace standin
