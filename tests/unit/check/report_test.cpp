#include "check/Report.h"

#include <doctest.h>

#include "Healthy.h"

using namespace check_test;

TEST_CASE("the report names versions and findings, with the key of each") {
    Snapshot snapshot = Healthy();
    snapshot.entries.front().loadBehavior = Number(2);
    snapshot.now = "2026-11-22 03:30";
    const std::string report = Report(snapshot, Judge(snapshot), {});
    CHECK(platform::Contains(report, "Corvella for Outlook 2.0.0.0, 2026-11-22 03:30\r\n"));
    CHECK(platform::Contains(report, "Outlook 2003, 32 bits: C:\\Office\\OUTLOOK.EXE"));
    CHECK(platform::Contains(report, "FAULT  [Load2] LoadBehavior is 2"));
    CHECK(platform::Contains(report, "Faults: 1. Hints: 0.\r\n"));
    CHECK(platform::Contains(report, "Fine  [CorvellaFine]"));
}

TEST_CASE("the report is in the language of its texts, English where one is missing") {
    const Lookup german = [](std::string_view key) {
        return std::string(key == "SignFine" ? "Gut" : key == "Result0" ? "Alles ist gut." : "");
    };
    const std::string report = Report(Healthy(), Judge(Healthy()), german);
    CHECK(platform::Contains(report, "Gut  [OutlookFine] Outlook 2003"));
    CHECK(report.ends_with("Alles ist gut.\r\n"));
}

TEST_CASE("what is filled in is not read as a placeholder or as a line break") {
    Finding finding;
    finding.key = "CorvellaTwice";
    finding.fill = {"C:\\new\\%b", "D:\\two"};
    CHECK(SentencesOf({}, finding).found == "Commands start Corvella in C:\\new\\%b, sending starts it in D:\\two");
}

TEST_CASE("the names of users in paths are shortened to their first letter") {
    CHECK(WithShortNames("C:\\Users\\Anna\\x C:\\users\\Bo\\y", "") == "C:\\Users\\A...\\x C:\\users\\B...\\y");
    CHECK(WithShortNames("C:\\Documents and Settings\\Anna Smith\\x", "") == "C:\\Documents and Settings\\A...\\x");
    CHECK(WithShortNames("D:\\home\\anna\\x", "Anna") == "D:\\home\\A...\\x");
    CHECK(WithShortNames("C:\\Users\\A\\x", "A") == "C:\\Users\\A\\x");
    CHECK(WithShortNames("C:\\Users\\Anna", "") == "C:\\Users\\A...");
    CHECK(WithShortNames("", "Anna") == "");
}

TEST_CASE("the exit code is 0 for fine, 1 for hints and 2 for faults") {
    Snapshot snapshot = Healthy();
    CHECK(ExitCode(Judge(snapshot)) == 0);
    snapshot.log.number = -1;
    CHECK(ExitCode(Judge(snapshot)) == 1);
    snapshot.entries.clear();
    CHECK(ExitCode(Judge(snapshot)) == 2);
}

TEST_CASE("changes are described one a line before they are made") {
    const std::vector<Change> changes{WriteNumber(Root::CurrentUser, RegistryView::Own, "A\\B", "LoadBehavior", 3),
                                      WriteText(Root::LocalMachine, RegistryView::Own, "C", "", "text"),
                                      Remove(Root::CurrentUser, RegistryView::Own, "D", "gone")};
    CHECK(Describe(changes) ==
          "HKEY_CURRENT_USER\\A\\B\\LoadBehavior = 3\r\nHKEY_LOCAL_MACHINE\\C\\(default) = "
          "text\r\nHKEY_CURRENT_USER\\D\\gone: -\r\n");
}
