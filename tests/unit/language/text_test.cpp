// The rules for texts, placeholders and names of elements; pure.
#include <doctest.h>

#include <string>

#include "language/LanguageText.h"

using namespace LanguageText;
using namespace std::string_literals;

TEST_CASE("a line break in a text is a single carriage return") {
    CHECK(Unescape("Line 1\\nLine 2") == "Line 1\rLine 2");
    CHECK(Unescape("\\n\\n") == "\r\r");
}

TEST_CASE("a tab is the only other thing that a backslash writes") {
    CHECK(Unescape("a\\tb") == "a\tb");
    CHECK(Unescape("\\r\\\\ \\x \\") == "\\r\\\\ \\x \\");
    CHECK(Unescape("\\N\\T") == "\\N\\T");
}

TEST_CASE("a bar parts the caption from the tool tip") {
    const Texts texts = Split("Save|Saves the item");
    CHECK(texts.caption == "Save");
    CHECK(texts.toolTip == "Saves the item");
}

TEST_CASE("a second bar stays inside the tool tip") {
    const Texts texts = Split("Save|Saves|the item");
    CHECK(texts.caption == "Save");
    CHECK(texts.toolTip == "Saves|the item");
}

TEST_CASE("a text without a bar has no tool tip, one that ends in a bar has an empty one") {
    CHECK_FALSE(Split("Save").toolTip.has_value());
    CHECK(Split("Save|").toolTip == "");
    CHECK(Split("|Saves").caption.empty());
    CHECK(Split("").caption.empty());
}

TEST_CASE("a key with a number in brackets names an element of a control array") {
    const auto element = AsElement("Option(2)");
    REQUIRE(element);
    CHECK(element->array == "Option");
    CHECK(element->index == 2);
    CHECK_FALSE(AsElement("Option").has_value());
    CHECK(AsElement("Option(")->index == 0);
    CHECK(AsElement("Option(x)")->index == 0);
    CHECK(AsElement("Option(99999999999)")->index == 2147483647);
    CHECK(AsElement("(1)")->array.empty());
    CHECK(ElementKey("Option", "2") == "Option(2)");
}

TEST_CASE("a name that ends in an underscore is left alone") {
    CHECK(IsLeftAlone("Label1_"));
    CHECK_FALSE(IsLeftAlone("Label_1"));
    CHECK_FALSE(IsLeftAlone(""));
}

TEST_CASE("a section is read line by line up to the next one") {
    const std::string text = "x=0\r\n[Form]\r\nA=1\r\n\r\nno setting\r\nB=2=3\r\n=4\r\n[Other]\r\nC=5\r\n";
    const auto lines = SectionLines(text, "Form");
    REQUIRE(lines.size() == 3);
    CHECK(lines[0].key == "A");
    CHECK(lines[0].value == "1");
    CHECK(lines[1].key == "B");
    CHECK(lines[1].value == "2=3");
    CHECK(lines[2].key.empty());
    CHECK(SectionLines(text, "Other").size() == 1);
    CHECK(SectionLines(text, "Absent").empty());
    CHECK(SectionLines("", "Form").empty());
}

TEST_CASE("a section that ends in the middle of a line is read as far as it goes") {
    const std::string text = "[Form]\r\nA=1\r\nB=hal";
    const auto lines = SectionLines(text, "Form");
    REQUIRE(lines.size() == 2);
    CHECK(lines[1].value == "hal");
    CHECK(SectionLines("[Form]", "Form").empty());
    CHECK(SectionLines("[For", "Form").empty());
}

TEST_CASE("every line ends in CR LF, whatever it ended in before") {
    CHECK(WithLineEnds("a\r\nb\nc\rd") == "a\r\nb\r\nc\r\nd\r\n");
    CHECK(WithLineEnds("a\r\n") == "a\r\n");
    CHECK(WithLineEnds("\n\r\n\r\r") == "\r\n\r\n\r\n\r\n");
    CHECK(WithLineEnds("").empty());
    CHECK(WithLineEnds("a\0b\n"s) == "a\0b\r\n"s);
}

TEST_CASE("line ends that are right stay as they are") {
    const std::string text = "[Info]\r\nFont=\r\n\r\n[Misc]\r\nOk=OK\r\n";
    CHECK(WithLineEnds(text) == text);
}

TEST_CASE("a list is split at its semicolons and empty entries are nothing") {
    CHECK(Entries("a;b").size() == 2);
    CHECK(Entries(";;a;;").size() == 1);
    CHECK(Entries(";;a;;")[0] == "a");
    CHECK(Entries("").empty());
}

TEST_CASE("a mask removes the pages whose bits are set") {
    const auto mask = AsTabMask("Tabs:5");
    REQUIRE(mask);
    CHECK(mask->tabControl == "Tabs");
    CHECK(mask->Removes(0));
    CHECK_FALSE(mask->Removes(1));
    CHECK(mask->Removes(2));
    CHECK_FALSE(mask->Removes(3));
    CHECK_FALSE(mask->Removes(31));
    CHECK_FALSE(mask->Removes(4000000000u));
    CHECK_FALSE(AsTabMask("Tabs").has_value());
    CHECK(AsTabMask("Tabs:")->mask == 0);
    CHECK(AsTabMask("Tabs:none")->mask == 0);
    CHECK(AsTabMask("Tabs:-1")->Removes(31));
    CHECK(AsTabMask("Tabs:0x5")->mask == 0);  // decimal only
}

TEST_CASE("an entry in brackets names an element, unless it is a mask or its bracket is not closed") {
    CHECK(AsRestrictedElement("Option(2)")->index == 2);
    CHECK_FALSE(AsRestrictedElement("Option(2").has_value());
    CHECK_FALSE(AsRestrictedElement("Option)2(").has_value());
    CHECK_FALSE(AsRestrictedElement("Option(2):1").has_value());
    CHECK_FALSE(AsRestrictedElement("Option").has_value());
}

TEST_CASE("only the whole code DEU is German") {
    CHECK(LanguageForSystem("DEU") == "Deutsch");
    CHECK(LanguageForSystem("DES") == "English");
    CHECK(LanguageForSystem("DE") == "English");
    CHECK(LanguageForSystem("DEUX") == "English");
    CHECK(LanguageForSystem("DEU\0"s) == "English");
}

TEST_CASE("the other languages are known by the first two letters of their code") {
    CHECK(LanguageForSystem("FRA") == "Francais");
    CHECK(LanguageForSystem("FRB") == "Francais");
    CHECK(LanguageForSystem("ESP") == "Espanol");
    CHECK(LanguageForSystem("ESN\0"s) == "Espanol");
    CHECK(LanguageForSystem("PTB") == "Portugues-BR");
    CHECK(LanguageForSystem("PTG") == "Portugues-BR");
    CHECK(LanguageForSystem("CZE") == "Cesky.lng");
    CHECK(LanguageForSystem("NLD") == "Nederlands.lng");
    CHECK(LanguageForSystem("NLB") == "Nederlands.lng");
    CHECK(LanguageForSystem("PL") == "Polski.lng");
}

TEST_CASE("the Polish code POL stands for Portuguese, because it begins with PO") {
    CHECK(LanguageForSystem("POL") == "Portugues-BR");
}

TEST_CASE("the Czech code CSY and every unknown code stand for English") {
    for (const char* code : {"CSY", "ENU", "ITA", "deu", "fra", "F", "", "00000409"}) {
        CHECK(LanguageForSystem(code) == "English");
    }
}

TEST_CASE("Cesky and Cesky.lng name the same file") {
    CHECK(FileName("Cesky") == "Cesky.lng");
    CHECK(FileName("Cesky.lng") == "Cesky.lng");
    CHECK(FileName("CESKY.LNG") == "CESKY.LNG");
    CHECK(FileName("C:\\x\\My.lng.old") == "C:\\x\\My.lng.old.lng");
    CHECK(FileName("") == ".lng");
}

TEST_CASE("the accents of a file's name are folded and those of its folder are not") {
    CHECK(WithPlainFileName("Fran\xE7"
                            "ais.lng") == "Francais.lng");
    CHECK(WithPlainFileName("Espa\xF1ol.lng") == "Espanol.lng");
    CHECK(WithPlainFileName("C:\\Fran\xE7"
                            "ais\\Vi\xEAtnam.lng") ==
          "C:\\Fran\xE7"
          "ais\\Vietnam.lng");
    CHECK(WithPlainFileName("C:\\x\\") == "C:\\x\\");
    CHECK(WithPlainFileName("").empty());
}

TEST_CASE("the help of a language is named by its first two letters, but pt for Portuguese and nl for Dutch") {
    CHECK(HelpCode("Nederlands") == "nl");
    CHECK(HelpCode("Portugues-BR") == "pt");
    CHECK(HelpCode("Polski.lng") == "pt");  // its first two letters are the same
    CHECK(HelpCode("Deutsch") == "de");
    CHECK(HelpCode("Francais") == "fr");
    CHECK(HelpCode("Espanol") == "es");
    CHECK(HelpCode("Cesky.lng") == "ce");
    CHECK(HelpCode("English") == "en");
    CHECK(HelpCode("X") == "x");
    CHECK(HelpCode("").empty());
}
