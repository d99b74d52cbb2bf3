#include "check/UndoText.h"

#include <doctest.h>

#include "Healthy.h"

using namespace check_test;

namespace {

const Change change = WriteNumber(Root::CurrentUser, RegistryView::Own, "Software\\X", "Value \"a\"\\", 3);

std::string Undo(const Value& before) { return UndoText({{change, before, Found::There}}, true); }

const std::string head = "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\X]\r\n\"Value \\\"a\\\"\\\\\"=";

}  // namespace

TEST_CASE("the undo file puts back a text, a number, bytes, or nothing") {
    CHECK(Undo(Text("C:\\a \"b\"")) == head + "\"C:\\\\a \\\"b\\\"\"\r\n");
    CHECK(Undo(Number(0x1F)) == head + "dword:0000001f\r\n");
    CHECK(Undo({Found::There, platform::RegistryBinary, std::string("\x01\xFF", 2)}) == head + "hex:01,ff\r\n");
    CHECK(Undo({}) == head + "-\r\n");
}

TEST_CASE("the undo file keeps every other type, and texts that the editor would misread, byte for byte") {
    CHECK(Undo({Found::There, platform::RegistryExpandText, "%a%"}) == head + "hex(2):25,61,25\r\n");
    CHECK(Undo({Found::There, platform::RegistryText, "a\r\nb"}) == head + "hex(1):61,0d,0a,62\r\n");
    CHECK(Undo({Found::There, platform::RegistryText, std::string("a\0b", 3)}) == head + "hex(1):61,00,62\r\n");
    CHECK(Undo({Found::There, 11, "ab"}) == head + "hex(b):61,62\r\n");
}

TEST_CASE("a key that was made goes again, the last one first") {
    const Change first = WriteText(Root::CurrentUser, RegistryView::Bits32, "Software\\Classes\\CLSID\\{1}", "", "x");
    const Change second =
        WriteText(Root::CurrentUser, RegistryView::Bits32, "Software\\Classes\\CLSID\\{1}\\In", "", "y");
    const std::string classes = "[-HKEY_CURRENT_USER\\Software\\Classes\\Wow6432Node\\CLSID\\{1}";
    CHECK(UndoText({{first, {}, Found::Missing}, {second, {}, Found::Missing}}, true) ==
          "REGEDIT4\r\n\r\n" + classes + "\\In]\r\n\r\n" + classes + "]\r\n");
}

TEST_CASE("keys of 32-bit programs stand where the editor of a 64-bit Windows sees them") {
    const auto path = [](Root root, RegistryView view, const char* key, bool has64) {
        const std::string text = UndoText({{Remove(root, view, key, "n"), {}, Found::There}}, has64);
        return text.substr(13, text.find(']') - 13);
    };
    CHECK(path(Root::LocalMachine, RegistryView::Bits32, "Software\\Q", true) ==
          "HKEY_LOCAL_MACHINE\\Software\\Wow6432Node\\Q");
    CHECK(path(Root::LocalMachine, RegistryView::Bits64, "Software\\Q", true) == "HKEY_LOCAL_MACHINE\\Software\\Q");
    CHECK(path(Root::LocalMachine, RegistryView::Bits32, "Software\\Q", false) == "HKEY_LOCAL_MACHINE\\Software\\Q");
    CHECK(path(Root::CurrentUser, RegistryView::Bits32, "Software\\Q", true) == "HKEY_CURRENT_USER\\Software\\Q");
}
