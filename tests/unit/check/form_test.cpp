// The window of the check program, over what this very machine has.
#include <doctest.h>
#include <windows.h>

#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "check/FormCheck.h"
#include "testing/FormDriver.h"
#include "testing/ScreenReader.h"
#include "testing/WholeForm.h"

namespace {

// Takes the steps once the first look is over, and closes the window.
void Drive(Check::FormCheck& form, std::vector<FormDriver::Step> steps) {
    steps.emplace_back([] { FormDriver::Key(VK_ESCAPE); });
    FormDriver driver([&] { return form.Visible() && !form.The("ListFindings").List().empty(); }, [&] { form.Hide(); },
                      std::move(steps));
    form.Run();
    CHECK(driver.Finished());
}

}  // namespace

TEST_CASE("everything that the check program shows lies wholly inside its window and covers nothing") {
    Check::FormCheck form;
    Drive(form, {[&] { CheckFormIsWhole(form); }});
}

TEST_CASE("the check program has the same margin on every side, and its buttons stand evenly below its list") {
    Check::FormCheck form;
    Drive(form, {[&] {
              RECT inside{};
              GetClientRect(form.Window(), &inside);
              const platform::Rect list = form.The("ListFindings").Position(),
                                   close = form.The("ButtonClose").Position();
              CHECK(inside.right - list.left - list.width == list.left);
              CHECK(close.left + close.width == list.left + list.width);
              CHECK(inside.bottom - close.top - close.height == form.The("Picture1").Position().top);
              const char* const row[] = {"ButtonRepair", "ButtonRepairAll", "ButtonAgain",
                                         "ButtonCopy",   "ButtonHelp",      "ButtonClose"};
              for (std::size_t i = 1; i < std::size(row); ++i) {
                  const platform::Rect before = form.The(row[i - 1]).Position();
                  // Half a margin.
                  CHECK(form.The(row[i]).Position().left - before.left - before.width == list.left / 2);
              }
          }});
}

TEST_CASE("a screen reader names the list by the summary and the details by their label") {
    Check::FormCheck form;
    Drive(form, {[&] {
              const auto nameOf = [&](const char* name) { return NameAsRead(form.Window(form.The(name))); };
              // Wine's accessibility library knows no label of a list; Windows takes the text before it.
              CHECK(GetWindow(form.Window(form.The("ListFindings")), GW_HWNDPREV) ==
                    form.Window(form.The("LabelSummary")));
              CHECK(nameOf("TextDetails") == "Details:");
              CHECK(nameOf("ButtonCopy") == "Copy report");
          }});
}

TEST_CASE("the keyboard goes from finding to finding, whose details are shown, and Escape closes the window") {
    Check::FormCheck form;
    std::string first;
    Drive(form, {[&] {
                     first = form.The("TextDetails").Text();
                     CHECK_FALSE(first.empty());
                     FormDriver::Key(VK_DOWN);
                 },
                 [&] {
                     CHECK(form.The("ListFindings").ListIndex() == 1);
                     CHECK(form.The("TextDetails").Text() != first);
                 }});
}

TEST_CASE("help is offered only where the manual lies beside the texts") {
    Check::FormCheck form;
    Drive(form, {[&] { CHECK_FALSE(form.The("ButtonHelp").Enabled()); }});
}
