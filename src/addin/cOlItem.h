// addin/cOlItem.h: the wrapper of one window that shows a contact, a task or an appointment, with its
// save-and-send-to-phone button, which is on the ribbon where the host has taken ours. cOlContactItem, cOlTaskItem and
// cOlAppointmentItem differ in the type letter and the ribbon alone.
//
// Errors  what the host refuses is skipped.
// Owns    the window, its item and the button, from OpenItem until the click or WindowClosed.
#pragma once
#include <memory>
#include <string>
#include <utility>

#include "addin/EventButton.h"
#include "addin/RibbonUi.h"
#include "platform/com/Dispatch.h"

class cOlItem : public std::enable_shared_from_this<cOlItem> {
  public:
    // True while the wrapper serves a window; its slot is free for another one when false.
    bool IsUsed = false;

    // Serves that window from now on, and puts the button on it where the host has no ribbon.
    void OpenItem(const platform::Dispatch& objInsp_, const platform::Dispatch& objItem, const std::string& gstrProgID,
                  const std::string& param);
    // Makes up for a button that the host refused before the window was shown, or for the ribbon's.
    void WindowActivated();
    // The host has taken the ribbon of such windows after all.
    void RibbonLoaded() { button_.Delete(); }
    // Lets go of window, item and button.
    void WindowClosed();
    // Saves and closes the item that the window shows now, and hands its entry id to Corvella; the wrapper is free then.
    void SaveAndSendToPhone_Click(const platform::Dispatch& control);

  protected:
    cOlItem(char typeLetter, RibbonXml::Kind kind, std::shared_ptr<RibbonUi> ribbon)
        : typeLetter_(typeLetter), kind_(kind), ribbon_(std::move(ribbon)) {}
    ~cOlItem() = default;

  private:
    void AddButton();

    const char typeLetter_;
    const RibbonXml::Kind kind_;
    const std::shared_ptr<RibbonUi> ribbon_;
    platform::Dispatch inspector_;
    platform::Dispatch item_;
    std::string progId_;
    std::string parameter_;
    EventButton button_;
};

class cOlContactItem final : public cOlItem {
  public:
    explicit cOlContactItem(std::shared_ptr<RibbonUi> ribbon)
        : cOlItem('C', RibbonXml::Kind::Contact, std::move(ribbon)) {}
};

class cOlTaskItem final : public cOlItem {
  public:
    explicit cOlTaskItem(std::shared_ptr<RibbonUi> ribbon) : cOlItem('T', RibbonXml::Kind::Task, std::move(ribbon)) {}
};

class cOlAppointmentItem final : public cOlItem {
  public:
    explicit cOlAppointmentItem(std::shared_ptr<RibbonUi> ribbon)
        : cOlItem('A', RibbonXml::Kind::Appointment, std::move(ribbon)) {}
};
