// addin/cOlItem.h: the wrapper of one window that shows a contact, a task or an appointment, with its
// save-and-send-to-phone button. cOlContactItem, cOlTaskItem and cOlAppointmentItem differ in the type letter alone.
//
// Errors  what the host refuses is skipped.
// Owns    the window, its item and the button, from OpenItem until the click or WindowClosed.
#pragma once
#include <memory>
#include <string>

#include "addin/EventButton.h"
#include "platform/com/Dispatch.h"

class cOlItem : public std::enable_shared_from_this<cOlItem> {
  public:
    // True while the wrapper serves a window; its slot is free for another one when false.
    bool IsUsed = false;

    void OpenItem(const platform::Dispatch& objInsp_, const platform::Dispatch& objItem, const std::string& gstrProgID,
                  const std::string& param);
    // Makes up for a button that the host refused before the window was shown.
    void WindowActivated();
    void WindowClosed();
    void SaveAndSendToPhone_Click(const platform::Dispatch& control);

  protected:
    explicit cOlItem(char typeLetter) : typeLetter_(typeLetter) {}
    ~cOlItem() = default;

  private:
    void AddButton();

    const char typeLetter_;
    platform::Dispatch inspector_;
    platform::Dispatch item_;
    std::string progId_;
    std::string parameter_;
    EventButton button_;
};

class cOlContactItem final : public cOlItem {
  public:
    cOlContactItem() : cOlItem('C') {}
};

class cOlTaskItem final : public cOlItem {
  public:
    cOlTaskItem() : cOlItem('T') {}
};

class cOlAppointmentItem final : public cOlItem {
  public:
    cOlAppointmentItem() : cOlItem('A') {}
};
