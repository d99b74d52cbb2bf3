// Values and keys of the registry: types, failures, what is left.
#include <doctest.h>
#include <windows.h>

#include "platform/Err.h"
#include "support/Debug.h"
#include "support/RegEdit.h"
#include "testing/PrivateRegistry.h"
#include "testing/TempFolder.h"

using namespace RegEdit;
using platform::Err;

namespace {

const std::string subkey = "Software\\Quillmark\\Corvella\\Test";

std::string Read(const std::string& name) { return GetRegString(Root::CurrentUser, subkey, name); }

bool Save(const std::string& name, std::string_view text, std::int32_t type) {
    return SaveRegValue(Root::CurrentUser, std::string_view(subkey), name, text, type);
}

void Put(const std::string& name, DWORD type, const std::string& bytes) {
    PrivateRegistry::Put(HKEY_CURRENT_USER, subkey, name, type, bytes);
}

PrivateRegistry::Value Raw(const std::string& name) { return PrivateRegistry::Raw(HKEY_CURRENT_USER, subkey, name); }

std::string Bytes(const char* text, std::size_t size) { return std::string(text, size); }

// A private registry, the log on and its file in a private folder.
struct Fixture {
    Fixture() {
        Debug::state = {};
        Debug::state.DebugFile = folder.Path("log");
        Debug::state.DebugActive = true;
        Debug::state.DebugLevel = 1;
        Err().Clear();
    }
    ~Fixture() { Debug::state = {}; }
    [[nodiscard]] std::string Log() const { return folder.Read("log"); }

    PrivateRegistry registry;
    TempFolder folder;
};

}  // namespace

TEST_CASE_FIXTURE(Fixture, "a text stored with its terminating NUL and one stored without it read without one") {
    Put("with", REG_SZ, Bytes("text\0", 5));
    Put("without", REG_SZ, "text");
    REQUIRE(Raw("with").bytes.size() == 5);
    REQUIRE(Raw("without").bytes.size() == 4);
    CHECK(Read("with") == "text");
    CHECK(Read("without") == "text");
}

TEST_CASE_FIXTURE(Fixture, "a text that ends in two NULs keeps one of them") {
    Put("two", REG_SZ, Bytes("text\0\0", 6));
    CHECK(Read("two") == Bytes("text\0", 5));
}

TEST_CASE_FIXTURE(Fixture, "a text of one NUL alone reads as the empty text") {
    Put("one", REG_SZ, Bytes("\0", 1));
    CHECK(Read("one").empty());
}

TEST_CASE_FIXTURE(Fixture, "a 32-bit number reads as decimal text") {
    Put("five", REG_DWORD, Bytes("\5\0\0\0", 4));
    Put("minus one", REG_DWORD, "\xFF\xFF\xFF\xFF");
    CHECK(Read("five") == "5");
    CHECK(Read("minus one") == "-1");
}

TEST_CASE_FIXTURE(Fixture, "a list of texts and other types that are not read are the empty text") {
    Put("list", REG_MULTI_SZ, Bytes("a\0b\0\0", 5));
    Put("eight", REG_QWORD, "12345678");
    Put("nothing", REG_NONE, "x");
    CHECK(Read("list").empty());
    CHECK(Read("eight").empty());
    CHECK(Read("nothing").empty());
}

TEST_CASE_FIXTURE(Fixture, "a text with names of variables is not expanded") {
    Put("expand", REG_EXPAND_SZ, "%windir%\\x");
    CHECK(Read("expand") == "%windir%\\x");
}

TEST_CASE_FIXTURE(Fixture, "bytes read as text, byte for byte, less one NUL at the end") {
    Put("bytes", REG_BINARY, Bytes("a\0\xFF\x80z", 5));
    Put("ended", REG_BINARY, Bytes("a\0b\0", 4));
    Put("none", REG_BINARY, "");
    CHECK(Read("bytes") == Bytes("a\0\xFF\x80z", 5));
    CHECK(Read("ended") == Bytes("a\0b", 3));
    CHECK(Read("none").empty());
}

TEST_CASE_FIXTURE(Fixture,
                  "a missing key or value reads as the empty text, is not logged and leaves the pending error") {
    Err().Set(42, "from before");
    CHECK(GetRegString(Root::CurrentUser, "Software\\No such key", "x").empty());
    CHECK(GetRegString(Root::LocalMachine, "Software\\No such key", "").empty());
    CHECK(Read("no such value").empty());
    CHECK(Err().Number() == 42);
    CHECK(Err().Description() == "from before");
    CHECK(Log().empty());
}

TEST_CASE_FIXTURE(Fixture, "the empty name reads a key's default value") {
    Put("", REG_SZ, "default");
    CHECK(Read("") == "default");
}

TEST_CASE_FIXTURE(Fixture, "what is written below one root is not read below another") {
    CHECK(SaveRegValue(Root::LocalMachine, std::string_view(subkey), "name", "machine", TypeText));
    CHECK(Read("name").empty());
    CHECK(GetRegString(Root::LocalMachine, subkey, "name") == "machine");
    CHECK(SaveRegValue(Root::ClassesRoot, std::string_view(".cvt"), "", "class", TypeText));
    CHECK(GetRegString(Root::ClassesRoot, ".cvt", "") == "class");
}

TEST_CASE_FIXTURE(Fixture, "a text is stored with as many bytes as it has characters and no NUL behind them") {
    for (const std::string text : {"5", "abc", ";0000A", "eight chars..", "sixteen letters!", "\xE4\xF6\xFC \x80"}) {
        CAPTURE(text);
        CHECK(Save("name", text, TypeText));
        CHECK(Raw("name").type == REG_SZ);
        CHECK(Raw("name").bytes == text);
        // The bytes as the registry itself keeps them: two for each character, none more.
        DWORD size = 0;
        HKEY key = nullptr;
        REQUIRE(RegOpenKeyA(HKEY_CURRENT_USER, subkey.c_str(), &key) == ERROR_SUCCESS);
        CHECK(RegQueryValueExW(key, L"name", nullptr, nullptr, nullptr, &size) == ERROR_SUCCESS);
        RegCloseKey(key);
        CHECK(size == 2 * text.size());
    }
}

TEST_CASE_FIXTURE(Fixture, "every character of the code page comes back as it was written") {
    std::string all;
    for (int c = 1; c < 256; ++c) all.push_back(static_cast<char>(c));
    CHECK(Save("name", all, TypeText));
    CHECK(Read("name") == all);
}

TEST_CASE_FIXTURE(Fixture, "a text of a hundred thousand characters comes back whole") {
    const std::string text(100000, 'x');
    CHECK(Save("name", text, TypeText));
    CHECK(Read("name") == text);
}

TEST_CASE_FIXTURE(Fixture, "a text that ends in a NUL is stored but does not read back the same") {
    CHECK_FALSE(Save("name", Bytes("x\0", 2), TypeText));
    CHECK(Read("name") == "x");
}

TEST_CASE_FIXTURE(Fixture, "missing levels of the subkey are made") {
    std::string deep = "Software\\A\\B\\C";
    CHECK(SaveRegValue(Root::CurrentUser, deep, "name", "1", TypeText));
    CHECK(deep == "Software\\A\\B\\C");
    CHECK(GetRegString(Root::CurrentUser, deep, "name") == "1");
}

TEST_CASE_FIXTURE(Fixture, "without a subkey nothing is written and the result is false") {
    std::string none;
    CHECK_FALSE(SaveRegValue(Root::CurrentUser, none, "name", "1", TypeText));
    CHECK_FALSE(SaveRegValue(Root::CurrentUser, none, "name", "", TypeText));
    CHECK_FALSE(PrivateRegistry::Raw(HKEY_CURRENT_USER, "", "name").present);
    CHECK(Log().empty());
}

TEST_CASE_FIXTURE(Fixture, "a backslash before the subkey is removed, in the caller's text too") {
    std::string path = "\\Software\\X";
    CHECK(SaveRegValue(Root::CurrentUser, path, "name", "1", TypeText));
    CHECK(path == "Software\\X");
    CHECK(GetRegString(Root::CurrentUser, "Software\\X", "name") == "1");
}

TEST_CASE_FIXTURE(Fixture, "a backslash alone writes into the root itself, which stays usable") {
    std::string path = "\\";
    CHECK(SaveRegValue(Root::CurrentUser, path, "name", "1", TypeText));
    CHECK(path.empty());
    CHECK(PrivateRegistry::Raw(HKEY_CURRENT_USER, "", "name").bytes == "1");
    CHECK(GetRegString(Root::CurrentUser, "", "name") == "1");
    CHECK(Save("after", "1", TypeText));
    CHECK(Raw("after").present);
}

TEST_CASE_FIXTURE(Fixture, "the empty text removes the value and returns true") {
    REQUIRE(Save("name", "x", TypeText));
    CHECK(Save("name", "", TypeText));
    CHECK_FALSE(Raw("name").present);
}

TEST_CASE_FIXTURE(Fixture, "the empty text for a value that is not there returns true and logs nothing") {
    CHECK(Save("name", "", TypeText));
    CHECK_FALSE(Raw("name").present);
    CHECK(Log().empty());
}

TEST_CASE_FIXTURE(Fixture, "the number 0 removes the value and returns false") {
    REQUIRE(Save("name", "5", TypeNumber));
    CHECK_FALSE(Save("name", "0", TypeNumber));
    CHECK_FALSE(Raw("name").present);
    CHECK(Log().empty());
}

TEST_CASE_FIXTURE(Fixture, "a number is stored as four bytes and reads back as decimal text") {
    CHECK(Save("name", "7", TypeNumber));
    CHECK(Raw("name").type == REG_DWORD);
    CHECK(Raw("name").bytes == Bytes("\7\0\0\0", 4));
    CHECK(Save("name", "-2147483648", TypeNumber));
    CHECK(Read("name") == "-2147483648");
}

TEST_CASE_FIXTURE(Fixture, "a number with a fraction is rounded down and returns false") {
    CHECK_FALSE(Save("name", "2.7", TypeNumber));
    CHECK(Read("name") == "2");
    CHECK_FALSE(Save("name", "-2.2", TypeNumber));
    CHECK(Read("name") == "-3");
    CHECK_FALSE(Save("name", "0.9", TypeNumber));
    CHECK_FALSE(Raw("name").present);
}

TEST_CASE_FIXTURE(Fixture, "a number that reads back in another way returns false though it is stored") {
    CHECK_FALSE(Save("name", "07", TypeNumber));
    CHECK(Read("name") == "7");
}

TEST_CASE_FIXTURE(Fixture, "a text that is no number is not written as one, returns false and is logged once") {
    REQUIRE(Save("name", "5", TypeNumber));
    for (const char* text : {"seven", "", "7x"}) {
        CHECK_FALSE(Save("name", text, TypeNumber));
        CHECK(Read("name") == "5");
    }
    const std::string one = "13:Type mismatch\r\nRegEdit error: 80000001: Software\\Quillmark\\Corvella\\Test name\r\n";
    CHECK(Log() == one + one + one);
}

TEST_CASE_FIXTURE(Fixture, "a text that is no number returns false even where the value reads the same") {
    REQUIRE(Save("name", "seven", TypeText));
    CHECK_FALSE(Save("name", "seven", TypeNumber));
    CHECK(Read("name") == "seven");
}

TEST_CASE_FIXTURE(Fixture, "a number of more than 32 bits is not written and is logged") {
    CHECK_FALSE(Save("name", "4294967296", TypeNumber));
    CHECK_FALSE(Save("name", "-2147483649", TypeNumber));
    CHECK_FALSE(Raw("name").present);
    CHECK(Log().find("6:Overflow\r\nRegEdit error: 80000001: ") == 0);
}

TEST_CASE_FIXTURE(Fixture, "another type code writes nothing and returns whether the value is already so") {
    CHECK_FALSE(Save("name", "x", 3));
    CHECK_FALSE(Raw("name").present);
    REQUIRE(Save("name", "x", TypeText));
    CHECK(Save("name", "x", 7));
    CHECK_FALSE(Save("name", "y", 2));
    CHECK(Read("name") == "x");
}

TEST_CASE_FIXTURE(Fixture, "the read-back is compared with respect to case") {
    REQUIRE(Save("name", "ABC", TypeText));
    CHECK_FALSE(Save("name", "abc", 9));
}

TEST_CASE_FIXTURE(Fixture, "the error that was pending before a write is pending after it, and not logged") {
    Err().Set(42, "from before");
    CHECK(Save("name", "x", TypeText));
    CHECK_FALSE(Save("name", "x", TypeNumber));
    CHECK(Err().Number() == 42);
    CHECK(Log().find("42:") == std::string::npos);
}

TEST_CASE_FIXTURE(Fixture, "a key that cannot be made returns false and is logged with its own error") {
    const std::string tooLong = "Software\\" + std::string(300, 'x');
    CHECK_FALSE(SaveRegValue(Root::LocalMachine, std::string_view(tooLong), "name", "x", TypeText));
    CHECK(Log().find("RegEdit error: 80000002: " + tooLong + " name\r\n") != std::string::npos);
    CHECK(Err().Number() == 0);
}

TEST_CASE_FIXTURE(Fixture, "a value that exists is deleted") {
    REQUIRE(Save("name", "x", TypeText));
    CHECK(DeleteRegValue(Root::CurrentUser, subkey, "name"));
    CHECK_FALSE(Raw("name").present);
    CHECK(Log().empty());
}

TEST_CASE_FIXTURE(Fixture, "deleting a value that does not exist returns true and makes no key") {
    CHECK(DeleteRegValue(Root::CurrentUser, "Software\\None", "name"));
    CHECK_FALSE(PrivateRegistry::KeyExists(HKEY_CURRENT_USER, "Software\\None"));
}

TEST_CASE_FIXTURE(Fixture, "deleting a value that reads as the empty text leaves it and returns true") {
    Put("list", REG_MULTI_SZ, Bytes("a\0\0", 3));
    CHECK(DeleteRegValue(Root::CurrentUser, subkey, "list"));
    CHECK(Raw("list").present);
}

TEST_CASE_FIXTURE(Fixture, "deleting without a name removes the key itself") {
    REQUIRE(Save("name", "x", TypeText));
    CHECK(DeleteRegValue(Root::CurrentUser, subkey, ""));
    CHECK_FALSE(PrivateRegistry::KeyExists(HKEY_CURRENT_USER, subkey));
    CHECK(Log().empty());
}

TEST_CASE_FIXTURE(Fixture, "deleting a key that is not there returns true and logs nothing") {
    CHECK(DeleteRegValue(Root::CurrentUser, "Software\\None", ""));
    CHECK(Log().empty());
}

TEST_CASE_FIXTURE(Fixture, "a key that has subkeys stays, which returns true and shows in the log") {
    REQUIRE(Save("name", "x", TypeText));
    Err().Set(42, "from before");
    CHECK(DeleteRegValue(Root::CurrentUser, "Software\\Quillmark\\Corvella", ""));
    CHECK(PrivateRegistry::KeyExists(HKEY_CURRENT_USER, subkey));
    CHECK(Log().find("RegEdit error: 80000001: Software\\Quillmark\\Corvella \r\n") != std::string::npos);
    CHECK(Err().Number() == 42);
}
