// check/FormCheck.h: the window of the check program: what was found, what it means, and buttons to mend it.
//
// Owns    its windows while it is shown. What is being read when it is closed is not waited for.
// Effects reads in a thread beside; mends after asking; the clipboard; the browser, for help.
#pragma once
#include <string>
#include <vector>

#include "check/Judge.h"
#include "check/Report.h"
#include "platform/forms/Form.h"

namespace Check {

class FormCheck : public platform::Form {
  public:
    FormCheck();
    ~FormCheck() override;

    // Returns when it is closed, with the exit code of what was found last.
    int Run();

  private:
    struct Looking;

    void OnLoad() override;
    void OnClose() override { Hide(); }
    bool OnKeyDown(std::int32_t key) override;

    void LookAgain();
    void ShowProgress();
    void ShowFindings();
    void ShowDetails();
    void ShowTexts();
    void Arrange();

    void ButtonRepair_Click();
    void ButtonRepairAll_Click();
    void ButtonCopy_Click();
    void ButtonHelp_Click();
    void Repair(const std::vector<Change>& changes);
    void Tell(const char* key, const std::vector<std::string>& fill = {});

    [[nodiscard]] std::string Text(const char* key, const std::vector<std::string>& fill = {}) const;
    [[nodiscard]] const Finding* Selected();
    // Of the user's language, else the English one; empty where the manual is not beside the texts.
    [[nodiscard]] std::string ManualPage() const;

    Looking* looking_ = nullptr;  // while a thread reads, it is the thread's: the program ends with it
    Snapshot snapshot_;
    std::vector<Finding> findings_;  // the worst first
};

// The texts of a snapshot's language file, as long as that lives.
[[nodiscard]] Lookup TextsOf(const Snapshot& snapshot);

}  // namespace Check
