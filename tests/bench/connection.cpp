// What connecting and disconnecting costs the host, against an add-in that does nothing, in every Outlook version; and
// how many calls of the host and of the registry a connection makes. The stand-in's own work is in all times.
#include <windows.h>

#include <objbase.h>

#include "bench/Bench.h"
#include "bench/ImportCounter.h"
#include "bench/PrivateKey.h"
#include "outlook/Outlook.h"

namespace {

constexpr int rounds = 15;

struct Library {
    explicit Library(const std::string& path) : module(LoadLibraryA(path.c_str())) {}
    [[nodiscard]] IUnknown* Factory(const CLSID& id) const {
        using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
        IUnknown* factory = nullptr;
        const auto getClassObject =
            reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
        getClassObject(id, IID_IClassFactory, reinterpret_cast<void**>(&factory));
        return factory;
    }
    HMODULE module;
};

struct Times {
    double connect;
    double disconnect;
};

// The medians of loading and unloading, in nanoseconds.
Times Measure(standin::Outlook& outlook, const char* progId) {
    std::vector<double> connects;
    std::vector<double> disconnects;
    for (int round = 0; round < rounds; ++round) {
        disconnects.push_back(Bench::NanosecondsPerCall(1, [&] { outlook.UnloadAddIn(progId); }));
        connects.push_back(Bench::NanosecondsPerCall(1, [&] { outlook.LoadAddIn(progId); }));
    }
    return {Bench::Median(connects), Bench::Median(disconnects)};
}

void MeasureVersion(Bench::Report& report, int version, const char* year, const Library& ours, const CLSID& ourId,
                    const Library& empty, const CLSID& emptyId) {
    standin::Outlook outlook({.version = version});
    outlook.IgnoreRegistry();
    outlook.UseAddIn("CVOutlookAddIn.Connect", ours.Factory(ourId));
    outlook.UseAddIn("Empty.AddIn", empty.Factory(emptyId));
    outlook.Start();
    const std::string name = std::string("Outlook ") + year;
    const Times nothing = Measure(outlook, "Empty.AddIn");
    const Times whole = Measure(outlook, "CVOutlookAddIn.Connect");
    report.Add(name + ": OnConnection against the empty add-in", Bench::Medians{nothing.connect, whole.connect});
    report.Add(name + ": OnDisconnection against the empty add-in",
               Bench::Medians{nothing.disconnect, whole.disconnect});

    outlook.UnloadAddIn("CVOutlookAddIn.Connect");
    const ImportCounter registry(ours.module, "ADVAPI32.dll", "Reg");
    outlook.ResetCalls();
    outlook.LoadAddIn("CVOutlookAddIn.Connect");
    report.AddCount(name + ": host calls of OnConnection", outlook.Calls());
    report.AddCount(name + ": registry calls of OnConnection", static_cast<int>(registry.Calls()));
}

}  // namespace

int main(int argc, char** argv) {
    CoInitialize(nullptr);
    Bench::Report report;
    {
        const PrivateKey privateKey;
        const Library ours(CV_ADDIN);
        const Library empty(CV_EMPTY_ADDIN);
        CLSID ourId{};
        CLSID emptyId{};
        CLSIDFromString(L"{6B0C1E52-3D8F-4C0A-9A5E-7F21C7B4D913}", &ourId);
        CLSIDFromString(CV_EMPTY_CLSID, &emptyId);
        const std::pair<int, const char*> versions[] = {{9, "2000"}, {10, "2002"}, {11, "2003"}, {12, "2007"}};
        for (const auto& [version, year] : versions) {
            MeasureVersion(report, version, year, ours, ourId, empty, emptyId);
        }
    }
    return report.Finish(argc, argv);
}
