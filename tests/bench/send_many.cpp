// Sending many selected contacts to the phone, against a bare walk over the selection that reads every entry id: what
// the host takes for itself is in both. Both run in turns in the same session; the ratio is that of the shortest times.
// The list is written once, and each 256 items are noted before, so that the ratio stays the same however many there
// are. The stand-in takes 3 microseconds for an item; writing it twice and reading it back takes as long.
#include <windows.h>

#include <objbase.h>

#include <cstdlib>
#include <vector>

#include "bench/AddIns.h"
#include "bench/Bench.h"
#include "bench/PrivateKey.h"
#include "outlook/Outlook.h"

namespace {

using standin::FolderKind;
using standin::Outlook;

constexpr const char* outlookKey = "Software\\Quillmark\\Corvella\\Outlook";

// As Outlook has them in every version.
enum : DISPID { Count = 0x50, Item = 0x51, ActiveExplorer = 0x111, Selection = 0x2202, EntryID = 0xF01E };

class Value : public VARIANT {
  public:
    Value() { VariantInit(this); }
    ~Value() { VariantClear(this); }
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;
};

void Get(IDispatch* object, DISPID id, VARIANT& result, DISPPARAMS arguments = {}) {
    object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &arguments, &result,
                   nullptr, nullptr);
}

// The number of letters in all entry ids.
std::size_t Walk(IDispatch* application) {
    Value explorer, selection, count;
    Get(application, ActiveExplorer, explorer);
    Get(explorer.pdispVal, Selection, selection);
    Get(selection.pdispVal, Count, count);
    std::size_t letters = 0;
    for (LONG number = 1; number <= count.lVal; ++number) {
        VARIANT index;
        index.vt = VT_I4;
        index.lVal = number;
        Value item, id;
        Get(selection.pdispVal, Item, item, {&index, nullptr, 1, 0});
        Get(item.pdispVal, EntryID, id);
        letters += SysStringLen(id.bstrVal);
    }
    return letters;
}

void ClearList() {
    HKEY key = nullptr;
    RegCreateKeyA(HKEY_CURRENT_USER, outlookKey, &key);
    RegDeleteValueA(key, "ChangedC");
    RegCloseKey(key);
}

std::size_t ListedLetters() {
    HKEY key = nullptr;
    DWORD size = 0;
    RegOpenKeyA(HKEY_CURRENT_USER, outlookKey, &key);
    RegQueryValueExA(key, "ChangedC", nullptr, nullptr, nullptr, &size);
    RegCloseKey(key);
    return size;
}

void Measure(Bench::Report& report, const Bench::Library& library, int selected) {
    Outlook outlook({.version = 11});
    outlook.IgnoreRegistry();
    outlook.UseAddIn(Bench::progId, library.Factory());
    std::vector<standin::Item> items;
    for (int i = 0; i < selected; ++i) items.push_back(outlook.AddItem(FolderKind::Contacts));
    outlook.Start();
    const standin::Window window = outlook.Windows().front();
    outlook.SwitchFolder(window, FolderKind::Contacts);
    outlook.Select(window, items);
    const standin::ControlView button = outlook.FindTag(window, "107");
    IDispatch* const application = outlook.Application();
    std::size_t letters = 0;
    const auto walk = [&] { letters = Walk(application); };
    const auto send = [&] { outlook.Click(button); };
    const Bench::Minima minima = Bench::TakeTurnsForMinima(7, 1, &ClearList, walk, send);
    if (ListedLetters() != letters + static_cast<std::size_t>(selected)) std::exit(2);  // nothing was measured
    report.Add("send " + std::to_string(selected) + " selected, against a bare walk", minima);
    application->Release();
    outlook.Quit();
}

}  // namespace

int main(int argc, char** argv) {
    CoInitialize(nullptr);
    Bench::Report report;
    {
        const PrivateKey privateKey;
        const Bench::Library library(Bench::Folder() + "\\CVOutlookAddIn.dll", Bench::ourClass);
        for (const int selected : {100, 1000, 10000}) Measure(report, library, selected);
    }
    return report.Finish(argc, argv);
}
