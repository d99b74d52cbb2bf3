// The window of the real CorvellaCheck.exe, used by somebody with a mouse: what it says, asks and changes.
#include <doctest.h>
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "World.h"
#include "testing/ChildProcess.h"
#include "testing/OwnTemp.h"

using namespace check_test;

namespace {

constexpr int patience = 1200;  // times 50 milliseconds

// Of a window of another process, which has to be asked for it.
std::string TextOf(HWND window) {
    std::string text(static_cast<std::size_t>(SendMessageA(window, WM_GETTEXTLENGTH, 0, 0)) + 1, '\0');
    text.resize(
        static_cast<std::size_t>(SendMessageA(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

bool IsOfClass(HWND window, const char* wanted) {
    char name[64] = {};
    GetClassNameA(window, name, sizeof name);
    return lstrcmpiA(name, wanted) == 0;
}

HWND Child(HWND parent, const std::function<bool(HWND)>& isWanted) {
    for (HWND child = nullptr; (child = FindWindowExA(parent, child, nullptr, nullptr)) != nullptr;) {
        if (isWanted(child)) return child;
    }
    return nullptr;
}

HWND ListIn(HWND window) {
    return Child(window, [](HWND child) { return IsOfClass(child, "ListBox"); });
}

class CheckWindow {
  public:
    explicit CheckWindow(const World& world) : program_("\"" + world.Path("AddIn\\CorvellaCheck.exe") + "\"") {
        Until([&] { return (window_ = Own([](HWND found) { return ListIn(found) != nullptr; })) != nullptr; });
        WaitForLook();
    }

    void WaitForLook() {
        Until([&] { return IsWindowEnabled(Button("Check &again")) != FALSE; });
    }
    // The sign and what was found, a line each.
    std::vector<std::string> Lines() {
        const HWND list = ListIn(window_);
        std::vector<std::string> lines;
        for (WPARAM i = 0; i < static_cast<WPARAM>(SendMessageA(list, LB_GETCOUNT, 0, 0)); ++i) {
            wchar_t line[2048] = {};  // Wine brings over nothing else from another process
            SendMessageW(list, LB_GETTEXT, i, reinterpret_cast<LPARAM>(line));
            std::string& text = lines.emplace_back();
            for (const wchar_t* letter = line; *letter; ++letter) text += static_cast<char>(*letter);
        }
        REQUIRE(lines.size() >= 2);
        return lines;
    }
    void Select(int line) {
        const HWND list = ListIn(window_);
        SendMessageA(list, LB_SETCURSEL, static_cast<WPARAM>(line), 0);
        SendMessageA(window_, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(list), LBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(list));
    }
    std::string Details() {
        return TextOf(Child(window_, [](HWND child) { return IsOfClass(child, "Edit"); }));
    }
    HWND Button(const std::string& caption) {
        return Child(window_, [&](HWND child) { return IsOfClass(child, "Button") && TextOf(child) == caption; });
    }
    // The next question or message with that button.
    HWND Box(int button) {
        HWND box = nullptr;
        Until([&] {
            return (box = Own([&](HWND found) { return !ListIn(found) && GetDlgItem(found, button); })) != nullptr;
        });
        return box;
    }
    // Presses it, and returns what was asked or said.
    std::string Answer(int button) {
        const HWND box = Box(button);
        std::string text = TextOf(Child(box, [](HWND child) {
            return IsOfClass(child, "Static") && (GetWindowLongA(child, GWL_STYLE) & SS_TYPEMASK) != SS_ICON;
        }));
        SendMessageA(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
        Until([&] { return !IsWindow(box) || !IsWindowVisible(box); });
        return text;
    }
    void Click(const std::string& caption) {
        const HWND button = Button(caption);
        REQUIRE(button != nullptr);
        PostMessageA(button, BM_CLICK, 0, 0);
    }
    // The program's exit code.
    int Close() {
        PostMessageA(window_, WM_CLOSE, 0, 0);
        return static_cast<int>(program_.End());
    }

  private:
    static void Until(const std::function<bool()>& isSo) {
        for (int tries = 0; !isSo(); ++tries) {
            REQUIRE(tries < patience);
            Sleep(50);
        }
    }
    HWND Own(const std::function<bool(HWND)>& isWanted) {
        return Child(nullptr, [&](HWND found) {
            DWORD process = 0;
            GetWindowThreadProcessId(found, &process);
            return process == program_.Id() && IsWindowVisible(found) && isWanted(found);
        });
    }

    ChildProcess program_;
    HWND window_ = nullptr;
};

constexpr const char *repair = "&Repair", *repairAll = "Repair a&ll";

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

void SwitchOff() { PutNumber(HKEY_CURRENT_USER, addIns, "LoadBehavior", 2); }

// What the program says last of all; then it looks again and is closed with that exit code.
std::string SaidBefore(CheckWindow& window, int exitCode) {
    std::string said = window.Answer(IDOK);
    window.WaitForLook();
    CHECK(window.Close() == exitCode);
    return said;
}

}  // namespace

TEST_CASE("the window asks before it repairs, says what it did, and looks again") {
    World world;
    SwitchOff();
    CheckWindow window(world);
    CHECK(window.Lines().front() == "FAULT - LoadBehavior is 2: Outlook or you have switched the add-in off.");
    CHECK(Has(window.Details(), "Repair would change:"));
    window.Click(repair);
    const std::string question = window.Answer(IDYES);
    CHECK(Has(question, "This is changed now:"));
    CHECK(Has(question, addIns));
    CHECK(Has(question, "CorvellaCheck "));
    CHECK(Has(SaidBefore(window, 0), "Repaired. What was there before is in "));
    CHECK(world.Check() == "0");
}

TEST_CASE("a repair that the user does not want changes nothing, and no file is written for it") {
    World world;
    SwitchOff();
    const auto before = World::Registry();
    const auto files = world.Files();
    CheckWindow window(world);
    window.Click(repair);
    window.Answer(IDNO);
    CHECK(window.Close() == 2);
    CHECK(World::Registry() == before);
    CHECK(world.Files() == files);
}

TEST_CASE("one repair mends the chosen finding alone, the other one all that nobody has chosen himself") {
    World world(16);
    SwitchOff();
    world.Disable(1);
    PutText(HKEY_CURRENT_USER, addInKey, "103Pos", "99");
    CheckWindow window(world);
    window.Select(1);
    const std::string chosen = window.Lines()[1];
    window.Click(repair);
    window.Answer(IDYES);
    window.Answer(IDOK);
    window.WaitForLook();
    for (const std::string& line : window.Lines()) CHECK(line != chosen);
    CHECK(window.Lines()[1].starts_with("FAULT"));
    window.Click(repairAll);
    CHECK_FALSE(Has(window.Answer(IDYES), "103Pos"));
    CHECK(Has(SaidBefore(window, 2), "Repaired."));
    CHECK(world.Check() == "2 PlacementPosition");
}

TEST_CASE("what is fine or beyond repair offers no repair, and where nothing can be repaired nothing offers it") {
    World world;
    PutText(HKEY_CURRENT_USER, product, "Path", world.Path("Gone"));
    CheckWindow window(world);
    CHECK(window.Lines().front().starts_with("FAULT - Corvella.exe is not in"));
    CHECK(Has(window.Details(), "This program cannot repair it."));
    CHECK_FALSE(IsWindowEnabled(window.Button(repair)));
    CHECK_FALSE(IsWindowEnabled(window.Button(repairAll)));
    window.Select(1);
    CHECK(window.Lines()[1].starts_with("Fine - "));
    CHECK_FALSE(Has(window.Details(), "cannot repair"));
    CHECK_FALSE(IsWindowEnabled(window.Button(repair)));
    CHECK(window.Close() == 2);
}

TEST_CASE("what somebody has removed while the question was open counts as repaired") {
    World world(16);
    world.Disable(1);
    CheckWindow window(world);
    window.Click(repair);
    window.Box(IDYES);
    RemoveValue(HKEY_CURRENT_USER, world.Resiliency("DisabledItems"), "12EF23A9");
    window.Answer(IDYES);
    CHECK(Has(SaidBefore(window, 0), "Repaired."));
}

TEST_CASE("what cannot be kept for the way back is not changed, and the window says so") {
    World world;
    SwitchOff();
    CheckWindow window(world);
    window.Click(repair);
    window.Box(IDYES);
    // By now that value is longer than the program reads.
    const std::string longText(3 << 20, 'x');
    Put(HKEY_CURRENT_USER, addIns, "LoadBehavior", REG_BINARY, longText);
    window.Answer(IDYES);
    CHECK(Has(SaidBefore(window, 2), "Not everything could be repaired"));
    DWORD type = 0, size = 0;
    CHECK(RegGetValueA(HKEY_CURRENT_USER, addIns.c_str(), "LoadBehavior", RRF_RT_ANY, &type, nullptr, &size) ==
          ERROR_SUCCESS);
    CHECK(size == longText.size());
}

TEST_CASE("where the way back cannot be written nothing is changed, and the window says so") {
    World world;
    SwitchOff();
    RemoveValue(HKEY_CURRENT_USER, "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders", "AppData");
    {
        const OwnTemp nowhere(world.Path("NoSuchFolder"));
        CheckWindow window(world);
        window.Click(repair);
        window.Answer(IDYES);
        CHECK(Has(SaidBefore(window, 2), "Nothing was changed, because the file "));
    }
    CHECK(world.Check() == "2 Load2");
}

TEST_CASE("where all that can be repaired may be somebody's wish, repairing all says that there is nothing to repair") {
    World world;
    PutText(HKEY_CURRENT_USER, addInKey, "103Pos", "99");
    CheckWindow window(world);
    CHECK(IsWindowEnabled(window.Button(repairAll)));
    window.Click(repairAll);
    CHECK(window.Answer(IDOK) == "There is nothing that this program could repair.");
    CHECK(window.Close() == 2);
}
