// The debug log: lines, the pending error, shortages, files that cannot be written.
#include <doctest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "platform/Err.h"
#include "platform/Text.h"
#include "support/Debug.h"
#include "support/Prompt.h"
#include "testing/BoxAnswerer.h"
#include "testing/ImportPatch.h"
#include "testing/TempFolder.h"

using Debug::state;
using Debug::Trace;
using Debug::WriteDebug;
using platform::Err;

namespace {

std::string modeInRegistry;
std::string keyAskedFor;
int timesAsked = 0;
int timesSwitchedOn = 0;
std::vector<std::string> traced;

std::string ReadMode(const std::string& key) {
    keyAskedFor = key;
    ++timesAsked;
    // What a registry that is in a bad way does meanwhile.
    Err().Set(5, "Access denied");
    SetLastError(5);
    return modeInRegistry;
}

void SwitchOn() {
    ++timesSwitchedOn;
    state.DebugActive = true;
    state.DebugLevel = 1;
}

void WriteTrace(const std::string& entry) {
    traced.push_back(entry);
    WriteDebug("RegEdit error: as of a failing write", -1);
    Err().Set(5, "Access denied");
}

class Fixture : public Prompt::Port {
  public:
    Fixture() {
        state = {};
        state.DebugFile = folder.Path("log.xml");
        state.DebugKey = "Software\\Key";
        modeInRegistry.clear();
        keyAskedFor.clear();
        timesAsked = timesSwitchedOn = 0;
        traced.clear();
        former_ = Debug::Plug({ReadMode, WriteTrace, SwitchOn});
        Prompt::Plug(this);
        Err().Clear();
    }
    ~Fixture() override {
        state = {};
        Debug::Plug(former_);
        Prompt::Plug(nullptr);
        Err().Clear();
    }
    void On(std::int32_t level) {
        state.DebugActive = true;
        state.DebugLevel = level;
    }
    [[nodiscard]] std::string Log() const { return folder.Read("log.xml"); }

    std::int32_t Ask(std::int32_t questionId, std::string& prompt, std::int32_t buttons,
                     const std::string& title) override {
        WriteDebug("MsgInputBox", 0);
        asked.push_back(std::to_string(questionId) + "|" + prompt + "|" + std::to_string(buttons) + "|" + title);
        WriteDebug("MsgInputBox", 999);
        return 1;
    }
    std::string Input(const std::string&, const std::string&, const std::string&, bool&) override { return {}; }
    std::int32_t Message(std::int32_t, std::int32_t, std::int32_t, const std::string&, const std::string&,
                         const std::string&, const std::string&, std::int32_t) override {
        return 0;
    }

    TempFolder folder;
    std::vector<std::string> asked;

  private:
    Debug::Ports former_;
};

}  // namespace

TEST_CASE_FIXTURE(Fixture, "nested entries and exits stand at their depth") {
    On(1);
    WriteDebug("start", 0);
    WriteDebug("A", 0);
    WriteDebug("B", 0);
    WriteDebug("B", 999);
    WriteDebug("A", 999);
    CHECK(Log() == "<start>_\r\n <A>_\r\n  <B>_\r\n  </B>\r\n </A>\r\n");
    CHECK(state.DebugIndent == " ");
}

TEST_CASE_FIXTURE(Fixture, "a trace writes its entry and, however the procedure is left, its exit") {
    On(1);
    try {
        const Trace outer("Outer");
        const Trace inner("Inner");
        throw 1;
    } catch (int) {
    }
    CHECK(Log() == "<Outer>_\r\n <Inner>_\r\n </Inner>\r\n</Outer>\r\n");
}

TEST_CASE_FIXTURE(Fixture, "the 51st nested entry leaves the indentation at a single blank") {
    On(1);
    for (int i = 0; i < 50; ++i) WriteDebug("x", 0);
    CHECK(state.DebugIndent == std::string(50, ' '));
    WriteDebug("x", 0);
    CHECK(state.DebugIndent == " ");
    WriteDebug("y", 0);
    CHECK(Log().find("\r\n" + std::string(50, ' ') + "<x>_\r\n <y>_\r\n") != std::string::npos);
}

TEST_CASE_FIXTURE(Fixture, "unbalanced exits are written without indentation") {
    On(1);
    WriteDebug("a", 999);
    WriteDebug("b", 999);
    WriteDebug("c", 0);
    CHECK(Log() == "</a>\r\n</b>\r\n<c>_\r\n");
}

TEST_CASE_FIXTURE(Fixture, "a code of its own is written behind the text") {
    On(1);
    WriteDebug("x", 5);
    CHECK(Log() == "x5\r\n");
}

TEST_CASE_FIXTURE(Fixture, "free text is folded in the log and in the caller's variable") {
    On(1);
    std::string text = "\xC4nderung f\xFCr M\xFCller";
    WriteDebug(text, -1);
    CHECK(Log() == "Aenderung fuar M\xFCller\r\n");
    CHECK(text == "Aenderung fuar M\xFCller");
}

TEST_CASE_FIXTURE(Fixture, "names and texts with a code are not folded") {
    On(1);
    std::string text = "f\xFCr";
    WriteDebug(text, 0);
    WriteDebug(text, 999);
    WriteDebug(text, 3);
    CHECK(text == "f\xFCr");
    CHECK(Log() ==
          "<f\xFCr>_\r\n</f\xFCr>\r\nf\xFCr"
          "3\r\n");
}

TEST_CASE_FIXTURE(Fixture, "while the log is off the caller's text is left alone") {
    std::string text = "f\xFCr";
    WriteDebug(text, -1);
    CHECK(text == "f\xFCr");
    CHECK_FALSE(folder.Exists("log.xml"));
}

TEST_CASE_FIXTURE(Fixture, "every kind of text can be written") {
    On(1);
    const std::string constant = "constant";
    WriteDebug(constant, -1);
    WriteDebug(std::string_view("view"), -1);
    WriteDebug(constant + " and more", -1);
    WriteDebug("literal \xE4", -1);
    CHECK(Log() == "constant\r\nview\r\nconstant and more\r\nliteral oe\r\n");
}

TEST_CASE_FIXTURE(Fixture, "the pending error is written first, indented and without a time stamp") {
    On(17);
    state.DebugIndent = "  ";
    Err().Set(13, "Type mismatch");
    WriteDebug("x", 999);
    const std::string log = Log();
    CHECK(log.find(" 13:Type mismatch\r\n") == 0);
    CHECK(log.find(": </x>\r\n") == log.size() - 8);
    CHECK(Err().Number() == 13);
    CHECK(Err().Description() == "Type mismatch");
}

TEST_CASE_FIXTURE(Fixture, "mode bit 16 puts the seconds since midnight before the indentation") {
    for (const std::int32_t level : {17, 16, 31}) {
        On(level);
        state.DebugIndent = " ";
        DeleteFileA(folder.Path("log.xml").c_str());
        WriteDebug("A", 0);
        const std::string log = Log();
        const std::size_t colon = log.find(':');
        REQUIRE(colon != std::string::npos);
        CHECK(platform::WholeNumber(log.substr(0, colon)).has_value());
        CHECK(platform::Val(log) < 86400);
        CHECK(log.substr(colon) == ": <A>_\r\n");
    }
}

TEST_CASE_FIXTURE(Fixture, "the time stamp is written in the system's number format") {
    REQUIRE(SetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, ","));
    On(16);
    for (int i = 0; i < 3; ++i) {  // one moment in a hundred has no fraction
        WriteDebug("x", 1);
        Sleep(20);
    }
    REQUIRE(SetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, "."));
    CHECK(Log().find(',') != std::string::npos);
    CHECK(Log().find('.') == std::string::npos);
}

TEST_CASE_FIXTURE(Fixture, "without mode bit 16 no line has a time stamp") {
    for (const std::int32_t level : {1, 15, 32}) {
        On(level);
        state.DebugIndent.clear();
        DeleteFileA(folder.Path("log.xml").c_str());
        WriteDebug("A", 0);
        CHECK(Log() == "<A>_\r\n");
    }
}

TEST_CASE_FIXTURE(Fixture, "the registry trace keeps the last entry and leaves the file untouched") {
    On(-1);
    Err().Set(13, "Type mismatch");
    WriteDebug("A", 0);
    WriteDebug("f\xFCr", -1);
    WriteDebug("x", 5);
    WriteDebug("A", 999);
    CHECK(traced == std::vector<std::string>{"<A>_", "fuar", "x5", "</A>"});
    CHECK_FALSE(folder.Exists("log.xml"));
    CHECK(Err().Number() == 13);
}

TEST_CASE_FIXTURE(Fixture, "a trace that cannot be written does not report itself without end") {
    On(-1);
    WriteDebug("A", 0);
    CHECK(traced.size() == 1);
    WriteDebug("B", 0);
    CHECK(traced.size() == 2);
}

TEST_CASE_FIXTURE(Fixture, "inside a development environment nothing is traced in the registry") {
    On(-1);
    state.DebugInIde = true;
    WriteDebug("A", 0);
    CHECK(traced.empty());
}

TEST_CASE_FIXTURE(Fixture, "a log file that cannot be written loses the entry and changes nothing else") {
    On(1);
    state.DebugFile = folder.Path("no such folder\\log.xml");
    Err().Set(13, "Type mismatch");
    SetLastError(77);
    WriteDebug("A", 0);
    CHECK(GetLastError() == 77);
    CHECK(Err().Number() == 13);
    CHECK(state.DebugIndent == " ");
}

TEST_CASE_FIXTURE(Fixture, "writing changes neither the pending error nor the last error of the thread") {
    On(17);
    SetLastError(1234);
    WriteDebug("A", 0);
    CHECK(GetLastError() == 1234);
    CHECK(Err().Number() == 0);
}

TEST_CASE_FIXTURE(Fixture, "the file is closed after every entry, so it may be deleted between two of them") {
    On(1);
    WriteDebug("A", 0);
    REQUIRE(DeleteFileA(folder.Path("log.xml").c_str()));
    WriteDebug("B", 0);
    CHECK(Log() == " <B>_\r\n");
}

TEST_CASE_FIXTURE(Fixture, "off, the mode is read on the 255th call and every 256 calls after") {
    for (int i = 0; i < 254; ++i) WriteDebug("x", 0);
    CHECK(timesAsked == 0);
    WriteDebug("x", 0);
    CHECK(timesAsked == 1);
    CHECK(keyAskedFor == "Software\\Key");
    for (int i = 0; i < 255; ++i) WriteDebug("x", 0);
    CHECK(timesAsked == 1);
    WriteDebug("x", 0);
    CHECK(timesAsked == 2);
    CHECK(state.DebugCallCount == 511);
    CHECK(timesSwitchedOn == 0);
}

TEST_CASE_FIXTURE(Fixture, "a mode other than 0 in the registry switches the log on, for the entries that follow") {
    modeInRegistry = "1";
    for (int i = 0; i < 255; ++i) WriteDebug("x", 0);
    CHECK(timesSwitchedOn == 1);
    CHECK_FALSE(folder.Exists("log.xml"));
    WriteDebug("y", 0);
    CHECK(Log() == "<y>_\r\n");
}

TEST_CASE_FIXTURE(Fixture, "a mode that is no number leaves the log off") {
    for (const char* mode : {"", "0", "x", "on"}) {
        modeInRegistry = mode;
        for (int i = 0; i < 256; ++i) WriteDebug("x", 0);
    }
    CHECK(timesAsked == 4);
    CHECK(timesSwitchedOn == 0);
}

TEST_CASE_FIXTURE(Fixture, "calls with an error pending count like the others while the log is off") {
    Err().Set(13, "Type mismatch");
    SetLastError(1234);
    for (int i = 0; i < 255; ++i) WriteDebug("x", 0);
    CHECK(timesAsked == 1);
    CHECK(Err().Number() == 13);
    CHECK(GetLastError() == 1234);
}

TEST_CASE_FIXTURE(Fixture, "asking for the mode changes neither the pending error nor the last error of the thread") {
    SetLastError(1234);
    for (int i = 0; i < 255; ++i) WriteDebug("x", 0);
    REQUIRE(timesAsked == 1);
    CHECK(Err().Number() == 0);
    CHECK(GetLastError() == 1234);
}

TEST_CASE_FIXTURE(Fixture, "calls do not count while the log is on") {
    On(1);
    WriteDebug("x", 0);
    CHECK(state.DebugCallCount == 0);
}

TEST_CASE_FIXTURE(Fixture, "the count of calls goes on beyond its highest number") {
    state.DebugCallCount = 2147483647 - 1;
    WriteDebug("x", 0);
    CHECK(timesAsked == 1);
    WriteDebug("x", 0);
    CHECK(state.DebugCallCount == -2147483647 - 1);
}

TEST_CASE_FIXTURE(Fixture, "without ports the log stays off") {
    Debug::Plug({});
    for (int i = 0; i < 300; ++i) WriteDebug("x", 0);
    CHECK(state.DebugCallCount == 300);
    CHECK_FALSE(state.DebugActive);
    On(-1);
    WriteDebug("x", 0);
    CHECK_FALSE(folder.Exists("log.xml"));
}

TEST_CASE_FIXTURE(Fixture, "out of memory and components that do not load are shown, whether or not the log is on") {
    for (const bool on : {false, true}) {
        const BoxAnswerer user(IDOK);
        if (on) On(1);
        for (const std::int32_t number : {7, 372, 374}) {
            Err().Set(number, "Text of it");
            WriteDebug("x", 999);
            CHECK(Err().Number() == number);
        }
        REQUIRE(user.Seen().size() == 3);
        CHECK(user.Seen()[0].text == "7:Text of it");
        CHECK(user.Seen()[1].text == "372:Text of it");
        CHECK(user.Seen()[2].text == "374:Text of it");
        CHECK(user.Seen()[0].icon);
        CHECK(user.Seen()[0].buttons == std::vector<int>{IDOK});
    }
    CHECK(Log() == "7:Text of it\r\n</x>\r\n372:Text of it\r\n</x>\r\n374:Text of it\r\n</x>\r\n");
    CHECK(state.DebugCallCount == 3);
}

TEST_CASE_FIXTURE(Fixture, "one shortage of memory is shown once, through all the procedures that it passes") {
    const BoxAnswerer user(IDOK);
    for (int event = 0; event < 3; ++event) {  // it lasts
        Err().Clear();
        const Trace outer("outer");
        for (int i = 0; i < 5; ++i) {
            const platform::ErrorScope scope;
            const Trace inner("inner");
            Err().Set(7, "Out of memory");
            const Trace innermost("innermost");
        }
        Err().Set(7, "Out of memory");
    }
    CHECK(user.Seen().size() == 1);
    Err().Clear();
    { const Trace passed("passed"); }  // it is gone
    Err().Set(7, "Out of memory");
    { const Trace next("next"); }
    CHECK(user.Seen().size() == 2);
}

TEST_CASE_FIXTURE(Fixture, "no other error is shown in a box") {
    const BoxAnswerer user(IDOK);
    for (const std::int32_t number : {5, 6, 8, 371, 373, 375}) {
        Err().Set(number, "Text of it");
        WriteDebug("x", 0);
        On(1);
        WriteDebug("x", 0);
        state.DebugActive = false;
    }
    CHECK(user.Seen().empty());
    CHECK(asked.empty());
}

TEST_CASE_FIXTURE(Fixture, "a component that is not registered is shown through the question box while the log is on") {
    Err().Set(339, "Component x.ocx");
    WriteDebug("x", 0);
    CHECK(asked.empty());
    On(1);
    WriteDebug("x", 0);
    CHECK(asked == std::vector<std::string>{"-1|E#339:Component x.ocx|0|"});
    CHECK(Log() == "<MsgInputBox>_\r\n</MsgInputBox>\r\n339:Component x.ocx\r\n<x>_\r\n");
    CHECK(Err().Number() == 339);
}

namespace {

UINT WINAPI Cyrillic() { return 1251; }

}  // namespace

TEST_CASE_FIXTURE(Fixture, "umlauts are folded only where those letters are umlauts") {
    On(1);
    WriteDebug(std::string_view("\xFC"), -1);
    ImportPatch patch;
    const ImportPatch::Import imports[] = {{"KERNEL32.dll", "GetACP", reinterpret_cast<void*>(&Cyrillic)}};
    patch.Replace(GetModuleHandleA(nullptr), imports);
    WriteDebug(std::string_view("\xFC"), -1);
    CHECK(Log() == "ua\r\n\xFC\r\n");
}
