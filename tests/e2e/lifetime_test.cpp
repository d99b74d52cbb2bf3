// The add-in's life when the host calls in the middle of something: windows that open and disconnections that come
// while it is still being connected, connections that fail half-way, and a library that something still needs.
#include <doctest.h>
#include <windows.h>

#include <functional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "e2e/Session.h"
#include "e2e/User.h"
#include "testing/ClassFactory.h"
#include "testing/HandleCount.h"
#include "testing/ImportPatch.h"
#include "testing/Pump.h"
#include "testing/TempFolder.h"
#include "testing/Versions.h"

using e2e::Session;
using e2e::User;
using standin::Fault;
using standin::FolderKind;
using standin::ItemClass;
using standin::Window;

namespace {

HMODULE LoadedLibrary() {
    const HMODULE library = LoadLibraryA((e2e::AddInFolder() + "CVOutlookAddIn.dll").c_str());
    REQUIRE(library);
    return library;
}

bool IsActive() { return e2e::ReadValue(e2e::addInKey, "Active").has_value(); }

// What happens while the add-in's number-th call of the host is about to return, as when that call pumps messages.
class Meanwhile {
  public:
    explicit Meanwhile(HMODULE library) {
        current = this;
        const ImportPatch::Import answers[] = {{"OLEAUT32.dll", "VariantClear", reinterpret_cast<void*>(&Clear)}};
        REQUIRE(patch_.Replace(library, answers) == 1);
    }
    ~Meanwhile() { current = nullptr; }
    Meanwhile(const Meanwhile&) = delete;
    Meanwhile& operator=(const Meanwhile&) = delete;

    void At(int number, std::function<void()> action) {
        number_ = number;
        isDue_ = [this] { return calls_ == number_; };
        action_ = std::move(action);
    }
    void Once(std::function<bool()> isDue, std::function<void()> action) {
        isDue_ = std::move(isDue);
        action_ = std::move(action);
    }
    // The action was due, and is done.
    [[nodiscard]] bool Happened() const { return happened_; }

  private:
    static HRESULT WINAPI Clear(VARIANTARG* answer) {
        Meanwhile& now = *current;
        ++now.calls_;
        if (!now.happened_ && now.isDue_ && now.isDue_()) {
            now.happened_ = true;
            now.action_();
        }
        return VariantClear(answer);
    }

    inline static Meanwhile* current = nullptr;
    ImportPatch patch_;
    std::function<bool()> isDue_;
    std::function<void()> action_;
    int calls_ = 0;
    int number_ = 0;
    bool happened_ = false;
};

// Plays `scenario` with its action at one call after the other, a few left out each time, until it comes no more.
template <class Scenario>
int AtEveryCall(int step, Scenario scenario) {
    int played = 0;
    for (int number = 1;; number += step) {
        CAPTURE(number);
        if (!scenario(number)) return played;
        ++played;
    }
}

struct Held {
    int references, advises;
    bool operator==(const Held&) const = default;
    friend std::ostream& operator<<(std::ostream& to, const Held& held) {
        return to << held.references << " references, " << held.advises << " advises";
    }
};

Held HeldBy(Session& session) { return {session.host.References(), session.host.Advises()}; }

HRESULT CanUnload(HMODULE library) {
    const auto ask = reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(GetProcAddress(library, "DllCanUnloadNow"));
    const bool found = ask != nullptr;
    REQUIRE(found);
    return ask();
}

// The hand-off of an earlier case may still wait for its timer, which keeps the library loaded.
HMODULE UnusedLibrary() {
    const HMODULE library = LoadedLibrary();
    REQUIRE(PumpUntil(5000, [&] { return CanUnload(library) == S_OK; }));
    return library;
}

void* NoMemory(std::size_t) { return nullptr; }

// How many thread-local indexes a program can still have.
std::size_t FreeThreadLocals() {
    std::vector<DWORD> taken;
    for (DWORD index = TlsAlloc(); index != TLS_OUT_OF_INDEXES; index = TlsAlloc()) taken.push_back(index);
    for (const DWORD index : taken) TlsFree(index);
    return taken.size();
}

// The library comes in, an exception is thrown in it, and it goes.
void LoadFailUnload(const std::string& path) {
    const HMODULE library = LoadLibraryA(path.c_str());
    REQUIRE(library != nullptr);
    CLSID addIn{};
    REQUIRE(CLSIDFromProgID(L"CVOutlookAddIn.Connect", &addIn) == S_OK);
    IClassFactory* const factory = ClassFactoryOf(library, addIn);
    REQUIRE(factory != nullptr);
    {
        ImportPatch patch;
        const ImportPatch::Import memory[] = {{"msvcrt.dll", "malloc", reinterpret_cast<void*>(&NoMemory)}};
        REQUIRE(patch.Replace(library, memory) == 1);
        IUnknown* made = nullptr;
        CHECK(factory->CreateInstance(nullptr, IID_IUnknown, reinterpret_cast<void**>(&made)) == E_OUTOFMEMORY);
    }
    factory->Release();
    FreeLibrary(library);
}

}  // namespace

TEST_CASE("the library leaves no thread-local index, handle or memory behind when it goes, also after an exception") {
    const TempFolder folder;
    const std::string copy = folder.Path("copy.dll");
    REQUIRE(CopyFileA((e2e::AddInFolder() + "CVOutlookAddIn.dll").c_str(), copy.c_str(), TRUE));
    const Session installed({.version = 11});  // the class is known
    LoadFailUnload(copy);                      // what Windows sets up once is there
    const std::size_t freeBefore = FreeThreadLocals();
    const std::uint32_t handlesBefore = handles::KernelHandles();
    const std::size_t bytesBefore = handles::HeapBytes();
    for (int i = 0; i < 3; ++i) LoadFailUnload(copy);
    CHECK(GetModuleHandleA("copy.dll") == nullptr);
    CHECK(FreeThreadLocals() == freeBefore);
    CHECK(handles::KernelHandles() == handlesBefore);
    CHECK(handles::HeapBytes() < bytesBefore + 1000);  // Windows' own lists may grow
}

IN_EVERY_VERSION("sessions after each of which the library goes leave neither handle nor memory in the host") {
    const auto play = [&] {
        {
            Session session({.version = version});
            session.host.Start();
            session.OpenNew(ItemClass::Contact);
            session.host.Quit();
        }
        REQUIRE(PumpUntil(5000, [] { return e2e::UnloadLibrary(); }));
    };
    for (int i = 0; i < 3; ++i) play();  // what Windows keeps for good is there
    const std::uint32_t handlesBefore = handles::KernelHandles();
    const std::size_t bytesBefore = handles::HeapBytes();
    constexpr int times = 16;
    for (int i = 0; i < times; ++i) play();
    CHECK(handles::KernelHandles() <= handlesBefore);
    // Until 2002 faces travel by the clipboard, and Wine keeps a copy of each bitmap that is read from there.
    if (version >= 11) CHECK(handles::HeapBytes() < bytesBefore + 4 * times);
}

IN_EVERY_VERSION("a disconnection that arrives while the add-in is being connected leaves nothing behind") {
    const HMODULE library = LoadedLibrary();
    const int played = AtEveryCall(23, [&](int number) {
        Session session({.version = version});
        Meanwhile meanwhile(library);
        meanwhile.At(number, [&] { session.host.UnloadAddIn(e2e::progId); });
        session.host.Start();
        if (!meanwhile.Happened()) return false;
        CHECK(session.host.References() == 0);
        CHECK(session.host.Advises() == 0);
        CHECK_FALSE(IsActive());
        for (const Window window : session.host.Windows()) {
            CHECK(session.Popups(window).empty());
            CHECK(session.OwnControls(window).empty());
        }
        return true;
    });
    CHECK(played > 5);
    FreeLibrary(library);
}

IN_EVERY_VERSION("an Explorer that opens while the add-in is being connected is served once") {
    const HMODULE library = LoadedLibrary();
    const auto heldAfter = [&](Session& session) {
        for (const Window window : session.host.Windows()) {
            session.host.Deactivate(window);
            session.host.Activate(window);
        }
        return HeldBy(session);
    };
    Session later({.version = version});
    later.host.Start();
    later.host.OpenExplorer();
    const Held expected = heldAfter(later);
    AtEveryCall(29, [&](int number) {
        Session session({.version = version});
        Meanwhile meanwhile(library);
        meanwhile.At(number, [&] { session.host.OpenExplorer(); });
        session.host.Start();
        if (!meanwhile.Happened()) return false;
        const Held held = heldAfter(session);
        if (version >= 10) CHECK(held == expected);
        std::size_t popups = 0;
        for (const Window window : session.host.Windows()) popups += session.Popups(window).size();
        CHECK(popups == (version >= 10 ? 2u : 1u));  // in Outlook 2000 the active one alone has it
        CHECK(session.host.Quit() == e2e::OrderlyEnd(version));
        CHECK(session.host.References() == 0);
        return true;
    });
    FreeLibrary(library);
}

IN_EVERY_VERSION(
    "an item window that opens while the add-in is being connected has one button, and its click is heard once") {
    const HMODULE library = LoadedLibrary();
    Session later({.version = version});
    later.host.Start();
    later.OpenNew(ItemClass::Contact);
    const Held expected = HeldBy(later);
    AtEveryCall(29, [&](int number) {
        Session session({.version = version});
        Window contact;
        Meanwhile meanwhile(library);
        meanwhile.At(number, [&] { contact = session.OpenNew(ItemClass::Contact); });
        session.host.Start();
        if (!meanwhile.Happened()) return false;
        if (version >= 14) {  // where a ribbon may still come, a window that was there first waits for its activation
            session.host.Deactivate(session.host.ActiveWindow());
            session.host.Activate(contact);
        }
        CHECK(session.OwnControls(contact).size() == 1);
        CHECK(HeldBy(session) == expected);
        CHECK(session.host.Click(session.SendButton(contact)).sinks == 1);
        CHECK(e2e::ReadValue(e2e::outlookKey, "ChangedC").value_or("").size() == 141);
        return true;
    });
    FreeLibrary(library);
}

TEST_CASE("in Outlook 2000 an Explorer that was open before the add-in came is followed, as one that opens later") {
    Session session({.version = 9});
    session.host.Start();
    REQUIRE(session.host.UnloadAddIn(e2e::progId));
    const Window first = session.FirstWindow();
    const Window second = session.host.OpenExplorer();
    REQUIRE(session.LoadAddIn());  // the second one is active and gets the menu
    CHECK(session.Popups(second).size() == 1);
    session.host.SwitchFolder(first, FolderKind::Contacts);
    CHECK(session.OwnControls(first, "107").size() == 1);
    session.host.CloseWindow(second);
    session.host.CloseWindow(first);
    CHECK(session.host.HowItEnded() == e2e::OrderlyEnd(9));
    CHECK(session.host.References() == 0);
}

IN_VERSIONS("from Outlook 2007 on a window that opens after the last one closed is served as the first was", 12, 14,
            16) {
    for (const auto counted : {standin::ClosingWindow::StillCounted, standin::ClosingWindow::NotCounted}) {
        Session session({.version = version, .closingWindow = counted, .heldByClient = true});
        session.host.Start();
        session.host.CloseWindow(session.FirstWindow());
        CHECK(IsActive());
        CHECK(session.host.Advises() == 3);  // the application and its two collections: nothing of a window

        const Window contact = session.OpenNew(ItemClass::Contact);
        CHECK(session.host.Click(session.SendButton(contact)).sinks == 1);
        CHECK(e2e::ReadValue(e2e::outlookKey, "ChangedC").value_or("").size() == 141);

        const Window later = session.host.OpenExplorer();
        CHECK(session.Popups(later).size() == 1);
        CHECK(session.OwnControls(later, "103").size() == 1);
        session.host.CloseWindow(later);
        session.host.ClientLetsGo();
        CHECK(session.host.HowItEnded() == e2e::OrderlyEnd(version));
        CHECK_FALSE(IsActive());
        CHECK(session.host.References() == 0);
        CHECK(session.host.Advises() == 0);
        CHECK(session.host.Complaints().empty());
    }
}

TEST_CASE("the ribbon works on in a window that opens after the last one closed") {
    Session session({.version = 16, .heldByClient = true}, e2e::RibbonIs::Asked);
    session.host.Start();
    session.host.CloseWindow(session.FirstWindow());
    const Window later = session.host.OpenExplorer();
    CHECK(session.host.FindRibbon(later, "TabMail_mAbout"));
    CHECK(session.OwnControls(later).empty());
    User user("OK");
    CHECK(session.host.ClickRibbon(later, "TabMail_mAbout"));
    CHECK(user.boxes.size() == 1);
    CHECK(session.host.Quit() == e2e::OrderlyEnd(16));
    CHECK(session.host.References() == 0);
}

IN_VERSIONS("Outlook 2000 to 2003 are let go of with the last window; ticking the add-in anew brings it back", 9, 10,
            11) {
    Session session({.version = version, .heldByClient = true});
    session.host.Start();
    session.host.CloseWindow(session.FirstWindow());
    CHECK(session.host.References() == 0);
    CHECK(session.host.Advises() == 0);
    const Window later = session.host.OpenExplorer();
    CHECK(session.OwnControls(later).empty());
    REQUIRE(session.host.UnloadAddIn(e2e::progId));
    REQUIRE(session.LoadAddIn());
    CHECK(session.Popups(later).size() == 1);
    session.host.CloseWindow(later);
    CHECK(session.host.References() == 0);
    session.host.ClientLetsGo();
    CHECK(session.host.HowItEnded() == e2e::OrderlyEnd(version));
}

TEST_CASE("a later Outlook whose end would not be heard is let go of with the last window") {
    const HMODULE library = LoadedLibrary();
    for (const int version : {12, 16}) {
        CAPTURE(version);
        Session session({.version = version, .heldByClient = true});
        session.host.FailMember("Application.Advise", Fault::Fails(E_FAIL));
        session.host.Start();
        session.host.CloseWindow(session.FirstWindow());
        CHECK(session.host.References() == 0);
        CHECK(session.host.Advises() == 0);
    }
    FreeLibrary(library);
}

TEST_CASE("when the collections can be connected only once, windows that open later are followed all the same") {
    const HMODULE library = LoadedLibrary();
    const std::pair<const char*, const char*> refused[] = {
        {"Explorers.Advise", "Inspectors.Advise"},
        {"Explorers.FindConnectionPoint", "Inspectors.FindConnectionPoint"},
        {"Explorers.QueryInterface", "Inspectors.QueryInterface"},
        {"Application.Explorers", "Application.Inspectors"},
    };
    for (const int version : versions::From(10)) {
        for (const auto& row : refused) {
            const char *explorers = row.first, *inspectors = row.second;
            CAPTURE(version);
            CAPTURE(explorers);
            Session session({.version = version});
            Meanwhile meanwhile(library);
            // Application, Explorers and Inspectors are connected; what comes next is their second attachment.
            meanwhile.Once([&] { return session.host.Advises() == 3; },
                           [&] {
                               session.host.FailMember(explorers, Fault::Fails(E_FAIL), 1);
                               session.host.FailMember(inspectors, Fault::Fails(E_FAIL), 1);
                           });
            session.host.Start();
            REQUIRE(meanwhile.Happened());
            CHECK(session.host.FaultsHit() == 2);
            CHECK(session.SendButton(session.OpenNew(ItemClass::Contact)));
            CHECK(session.Popups(session.host.OpenExplorer()).size() == 1);
        }
    }
    FreeLibrary(library);
}

TEST_CASE("the library stays loaded while the host has a sink of it that it would not let go") {
    const HMODULE library = UnusedLibrary();
    {
        Session session({.version = 11});
        session.host.Start();
        session.host.FailMember("Explorers.Unadvise", Fault::Refused(E_FAIL), 1);
        CHECK(session.host.UnloadAddIn(e2e::progId));
        REQUIRE(session.host.Advises() == 1);
        CHECK(CanUnload(library) == S_FALSE);
    }
    CHECK(CanUnload(library) == S_OK);
    FreeLibrary(library);
}

TEST_CASE("the library stays loaded while a dialog of it is open") {
    const HMODULE library = UnusedLibrary();
    Session session({.version = 11});
    session.host.Start();
    HRESULT duringDialog = S_OK;
    User user("Cancel");
    user.beforeAnswer = [&](const User::Box&) {
        session.host.UnloadAddIn(e2e::progId);
        duringDialog = CanUnload(library);
    };
    session.host.Click(session.Entries(session.FirstWindow()).at(6));
    CHECK(user.boxes.size() == 1);
    CHECK(duringDialog == S_FALSE);
    CHECK(CanUnload(library) == S_OK);
    FreeLibrary(library);
}
