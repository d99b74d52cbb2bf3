// bridge/FormOlAddInOptions.h: the add-in's own options dialog, over values that it shares with the main application.
//
// Shapes  All values are text below "Software\Quillmark\Corvella\Outlook". They are shown as they stand and stored as
//         typed; the empty text removes a value. "NoDlg" is "1" or missing.
// Errors  ignored: the next step is taken.
// Owns    its windows while it is shown. CheckT, CheckA and CheckC belong to the form and are never shown: nothing
//         loads or saves them.
// Effects the registry; the help. Modal: pumps messages until it is closed, since the host's own message loop would not
//         let Tab, Enter, Escape and F1 reach a dialog of ours.
#pragma once
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/forms/Form.h"

class FormOlAddInOptions : public platform::Form {
  public:
    FormOlAddInOptions();
    ~FormOlAddInOptions() override;

    // The one that the menu opens.
    [[nodiscard]] static FormOlAddInOptions& Shared();

    // In front of all windows; returns when it is closed, or at once where it is open already.
    void Show();

  private:
    void OnLoad() override { Form_Load(); }
    void OnUnload() override { ShowDesignTexts(); }
    bool OnKeyDown(std::int32_t key) override;

    void Form_Load();
    void ButtonOK_Click();
    void ButtonCancel_Click();
    void ButtonHelp_Click();

    void ShowDesignTexts();
    void ShowValues();
    void ListProfiles();
    void ShowMenuColour();
    void NoteTouches(const char* control);
    void Arrange();
    void SaveValues();

    // What a field would store, and the control that the user changes it with.
    struct Setting {
        const char* name;
        std::string_view control;
        std::string text;
    };
    [[nodiscard]] std::vector<Setting> Settings();

    std::vector<Setting> shown_;          // when the form was loaded
    std::set<std::string_view> touched_;  // controls, since then
    bool helpOpens_ = false;              // while the help starts it handles messages, clicks on this form among them
};
