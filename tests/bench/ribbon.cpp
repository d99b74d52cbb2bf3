// What the ribbon costs against the menus: the connection to Outlook 2016 and the XML of its window, against a start with
// menus in Outlook 2003. Both run in turns; held against each other are the shortest times.
#include <windows.h>

#include <objbase.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "bench/AddIns.h"
#include "bench/Bench.h"
#include "bench/PrivateKey.h"
#include "outlook/Extensibility.h"
#include "outlook/Outlook.h"
#include "outlook/RibbonHost.h"

namespace {

using Bench::Library;
using standin::FolderKind;
using standin::Outlook;

constexpr double quarterOfMenus = 0.25;
constexpr int mostCalls = 60;
constexpr int rounds = 60;
constexpr IID ribbonExtensibilityId{0x000C0396, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

[[noreturn]] void GiveUp(const char* why) {
    std::printf("nothing was measured: %s\n", why);
    std::exit(2);
}

// Nanoseconds until the menus of the first window and of a second are there.
double StartWithMenus(const Library& library) {
    Outlook outlook({.version = 11});
    outlook.IgnoreRegistry();
    outlook.UseAddIn(Bench::progId, library.Factory());
    const double taken = Bench::NanosecondsPerCall(1, [&] {
        outlook.Start();
        outlook.OpenExplorer(FolderKind::Inbox);
    });
    if (!outlook.FindCaption(outlook.Windows().front(), "Synchronize")) GiveUp("there is no menu");
    outlook.Quit();
    return taken;
}

struct Connected {
    double nanoseconds;
    int calls;  // of the host
};

IDispatch* Member(IDispatch* object, const wchar_t* name, const wchar_t* argument = nullptr) {
    DISPID id = DISPID_UNKNOWN;
    auto* text = const_cast<wchar_t*>(name);
    object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
    VARIANT index, result;
    VariantInit(&result);
    index.vt = VT_BSTR;
    index.bstrVal = SysAllocString(argument);
    DISPPARAMS parameters{&index, nullptr, argument ? 1u : 0u, 0};
    object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &parameters, &result,
                   nullptr, nullptr);
    VariantClear(&index);
    if (result.vt != VT_DISPATCH || !result.pdispVal) GiveUp("the host does not know the add-in");
    return result.pdispVal;
}

// The host's part is played here, so that nothing but the add-in's two procedures is timed.
Connected Connection(const Library& library) {
    Outlook outlook({.version = 16});
    outlook.IgnoreRegistry();
    IUnknown* const factory = library.Factory();
    outlook.UseAddIn(Bench::progId, factory, 0);
    outlook.Start();
    standin::Extensibility* addIn = nullptr;
    static_cast<IClassFactory*>(factory)->CreateInstance(nullptr, standin::iidExtensibility,
                                                         reinterpret_cast<void**>(&addIn));
    standin::RibbonExtensibility* ribbon = nullptr;
    addIn->QueryInterface(ribbonExtensibilityId, reinterpret_cast<void**>(&ribbon));
    IDispatch* const application = outlook.Application();
    IDispatch* const addIns = Member(application, L"COMAddIns");
    IDispatch* const instance = Member(addIns, L"Item", L"CVOutlookAddIn.Connect");
    const BSTR id = SysAllocString(L"Microsoft.Outlook.Explorer");
    BSTR xml = nullptr;
    outlook.ResetCalls();
    const double taken = Bench::NanosecondsPerCall(1, [&] {
        addIn->OnConnection(application, static_cast<int>(standin::ConnectMode::Startup), instance, nullptr);
        ribbon->GetCustomUI(id, &xml);
    });
    const int calls = outlook.Calls();
    if (SysStringLen(xml) == 0 || calls == 0) GiveUp("there is no ribbon");
    SysFreeString(xml);
    SysFreeString(id);
    addIn->OnDisconnection(static_cast<int>(standin::DisconnectMode::HostShutdown), nullptr);
    for (IUnknown* object :
         {static_cast<IUnknown*>(instance), static_cast<IUnknown*>(addIns), static_cast<IUnknown*>(application),
          static_cast<IUnknown*>(ribbon), static_cast<IUnknown*>(addIn), factory})
        object->Release();
    outlook.Quit();
    return {taken, calls};
}

}  // namespace

int main(int argc, char** argv) {
    CoInitialize(nullptr);
    Bench::Report report;
    {
        const PrivateKey privateKey;
        const Library library(Bench::Folder() + "\\CVOutlookAddIn.dll", Bench::ourClass);
        StartWithMenus(library);
        Connection(library);
        Bench::Minima minima{1e30, 1e30};
        int calls = 0;
        for (int round = 0; round < rounds; ++round) {
            minima.baseline = std::min(minima.baseline, StartWithMenus(library));
            const Connected connected = Connection(library);
            minima.measured = std::min(minima.measured, connected.nanoseconds);
            calls = connected.calls;
        }
        report.Add("Outlook 2016: OnConnection and the ribbon, against 2003's menus", minima, quarterOfMenus);
        report.AddCount("Outlook 2016: OnConnection and the ribbon, host calls", calls, mostCalls);
    }
    return report.Finish(argc, argv);
}
