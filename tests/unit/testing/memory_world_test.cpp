// The registry and the clipboard in memory are only worth what they have in common with Windows' own.
#include <doctest.h>

#include <string>
#include <vector>

#include "testing/ImportPatch.h"
#include "testing/MemoryClipboard.h"
#include "testing/MemoryRegistry.h"
#include "testing/PrivateRegistry.h"

namespace {

constexpr const char* home = "Software\\Corvella Tests\\Memory";

class Answers {
  public:
    void Add(const char* what, LONG status, const std::string& more = {}) {
        lines.push_back(std::string(what) + " " + std::to_string(status) + " " + more);
    }
    std::vector<std::string> lines;
};

std::string Shown(const BYTE* data, DWORD size) {
    std::string text = std::to_string(size) + ":";
    for (DWORD at = 0; at < 12; ++at) text += data[at] == 0 ? '0' : static_cast<char>(data[at]);
    return text;
}

void Read(Answers& answers, HKEY key, const char* name, DWORD room) {
    BYTE data[16] = "???????????????";
    DWORD size = room;
    DWORD type = 99;
    const LONG status = RegQueryValueExA(key, name, nullptr, &type, data, &size);
    answers.Add(name, status, std::to_string(type) + " " + Shown(data, size));
}

// Everything that the add-in, the stand-ins and the tests ask of a registry, and what it returns.
std::vector<std::string> Conversation() {
    Answers answers;
    HKEY top = nullptr;
    HKEY inner = nullptr;
    HKEY none = nullptr;
    answers.Add("missing", RegOpenKeyA(HKEY_CURRENT_USER, home, &none), none ? "a key" : "none");
    answers.Add("create", RegCreateKeyA(HKEY_CURRENT_USER, (std::string(home) + "\\One\\Two").c_str(), &inner));
    answers.Add("open", RegOpenKeyExA(HKEY_CURRENT_USER, home, 0, KEY_ALL_ACCESS, &top));
    answers.Add("open in other letters", RegOpenKeyA(top, "oNE", &none));
    answers.Add("close", RegCloseKey(none));
    answers.Add("close twice", RegCloseKey(none));
    const auto set = [&](const char* name, DWORD type, const char* bytes, DWORD size) {
        answers.Add("set", RegSetValueExA(inner, name, 0, type, reinterpret_cast<const BYTE*>(bytes), size));
    };
    set("Whole", REG_SZ, "text", 5);
    set("Bare", REG_SZ, "text.", 4);
    set("Guessed", REG_SZ, "text", 4);  // a NUL stands behind it
    set("Number", REG_DWORD, "\1\2\3\4", 4);
    set("Nothing", REG_SZ, "", 0);
    for (const char* name : {"Whole", "Bare", "Guessed", "Number", "Nothing", "wHOLE", "Absent"}) {
        for (const DWORD room : {3u, 4u, 5u, 12u}) Read(answers, inner, name, room);
        DWORD size = 77;
        const LONG status = RegQueryValueExA(inner, name, nullptr, nullptr, nullptr, &size);
        answers.Add("size", status, std::to_string(status == ERROR_SUCCESS ? size : 0));
    }
    answers.Add("default", RegSetValueExA(inner, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>("all"), 4));
    char text[16] = "";
    LONG length = sizeof text;
    const LONG status = RegQueryValueA(top, "One\\Two", text, &length);
    answers.Add("default", status, text);
    answers.Add("delete value", RegDeleteValueA(inner, "Whole"));
    answers.Add("delete it again", RegDeleteValueA(inner, "Whole"));
    Read(answers, inner, "Whole", 12);
    HKEY sibling = nullptr;
    answers.Add("sibling", RegCreateKeyA(top, "Another", &sibling));
    for (const DWORD index : {0u, 1u, 2u}) {
        char name[16] = "";
        const LONG found = RegEnumKeyA(top, index, name, sizeof name);
        answers.Add("listed", found, name);
    }
    answers.Add("delete a key with keys", RegDeleteKeyA(top, "One"));
    answers.Add("close", RegCloseKey(inner));
    answers.Add("delete", RegDeleteKeyA(top, "One\\Two"));
    answers.Add("delete", RegDeleteKeyA(top, "One"));
    answers.Add("delete what is gone", RegDeleteKeyA(top, "One"));
    answers.Add("override", RegOverridePredefKey(HKEY_LOCAL_MACHINE, sibling));
    HKEY mapped = nullptr;
    answers.Add("within", RegCreateKeyA(HKEY_LOCAL_MACHINE, "Mapped", &mapped));
    RegCloseKey(mapped);
    answers.Add("back", RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr));
    answers.Add("found where it was made", RegOpenKeyA(top, "Another\\Mapped", &mapped));
    RegCloseKey(mapped);
    answers.Add("tidy", RegDeleteKeyA(top, "Another\\Mapped"));
    RegCloseKey(sibling);
    answers.Add("tidy", RegDeleteKeyA(top, "Another"));
    RegCloseKey(top);
    answers.Add("tidy", RegDeleteKeyA(HKEY_CURRENT_USER, home));
    answers.Add("no key", RegOpenKeyA(reinterpret_cast<HKEY>(0x7FFC), "x", &none));
    return answers.lines;
}

}  // namespace

TEST_CASE("the registry in memory behaves as Windows' own") {
    const std::vector<std::string> own = Conversation();
    MemoryRegistry registry;
    std::vector<std::string> inMemory;
    {
        ImportPatch patch;
        REQUIRE(patch.Replace(GetModuleHandleA(nullptr), MemoryRegistry::Functions()) > 0);
        inMemory = Conversation();
    }
    CHECK(registry.OpenHandles() == 0);
    REQUIRE(inMemory.size() == own.size());
    for (std::size_t line = 0; line < own.size(); ++line) CHECK(inMemory[line] == own[line]);
}

TEST_CASE("what was written to the registry in memory is in no other registry") {
    const auto write = [] {
        HKEY key = nullptr;
        RegCreateKeyA(HKEY_CURRENT_USER, home, &key);
        RegCloseKey(key);
    };
    MemoryRegistry registry;
    {
        ImportPatch patch;
        patch.Replace(GetModuleHandleA(nullptr), MemoryRegistry::Functions());
        write();
        CHECK(PrivateRegistry::KeyExists(HKEY_CURRENT_USER, home));
    }
    CHECK_FALSE(PrivateRegistry::KeyExists(HKEY_CURRENT_USER, home));
}

TEST_CASE("a handle that stays open in the registry in memory is counted") {
    MemoryRegistry registry;
    HKEY key = nullptr;
    MemoryRegistry::CreateKey(HKEY_CURRENT_USER, home, &key);
    CHECK(registry.OpenHandles() == 1);
    MemoryRegistry::CloseKey(key);
    CHECK(registry.OpenHandles() == 0);
}

TEST_CASE("the clipboard in memory gives what it was given, until it is emptied, and only while it is open") {
    MemoryClipboard clipboard;
    HBITMAP bitmap = CreateBitmap(1, 1, 1, 1, nullptr);
    CHECK(MemoryClipboard::Set(CF_BITMAP, bitmap) == nullptr);
    REQUIRE(MemoryClipboard::Open(nullptr));
    CHECK_FALSE(MemoryClipboard::Open(nullptr));
    CHECK(MemoryClipboard::Set(CF_BITMAP, bitmap) == bitmap);
    CHECK(MemoryClipboard::Get(CF_BITMAP) == bitmap);
    CHECK(MemoryClipboard::Close());
    CHECK_FALSE(MemoryClipboard::Close());
    CHECK(MemoryClipboard::Get(CF_BITMAP) == nullptr);
    CHECK(MemoryClipboard::Has(CF_BITMAP));
    CHECK_FALSE(MemoryClipboard::Empty());
    REQUIRE(MemoryClipboard::Open(nullptr));
    CHECK(MemoryClipboard::Empty());
    CHECK_FALSE(MemoryClipboard::Has(CF_BITMAP));
    MemoryClipboard::Close();
    BITMAP description{};
    CHECK(GetObjectA(bitmap, sizeof description, &description) == 0);  // it let go of the bitmap
}

TEST_CASE("a name of a format has one number, and another name another one") {
    MemoryClipboard clipboard;
    const UINT face = MemoryClipboard::Register("Toolbar Button Face");
    CHECK(face >= 0xC000);
    CHECK(MemoryClipboard::Register("Toolbar Button Face") == face);
    CHECK(MemoryClipboard::Register("Toolbar Button Mask") != face);
}
